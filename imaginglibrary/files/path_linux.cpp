// File names at the door to the system: wide text turned into the bytes of a path.
#include "imaginglibrary/files/path_linux.h"

namespace imaginglibrary {

namespace {

void AppendUtf8(std::string& text, char32_t codePoint) {
    const auto byte = [&](char32_t value) { text.push_back(static_cast<char>(value)); };
    if (codePoint < 0x80) {
        byte(codePoint);
    } else if (codePoint < 0x800) {
        byte(0xC0 | (codePoint >> 6));
        byte(0x80 | (codePoint & 63));
    } else if (codePoint < 0x10000) {
        byte(0xE0 | (codePoint >> 12));
        byte(0x80 | ((codePoint >> 6) & 63));
        byte(0x80 | (codePoint & 63));
    } else {
        byte(0xF0 | (codePoint >> 18));
        byte(0x80 | ((codePoint >> 12) & 63));
        byte(0x80 | ((codePoint >> 6) & 63));
        byte(0x80 | (codePoint & 63));
    }
}

constexpr bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

} // namespace

std::string PathBytes(const std::u16string& path) {
    std::string bytes;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char32_t unit = path[i];
        if (IsHighSurrogate(unit) && i + 1 < path.size() && IsLowSurrogate(path[i + 1])) {
            AppendUtf8(bytes, 0x10000 + ((unit - 0xD800) << 10) + (path[++i] - 0xDC00));
        } else if (unit >= 0xDC80 && unit <= 0xDCFF) {
            bytes.push_back(static_cast<char>(unit & 0xFF));
        } else {
            AppendUtf8(bytes, IsHighSurrogate(unit) || IsLowSurrogate(unit) ? 0xFFFD : unit);
        }
    }
    return bytes;
}

} // namespace imaginglibrary
