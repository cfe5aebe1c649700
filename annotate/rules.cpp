// How screen and picture correspond in the annotate and crop window, and what its texts and choices mean.
#include "annotate/rules.h"

#include "base/numbers.h"

#include <algorithm>

namespace lumbrix {

float PreviewScaleFor(PixelSize picture, PixelSize screen) {
    const double across = static_cast<double>(picture.width) / screen.width;
    const double down = static_cast<double>(picture.height) / screen.height;
    return static_cast<float>(std::max({1.0, across, down}));
}

PixelSize PreviewSize(PixelSize picture, float scale) {
    return {RoundToEven(picture.width / static_cast<double>(scale)),
            RoundToEven(picture.height / static_cast<double>(scale))};
}

FloatPoint FullSizePoint(PixelPoint onScreen, float scale) {
    return {scale * static_cast<float>(onScreen.x), scale * static_cast<float>(onScreen.y)};
}

std::int32_t FullSizeText(std::int32_t onScreen, float scale) {
    return RoundToEven(static_cast<float>(onScreen) * scale);
}

bool IsStampPath(const std::string& text) { return text.size() > 1 && text[1] == ':'; }

PixelRectangle RectangleBetween(PixelPoint first, PixelPoint second, float scale) {
    // A pixel count times a 32-bit float is exact in a double.
    const auto onPicture = [&](std::int32_t onScreen) { return RoundToEven(static_cast<double>(scale) * onScreen); };
    return {onPicture(first.x), onPicture(first.y), onPicture(second.x), onPicture(second.y)};
}

bool HasArea(const PixelRectangle& rectangle) {
    return rectangle.right != rectangle.left && rectangle.bottom != rectangle.top;
}

std::string FontNameOrDefault(const std::string& name) { return name.empty() ? "Arial" : name; }

bool IsBoldWeight(std::int32_t weight) { return weight >= 600; }

void SplitColor(std::uint32_t color, std::int32_t* red, std::int32_t* green, std::int32_t* blue) {
    constexpr std::uint32_t Component = 256;
    *red = static_cast<std::int32_t>(color % Component);
    *green = static_cast<std::int32_t>(color / Component % Component);
    *blue = static_cast<std::int32_t>(color / (Component * Component) % Component);
}

} // namespace lumbrix
