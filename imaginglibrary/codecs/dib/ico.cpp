// ICO files, read only: the largest picture of the file, the deepest of that size, with its mask as alpha.
#include "imaginglibrary/codecs/dib/ico.h"

#include "imaginglibrary/codecs/dib/dib.h"
#include "imaginglibrary/codecs/png/pngreader.h"
#include "imaginglibrary/core/bitmap.h"
#include "imaginglibrary/core/bytes.h"
#include "imaginglibrary/core/limits.h"
#include "imaginglibrary/core/packing.h"
#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/core/rowpump.h"

#include <array>
#include <optional>
#include <tuple>
#include <vector>

namespace imaginglibrary {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t DirectoryBytes = 6;
constexpr std::size_t EntryBytes = 16;
constexpr std::string_view PngStart = "\x89PNG\r\n\x1a\n"sv;

struct Entry {
    std::uint32_t width;
    std::uint32_t height;
    unsigned bitsPerPixel;
    std::uint32_t bytes;
    std::uint32_t offset;
};

Entry ParseEntry(const std::uint8_t* bytes) {
    const auto side = [](std::uint8_t value) { return value == 0 ? 256u : value; };
    return {side(bytes[0]), side(bytes[1]), LittleEndian16(bytes + 6), LittleEndian32(bytes + 8),
            LittleEndian32(bytes + 12)};
}

Result<Entry> BestEntry(const InputFile& file) {
    std::array<std::uint8_t, DirectoryBytes> directory;
    if (const Status status = file.ReadExactlyAt(0, directory.data(), directory.size()); status != Status::Ok) {
        return status;
    }
    const std::size_t count = LittleEndian16(&directory[4]);
    std::vector<std::uint8_t> bytes(count * EntryBytes);
    if (const Status status = file.ReadExactlyAt(DirectoryBytes, bytes.data(), bytes.size()); status != Status::Ok) {
        return status;
    }
    const auto rank = [](const Entry& entry) { return std::tuple(entry.width * entry.height, entry.bitsPerPixel); };
    std::optional<Entry> best;
    for (std::size_t i = 0; i < count; ++i) {
        const Entry entry = ParseEntry(&bytes[i * EntryBytes]);
        if (!best || rank(entry) > rank(*best)) {
            best = entry;
        }
    }
    if (!best) {
        return UndecodableContent;
    }
    return *best;
}

// A part of a file as a file of its own, for a picture that lies inside another.
class FileSection : public InputFile {
  public:
    FileSection(std::shared_ptr<const InputFile> file, std::uint64_t start, std::uint64_t size)
        : file_(std::move(file)), start_(start), size_(size) {}

    std::uint64_t Size() const override { return size_; }

    Result<std::size_t> ReadAt(std::uint64_t offset, void* buffer, std::size_t count) const override {
        if (offset >= size_) {
            return std::size_t{0};
        }
        return file_->ReadAt(start_ + offset, buffer,
                             static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - offset)));
    }

  private:
    std::shared_ptr<const InputFile> file_;
    std::uint64_t start_;
    std::uint64_t size_;
};

bool HasAnyAlpha(const std::uint8_t* row, std::uint32_t width) {
    for (std::size_t x = 0; x < width; ++x) {
        if (row[4 * x + 3] != 0) {
            return true;
        }
    }
    return false;
}

// A device-independent bitmap with a one-bit mask behind it; the header counts the rows of both.
class IconPicture : public Decoder {
  public:
    static Result<std::unique_ptr<Decoder>> Open(std::shared_ptr<const InputFile> file, std::uint64_t offset) {
        auto dib = ReadDibHeader(*file, offset);
        if (!dib.Ok()) {
            return dib.GetStatus();
        }
        dib->height /= 2;
        if (dib->height == 0 || dib->compression == DibCompression::Rle4 || dib->compression == DibCompression::Rle8) {
            return UndecodableContent;
        }
        return std::unique_ptr<Decoder>(new IconPicture(std::move(file), std::move(*dib)));
    }

    const PictureInfo& Info() const override { return info_; }

    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        auto colors = OpenDib(file_, dib_, dib_.endOfPalette);
        if (!colors.Ok()) {
            return colors.GetStatus();
        }
        if (std::uint64_t{BytesPerRow(info_.format, info_.width)} * info_.height >
            MaximumPictureBytesOf(file_->Size())) {
            return Status::OutOfMemory;
        }
        auto bitmap = Bitmap::Create(info_);
        if (!bitmap.Ok()) {
            return bitmap.GetStatus();
        }
        const Status status = dib_.bitsPerPixel == 32 ? ReadDeep(**colors, **bitmap) : ReadMasked(**colors, **bitmap);
        if (status != Status::Ok) {
            return status;
        }
        return (*bitmap)->OpenRows();
    }

  private:
    IconPicture(std::shared_ptr<const InputFile> file, Dib dib)
        : file_(std::move(file)), dib_(std::move(dib)), info_{.width = dib_.width,
                                                              .height = dib_.height,
                                                              .format = PixelFormat::Argb32,
                                                              .palette = {},
                                                              .resolution = {}} {}

    // 32-bit pixels bring their alpha; where it is zero throughout, the mask counts.
    Status ReadDeep(const PixelSource& colors, Bitmap& bitmap) const {
        bool hasAlpha = false;
        const Status status = PumpRows(
            colors.OpenRows(), info_.height, [&](std::uint32_t y) { return bitmap.Row(y); },
            [&](std::uint32_t, const std::uint8_t* row) {
                hasAlpha = hasAlpha || HasAnyAlpha(row, info_.width);
                return Status::Ok;
            });
        if (status != Status::Ok) {
            return status;
        }
        if (hasAlpha) {
            return Status::Ok;
        }
        MakeOpaque(bitmap);
        return ApplyMask(bitmap);
    }

    Status ReadMasked(const PixelSource& colors, Bitmap& bitmap) const {
        const Status status = ReadRowsInto(OpenRowsAs(colors, PixelFormat::Argb32), info_.height,
                                           [&](std::uint32_t y) { return bitmap.Row(y); });
        return status == Status::Ok ? ApplyMask(bitmap) : status;
    }

    void MakeOpaque(Bitmap& bitmap) const {
        for (std::uint32_t y = 0; y < info_.height; ++y) {
            for (std::size_t x = 0; x < info_.width; ++x) {
                bitmap.Row(y)[4 * x + 3] = 255;
            }
        }
    }

    // A set bit of the mask is a hole. Icons cut off before their mask count as opaque.
    Status ApplyMask(Bitmap& bitmap) const {
        Dib mask{.width = dib_.width, .height = dib_.height, .topDown = dib_.topDown, .bitsPerPixel = 1};
        const std::uint64_t start = dib_.endOfPalette + DibStride(dib_.width, dib_.bitsPerPixel) * dib_.height;
        auto holes = OpenDib(file_, mask, start);
        const auto makeHoles = [&](std::uint32_t y, const std::uint8_t* row) {
            for (std::size_t x = 0; x < info_.width; ++x) {
                if (PackedAt(row, x, 1) != 0) {
                    bitmap.Row(y)[4 * x + 3] = 0;
                }
            }
            return Status::Ok;
        };
        ForEachRow((*holes)->OpenRows(), BytesPerRow(PixelFormat::Indexed1, info_.width), info_.height, makeHoles);
        return Status::Ok;
    }

    std::shared_ptr<const InputFile> file_;
    Dib dib_;
    PictureInfo info_;
};

// A PNG inside an icon, shown as true colour with alpha like every icon.
class PngIcon : public Decoder {
  public:
    explicit PngIcon(std::unique_ptr<PixelSource> picture) : picture_(std::move(picture)), info_(picture_->Info()) {
        info_.resolution = {};
    }

    const PictureInfo& Info() const override { return info_; }
    Result<std::unique_ptr<RowReader>> OpenRows() const override { return picture_->OpenRows(); }

  private:
    std::unique_ptr<PixelSource> picture_;
    PictureInfo info_;
};

} // namespace

Result<std::unique_ptr<Decoder>> OpenIco(std::shared_ptr<const InputFile> file) {
    const auto entry = BestEntry(*file);
    if (!entry.Ok()) {
        return entry.GetStatus();
    }
    std::array<char, 8> start;
    if (const Status status = file->ReadExactlyAt(entry->offset, start.data(), start.size()); status != Status::Ok) {
        return status;
    }
    if (std::string_view(start.data(), start.size()) != PngStart) {
        return IconPicture::Open(std::move(file), entry->offset);
    }
    auto png = OpenPng(std::make_shared<FileSection>(file, entry->offset, entry->bytes));
    if (!png.Ok()) {
        return png.GetStatus();
    }
    return std::unique_ptr<Decoder>(std::make_unique<PngIcon>(ConvertedTo(std::move(*png), PixelFormat::Argb32)));
}

} // namespace imaginglibrary
