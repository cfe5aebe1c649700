// What the option controls of the main window mean.
#include "batch/options.h"

#include "base/lettercase.h"
#include "imaging/formats.h"

#include <algorithm>

namespace lumbrix {

namespace {

constexpr std::string_view ConvertibleExtensions[] = {"bmp", "gif", "jpg", "tiff", "png", "sgl"};
constexpr std::int32_t RightAngle = 90;

} // namespace

bool IsConvertibleExtension(std::string_view extension) {
    const std::string lower = LowerCase(extension);
    return std::find(std::begin(ConvertibleExtensions), std::end(ConvertibleExtensions), lower) !=
           std::end(ConvertibleExtensions);
}

std::string SelectedOutputWord(const std::array<bool, 6>& checked) {
    const auto first = std::find(checked.begin(), checked.end(), true) - checked.begin();
    return first < std::ssize(checked) ? std::string(OutputFormat[static_cast<std::size_t>(first)]) : std::string();
}

std::int32_t SelectedRotation(const std::array<bool, 4>& checked) {
    const auto first = std::find(checked.begin(), checked.end(), true) - checked.begin();
    return first < std::ssize(checked) ? static_cast<std::int32_t>(first) * RightAngle : 0;
}

std::string SelectedFlip(bool isVerticallyChecked, bool isHorizontallyChecked) {
    return std::string(isVerticallyChecked ? "H" : "") + (isHorizontallyChecked ? "V" : "");
}

} // namespace lumbrix
