// Writes an odd picture with odd items in the format LUMBRIX_FUZZED_FORMAT, and reads what became of it.
#include "fuzz/support/choices.h"
#include "fuzz/support/entry.h"
#include "fuzz/support/pixels.h"
#include "imaginglibrary/core/bitmap.h"
#include "tests/support/bytefiles.h"
#include "tests/support/codecs.h"

#include <array>
#include <cstring>

namespace {

using namespace imaginglibrary;

constexpr std::array Formats{PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Indexed8, PixelFormat::Rgb555,
                             PixelFormat::Rgb565,   PixelFormat::Argb1555, PixelFormat::Rgb24,    PixelFormat::Rgb32,
                             PixelFormat::Argb32,   PixelFormat::Pargb32,  PixelFormat::Rgb48};

constexpr std::array Resolutions{0.0, 1e-9, 0.5, 72.0, 96.0, 1200.0, 65536.0, 5e9, 1e300};

std::uint32_t SideFrom(fuzz::Choices& choices) {
    const std::uint8_t side = choices.Byte();
    return side < 0xF0 ? side % 40 + 1u : 1u << (side - 0xF0);
}

PictureInfo InfoFrom(fuzz::Choices& choices) {
    PictureInfo info{.width = SideFrom(choices), .height = SideFrom(choices)};
    info.width = std::min(info.width, 65535u);
    info.height = std::min(info.height, std::max(1u, 262144u / info.width));
    info.format = Formats[choices.Below(Formats.size())];
    info.resolution = {Resolutions[choices.Below(Resolutions.size())], Resolutions[choices.Below(Resolutions.size())]};
    if (IsIndexed(info.format)) {
        const std::size_t most = std::size_t{1} << BitsPerPixel(info.format);
        const bool isOpaque = choices.Coin();
        info.palette.resize(std::min<std::size_t>(choices.Byte(), most)); // an empty one too
        for (std::size_t i = 0; i < info.palette.size(); ++i) {
            info.palette[i] = static_cast<Color>(i * 0x01050B13u + choices.Byte()) | (isOpaque ? 0xFF000000 : 0);
        }
    }
    return info;
}

PropertyList PropertiesFrom(fuzz::Choices& choices) {
    constexpr std::array<std::uint32_t, 16> Tags{0x010E, 0x013B, 0x0112, 0x011A, 0x0128,  0x9003,    0x9286, 0x02BC,
                                                 0x83BB, 0x8649, 0x8773, 0x501B, 0x10102, 0x1009286, 0x5041, 0x0005};
    PropertyList properties;
    for (std::size_t count = choices.Below(6); count > 0; --count) {
        const std::uint32_t tag = choices.Coin() ? Tags[choices.Below(Tags.size())] : choices.Of<std::uint16_t>();
        const auto type = static_cast<PropertyType>(choices.Below(14));
        const std::string text = choices.Bytes(choices.Byte());
        properties.Set({tag, type, {text.begin(), text.end()}});
    }
    if (choices.Coin()) {
        const std::string block = choices.Bytes(choices.Byte());
        properties.SetSourceExif(std::make_shared<const std::vector<std::uint8_t>>(block.begin(), block.end()));
    }
    return properties;
}

// A picture that cannot be read beyond a row.
class BreakingPicture : public PixelSource {
  public:
    BreakingPicture(std::shared_ptr<const Bitmap> bitmap, std::uint32_t rows)
        : bitmap_(std::move(bitmap)), rows_(rows) {}

    const PictureInfo& Info() const override { return bitmap_->Info(); }

    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        auto rows = bitmap_->OpenRows();
        return std::unique_ptr<RowReader>(std::make_unique<Rows>(std::move(*rows), rows_));
    }

  private:
    class Rows : public RowReader {
      public:
        Rows(std::unique_ptr<RowReader> rows, std::uint32_t left) : rows_(std::move(rows)), left_(left) {}

        Status ReadRow(std::uint8_t* row) override {
            fuzz::Require(!isOver_, "a reader that failed is not asked again");
            isOver_ = left_ == 0;
            return left_-- == 0 ? UndecodableContent : rows_->ReadRow(row);
        }

      private:
        std::unique_ptr<RowReader> rows_;
        std::uint32_t left_;
        bool isOver_ = false;
    };

    std::shared_ptr<const Bitmap> bitmap_;
    std::uint32_t rows_;
};

std::shared_ptr<Bitmap> PictureFrom(const PictureInfo& info, const std::string& pixels) {
    auto made = Bitmap::Create(info);
    fuzz::Require(made.Ok(), "a picture of that size can be held");
    const std::size_t rowBytes = (*made)->RowBytes();
    std::size_t at = 0;
    for (std::uint32_t y = 0; y < info.height && !pixels.empty(); ++y) {
        for (std::size_t x = 0; x < rowBytes; ++x, ++at) {
            (*made)->Row(y)[x] = static_cast<std::uint8_t>(pixels[at % pixels.size()] + at / pixels.size() * 7);
        }
    }
    return *made;
}

void CheckWritten(const Codec& codec, const PictureInfo& info, const std::string& file) {
    const auto read = codec.open(std::make_shared<tests::MemoryInput>(file));
    fuzz::Require(read.Ok(), "what is written can be opened");
    fuzz::Require((*read)->Info().width == info.width && (*read)->Info().height == info.height,
                  "what is written has its size");
    fuzz::Require(fuzz::ReadSomeRows(**read), "what is written can be decoded");
    fuzz::Require((*read)->Damage() == nullptr || !(*read)->Damage()->IsMet(), "what is written is whole");
}

} // namespace

void fuzz::Take(const std::uint8_t* bytes, std::size_t count) {
    static const Codec& codec = tests::CodecOf(LUMBRIX_FUZZED_FORMAT);
    fuzz::Choices choices(bytes, count);
    const PictureInfo info = InfoFrom(choices);
    const WriteOptions options{.quality = static_cast<int>(choices.Below(101)),
                               .compression = static_cast<Compression>(choices.Below(8))};
    const std::uint8_t fault = choices.Byte(); // 0: none, odd: the disk is full, even: the picture breaks
    const PropertyList properties = PropertiesFrom(choices);
    const auto picture = PictureFrom(info, choices.Rest());

    const bool isDiskFull = fault % 2 == 1;
    tests::MemoryOutput file(isDiskFull ? std::size_t{fault} * 4 : std::string().max_size());
    Status status = Status::Ok;
    if (fault != 0 && !isDiskFull) {
        status = codec.write(BreakingPicture(picture, (fault / 2) % (info.height + 1)), properties, options, file);
    } else {
        status = codec.write(*picture, properties, options, file);
    }
    if (status == Status::Ok && file.Commit() == Status::Ok) {
        CheckWritten(codec, info, file.Bytes());
    }
    fuzz::Require(status == Status::Ok || fault != 0 || status == Status::InvalidParameter,
                  "a sound picture is written, or refused for its options");
}
