// Numbers: how those with fractions become whole ones, and how texts become numbers.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace lumbrix {

// The nearest whole number, ties to the even one. Beyond 32 bits it is the nearest that fits; what is no number becomes
// the lowest.
inline std::int32_t RoundToEven(long double value) {
    const long double rounded = std::nearbyint(value);
    if (rounded >= INT32_MAX) {
        return INT32_MAX;
    }
    return rounded > INT32_MIN ? static_cast<std::int32_t>(rounded) : INT32_MIN;
}

// The part of a text that reads as a decimal number: sign, digits, point, exponent. Blanks before it are passed over.
inline std::string LeadingNumberText(std::string_view text) {
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

// The number that a text begins with; 0 where there is none. Blanks before it are passed over, and so is everything
// behind it.
inline double LeadingNumber(std::string_view text) { return std::strtod(LeadingNumberText(text).c_str(), nullptr); }

// The digits; a number that is not below 0 has a blank in the place of the sign.
inline std::string NumberWithLeadingBlank(std::int32_t number) {
    return (number < 0 ? "" : " ") + std::to_string(number);
}

// The leading number as a whole one: the nearest, ties to even. Numbers beyond 32 bits become the nearest that fits.
inline std::int32_t NumericValue(std::string_view text) { return RoundToEven(LeadingNumber(text)); }

} // namespace lumbrix
