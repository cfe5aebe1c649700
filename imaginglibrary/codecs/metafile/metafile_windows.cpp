// EMF and placeable WMF files, read only: the system's own player draws them on white, a strip at a time.
#include "imaginglibrary/codecs/metafile/metafile_windows.h"

#include "imaginglibrary/core/bytes.h"
#include "imaginglibrary/core/limits.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>
#include <type_traits>
#include <vector>

namespace imaginglibrary {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t PlaceableHeaderBytes = 22;
constexpr double HundredthMillimetresPerInch = 2540;
constexpr double MillimetresPerInch = 25.4;

template <class Handle, auto Release> struct Releaser {
    void operator()(Handle handle) const { Release(handle); }
};
template <class Handle, auto Release> using Owned =
    std::unique_ptr<std::remove_pointer_t<Handle>, Releaser<Handle, Release>>;

using OwnedMetafile = Owned<HENHMETAFILE, DeleteEnhMetaFile>;
using OwnedContext = Owned<HDC, DeleteDC>;
using OwnedBitmap = Owned<HBITMAP, DeleteObject>;

enum class Kind { Enhanced, Placeable };

Result<OwnedMetafile> LoadMetafile(const InputFile& file, Kind kind, const PictureInfo& info) {
    const std::uint64_t size = file.Size();
    if (size > MaximumMetafileBytes) {
        return Status::OutOfMemory;
    }
    std::vector<BYTE> bytes(static_cast<std::size_t>(size));
    if (const Status status = file.ReadExactlyAt(0, bytes.data(), bytes.size()); status != Status::Ok) {
        return status;
    }
    HENHMETAFILE metafile = nullptr;
    if (kind == Kind::Enhanced) {
        metafile = SetEnhMetaFileBits(static_cast<UINT>(bytes.size()), bytes.data());
    } else {
        const auto extent = [](std::uint32_t pixels, double dotsPerInch) {
            return static_cast<LONG>(std::lround(pixels * HundredthMillimetresPerInch / dotsPerInch));
        };
        const METAFILEPICT frame{MM_ANISOTROPIC, extent(info.width, info.resolution.horizontal),
                                 extent(info.height, info.resolution.vertical), nullptr};
        metafile = SetWinMetaFileBits(static_cast<UINT>(bytes.size() - PlaceableHeaderBytes),
                                      bytes.data() + PlaceableHeaderBytes, nullptr, &frame);
    }
    if (metafile == nullptr) {
        return UndecodableContent;
    }
    return OwnedMetafile(metafile);
}

// Plays the whole metafile for each strip, shifted up by the rows already delivered.
class PlayedRows : public RowReader {
  public:
    PlayedRows(const PictureInfo& info, OwnedMetafile metafile)
        : width_(static_cast<int>(info.width)), height_(static_cast<int>(info.height)),
          stripRows_(std::clamp(StripBytes / (4 * width_), 1, height_)), metafile_(std::move(metafile)) {}

    ~PlayedRows() override {
        if (before_ != nullptr) {
            SelectObject(context_.get(), before_);
        }
    }

    Status Prepare() {
        BITMAPINFO layout{};
        layout.bmiHeader = {.biSize = sizeof(BITMAPINFOHEADER),
                            .biWidth = width_,
                            .biHeight = -stripRows_,
                            .biPlanes = 1,
                            .biBitCount = 32};
        void* bits = nullptr;
        context_.reset(CreateCompatibleDC(nullptr));
        bitmap_.reset(CreateDIBSection(context_.get(), &layout, DIB_RGB_COLORS, &bits, nullptr, 0));
        if (context_ == nullptr || bitmap_ == nullptr) {
            return Status::OutOfMemory;
        }
        before_ = SelectObject(context_.get(), bitmap_.get());
        pixels_ = static_cast<const std::uint8_t*>(bits);
        return Status::Ok;
    }

    Status ReadRow(std::uint8_t* row) override {
        if (next_ % stripRows_ == 0) {
            PlayStrip();
        }
        const std::size_t rowBytes = std::size_t{4} * static_cast<std::size_t>(width_);
        std::memcpy(row, pixels_ + rowBytes * static_cast<std::size_t>(next_++ % stripRows_), rowBytes);
        return Status::Ok;
    }

  private:
    static constexpr int StripBytes = 4 << 20;

    void PlayStrip() {
        const RECT strip{0, 0, width_, stripRows_};
        const RECT picture{0, -next_, width_, height_ - next_};
        FillRect(context_.get(), &strip, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        // A player that stops at a bad record has drawn what came before it.
        PlayEnhMetaFile(context_.get(), metafile_.get(), &picture);
        GdiFlush();
    }

    int width_;
    int height_;
    int stripRows_;
    OwnedMetafile metafile_;
    OwnedBitmap bitmap_;
    OwnedContext context_; // destroyed before the bitmap that was selected into it
    HGDIOBJ before_ = nullptr;
    const std::uint8_t* pixels_ = nullptr;
    int next_ = 0;
};

class MetafilePicture : public Decoder {
  public:
    MetafilePicture(std::shared_ptr<const InputFile> file, Kind kind, PictureInfo info)
        : file_(std::move(file)), kind_(kind), info_(std::move(info)) {}

    const PictureInfo& Info() const override { return info_; }

    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        auto metafile = LoadMetafile(*file_, kind_, info_);
        if (!metafile.Ok()) {
            return metafile.GetStatus();
        }
        auto rows = std::make_unique<PlayedRows>(info_, std::move(*metafile));
        if (const Status status = rows->Prepare(); status != Status::Ok) {
            return status;
        }
        return std::unique_ptr<RowReader>(std::move(rows));
    }

  private:
    std::shared_ptr<const InputFile> file_;
    Kind kind_;
    PictureInfo info_;
};

Result<std::unique_ptr<Decoder>> Open(std::shared_ptr<const InputFile> file, Kind kind, double width, double height,
                                      Resolution resolution) {
    if (!(width >= 1 && height >= 1 && width <= MaximumSide && height <= MaximumSide)) {
        return Status::InvalidParameter;
    }
    return std::unique_ptr<Decoder>(
        std::make_unique<MetafilePicture>(std::move(file), kind,
                                          PictureInfo{.width = static_cast<std::uint32_t>(std::lround(width)),
                                                      .height = static_cast<std::uint32_t>(std::lround(height)),
                                                      .format = PixelFormat::Rgb32,
                                                      .resolution = resolution}));
}

} // namespace

// The size is that of the frame on the device that the file was made for.
Result<std::unique_ptr<Decoder>> OpenEnhancedMetafile(std::shared_ptr<const InputFile> file) {
    ENHMETAHEADER header{};
    constexpr std::size_t ShortestHeaderBytes = 88;
    if (const Status status = file->ReadExactlyAt(0, &header, ShortestHeaderBytes); status != Status::Ok) {
        return status;
    }
    if (header.iType != EMR_HEADER || header.szlDevice.cx <= 0 || header.szlDevice.cy <= 0 ||
        header.szlMillimeters.cx <= 0 || header.szlMillimeters.cy <= 0) {
        return UndecodableContent;
    }
    const double horizontal = double(header.szlDevice.cx) / header.szlMillimeters.cx * MillimetresPerInch;
    const double vertical = double(header.szlDevice.cy) / header.szlMillimeters.cy * MillimetresPerInch;
    const double frameWidth = double(header.rclFrame.right) - header.rclFrame.left;
    const double frameHeight = double(header.rclFrame.bottom) - header.rclFrame.top;
    return Open(std::move(file), Kind::Enhanced, frameWidth * horizontal / HundredthMillimetresPerInch,
                frameHeight * vertical / HundredthMillimetresPerInch, {horizontal, vertical});
}

// The size is that of the bounds in the file's own units, of which the header says how many make an inch.
Result<std::unique_ptr<Decoder>> OpenPlaceableMetafile(std::shared_ptr<const InputFile> file) {
    std::array<std::uint8_t, PlaceableHeaderBytes> header;
    if (const Status status = file->ReadExactlyAt(0, header.data(), header.size()); status != Status::Ok) {
        return status;
    }
    const auto signedAt = [&](std::size_t offset) {
        return static_cast<double>(static_cast<std::int16_t>(LittleEndian16(&header[offset])));
    };
    const double unitsPerInch = LittleEndian16(&header[14]);
    if (unitsPerInch == 0) {
        return UndecodableContent;
    }
    return Open(std::move(file), Kind::Placeable, std::abs(signedAt(10) - signedAt(6)),
                std::abs(signedAt(12) - signedAt(8)), {unitsPerInch, unitsPerInch});
}

} // namespace imaginglibrary
