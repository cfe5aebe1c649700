// Bytes in lines of text, on Linux: as they are, or as a percent sign and two hexadecimal digits.
#include "platform/escaping.h"

#include <charconv>
#include <cstdio>

namespace lumbrix {

std::string Hexadecimal(char byte) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned char>(byte));
    return digits;
}

std::optional<char> FromHexadecimal(std::string_view digits) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    return digits.size() == 2 && error == std::errc() && end == digits.data() + 2
               ? std::optional(static_cast<char>(value))
               : std::nullopt;
}

std::string Escaped(std::string_view text, std::string_view also) {
    std::string escaped;
    for (const char byte : text) {
        const bool isControl = static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
        const bool isMeant = isControl || byte == '%' || also.find(byte) != std::string_view::npos;
        escaped += isMeant ? "%" + Hexadecimal(byte) : std::string(1, byte);
    }
    return escaped;
}

std::optional<std::string> Unescaped(std::string_view escaped) {
    std::string text;
    for (std::size_t i = 0; i < escaped.size(); ++i) {
        char byte = escaped[i];
        if (byte == '%') {
            const std::optional<char> meant = FromHexadecimal(escaped.substr(i + 1, 2));
            if (!meant) {
                return std::nullopt;
            }
            byte = *meant;
            i += 2;
        }
        text += byte;
    }
    return text;
}

} // namespace lumbrix
