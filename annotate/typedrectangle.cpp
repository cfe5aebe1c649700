// A crop rectangle from what was typed.
#include "annotate/typedrectangle.h"

#include "base/numbers.h"

namespace lumbrix {

PixelRectangle TypedRectangle(std::string_view left, std::string_view top, std::string_view width,
                              std::string_view height) {
    const double x = LeadingNumber(left);
    const double y = LeadingNumber(top);
    return {
        .left = RoundToEven(x),
        .top = RoundToEven(y),
        .right = RoundToEven(x + LeadingNumber(width)),
        .bottom = RoundToEven(y + LeadingNumber(height)),
    };
}

} // namespace lumbrix
