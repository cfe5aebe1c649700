// Numbers and colours as words of the command line.
#include "cli/numbers.h"

#include "cli/options.h"

#include <charconv>
#include <optional>

namespace lumbrix::cli {

namespace {

// The number that makes up the whole text; nothing where it is none or does not fit.
std::optional<std::int32_t> Parsed(const std::string& text, int base) {
    std::int32_t number = 0;
    const char* const behind = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), behind, number, base);
    return error == std::errc() && end == behind ? std::optional(number) : std::nullopt;
}

std::string Wanted(std::int32_t least, std::int32_t most) {
    const std::string lower = std::to_string(least);
    return most == NoBound ? "a whole number of at least " + lower
                           : "a whole number from " + lower + " to " + std::to_string(most);
}

} // namespace

std::int32_t WholeNumber(const std::string& text, const char* what, std::int32_t least, std::int32_t most) {
    const auto number = Parsed(text, 10);
    if (!number || *number < least || *number > most) {
        throw WrongUsage{std::string("invalid ") + what + " '" + text + "': use " + Wanted(least, most)};
    }
    return *number;
}

float Position(const std::string& text, const char* what) {
    constexpr std::int32_t Farthest = 1'000'000; // beyond any picture, and exact as a float
    return static_cast<float>(WholeNumber(text, what, -Farthest, Farthest));
}

Color ColorFrom(const std::string& text) {
    const auto number = Parsed(text, 16);
    if (text.size() != 6 || !number || *number < 0) {
        throw WrongUsage{"invalid colour '" + text + "': use six hexadecimal digits, RRGGBB"};
    }
    return {*number >> 16, (*number >> 8) & 0xFF, *number & 0xFF};
}

} // namespace lumbrix::cli
