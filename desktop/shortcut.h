// The program's shortcut on the desktop: making sure of it at every start, and taking it away.
#pragma once

#include "platform/shelllink.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// The number of the folder whose files stand on the user's desktop.
inline constexpr std::int32_t DesktopFolder = 16;

inline constexpr const char* ShortcutName = "Lumbrix";

// What the steps here ask of the system. What is said to raise throws RuntimeError.
class ShortcutSystem {
  public:
    virtual ~ShortcutSystem() = default;

    virtual std::string ProgramPath() = 0;

    // The path of a folder by its number; empty where there is none.
    virtual std::string DestinationFolder(std::int32_t id) = 0;

    // The bare name of the first match of a pattern. An empty pattern goes on with the search before; empty where
    // nothing more is found. May raise.
    virtual std::string FirstMatch(const std::string& pattern) = 0;

    // In bytes; -1 where the file is not found.
    virtual std::int32_t FileSize(const std::string& path) = 0;

    // These may raise.
    virtual void RemoveFile(const std::string& path) = 0;
    virtual void DuplicateFile(const std::string& source, const std::string& target) = 0;
    virtual void DeleteOrListFile(const std::string& path) = 0;

    // Makes the link "NAME.lnk" in a folder.
    virtual void CreateLink(std::int32_t folder, const std::string& name, const LinkFields& fields) = 0;

    // Since midnight.
    virtual std::int32_t MillisecondsOfDay() = 0;
    virtual void Pause(int milliseconds) = 0;
};

// Makes the shortcut where there is none, or an empty one, which counts as damaged. One with contents stays, wherever
// it leads. A failure ends it without a word.
void EnsureDesktopShortcut(ShortcutSystem& system);

// Has the shortcut to the running program made, then waits for a further match of the search before, for a little over
// six seconds; a wait that midnight falls into goes on until the same time of the next day. A match is copied over the
// shortcut. 1 if that was done, otherwise 0. `programPath` is not looked at.
std::int32_t MakeShortcut(ShortcutSystem& system, const std::string& programPath, const std::string& name,
                          std::int32_t folderId);

// Takes the shortcut away. Where it cannot be deleted that is tried fifty times, and listed as often for the next
// start. A failure ends it without a word.
void RemoveDesktopShortcut(ShortcutSystem& system);

} // namespace lumbrix
