// Undoing the filters of PNG.
#pragma once

#include "imaginglibrary/codecs/png/pngfilter.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace imaginglibrary {

// Turns a filtered row into what it was, in place. `above` is the row above as it was, of the same length; zeros above
// the first one. Pixels take `pixelBytes` whole bytes: 1 for smaller ones too, 2, 3, 4, 6 or 8.
void UnfilterRow(PngFilter filter, std::span<std::uint8_t> row, const std::uint8_t* above, std::size_t pixelBytes);

// Its forms, which give the same bytes; UnfilterRow takes the quickest one.
void UnfilterRowScalar(PngFilter filter, std::span<std::uint8_t> row, const std::uint8_t* above,
                       std::size_t pixelBytes);
#if defined(__SSE2__)
// For pixels of 3 bytes and more, and all filters but Up.
void UnfilterRowSse2(PngFilter filter, std::span<std::uint8_t> row, const std::uint8_t* above, std::size_t pixelBytes);
#endif

} // namespace imaginglibrary
