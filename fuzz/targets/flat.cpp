// Calls of the flat interface in any order, with handles of any kind, living or not. The first two bytes say how long
// the program of calls is; what follows it is the file that is loaded.
#include "fuzz/support/choices.h"
#include "fuzz/support/entry.h"
#include "fuzz/support/memorystream.h"
#include "imaginglibrary/core/limits.h"
#include "imaginglibrary/flat/flattypes.h"
#include "imaginglibrary/flat/graphics.h"
#include "tests/support/codecs.h"
#include "tests/support/flatfunctions.h"

#include <array>
#include <deque>

namespace {

using namespace imaginglibrary;

// A call whose arguments are taken from the input one after the other, which those of functions need not be.
class FlatCall {
  public:
    template <class... Arguments> explicit FlatCall(const char* name, Arguments... arguments)
        : status_(tests::CallFlat(name, arguments...)) {}

    bool IsOk() const { return status_ == Status::Ok; }

  private:
    Status status_;
};

constexpr std::size_t MostCalls = 24;
constexpr std::uint64_t MostPixels = std::uint64_t{1} << 20; // of a picture that is worked on

// Eight places for handles of each kind. They hold nothing at first, and what was disposed of afterwards.
struct Handles {
    std::array<GpImage*, 8> images{};
    std::array<GpGraphics*, 4> surfaces{};
    std::array<GpFontFamily*, 2> families{};
    std::array<GpFont*, 2> fonts{};
    std::array<GpBrush*, 2> brushes{};
    std::array<GpPen*, 2> pens{};
};

template <class Handle, std::size_t Count>
Handle*& PlaceIn(std::array<Handle*, Count>& places, fuzz::Choices& choices) {
    return places[choices.Below(Count)];
}

// One handle in sixteen is of nothing that ever was.
template <class Handle, std::size_t Count> Handle* OneOf(std::array<Handle*, Count>& places, fuzz::Choices& choices) {
    const std::uint8_t choice = choices.Byte();
    return choice < 0xF0 ? places[choice % Count] : reinterpret_cast<Handle*>(std::uintptr_t{choice} * 0x100001);
}

float NumberFrom(fuzz::Choices& choices) {
    const std::uint8_t kind = choices.Byte();
    if (kind < 0xF8) {
        return static_cast<float>(kind) * 0.75f - 30;
    }
    constexpr float Odd[] = {1e30f, -1e30f, 0.0f / 1e-45f, 1e9f, -1e9f, 1e-30f, 70000, -70000};
    return Odd[kind - 0xF8];
}

class Caller {
  public:
    Caller(fuzz::Choices& choices, std::string file) : choices_(choices), file_(std::move(file)) {
        const GdiplusStartupInput input{.gdiplusVersion = 1};
        FlatCall{"GdiplusStartup", &token_, &input, static_cast<GdiplusStartupOutput*>(nullptr)};
    }

    ~Caller() {
        reinterpret_cast<void (*)(std::uintptr_t)>(tests::FlatFunction("GdiplusShutdown"))(token_);
        for (const fuzz::MemoryStream& stream : streams_) {
            fuzz::Require(stream.References() == 0, "no stream is kept behind the last session");
        }
    }

    Caller(const Caller&) = delete;
    Caller& operator=(const Caller&) = delete;

    void Call();

  private:
    GpImage* Image() { return OneOf(handles_.images, choices_); }
    GpImage*& NewImage() { return PlaceIn(handles_.images, choices_); }
    GpGraphics* Surface() { return OneOf(handles_.surfaces, choices_); }

    // A picture that one input has the time to work on.
    GpImage* SmallImage() {
        GpImage* image = Image();
        std::uint32_t width = 0;
        std::uint32_t height = 0;
        FlatCall{"GdipGetImageWidth", image, &width};
        FlatCall{"GdipGetImageHeight", image, &height};
        return std::uint64_t{width} * height <= MostPixels ? image : nullptr;
    }

    PixelFormat Format() {
        constexpr std::array Formats{PixelFormat::Undefined, PixelFormat::Indexed1, PixelFormat::Indexed4,
                                     PixelFormat::Indexed8,  PixelFormat::Rgb555,   PixelFormat::Rgb565,
                                     PixelFormat::Argb1555,  PixelFormat::Rgb24,    PixelFormat::Rgb32,
                                     PixelFormat::Argb32,    PixelFormat::Pargb32,  PixelFormat::Rgb48};
        const std::size_t which = choices_.Below(Formats.size() + 1);
        return which < Formats.size() ? Formats[which] : choices_.Of<PixelFormat>();
    }

    void Load();
    void CallOnImage(std::size_t which);
    void CallOnSurface(std::size_t which);
    void CallForText(std::size_t which);
    void LockBits();
    void ReadProperties();
    void SetProperty();
    void Save();

    fuzz::Choices& choices_;
    std::string file_;
    std::uintptr_t token_ = 0;
    std::deque<fuzz::MemoryStream> streams_; // where they are found they stay
    Handles handles_;
};

void Caller::Call() {
    const std::size_t which = choices_.Below(38);
    if (which < 18) {
        CallOnImage(which);
    } else if (which < 30) {
        CallOnSurface(which - 18);
    } else {
        CallForText(which - 30);
    }
}

void Caller::Load() {
    streams_.emplace_back(file_);
    FlatCall{"GdipLoadImageFromStream", static_cast<Stream*>(&streams_.back()), &NewImage()};
}

void Caller::CallOnImage(std::size_t which) {
    switch (which) {
    case 0:
    case 1:
        Load();
        break;
    case 2: {
        const std::int32_t width = choices_.Length();
        const std::int32_t height = choices_.Length();
        if (std::int64_t{width} * height <= std::int64_t{MostPixels}) {
            FlatCall{"GdipCreateBitmapFromScan0",
                     width,
                     height,
                     choices_.Length(),
                     Format(),
                     static_cast<const std::uint8_t*>(nullptr),
                     &NewImage()};
        }
        break;
    }
    case 3:
        FlatCall{"GdipCloneImage", Image(), &NewImage()};
        break;
    case 4: {
        const std::array<std::int32_t, 4> area{choices_.Length(), choices_.Length(), choices_.Length(),
                                               choices_.Length()};
        FlatCall{"GdipCloneBitmapAreaI", area[0], area[1], area[2], area[3], Format(), Image(), &NewImage()};
        break;
    }
    case 5:
        FlatCall{"GdipImageRotateFlip", SmallImage(), std::int32_t{choices_.Byte()} % 10 - 1};
        break;
    case 6: {
        const std::uint32_t width = choices_.Byte();
        const std::uint32_t height = choices_.Byte();
        FlatCall{"GdipGetImageThumbnail",    SmallImage(), width, height, &NewImage(), static_cast<void*>(nullptr),
                 static_cast<void*>(nullptr)};
        break;
    }
    case 7:
        FlatCall{"GdipDisposeImage", Image()};
        break;
    case 8:
        LockBits();
        break;
    case 9:
        ReadProperties();
        break;
    case 10:
        SetProperty();
        break;
    case 11:
    case 12:
        Save();
        break;
    case 13:
        FlatCall{"ImagingCarryMetadata", Image(), Image()};
        break;
    case 14:
        FlatCall{"ImagingFitMetadata", Image()};
        FlatCall{"ImagingClearOrientation", Image()};
        break;
    case 15:
        FlatCall{"ImagingStripMetadata", Image(), std::int32_t{choices_.Coin()}};
        break;
    case 16:
        FlatCall{"ImagingLayOverColor", Image(), choices_.Of<std::uint32_t>()};
        break;
    default:
        FlatCall{"ImagingRefuseImageDamage", Image()};
        break;
    }
}

void Caller::CallOnSurface(std::size_t which) {
    switch (which) {
    case 0:
    case 1:
        FlatCall{"GdipGetImageGraphicsContext", SmallImage(), &PlaceIn(handles_.surfaces, choices_)};
        break;
    case 2:
        FlatCall{"GdipDeleteGraphics", Surface()};
        break;
    case 3: {
        std::uint32_t number = 0;
        FlatCall{"GdipSaveGraphics", Surface(), &number};
        break;
    }
    case 4:
        FlatCall{"GdipTranslateWorldTransform", Surface(), NumberFrom(choices_), NumberFrom(choices_),
                 choices_.Coin() ? MatrixOrder::Append : MatrixOrder::Prepend};
        break;
    case 5:
        FlatCall{"GdipRotateWorldTransform", Surface(), NumberFrom(choices_), MatrixOrder::Prepend};
        break;
    case 6:
        FlatCall{"GdipDrawImage", Surface(), SmallImage(), NumberFrom(choices_), NumberFrom(choices_)};
        break;
    case 7: {
        const std::array<std::int32_t, 4> area{choices_.Length(), choices_.Length(), choices_.Length(),
                                               choices_.Length()};
        FlatCall{"GdipDrawImageRectI", Surface(), SmallImage(), area[0], area[1], area[2], area[3]};
        break;
    }
    case 8: {
        std::array<std::int32_t, 8> areas;
        std::generate(areas.begin(), areas.end(), [&] { return choices_.Length(); });
        FlatCall{"GdipDrawImageRectRectI",
                 Surface(),
                 SmallImage(),
                 areas[0],
                 areas[1],
                 areas[2],
                 areas[3],
                 areas[4],
                 areas[5],
                 areas[6],
                 areas[7],
                 choices_.Coin() ? Unit::Pixel : Unit::World,
                 static_cast<const void*>(nullptr),
                 static_cast<const void*>(nullptr),
                 static_cast<const void*>(nullptr)};
        break;
    }
    case 9: {
        std::array<FlatPoint, 3> corners;
        std::generate(corners.begin(), corners.end(), [&] {
            const std::int32_t x = choices_.Length();
            return FlatPoint{x, choices_.Length()};
        });
        FlatCall{"GdipDrawImagePointsI", Surface(), SmallImage(), static_cast<const FlatPoint*>(corners.data()),
                 std::int32_t{3}};
        break;
    }
    case 10:
        FlatCall{"GdipDrawEllipse",
                 Surface(),
                 OneOf(handles_.pens, choices_),
                 NumberFrom(choices_),
                 NumberFrom(choices_),
                 NumberFrom(choices_),
                 NumberFrom(choices_)};
        break;
    default: {
        const auto mode = std::int32_t{choices_.Byte()} % 10 - 1;
        FlatCall{"GdipSetInterpolationMode", Surface(), static_cast<InterpolationMode>(mode)};
        FlatCall{"GdipSetSmoothingMode", Surface(), static_cast<SmoothingMode>(mode)};
        break;
    }
    }
}

void Caller::CallForText(std::size_t which) {
    switch (which) {
    case 0:
        FlatCall{"GdipCreateFontFamilyFromName", choices_.Coin() ? u"Liberation Sans" : u"liberation MONO",
                 static_cast<void*>(nullptr), &PlaceIn(handles_.families, choices_)};
        break;
    case 1:
    case 2:
        FlatCall{"GdipCreateFont",
                 OneOf(handles_.families, choices_),
                 NumberFrom(choices_),
                 std::int32_t{choices_.Byte()} % 17,
                 static_cast<Unit>(choices_.Below(8)),
                 &PlaceIn(handles_.fonts, choices_)};
        break;
    case 3:
        FlatCall{"GdipCreateSolidFill", choices_.Of<Color>(), &PlaceIn(handles_.brushes, choices_)};
        FlatCall{"GdipCreatePen1", choices_.Of<Color>(), NumberFrom(choices_), Unit::World,
                 &PlaceIn(handles_.pens, choices_)};
        break;
    case 4:
        FlatCall{"GdipDeleteFont", OneOf(handles_.fonts, choices_)};
        FlatCall{"GdipDeleteFontFamily", OneOf(handles_.families, choices_)};
        break;
    case 5:
        FlatCall{"GdipDeletePen", OneOf(handles_.pens, choices_)};
        FlatCall{"GdipDeleteBrush", OneOf(handles_.brushes, choices_)};
        break;
    default: {
        std::array<char16_t, 9> text{};
        std::generate_n(text.begin(), 8, [&] { return choices_.Of<char16_t>(); });
        const FlatRectangle at{NumberFrom(choices_), NumberFrom(choices_), 0, 0};
        FlatCall{"GdipDrawString",
                 Surface(),
                 static_cast<const char16_t*>(text.data()),
                 std::int32_t{-1},
                 OneOf(handles_.fonts, choices_),
                 &at,
                 static_cast<const void*>(nullptr),
                 OneOf(handles_.brushes, choices_)};
        break;
    }
    }
}

void Caller::LockBits() {
    const FlatRect area{choices_.Length(), choices_.Length(), choices_.Byte() % 64, choices_.Byte() % 64};
    std::vector<std::uint8_t> pixels(std::size_t{64} * 64 * 4);
    BitmapData data{.width = 0, .height = 0, .stride = 64 * 4, .format = {}, .pixels = pixels.data(), .reserved = 0};
    if (choices_.Coin()) { // from the bottom
        data.pixels = pixels.data() + static_cast<std::size_t>(std::max(area.height - 1, 0)) * 64 * 4;
        data.stride = -data.stride;
    }
    GpImage* image = SmallImage();
    FlatCall{"GdipBitmapLockBits", image, &area, std::uint32_t{5}, Format(), &data};
    FlatCall{"GdipBitmapUnlockBits", image, &data};
}

void Caller::ReadProperties() {
    GpImage* image = Image();
    std::uint32_t bytes = 0;
    std::uint32_t count = 0;
    if (!FlatCall{"GdipGetPropertySize", image, &bytes, &count}.IsOk()) {
        return;
    }
    std::vector<std::uint8_t> block(std::max(bytes, 1u));
    std::vector<std::uint32_t> tags(std::max(count, 1u));
    fuzz::Require(FlatCall{"GdipGetAllPropertyItems", image, bytes, count, block.data()}.IsOk(),
                  "items fit the size that was told");
    fuzz::Require(FlatCall{"GdipGetPropertyIdList", image, count, tags.data()}.IsOk(), "tags can be listed");
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint32_t itemBytes = 0;
        fuzz::Require(FlatCall{"GdipGetPropertyItemSize", image, tags[i], &itemBytes}.IsOk() && itemBytes <= bytes,
                      "every item that is listed is there");
        FlatCall{"GdipGetPropertyItem", image, tags[i], itemBytes, block.data()};
    }
}

void Caller::SetProperty() {
    constexpr std::array<std::uint32_t, 8> Tags{0x010E, 0x0112, 0x8773, 0x9286, 0x02BC, 0x501B, 0x011A, 0x927C};
    const std::string value = choices_.Bytes(choices_.Byte() % 32);
    const std::uint32_t tag = choices_.Coin() ? Tags[choices_.Below(Tags.size())] : choices_.Of<std::uint32_t>();
    const PropertyItem item{tag, static_cast<std::uint32_t>(value.size()),
                            static_cast<std::uint16_t>(choices_.Below(14)), value.data()};
    FlatCall{"GdipSetPropertyItem", Image(), &item};
}

void Caller::Save() {
    const std::array codecs{&tests::BmpCodec(),  &tests::JpegCodec(), &tests::GifCodec(),
                            &tests::TiffCodec(), &tests::PngCodec(),  &tests::IcoCodec()};
    fuzz::MemoryStream target;
    FlatCall{"GdipSaveImageToStream", SmallImage(), static_cast<Stream*>(&target),
             &codecs[choices_.Below(codecs.size())]->classId, static_cast<const EncoderParameters*>(nullptr)};
    fuzz::Require(target.References() == 0, "a target is not kept");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    fuzz::Choices input(bytes, count);
    const std::string program = input.Bytes(input.Of<std::uint16_t>());
    fuzz::Choices choices(reinterpret_cast<const std::uint8_t*>(program.data()), program.size());
    Caller caller(choices, input.Rest());
    for (std::size_t calls = 0; calls < MostCalls && !choices.AtEnd(); ++calls) {
        caller.Call();
    }
    return 0;
}
