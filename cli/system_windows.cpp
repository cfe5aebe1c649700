// What the command line needs of Windows.
#include "cli/system.h"

#include <windows.h>

#include <io.h>

namespace lumbrix::cli {

// The standard library takes 8-bit text for UTF-8, but words of the command line are in the ANSI code page.
std::filesystem::path PathOf(const std::string& name) {
    const int length = static_cast<int>(name.size());
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, name.data(), length, nullptr, 0)), 0);
    MultiByteToWideChar(CP_ACP, 0, name.data(), length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string NameOf(const std::filesystem::path& path) {
    const std::wstring& wide = path.native();
    const int length = static_cast<int>(wide.size());
    const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string name(static_cast<std::size_t>(size), 0);
    WideCharToMultiByte(CP_ACP, 0, wide.data(), length, name.data(), size, nullptr, nullptr);
    return name;
}

bool AreTextsUtf8() { return GetACP() == CP_UTF8; }

std::filesystem::path FileKey(const std::filesystem::path& path) {
    std::wstring key = path.native();
    CharLowerBuffW(key.data(), static_cast<DWORD>(key.size()));
    return key;
}

bool IsErrorOutputATerminal() { return _isatty(_fileno(stderr)) != 0; }

} // namespace lumbrix::cli
