// Text conversion through the ANSI code page and UTF-8.
#include "platform/text.h"

#include <windows.h>

namespace lumbrix {

namespace {
UINT PageOf(TextEncoding encoding) { return encoding == TextEncoding::Utf8 ? CP_UTF8 : CP_ACP; }
} // namespace

std::u16string ToWide(std::string_view text, TextEncoding encoding) {
    const UINT page = PageOf(encoding);
    const int length = static_cast<int>(text.size());
    std::u16string wide(static_cast<std::size_t>(MultiByteToWideChar(page, 0, text.data(), length, nullptr, 0)), 0);
    MultiByteToWideChar(page, 0, text.data(), length, reinterpret_cast<wchar_t*>(wide.data()),
                        static_cast<int>(wide.size()));
    return wide;
}

std::string ToNarrow(std::u16string_view text, TextEncoding encoding) {
    const UINT page = PageOf(encoding);
    const auto* from = reinterpret_cast<const wchar_t*>(text.data());
    const int length = static_cast<int>(text.size());
    std::string narrow(
        static_cast<std::size_t>(WideCharToMultiByte(page, 0, from, length, nullptr, 0, nullptr, nullptr)), 0);
    WideCharToMultiByte(page, 0, from, length, narrow.data(), static_cast<int>(narrow.size()), nullptr, nullptr);
    return narrow;
}

std::u16string ToWide(std::string_view text) { return ToWide(text, TextEncoding::CodePage); }

std::string ToNarrow(std::u16string_view text) { return ToNarrow(text, TextEncoding::CodePage); }

} // namespace lumbrix
