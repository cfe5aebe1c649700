// Compressing by the LZW of TIFF.
// Source: TIFF revision 6.0, section 13.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace imaginglibrary {

// Appends the codes of one strip, from the first clear code to the end of information, in whole bytes. Raises
// std::bad_alloc.
void CompressLzw(std::span<const std::uint8_t> bytes, std::vector<std::uint8_t>& to);

} // namespace imaginglibrary
