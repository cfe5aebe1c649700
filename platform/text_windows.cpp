// Text conversion through the ANSI code page.
#include "platform/text.h"

#include <windows.h>

namespace lumbrix {

std::u16string ToWide(std::string_view text) {
    const int length = static_cast<int>(text.size());
    std::u16string wide(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0)), 0);
    MultiByteToWideChar(CP_ACP, 0, text.data(), length, reinterpret_cast<wchar_t*>(wide.data()),
                        static_cast<int>(wide.size()));
    return wide;
}

std::string ToNarrow(std::u16string_view text) {
    const auto* from = reinterpret_cast<const wchar_t*>(text.data());
    const int length = static_cast<int>(text.size());
    std::string narrow(
        static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, from, length, nullptr, 0, nullptr, nullptr)), 0);
    WideCharToMultiByte(CP_ACP, 0, from, length, narrow.data(), static_cast<int>(narrow.size()), nullptr, nullptr);
    return narrow;
}

} // namespace lumbrix
