// Reads the first image of a GIF file.
#include "imaginglibrary/codecs/gif/gifreader.h"

#include "imaginglibrary/codecs/gif/gifcontents.h"
#include "imaginglibrary/codecs/gif/gifstream.h"
#include "imaginglibrary/core/limits.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr std::size_t FullPalette = 256;
constexpr Color Nothing = 0x00000000;
constexpr std::uint64_t MuchLarger = 4;

// How the indices of the file become pixels of the picture.
struct GifLayout {
    PictureInfo info;
    std::array<Color, FullPalette> colors; // of every index; an index without an entry is black
    std::uint8_t outside = 0;              // index of what the image does not cover, for Indexed8
};

bool CoversScreen(const GifHeader& header, std::uint32_t width, std::uint32_t height) {
    return header.left == 0 && header.top == 0 && header.width >= width && header.height >= height;
}

bool IsAcceptableScreen(const PictureInfo& screen, const GifHeader& image) {
    const std::uint64_t pixels = std::uint64_t{screen.width} * screen.height;
    return IsAcceptableSize(screen.width, screen.height) &&
           (pixels <= MaximumEmptyScreenPixels || pixels <= MuchLarger * image.width * image.height);
}

GifLayout LayoutOf(const GifHeader& header, bool hasMoreImages) {
    GifLayout layout{.info = {}, .colors = {}};
    PictureInfo& info = layout.info;
    info.width = header.screenWidth != 0 ? header.screenWidth : header.width;
    info.height = header.screenHeight != 0 ? header.screenHeight : header.height;
    info.format = hasMoreImages ? PixelFormat::Argb32 : PixelFormat::Indexed8;

    Palette palette = header.palette.empty() ? GreyPalette(FullPalette) : header.palette;
    if (header.transparent) {
        const auto index = static_cast<std::size_t>(*header.transparent);
        palette.resize(std::max(palette.size(), index + 1), MakeColor(0, 0, 0));
        palette[index] &= 0x00FFFFFF;
        layout.outside = static_cast<std::uint8_t>(index);
    } else if (!CoversScreen(header, info.width, info.height)) {
        if (palette.size() < FullPalette) {
            layout.outside = static_cast<std::uint8_t>(palette.size());
            palette.push_back(Nothing);
        } else {
            info.format = PixelFormat::Argb32;
        }
    }
    layout.colors.fill(MakeColor(0, 0, 0));
    std::copy(palette.begin(), palette.end(), layout.colors.begin());
    if (info.format == PixelFormat::Indexed8) {
        info.palette = std::move(palette);
    }
    return layout;
}

// Gives the lines of an image from the top, whatever their order in the file.
class GifLines {
  public:
    GifLines(std::unique_ptr<GifStream> stream, std::shared_ptr<FileDamage> damage)
        : stream_(std::move(stream)), damage_(std::move(damage)) {}

    const GifHeader& Header() const { return stream_->Header(); }

    // Gives back how many indices the line has.
    Result<std::size_t> ReadLine(std::uint8_t* indices) {
        if (!Header().isInterlaced) {
            return ReadNext(indices);
        }
        if (next_ == 0) {
            if (const Status status = ReadAllLines(); status != Status::Ok) {
                return status;
            }
        }
        auto& [line, count] = lines_[next_++];
        std::copy_n(line.get(), count, indices);
        line.reset();
        return count;
    }

  private:
    struct Line {
        std::unique_ptr<std::uint8_t[]> indices; // null where there are none
        std::size_t count = 0;
    };

    // A line that is short, or there is nothing of, is put up with where the file itself says that its data end there.
    Result<std::size_t> ReadNext(std::uint8_t* indices) {
        const std::size_t count = stream_->ReadLine(indices);
        pixels_ += count;
        if (count < Header().width) {
            if (stream_->GetEnd() != GifPixels::End::Marked || !HasEnough() || damage_->Meet() != Status::Ok) {
                return stream_->WhyNoMore();
            }
        }
        return count;
    }

    // Some bytes must not cost an hour.
    bool HasEnough() const {
        const std::uint64_t promised = std::uint64_t{Header().width} * Header().height;
        return pixels_ > 0 && (promised <= MaximumEmptyScreenPixels || promised <= MuchLarger * pixels_);
    }

    // Takes memory only as the data comes in, so that a large promise in a small file costs nothing.
    Status ReadAllLines() {
        const std::uint32_t width = Header().width;
        const std::uint32_t height = Header().height;
        if (std::uint64_t{width} * height > MaximumPictureBytesOf(stream_->FileBytes())) {
            return Status::OutOfMemory;
        }
        lines_.resize(height);
        constexpr struct { std::uint32_t first, step; } Passes[] = {{0, 8}, {4, 8}, {2, 4}, {1, 2}};
        for (const auto& pass : Passes) {
            for (std::uint32_t y = pass.first; y < height; y += pass.step) {
                lines_[y].indices = std::make_unique<std::uint8_t[]>(width);
                const auto count = ReadNext(lines_[y].indices.get());
                if (!count.Ok()) {
                    return count.GetStatus();
                }
                lines_[y].count = *count;
                if (*count == 0) {
                    lines_[y].indices.reset();
                }
            }
        }
        return Status::Ok;
    }

    std::unique_ptr<GifStream> stream_;
    std::shared_ptr<FileDamage> damage_;
    std::uint64_t pixels_ = 0; // that were read
    std::vector<Line> lines_;
    std::uint32_t next_ = 0;
};

class GifRows : public RowReader {
  public:
    GifRows(std::shared_ptr<const GifLayout> layout, std::unique_ptr<GifStream> stream,
            std::shared_ptr<FileDamage> damage)
        : layout_(std::move(layout)), lines_(std::move(stream), std::move(damage)), line_(lines_.Header().width) {}

    Status ReadRow(std::uint8_t* row) override {
        const GifHeader& image = lines_.Header();
        const std::uint32_t y = y_++;
        FillOutside(row);
        if (y < image.top || y - image.top >= image.height) {
            return Status::Ok;
        }
        const auto count = lines_.ReadLine(line_.data());
        const std::uint32_t width = layout_->info.width;
        if (!count.Ok() || image.left >= width) {
            return count.GetStatus();
        }
        PlaceLine(row, image.left, std::min(static_cast<std::uint32_t>(*count), width - image.left));
        return Status::Ok;
    }

  private:
    void FillOutside(std::uint8_t* row) const {
        const bool isIndexed = layout_->info.format == PixelFormat::Indexed8;
        std::memset(row, isIndexed ? layout_->outside : 0, BytesPerRow(layout_->info.format, layout_->info.width));
    }

    void PlaceLine(std::uint8_t* row, std::uint32_t left, std::uint32_t count) const {
        if (layout_->info.format == PixelFormat::Indexed8) {
            std::memcpy(row + left, line_.data(), count);
            return;
        }
        std::uint8_t* to = row + std::size_t{left} * 4;
        for (std::uint32_t x = 0; x < count; ++x, to += 4) {
            const Color color = layout_->colors[line_[x]];
            to[0] = BlueOf(color);
            to[1] = GreenOf(color);
            to[2] = RedOf(color);
            to[3] = AlphaOf(color);
        }
    }

    std::shared_ptr<const GifLayout> layout_;
    GifLines lines_;
    std::vector<std::uint8_t> line_;
    std::uint32_t y_ = 0;
};

class GifDecoder : public Decoder {
  public:
    GifDecoder(std::shared_ptr<const InputFile> file, GifLayout layout, PropertyList properties)
        : file_(std::move(file)), layout_(std::make_shared<const GifLayout>(std::move(layout))) {
        properties_ = std::move(properties);
    }

    const PictureInfo& Info() const override { return layout_->info; }

    std::shared_ptr<FileDamage> Damage() const override { return damage_; }

    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        auto stream = GifStream::Open(file_);
        if (!stream.Ok()) {
            return stream.GetStatus();
        }
        return std::unique_ptr<RowReader>(std::make_unique<GifRows>(layout_, std::move(*stream), damage_));
    }

  private:
    std::shared_ptr<const InputFile> file_;
    std::shared_ptr<const GifLayout> layout_;
    std::shared_ptr<FileDamage> damage_ = std::make_shared<FileDamage>();
};

} // namespace

Result<std::unique_ptr<Decoder>> OpenGif(std::shared_ptr<const InputFile> file) {
    auto stream = GifStream::Open(file);
    if (!stream.Ok()) {
        return stream.GetStatus();
    }
    auto contents = ReadGifContents(file);
    if (!contents.Ok()) {
        return contents.GetStatus();
    }
    const GifHeader& header = (*stream)->Header();
    GifLayout layout = LayoutOf(header, contents->images > 1);
    if (!IsAcceptableScreen(layout.info, header)) {
        return Status::InvalidParameter;
    }
    return std::unique_ptr<Decoder>(
        std::make_unique<GifDecoder>(std::move(file), std::move(layout), std::move(contents->properties)));
}

} // namespace imaginglibrary
