// A crop rectangle from what was typed.
#pragma once

#include "base/geometry.h"

#include <string_view>

namespace lumbrix {

// Each text counts as its leading number. Right and bottom are rounded as sums, from sizes that may have fractions;
// ties go to the even number. Nothing is checked.
PixelRectangle TypedRectangle(std::string_view left, std::string_view top, std::string_view width,
                              std::string_view height);

} // namespace lumbrix
