// The strips of a TIFF file that are compressed by LZW, beside the thread that makes the rows.
//
// Differences are taken of many bytes at once; this file is compiled with that asked for.
#include "imaginglibrary/codecs/tiff/tiffstrips.h"

#include "imaginglibrary/codecs/tiff/tifflzw.h"

#include <algorithm>
#include <new>
#include <utility>

namespace imaginglibrary {

namespace {

// One is filled while others are compressed.
constexpr std::size_t MostStripsUnderWay = 3;

void Subtract(const std::uint8_t* __restrict row, const std::uint8_t* __restrict before, std::size_t count,
              std::uint8_t* __restrict to) {
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = static_cast<std::uint8_t>(row[i] - before[i]);
    }
}

} // namespace

// Filled row by row, then done, then read.
class TiffStrip : public PieceOfWork {
  public:
    TiffStrip(const TiffStripForm& form, std::uint32_t rows) : form_(form) { rows_.reserve(rows * form.rowBytes); }

    void AddRow(const std::uint8_t* row) { rows_.insert(rows_.end(), row, row + form_.rowBytes); }
    bool IsFull() const { return rows_.size() == form_.rowBytes * form_.rowsPerStrip; }

    void Do() noexcept override {
        try {
            if (form_.hasDifferences) {
                TakeDifferences();
            }
            if (form_.isBlueFirst) {
                PutRedFirst();
            }
            CompressLzw(rows_, data_);
        } catch (const std::bad_alloc&) {
            status_ = Status::OutOfMemory;
        }
        rows_ = {}; // its memory is needed no longer
    }

    // Once done.
    Status GetStatus() const { return status_; }
    std::vector<std::uint8_t>& Data() { return data_; }

  private:
    void TakeDifferences() {
        std::vector<std::uint8_t> differences(rows_.size());
        for (std::size_t at = 0; at < rows_.size(); at += form_.rowBytes) {
            std::copy_n(&rows_[at], form_.samples, &differences[at]);
            Subtract(&rows_[at] + form_.samples, &rows_[at], form_.rowBytes - form_.samples,
                     &differences[at] + form_.samples);
        }
        rows_ = std::move(differences);
    }

    // Of whole pixels, or of their differences.
    void PutRedFirst() {
        for (std::size_t i = 0; i < rows_.size(); i += form_.samples) {
            std::swap(rows_[i], rows_[i + 2]);
        }
    }

    TiffStripForm form_;
    std::vector<std::uint8_t> rows_;
    std::vector<std::uint8_t> data_;
    Status status_ = Status::Ok;
};

TiffStrips::TiffStrips(const TiffStripForm& form, std::uint32_t height, TiffOutput& output)
    : form_(form), rowsLeft_(height), output_(output) {}

TiffStrips::~TiffStrips() = default;

Status TiffStrips::AddRow(const std::uint8_t* row) {
    if (strip_ == nullptr) {
        strip_ = std::make_unique<TiffStrip>(form_, std::min(form_.rowsPerStrip, rowsLeft_));
    }
    strip_->AddRow(row);
    --rowsLeft_;
    return strip_->IsFull() || rowsLeft_ == 0 ? EndStrip() : Status::Ok;
}

Status TiffStrips::EndStrip() {
    work_.Add(std::move(strip_));
    while (work_.Count() > (rowsLeft_ == 0 ? 0 : MostStripsUnderWay) || work_.IsFirstDone()) {
        if (const Status status = WriteFirst(); status != Status::Ok) {
            return status;
        }
    }
    return Status::Ok;
}

Status TiffStrips::WriteFirst() {
    const std::unique_ptr<PieceOfWork> piece = work_.TakeFirst();
    auto& strip = static_cast<TiffStrip&>(*piece);
    if (strip.GetStatus() != Status::Ok) {
        return strip.GetStatus();
    }
    const auto bytes = static_cast<tmsize_t>(strip.Data().size());
    const bool isWritten = TIFFWriteRawStrip(output_.Get(), written_++, strip.Data().data(), bytes) == bytes;
    return isWritten ? Status::Ok : output_.Failure();
}

} // namespace imaginglibrary
