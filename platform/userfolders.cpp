// The user's folders on Linux by the numbers that the shell of Windows gives to such.
#include "platform/userfolders.h"

#include "platform/files.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace lumbrix {

namespace {

// The name of a folder in the file, and where it lies below the user's own if that says nothing.
struct Folder {
    std::int32_t number;
    const char* name;
    const char* usual;
};
constexpr Folder Folders[] = {{0, "XDG_DESKTOP_DIR", "Desktop"},     {16, "XDG_DESKTOP_DIR", "Desktop"},
                              {5, "XDG_DOCUMENTS_DIR", "Documents"}, {13, "XDG_MUSIC_DIR", "Music"},
                              {14, "XDG_VIDEOS_DIR", "Videos"},      {39, "XDG_PICTURES_DIR", "Pictures"}};
constexpr std::int32_t RecentNumber = 8;
constexpr std::int32_t OwnNumber = 40;

std::string WithoutSeparatorBehind(std::string path) {
    while (path.size() > 1 && path.back() == PathSeparator) {
        path.pop_back();
    }
    return path;
}

// The full path in a variable; empty where there is none.
std::string PathFrom(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value == PathSeparator ? WithoutSeparatorBehind(value) : std::string();
}

// A folder that a variable names, or the usual one below the user's own.
std::string FolderFrom(const char* variable, const std::string& home, const char* usual) {
    const std::string path = PathFrom(variable);
    return path.empty() ? home + usual : path;
}

std::string UserFoldersFile(const std::string& home) {
    return ReadSmallFile(FolderFrom("XDG_CONFIG_HOME", home, "/.config") + "/user-dirs.dirs");
}

// What stands between the quotes that a text begins with; a backslash is passed over and keeps what is behind it.
std::optional<std::string> Quoted(std::string_view text) {
    if (!text.starts_with('"')) {
        return std::nullopt;
    }
    std::string inside;
    for (std::size_t i = 1; i < text.size() && text[i] != '"'; ++i) {
        i += text[i] == '\\' && i + 1 < text.size() ? 1 : 0;
        inside += text[i];
    }
    return inside;
}

std::string_view WithoutBlanksBefore(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(" \t"), text.size()));
}

// The path that a line gives to a name.
std::optional<std::string> FolderOfLine(std::string_view line, const std::string& name, const std::string& home) {
    constexpr std::string_view OwnFolder = "$HOME";
    line = WithoutBlanksBefore(line);
    if (!line.starts_with(name)) {
        return std::nullopt;
    }
    line = WithoutBlanksBefore(line.substr(name.size()));
    const std::optional<std::string> path =
        line.starts_with('=') ? Quoted(WithoutBlanksBefore(line.substr(1))) : std::nullopt;
    if (path && (*path == OwnFolder || path->starts_with(std::string(OwnFolder) + PathSeparator))) {
        return WithoutSeparatorBehind(home + path->substr(OwnFolder.size()));
    }
    return path && path->starts_with(PathSeparator) ? std::optional(WithoutSeparatorBehind(*path)) : std::nullopt;
}

} // namespace

std::optional<std::string> NamedUserFolder(const std::string& file, const std::string& name, const std::string& home) {
    std::optional<std::string> found;
    for (std::size_t start = 0; start < file.size();) {
        const std::size_t end = std::min(file.find('\n', start), file.size());
        const auto folder = FolderOfLine(std::string_view(file).substr(start, end - start), name, home);
        found = folder ? folder : found;
        start = end + 1;
    }
    return found;
}

std::optional<std::string> UserFolder(std::int32_t number) {
    const std::string home = PathFrom("HOME");
    if (home.empty()) {
        return std::nullopt;
    }
    if (number == OwnNumber) {
        return home;
    }
    if (number == RecentNumber) {
        return FolderFrom("XDG_DATA_HOME", home, "/.local/share") + "/RecentDocuments";
    }
    const auto* folder =
        std::find_if(std::begin(Folders), std::end(Folders), [&](const Folder& row) { return row.number == number; });
    if (folder == std::end(Folders)) {
        return std::nullopt;
    }
    return NamedUserFolder(UserFoldersFile(home), folder->name, home).value_or(home + PathSeparator + folder->usual);
}

} // namespace lumbrix
