// The image data of a PNG file: rows made into the contents of its IDAT chunks.
#pragma once

#include "imaginglibrary/codecs/png/pngband.h"

#include <functional>
#include <optional>
#include <span>

namespace imaginglibrary {

// Rows go in from the top, all of the picture's; chunks come out on the way, the last one with the last row. A band is
// compressed beside the thread that makes the rows, where there is a processor for it.
class PngImageData {
  public:
    // Takes the content of one chunk.
    using Sink = std::function<Status(std::span<const std::uint8_t>)>;

    // Without an effort each band gets the one that suits it.
    PngImageData(const PngRowForm& form, std::uint32_t height, std::optional<Effort> effort, Sink sink);

    // Where the next row is to be written to. Raises std::bad_alloc.
    std::uint8_t* NextRow();

    // The row is there. Afterwards the data may be written.
    Status EndRow();

  private:
    Status EndBand();
    Status WriteFirst();

    PngRowForm form_;
    std::uint32_t rowsLeft_;
    std::size_t rowsOfBand_;
    std::optional<Effort> effort_;
    Sink sink_;
    std::unique_ptr<PngBand> band_;
    PngBand::Remains before_; // of the last band
    std::vector<std::uint8_t> chunk_;
    std::uint32_t checksum_ = 1; // of nothing
    bool hasBegun_ = false;
    OrderedWork work_; // ends before what it works on
};

} // namespace imaginglibrary
