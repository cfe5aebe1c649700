// What the option controls of the main window mean.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace lumbrix {

// Whether files of this extension, given without its dot in any letter case, are made smaller by a batch. Narrower than
// what can be read: "jpeg" and "tif" are not convertible, and "sgl" is.
bool IsConvertibleExtension(std::string_view extension);

// The word of the first output type that is checked, in the order in which they are offered; empty for none.
std::string SelectedOutputWord(const std::array<bool, 6>& checked);

// The angle of the first of 0, 90, 180 and 270 degrees that is checked; 0 for none.
std::int32_t SelectedRotation(const std::array<bool, 4>& checked);

// "H" for the box captioned "Vertically", then "V" for the one captioned "Horizontally".
std::string SelectedFlip(bool isVerticallyChecked, bool isHorizontallyChecked);

} // namespace lumbrix
