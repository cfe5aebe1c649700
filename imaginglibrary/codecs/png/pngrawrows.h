// The rows of a PNG picture as they lie in the file, read more quickly than libpng does.
#pragma once

#include "imaginglibrary/codecs/png/pngchunks.h"
#include "imaginglibrary/codecs/png/pngfilter.h"
#include "imaginglibrary/codecs/png/pnginflate.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace imaginglibrary {

// Reads what is sound, in bands of some rows, and leaves it to libpng to say how far anything else can be read.
class PngRawRows {
  public:
    // `offset` is that of the first chunk of image data, which libpng has accepted. Raises std::bad_alloc.
    PngRawRows(std::shared_ptr<const InputFile> file, std::uint64_t offset, const PngRowForm& form, std::uint32_t rows);

    // The next row, there until the next call. Null where something is not as it should be, in the row or not far
    // behind it; the last row comes only where the image data end with it and are sound. Must not be asked again then,
    // nor behind the last row.
    const std::uint8_t* Next();

  private:
    bool ReadBand();
    bool InflateBand(std::span<std::uint8_t> to);
    bool End();
    bool InflateSome(std::span<std::uint8_t>& to);
    bool Refill();
    std::size_t SlotBytes() const { return 1 + form_.rowBytes; }
    std::uint8_t* Slot(std::size_t number) { return &slots_[number * SlotBytes()]; }

    PngRowForm form_;
    PngImageChunks chunks_;
    std::vector<std::uint8_t> buffer_;
    std::span<const std::uint8_t> input_; // what is left in the buffer
    bool isBegun_ = false;
    Inflater inflater_;
    InflateState state_ = InflateState::GoesOn;
    std::uint32_t rowsLeft_; // behind the band
    std::size_t bandRows_;
    // The band's rows, each behind the number of its filter, and before them the row above.
    std::vector<std::uint8_t> slots_;
    std::size_t filled_ = 0; // of the band's rows
    std::size_t given_ = 0;
};

} // namespace imaginglibrary
