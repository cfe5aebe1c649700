// What the option controls of the main window mean.
#include "batch/options.h"

#include "imaging/formats.h"
#include "imaging/lettercase.h"
#include "imaging/rounding.h"

#include <algorithm>
#include <cstdlib>

namespace lumbrix {

namespace {

constexpr std::string_view ConvertibleExtensions[] = {"bmp", "gif", "jpg", "tiff", "png", "sgl"};
constexpr std::int32_t RightAngle = 90;

// The part of a text that reads as a decimal number: sign, digits, point, exponent.
std::string LeadingNumberText(std::string_view text) {
    std::size_t at = std::min(text.find_first_not_of(' '), text.size());
    const std::size_t start = at;
    const auto isDigit = [&](std::size_t place) {
        return place < text.size() && text[place] >= '0' && text[place] <= '9';
    };
    const auto skipSign = [&](std::size_t place) {
        return place < text.size() && (text[place] == '-' || text[place] == '+') ? place + 1 : place;
    };
    const auto skipDigits = [&](std::size_t place) {
        while (isDigit(place)) {
            ++place;
        }
        return place;
    };
    at = skipDigits(skipSign(at));
    if (at < text.size() && text[at] == '.') {
        at = skipDigits(at + 1);
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E') && isDigit(skipSign(at + 1))) {
        at = skipDigits(skipSign(at + 1));
    }
    return std::string(text.substr(start, at - start));
}

} // namespace

double LeadingNumber(std::string_view text) { return std::strtod(LeadingNumberText(text).c_str(), nullptr); }

std::int32_t NumericValue(std::string_view text) { return RoundToEven(LeadingNumber(text)); }

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
