// The image data of a PNG file: rows made into the contents of its IDAT chunks.
#include "imaginglibrary/codecs/png/pngimagedata.h"

#include <algorithm>

#include <zlib.h>

namespace imaginglibrary {

namespace {

// Large enough to be worth compressing on its own, small enough for a few to be under way.
constexpr std::size_t BandBytes = 1 << 19;

// One is filled while others are compressed.
constexpr std::size_t MostBandsUnderWay = 3;

// That of zlib's streams: deflate, a window of 32 KiB, ordinary effort.
constexpr std::uint8_t StreamHeader[] = {0x78, 0x9C};

} // namespace

PngImageData::PngImageData(const PngRowForm& form, std::uint32_t height, std::optional<Effort> effort, Sink sink)
    : form_(form), rowsLeft_(height), rowsOfBand_(std::max<std::size_t>(BandBytes / form.rowBytes, 1)), effort_(effort),
      sink_(std::move(sink)), before_{std::vector<std::uint8_t>(form.rowBytes), {}} {}

std::uint8_t* PngImageData::NextRow() {
    if (band_ == nullptr) {
        band_ = std::make_unique<PngBand>(form_, std::min<std::size_t>(rowsOfBand_, rowsLeft_), std::move(before_));
    }
    return band_->AddRow();
}

Status PngImageData::EndRow() {
    --rowsLeft_;
    return band_->IsFull() ? EndBand() : Status::Ok;
}

Status PngImageData::EndBand() {
    band_->Prepare(rowsLeft_ == 0 ? Band::IsLast : Band::GoesOn, effort_);
    if (rowsLeft_ != 0) {
        before_ = band_->ForTheNext();
    }
    work_.Add(std::move(band_));
    while (work_.Count() > (rowsLeft_ == 0 ? 0 : MostBandsUnderWay) || work_.IsFirstDone()) {
        if (const Status status = WriteFirst(); status != Status::Ok) {
            return status;
        }
    }
    return Status::Ok;
}

// A chunk for each band; the first begins with the stream's header, the last ends with its checksum.
Status PngImageData::WriteFirst() {
    const std::unique_ptr<PieceOfWork> piece = work_.TakeFirst();
    const auto& band = static_cast<const PngBand&>(*piece);
    if (band.GetStatus() != Status::Ok) {
        return band.GetStatus();
    }
    chunk_.clear();
    if (!hasBegun_) {
        chunk_.assign(std::begin(StreamHeader), std::end(StreamHeader));
        hasBegun_ = true;
    }
    chunk_.insert(chunk_.end(), band.Data().begin(), band.Data().end());
    checksum_ = static_cast<std::uint32_t>(
        adler32_combine(checksum_, band.Checksum(), static_cast<z_off_t>(band.FilteredBytes())));
    if (rowsLeft_ == 0 && work_.Count() == 0) {
        for (const int shift : {24, 16, 8, 0}) {
            chunk_.push_back(static_cast<std::uint8_t>(checksum_ >> shift));
        }
    }
    return sink_(chunk_);
}

} // namespace imaginglibrary
