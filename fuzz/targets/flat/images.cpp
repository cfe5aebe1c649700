// What a caller does with images.
#include "fuzz/targets/flat/caller.h"
#include "imaginglibrary/flat/extensions.h"
#include "tests/support/codecs.h"

namespace fuzz {

void Caller::Load(const char* function) {
    streams_.emplace_back(file_);
    FlatCall{function, static_cast<Stream*>(&streams_.back()), &NewImage()};
}

void Caller::CallOnImage(std::size_t which) {
    switch (which) {
    case 0:
    case 1:
        Load("GdipLoadImageFromStream");
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
        Save(nullptr);
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
    Require(FlatCall{"GdipGetAllPropertyItems", image, bytes, count, block.data()}.IsOk(),
            "items fit the size that was told");
    Require(FlatCall{"GdipGetPropertyIdList", image, count, tags.data()}.IsOk(), "tags can be listed");
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint32_t itemBytes = 0;
        Require(FlatCall{"GdipGetPropertyItemSize", image, tags[i], &itemBytes}.IsOk() && itemBytes <= bytes,
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

void Caller::Save(const EncoderParameters* parameters) {
    const std::array codecs{&tests::BmpCodec(),  &tests::JpegCodec(), &tests::GifCodec(),
                            &tests::TiffCodec(), &tests::PngCodec(),  &tests::IcoCodec()};
    MemoryStream target;
    FlatCall{"GdipSaveImageToStream", SmallImage(), static_cast<Stream*>(&target),
             &codecs[choices_.Below(codecs.size())]->classId, parameters};
    Require(target.References() == 0, "a target is not kept");
}

void Caller::SaveWithParameters() {
    // The quality, the compression, and what nobody knows.
    constexpr std::array Names{Guid{0x1D5BE4B5, 0xFA4A, 0x452D, {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB}},
                               Guid{0xE09D739D, 0xCCD4, 0x44EE, {0x8E, 0xBA, 0x3F, 0xBF, 0x8B, 0xE4, 0xFC, 0x58}},
                               Guid{}};
    const std::uint32_t own = choices_.Coin() ? 0x10000 : 0; // where our own numbers begin
    std::uint32_t number = own + choices_.Byte() % 104;
    EncoderParameters parameters{.count = 1, .parameter = {}};
    parameters.parameter[0] = {Names[choices_.Below(Names.size())], choices_.Below(8) == 0 ? 2u : 1u,
                               choices_.Below(8) == 0 ? 3u : 4u, choices_.Below(8) == 0 ? nullptr : &number};
    Save(&parameters);
}

void Caller::ListEncoders() {
    std::uint32_t count = 0;
    std::uint32_t bytes = 0;
    FlatCall{"GdipGetImageEncodersSize", &count, &bytes};
    Require(count > 0 && bytes >= count * sizeof(ImageCodecInfo), "there are encoders");
    std::vector<ImageCodecInfo> list(bytes / sizeof(ImageCodecInfo) + 1);
    const bool isAsTold = choices_.Coin();
    const FlatCall listed{"GdipGetImageEncoders", isAsTold ? count : choices_.Byte(), bytes, list.data()};
    Require(listed.IsOk() || !isAsTold, "encoders are listed in the memory that was told");
}

void Caller::Ask() {
    GpImage* image = Image();
    PixelFormat format{};
    FlatCall{"GdipGetImagePixelFormat", image, &format};
    std::uint32_t count = 0;
    FlatCall{"GdipGetPropertyCount", image, &count};
    std::int32_t isDamaged = 0;
    FlatCall{"ImagingGetImageDamage", image, &isDamaged};
    GpGraphics* surface = Surface();
    InterpolationMode interpolation{};
    FlatCall{"GdipGetInterpolationMode", surface, &interpolation};
    SmoothingMode smoothing{};
    FlatCall{"GdipGetSmoothingMode", surface, &smoothing};
}

// Half of the watchers stop what they watch.
void Caller::Watch() {
    const ImageWatcher watcher = [](void* context, std::uint32_t rowsDone, std::uint32_t rows) -> std::int32_t {
        Require(rowsDone >= 1 && rowsDone <= rows, "the rows that were read are some of all");
        return context == nullptr || rowsDone < rows / 2 ? 1 : 0;
    };
    GpImage* image = Image();
    void* context = choices_.Coin() ? this : nullptr;
    FlatCall{"ImagingWatchImage", image, choices_.Below(4) == 0 ? nullptr : watcher, context};
}

void Caller::CallBesides(std::size_t which) {
    switch (which) {
    case 0:
        ListEncoders();
        break;
    case 1:
        Ask();
        break;
    case 2:
        Load("GdipLoadImageFromStreamICM");
        break;
    case 3:
        Load("GdipCreateBitmapFromStream");
        break;
    case 4:
        SaveWithParameters();
        break;
    default:
        Watch();
        break;
    }
}

} // namespace fuzz
