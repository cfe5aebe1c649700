// The strips of a TIFF file that are compressed by LZW, beside the thread that makes the rows.
#pragma once

#include "imaginglibrary/codecs/tiff/tiffclient.h"
#include "imaginglibrary/core/status.h"
#include "imaginglibrary/operations/orderedwork.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace imaginglibrary {

// How rows become strips.
struct TiffStripForm {
    std::size_t rowBytes = 0;
    std::uint32_t rowsPerStrip = 0;
    std::size_t samples = 1;     // of a byte each, where one of the following is so
    bool isBlueFirst = false;    // and is to be red first
    bool hasDifferences = false; // each sample is written as its difference from the pixel to the left
};

class TiffStrip;

// Rows go in from the top; strips are written on the way. Belongs to one thread at a time.
class TiffStrips {
  public:
    // `output` has all its fields.
    TiffStrips(const TiffStripForm& form, std::uint32_t height, TiffOutput& output);
    ~TiffStrips();

    // The next row. With the last one everything has been written. Raises std::bad_alloc.
    Status AddRow(const std::uint8_t* row);

  private:
    Status EndStrip();
    Status WriteFirst();

    TiffStripForm form_;
    std::uint32_t rowsLeft_;
    TiffOutput& output_;
    std::unique_ptr<TiffStrip> strip_;
    std::uint32_t written_ = 0;
    OrderedWork work_;
};

} // namespace imaginglibrary
