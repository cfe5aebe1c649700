// The program's shortcut on the desktop: making sure of it at every start, and taking it away.
#include "desktop/shortcut.h"

#include "imaging/paths.h"
#include "platform/errors.h"

namespace lumbrix {

namespace {

constexpr std::int32_t ShowNormally = 1;
constexpr std::int32_t LongestWaitMilliseconds = 6000;
constexpr int MostDeletions = 50;

std::string ShortcutPath(ShortcutSystem& system, std::int32_t folderId, const std::string& name) {
    return AddBackslash(system.DestinationFolder(folderId)) + name + ".lnk";
}

// Whether six seconds have passed by a clock that begins anew at midnight. Where it does so meanwhile they never seem
// to pass; the wait then ends when the clock has come as far as at its start.
bool IsOver(std::int32_t start, std::int32_t now, bool hasBegunAnew) {
    return now > start + LongestWaitMilliseconds || (hasBegunAnew && now >= start);
}

std::string WaitForFurtherMatch(ShortcutSystem& system) {
    const std::int32_t start = system.MillisecondsOfDay();
    bool hasBegunAnew = false;
    for (;;) {
        system.Pause(1);
        std::string match = system.FirstMatch("");
        const std::int32_t now = system.MillisecondsOfDay();
        hasBegunAnew = hasBegunAnew || now < start;
        if (!match.empty() || IsOver(start, now, hasBegunAnew)) {
            return match;
        }
    }
}

} // namespace

void EnsureDesktopShortcut(ShortcutSystem& system) {
    trap([&] {
        const std::string shortcut = ShortcutPath(system, DesktopFolder, ShortcutName);
        if (!system.FirstMatch(shortcut).empty()) {
            if (system.FileSize(shortcut) != 0) {
                return;
            }
            system.RemoveFile(shortcut);
        }
        MakeShortcut(system, system.ProgramPath(), ShortcutName, DesktopFolder);
    });
}

std::int32_t MakeShortcut(ShortcutSystem& system, const std::string& /*programPath*/, const std::string& name,
                          std::int32_t folderId) {
    const std::string program = system.ProgramPath();
    system.CreateLink(folderId, name,
                      {.target = program,
                       .workingFolder = FolderPart(program),
                       .arguments = {},
                       .description = name,
                       .iconFile = program,
                       .iconIndex = 0,
                       .showCommand = ShowNormally});
    const std::string shortcut = ShortcutPath(system, folderId, name);
    const std::string match = WaitForFurtherMatch(system);
    if (match.empty()) {
        return 0;
    }
    return trap([&] { system.DuplicateFile(match, shortcut); }) ? 0 : 1;
}

void RemoveDesktopShortcut(ShortcutSystem& system) {
    trap([&] {
        const std::string shortcut = ShortcutPath(system, DesktopFolder, ShortcutName);
        for (int i = 0; i < MostDeletions && !system.FirstMatch(shortcut).empty(); ++i) {
            system.DeleteOrListFile(shortcut);
        }
    });
}

} // namespace lumbrix
