// Reading and writing the files of shell links, and the shell's folders that they lie in.
#include "platform/shelllink.h"

#include "base/numbers.h"
#include "platform/errors.h"
#include "platform/files.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <new>

namespace lumbrix {

namespace {

using Link = ShellSystem::Link;
using LinkFile = ShellSystem::LinkFile;

constexpr std::size_t PathBytes = 260; // with the zero behind
constexpr std::size_t TextBytes = 1024;
constexpr std::int32_t ShortLength = 260;
constexpr std::int32_t LongLength = TextBytes;
constexpr std::uint32_t FirstMajorOfLongLength = 5;

constexpr std::uint32_t NetworkNameFirst = 2; // of two names that a path has
constexpr std::uint32_t UpdateLink = 4;
constexpr std::uint32_t ReadMode = 0;
constexpr std::int32_t RecentFolderNumber = 8;
constexpr const char* LinkEnding = ".lnk";

#ifdef _WIN32
constexpr int OutOfMemory = 8;
#else
constexpr int OutOfMemory = 12;
#endif

using PathBuffer = std::array<char, PathBytes>;
using WidePath = std::array<char16_t, PathBytes>;

std::atomic<std::int32_t> pathLength;

bool IsBlank(const std::string& text) { return text.find_first_not_of(' ') == std::string::npos; }

std::string FittingPath(const std::string& path) { return path.substr(0, PathBytes - 1); }

// All of it where no zero stands behind.
template <std::size_t Bytes> std::string TextIn(const std::array<char, Bytes>& buffer) {
    return {buffer.begin(), std::find(buffer.begin(), buffer.end(), '\0')};
}

PathBuffer BufferOf(const std::string& path) {
    PathBuffer buffer{};
    const std::string fitting = FittingPath(path);
    std::copy(fitting.begin(), fitting.end(), buffer.begin());
    return buffer;
}

WidePath MakeWide(ShellSystem& shell, const std::string& path) {
    WidePath wide{};
    shell.MakeWide(FittingPath(path).c_str(), wide.data(), static_cast<std::int32_t>(wide.size()));
    return wide;
}

// Has `get` fill a buffer.
template <class Get> std::string TextFrom(Get get) {
    std::array<char, TextBytes> buffer{};
    get(buffer.data());
    return TextIn(buffer);
}

std::string CutToPathLength(const std::string& text) {
    return text.substr(0, static_cast<std::size_t>(ShellPathLength()));
}

void ReadFields(ShellSystem& shell, Link link, LinkFields& fields) {
    const std::int32_t length = ShellPathLength();
    FoundFileRecord found{};
    fields.target =
        CutToPathLength(TextFrom([&](char* text) { shell.GetPath(link, text, length, found, NetworkNameFirst); }));
    fields.workingFolder =
        CutToPathLength(TextFrom([&](char* text) { shell.GetWorkingDirectory(link, text, length); }));
    fields.arguments = CutToPathLength(TextFrom([&](char* text) { shell.GetArguments(link, text, length); }));
    fields.description = TextFrom([&](char* text) { shell.GetDescription(link, text, length); });
    shell.GetShowCmd(link, fields.showCommand);
    fields.iconFile =
        CutToPathLength(TextFrom([&](char* text) { shell.GetIconLocation(link, text, length, fields.iconIndex); }));
    shell.GetHotkey(link, fields.hotKey);
}

void LoadFields(ShellSystem& shell, Link link, LinkFile file, const std::string& path, LinkFields& fields) {
    shell.Load(file, MakeWide(shell, path).data(), ReadMode);
    ReadFields(shell, link, fields);
}

// Updates the link and writes it to a file.
void SaveLink(ShellSystem& shell, Link link, LinkFile file, const std::string& path) {
    const WidePath wide = MakeWide(shell, path);
    shell.Resolve(link, UpdateLink);
    shell.Save(file, wide.data(), true);
}

// As `trap`, and memory that runs out counts as an error.
template <class Body> std::optional<RuntimeError> TrapOutOfMemoryToo(Body body) {
    try {
        return trap(body);
    } catch (const std::bad_alloc&) {
        return RuntimeError(OutOfMemory, SystemReason(OutOfMemory));
    }
}

std::string ErrorText(const RuntimeError& error) {
    return "Error Number: " + NumberWithLeadingBlank(error.Number()) + "\r\nError Description: " + error.what();
}

// The path of a link in a folder, or in the current one where the folder is unknown.
std::string PathOfNewLink(ShellSystem& shell, std::int32_t folder, const std::string& name) {
    PathBuffer buffer = BufferOf(shell.CurrentFolder());
    ShellSystem::ItemList list = 0;
    if (shell.SpecialFolder(folder, list) == 0) {
        shell.PathOfItemList(list, buffer.data());
        shell.FreeItemList(list);
    }
    return TextIn(buffer) + PathSeparator + name + LinkEnding;
}

} // namespace

std::int32_t ShellPathLength() { return pathLength; }

std::int32_t FindMaxPath(const std::optional<SystemVersion>& version) {
    const bool isLong = version && version->platform == NtPlatform && version->major >= FirstMajorOfLongLength;
    return isLong ? LongLength : ShortLength;
}

Link ShellLinkFactory(ShellSystem& shell) {
    pathLength = FindMaxPath(shell.GetVersion());
    Link link = 0;
    return shell.CreateLinkObject(link) == 0 ? link : 0;
}

void CreateLink(std::int32_t folder, const std::string& name, const LinkFields& fields, ShellSystem& shell) {
    const Link link = ShellLinkFactory(shell);
    if (link == 0) {
        return;
    }
    shell.SetPath(link, fields.target.c_str());
    shell.SetArguments(link, fields.arguments.c_str());
    shell.SetWorkingDirectory(link, fields.workingFolder.c_str());
    shell.SetShowCmd(link, fields.showCommand);
    if (!fields.description.empty()) {
        shell.SetDescription(link, fields.description.c_str());
    }
    if (!fields.iconFile.empty()) {
        shell.SetIconLocation(link, fields.iconFile.c_str(), fields.iconIndex);
    }
    if (const LinkFile file = shell.QueryLinkFile(link); file != 0) {
        SaveLink(shell, link, file, PathOfNewLink(shell, folder, name));
        shell.ReleaseLinkFile(file);
    }
    shell.ReleaseLink(link);
}

std::int32_t GetShellLinkInfo(const std::string& path, LinkFields& fields, ShellSystem& shell) {
    if (IsBlank(path)) {
        return 0;
    }
    const Link link = ShellLinkFactory(shell); // neither this nor its file is released, on purpose
    const LinkFile file = link == 0 ? 0 : shell.QueryLinkFile(link);
    if (file == 0) {
        return 0;
    }
    const auto error = TrapOutOfMemoryToo([&] { LoadFields(shell, link, file, path, fields); });
    if (error) {
        shell.ShowError(ErrorText(*error));
    }
    return error ? 0 : 1;
}

std::string ChangeLinkIcon(const std::string& path, const std::string& iconFile, ShellSystem& shell) {
    const Link link = IsBlank(path) ? 0 : ShellLinkFactory(shell);
    if (link == 0) {
        return {};
    }
    LinkFields fields;
    if (const LinkFile file = shell.QueryLinkFile(link); file != 0) {
        TrapOutOfMemoryToo([&] {
            LoadFields(shell, link, file, path, fields);
            shell.SetPath(link, fields.target.c_str());
            shell.SetWorkingDirectory(link, fields.workingFolder.c_str());
            shell.SetArguments(link, fields.arguments.c_str());
            shell.SetDescription(link, fields.description.c_str());
            shell.SetShowCmd(link, fields.showCommand);
            shell.SetIconLocation(link, iconFile.c_str(), 0);
            shell.SetHotkey(link, fields.hotKey & 0xFF); // the high byte is lost, as ever
            SaveLink(shell, link, file, path);
        });
        shell.ReleaseLinkFile(file);
    }
    shell.ReleaseLink(link);
    return fields.iconFile;
}

std::string GetDestinationFolder(std::int32_t folder, ShellSystem& shell) {
    PathBuffer buffer{};
    ShellSystem::ItemList list = 0; // not freed, on purpose
    if (shell.SpecialFolder(folder, list) == 0) {
        shell.PathOfItemList(list, buffer.data());
    }
    return TextIn(buffer);
}

std::string RecentFolder(ShellSystem& shell) { return GetDestinationFolder(RecentFolderNumber, shell); }

void RemoveShortcut(const std::string& name, std::int32_t folder, ShellSystem& shell,
                    const std::string& programFolder) {
    std::string path = GetDestinationFolder(folder, shell);
    if (!path.empty() && path.back() != PathSeparator) {
        path += PathSeparator;
    }
    DeleteOrListFile(path + name + LinkEnding, programFolder);
}

} // namespace lumbrix
