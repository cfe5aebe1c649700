// Reads PNG files of every colour type and depth.
#include "imaginglibrary/codecs/png/pngreader.h"

#include "imaginglibrary/codecs/metadata/exifresolution.h"
#include "imaginglibrary/codecs/png/pngpixels.h"
#include "imaginglibrary/codecs/png/pngpropertyreader.h"
#include "imaginglibrary/codecs/png/pngrawrows.h"
#include "imaginglibrary/codecs/png/pngstream.h"
#include "imaginglibrary/core/bitmap.h"
#include "imaginglibrary/core/limits.h"

#include <optional>
#include <utility>

namespace imaginglibrary {

namespace {

// Of a picture that is not interlaced. Whatever is sound is read by PngRawRows; from the first row where it fails,
// libpng goes on, which until then has only read the header.
class PngRows : public RowReader {
  public:
    // `stream` reads `file` and has been started; `layout` is what it said before.
    PngRows(std::unique_ptr<PngStream> stream, std::shared_ptr<const InputFile> file, const PngLayout& layout)
        : stream_(std::move(stream)), pixels_(layout),
          rawRows_(std::in_place, std::move(file), stream_->ImageDataOffset(), pixels_.RowForm(), layout.height) {}

    Status ReadRow(std::uint8_t* row) override {
        if (rawRows_) {
            if (const std::uint8_t* const raw = rawRows_->Next(); raw != nullptr) {
                pixels_.Convert(raw, row);
                ++rowsRead_;
                return Status::Ok;
            }
            rawRows_.reset();
            if (const Status status = PassOver(rowsRead_, row); status != Status::Ok) {
                return status;
            }
        }
        return stream_->ReadRow(row);
    }

  private:
    Status PassOver(std::uint32_t count, std::uint8_t* row) {
        for (std::uint32_t y = 0; y < count; ++y) {
            if (const Status status = stream_->ReadRow(row); status != Status::Ok) {
                return status;
            }
        }
        return Status::Ok;
    }

    std::unique_ptr<PngStream> stream_;
    PngPixels pixels_;
    std::optional<PngRawRows> rawRows_;
    std::uint32_t rowsRead_ = 0;
};

// Each pass fills in some pixels of the whole picture.
Result<std::unique_ptr<RowReader>> ReadPasses(PngStream& stream, int passes, const PictureInfo& info,
                                              std::uint64_t fileBytes) {
    if (std::uint64_t{BytesPerRow(info.format, info.width)} * info.height > MaximumPictureBytesOf(fileBytes)) {
        return Status::OutOfMemory;
    }
    auto bitmap = Bitmap::Create(info);
    if (!bitmap.Ok()) {
        return bitmap.GetStatus();
    }
    for (int pass = 0; pass < passes; ++pass) {
        for (std::uint32_t y = 0; y < info.height; ++y) {
            if (const Status status = stream.ReadRow((*bitmap)->Row(y)); status != Status::Ok) {
                return status;
            }
        }
    }
    return (*bitmap)->OpenRows();
}

class PngPicture : public Decoder {
  public:
    PngPicture(std::shared_ptr<const InputFile> file, PictureInfo info, PropertyList properties)
        : file_(std::move(file)), info_(std::move(info)) {
        properties_ = std::move(properties);
    }

    const PictureInfo& Info() const override { return info_; }

    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        auto stream = PngStream::Open(file_);
        if (!stream.Ok()) {
            return stream.GetStatus();
        }
        // The file may have been changed under us, and rows must fit the caller's buffer whatever it says now.
        const PictureInfo now = (*stream)->Info();
        if (now.width != info_.width || now.height != info_.height || now.format != info_.format) {
            return UndecodableContent;
        }
        const PngLayout layout = (*stream)->Layout();
        const auto passes = (*stream)->Start();
        if (!passes.Ok()) {
            return passes.GetStatus();
        }
        if (*passes > 1) {
            return ReadPasses(**stream, *passes, info_, file_->Size());
        }
        return std::unique_ptr<RowReader>(std::make_unique<PngRows>(std::move(*stream), file_, layout));
    }

  private:
    std::shared_ptr<const InputFile> file_;
    PictureInfo info_;
};

} // namespace

Result<std::unique_ptr<Decoder>> OpenPng(std::shared_ptr<const InputFile> file) {
    PngPropertyReader properties;
    auto stream = PngStream::Open(file, &properties);
    if (!stream.Ok()) {
        return stream.GetStatus();
    }
    PropertyList items = properties.MakeProperties((*stream)->Dots());
    PictureInfo info = (*stream)->Info();
    info.resolution = ResolutionOr(info.resolution, items);
    return std::unique_ptr<Decoder>(std::make_unique<PngPicture>(std::move(file), std::move(info), std::move(items)));
}

} // namespace imaginglibrary
