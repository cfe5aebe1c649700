// Text conversion between UTF-8 and UTF-16 that loses no byte.
#include "platform/text.h"

#include <cstdint>

namespace lumbrix {

namespace {

constexpr char16_t EscapedByte = 0xDC00;

constexpr bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }
constexpr bool IsSurrogate(std::uint32_t point) { return point >= 0xD800 && point < 0xE000; }

// A code point and how many bytes it took; length 0 where no valid sequence begins.
struct Decoded {
    std::uint32_t point;
    std::size_t length;
};

Decoded DecodeAt(std::string_view text, std::size_t at) {
    static constexpr std::uint32_t Smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto first = static_cast<unsigned char>(text[at]);
    if (first < 0x80) {
        return {first, 1};
    }
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 0;
    if (length == 0 || first > 0xF4 || at + length > text.size()) {
        return {0, 0};
    }
    std::uint32_t point = first & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[at + i]);
        if (!IsContinuation(byte)) {
            return {0, 0};
        }
        point = (point << 6) | (byte & 0x3F);
    }
    const bool isValid = point >= Smallest[length] && point <= 0x10FFFF && !IsSurrogate(point);
    return isValid ? Decoded{point, length} : Decoded{0, 0};
}

void AppendUtf8(std::string& text, std::uint32_t point) {
    const auto byte = [&](std::uint32_t value) { text.push_back(static_cast<char>(value)); };
    if (point < 0x80) {
        byte(point);
        return;
    }
    if (point < 0x800) {
        byte(0xC0 | (point >> 6));
    } else {
        if (point < 0x10000) {
            byte(0xE0 | (point >> 12));
        } else {
            byte(0xF0 | (point >> 18));
            byte(0x80 | ((point >> 12) & 0x3F));
        }
        byte(0x80 | ((point >> 6) & 0x3F));
    }
    byte(0x80 | (point & 0x3F));
}

} // namespace

std::u16string ToWide(std::string_view text) {
    std::u16string wide;
    for (std::size_t at = 0; at < text.size();) {
        const auto [point, length] = DecodeAt(text, at);
        if (length == 0) {
            wide.push_back(static_cast<char16_t>(EscapedByte + static_cast<unsigned char>(text[at])));
            ++at;
            continue;
        }
        if (point >= 0x10000) {
            wide.push_back(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)));
            wide.push_back(static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF)));
        } else {
            wide.push_back(static_cast<char16_t>(point));
        }
        at += length;
    }
    return wide;
}

std::string ToNarrow(std::u16string_view text) {
    std::string narrow;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::uint32_t unit = text[at];
        const bool isPair =
            unit >= 0xD800 && unit < 0xDC00 && at + 1 < text.size() && text[at + 1] >= 0xDC00 && text[at + 1] < 0xE000;
        if (isPair) {
            AppendUtf8(narrow, 0x10000 + ((unit - 0xD800) << 10) + (text[++at] - 0xDC00u));
        } else if (unit >= EscapedByte + 0x80 && unit <= EscapedByte + 0xFF) {
            narrow.push_back(static_cast<char>(unit - EscapedByte));
        } else {
            AppendUtf8(narrow, IsSurrogate(unit) ? 0xFFFD : unit);
        }
    }
    return narrow;
}

std::u16string ToWide(std::string_view text, TextEncoding /*encoding*/) { return ToWide(text); }

std::string ToNarrow(std::u16string_view text, TextEncoding /*encoding*/) { return ToNarrow(text); }

} // namespace lumbrix
