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

// A clock that begins anew at midnight.
class DayClock {
  public:
    explicit DayClock(ShortcutSystem& system) : system_(system), start_(system.MillisecondsOfDay()), last_(start_) {}

    // Whether the wait has passed since the start. Where midnight falls into it, it never seems to; it then ends when
    // the clock has come as far as at the start. One that is set back a little has not seen midnight.
    bool IsOver() {
        constexpr std::int32_t HalfADay = 12 * 60 * 60 * 1000;
        const std::int32_t now = system_.MillisecondsOfDay();
        hasBegunAnew_ = hasBegunAnew_ || last_ - now > HalfADay;
        last_ = now;
        return now > start_ + LongestWaitMilliseconds || (hasBegunAnew_ && now >= start_);
    }

  private:
    ShortcutSystem& system_;
    std::int32_t start_;
    std::int32_t last_;
    bool hasBegunAnew_ = false;
};

std::string WaitForFurtherMatch(ShortcutSystem& system) {
    DayClock clock(system);
    std::string match;
    do {
        system.Pause(1);
        match = system.FirstMatch("");
    } while (match.empty() && !clock.IsOver());
    return match;
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
