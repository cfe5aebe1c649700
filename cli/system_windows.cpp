// What the command line needs of Windows.
#include "cli/system.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cstdio>

namespace lumbrix::cli {

namespace {

std::wstring WideOf(const std::string& text) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0)), 0);
    MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string NarrowOf(const std::wstring& wide, UINT codePage) {
    const int length = static_cast<int>(wide.size());
    const int size = WideCharToMultiByte(codePage, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(size), 0);
    WideCharToMultiByte(codePage, 0, wide.data(), length, text.data(), size, nullptr, nullptr);
    return text;
}

} // namespace

// The standard library takes 8-bit text for UTF-8, but words of the command line are in the ANSI code page.
std::filesystem::path PathOf(const std::string& name) { return WideOf(name); }

std::string NameOf(const std::filesystem::path& path) { return NarrowOf(path.native(), CP_ACP); }

bool AreTextsUtf8() { return GetACP() == CP_UTF8; }

std::string Utf8Of(const std::string& text) { return NarrowOf(WideOf(text), CP_UTF8); }

std::vector<std::string> FilesMeant(const std::string& name) {
    const std::filesystem::path pattern = PathOf(name);
    std::vector<std::string> names;
    WIN32_FIND_DATAW found;
    const bool isPattern = NameOf(pattern.filename()).find_first_of("*?") != std::string::npos;
    const HANDLE search = isPattern ? FindFirstFileW(pattern.c_str(), &found) : INVALID_HANDLE_VALUE;
    if (search == INVALID_HANDLE_VALUE) {
        return {name};
    }
    do {
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            names.push_back(NameOf(pattern.parent_path() / found.cFileName));
        }
    } while (FindNextFileW(search, &found) != 0);
    FindClose(search);
    std::sort(names.begin(), names.end());
    return names.empty() ? std::vector{name} : names;
}

std::filesystem::path FileKey(const std::filesystem::path& path) {
    std::wstring key = path.native();
    CharLowerBuffW(key.data(), static_cast<DWORD>(key.size()));
    return key;
}

void MakeStandardStreamsBinary() {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
}

bool IsErrorOutputATerminal() { return _isatty(_fileno(stderr)) != 0; }

} // namespace lumbrix::cli
