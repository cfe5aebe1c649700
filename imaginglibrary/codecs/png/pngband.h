// A band of a PNG picture: some rows, filtered and compressed on their own.
#pragma once

#include "imaginglibrary/codecs/png/pngdeflate.h"
#include "imaginglibrary/codecs/png/pngfilter.h"
#include "imaginglibrary/core/status.h"
#include "imaginglibrary/operations/orderedwork.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace imaginglibrary {

// Filled row by row, then done, then read.
class PngBand : public PieceOfWork {
  public:
    // What a band leaves to the next: its last row as it is, zeros above the first band, and the last of its filtered
    // bytes, which deflate data can refer to.
    struct Remains {
        std::vector<std::uint8_t> row;
        std::vector<std::uint8_t> filtered;
    };

    PngBand(const PngRowForm& form, std::size_t rows, Remains before);

    // Where the next row goes, in the bytes of the file, unfiltered. There must be room for one.
    std::uint8_t* AddRow();
    bool IsFull() const { return rowCount_ * form_.rowBytes == rows_.size(); }

    // Chooses how to filter and, without an effort, how to compress. All rows must be there.
    void Prepare(Band band, std::optional<Effort> effort);
    Remains ForTheNext() const;

    // Behind Prepare.
    void Do() noexcept override;

    // Once done: Ok or OutOfMemory, the deflate data, and the checksum and number of the bytes that they stand for.
    Status GetStatus() const { return status_; }
    const std::vector<std::uint8_t>& Data() const { return data_; }
    std::uint32_t Checksum() const { return checksum_; }
    std::size_t FilteredBytes() const { return rowCount_ * (1 + form_.rowBytes); }

  private:
    // What suits the rows best, judged by some of them.
    struct Choice {
        PngFilter filter = PngFilter::None;
        Effort effort = Effort::Quick;
    };

    void Compress();
    Choice Choose() const;
    PngFilter LeastEntropyFilter(std::size_t row) const;
    const std::uint8_t* Row(std::size_t row) const { return &rows_[row * form_.rowBytes]; }
    const std::uint8_t* RowAbove(std::size_t row) const { return row == 0 ? before_.row.data() : Row(row - 1); }
    std::vector<std::uint8_t> Filtered(PngFilter filter, std::size_t first, std::size_t count) const;

    PngRowForm form_;
    Remains before_;
    std::vector<std::uint8_t> rows_;
    std::size_t rowCount_ = 0;
    Band band_ = Band::GoesOn;
    Choice choice_;
    Status status_ = Status::Ok;
    std::vector<std::uint8_t> data_;
    std::uint32_t checksum_ = 0;
};

} // namespace imaginglibrary
