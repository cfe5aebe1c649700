// What size a command is asked to make pictures.
#include "cli/sizing.h"

#include "cli/numbers.h"

#include <charconv>
#include <cmath>
#include <string>
#include <vector>

namespace lumbrix::cli {

namespace {

constexpr const char* Forms = "HEIGHT, --width, --height, --fit or --percent";

lumbrix_fitting AtWidth(std::int32_t width) {
    lumbrix_fitting size = LUMBRIX_FITTING_INIT;
    size.width = width;
    return size;
}

lumbrix_fitting AtHeight(std::int32_t height) {
    lumbrix_fitting size = LUMBRIX_FITTING_INIT;
    size.height = height;
    return size;
}

lumbrix_fitting InBox(const std::string& text) {
    const std::size_t cross = text.find_first_of("xX");
    if (cross == std::string::npos) {
        throw WrongUsage{"invalid box '" + text + "': use width and height in pixels, such as 800x600"};
    }
    lumbrix_fitting size = AtWidth(PositiveNumber(text.substr(0, cross), "width"));
    size.height = PositiveNumber(text.substr(cross + 1), "height");
    return size;
}

lumbrix_fitting AtPercentage(const std::string& text) {
    lumbrix_fitting size = LUMBRIX_FITTING_INIT;
    const char* const behind = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), behind, size.percent, std::chars_format::fixed);
    if (error != std::errc() || end != behind || !std::isfinite(size.percent) || size.percent <= 0) {
        throw WrongUsage{"invalid percentage '" + text + "': use a number above 0, such as 50 or 12.5"};
    }
    return size;
}

} // namespace

bool HasSizeOption(const Arguments& arguments) {
    return arguments.Has(WidthOption.name) || arguments.Has(HeightOption.name) || arguments.Has(FitOption.name) ||
           arguments.Has(PercentOption.name);
}

std::optional<lumbrix_fitting> SizeFrom(const std::optional<std::string>& height, const Arguments& arguments) {
    std::vector<lumbrix_fitting> sizes;
    if (height) {
        sizes.push_back(AtHeight(PositiveNumber(*height, "height")));
    }
    if (const auto width = arguments.ValueOf(WidthOption.name)) {
        sizes.push_back(AtWidth(PositiveNumber(*width, "width")));
    }
    if (const auto option = arguments.ValueOf(HeightOption.name)) {
        sizes.push_back(AtHeight(PositiveNumber(*option, "height")));
    }
    if (const auto box = arguments.ValueOf(FitOption.name)) {
        sizes.push_back(InBox(*box));
    }
    if (const auto percentage = arguments.ValueOf(PercentOption.name)) {
        sizes.push_back(AtPercentage(*percentage));
    }
    if (sizes.size() > 1) {
        throw WrongUsage{std::string("more than one size was given: use one of ") + Forms};
    }
    return sizes.empty() ? std::nullopt : std::optional(sizes.front());
}

lumbrix_fitting RequiredSizeFrom(const std::optional<std::string>& height, const Arguments& arguments) {
    const auto size = SizeFrom(height, arguments);
    if (!size) {
        throw WrongUsage{std::string("no size was given: use one of ") + Forms};
    }
    return *size;
}

} // namespace lumbrix::cli
