// Reading and writing the files of shell links ("NAME.lnk"), and the shell's folders that they lie in.
//
// Folders go by the shell's numbers (CSIDL values). On Windows COM must have been initialised on the calling thread.
// Nothing raises, and but for GetShellLinkInfo nothing reports a failure.
#pragma once

#include "platform/cleanup.h"
#include "platform/shellsystem.h"

#include <optional>
#include <string>

namespace lumbrix {

struct LinkFields {
    std::string target;
    std::string workingFolder;
    std::string arguments;
    std::string description;
    std::string iconFile;
    std::int32_t iconIndex = 0;
    std::int32_t showCommand = 1; // as a normal window
    std::uint16_t hotKey = 0;     // the key in the low byte, the keys held with it in the high one

    bool operator==(const LinkFields&) const = default;
};

// Writes the link "NAME.lnk" to a folder, or to the current one where the folder's number is unknown. An empty
// description or icon file is not written, and the hot key never is. The whole path is cut at 259 bytes.
void CreateLink(std::int32_t folder, const std::string& name, const LinkFields& fields,
                ShellSystem& shell = SystemShell());

// Reads a link, whose path is cut at 259 bytes; a file that is no link reads as an empty one. 1 if that worked, 0 for a
// blank path and where there are no link objects. An error while reading is shown; it gives 0, and the fields that were
// not read by then keep their values. The link object is not released until the program ends.
std::int32_t GetShellLinkInfo(const std::string& path, LinkFields& fields, ShellSystem& shell = SystemShell());

// Gives a link another icon, the first of a file, and gives back the file that the icon was in; empty where that cannot
// be read. Of the hot key the high byte is lost.
std::string ChangeLinkIcon(const std::string& path, const std::string& iconFile, ShellSystem& shell = SystemShell());

// The path of a folder, without a separator behind; empty where the number is unknown.
std::string GetDestinationFolder(std::int32_t folder, ShellSystem& shell = SystemShell());

// That of the folder of what was used recently.
std::string RecentFolder(ShellSystem& shell = SystemShell());

// Deletes the link "NAME.lnk" from a folder, or from the current one where the number is unknown; what cannot be
// deleted is listed for the next start. `programFolder` is where that list lies.
void RemoveShortcut(const std::string& name, std::int32_t folder, ShellSystem& shell = SystemShell(),
                    const std::string& programFolder = ProgramFolder());

// An empty link object, or 0 where there are none. Sets ShellPathLength anew.
ShellSystem::Link ShellLinkFactory(ShellSystem& shell = SystemShell());

// The length that the texts of links are read with: 260 or 1024 bytes, and 0 before the first link object was made.
std::int32_t ShellPathLength();

// That length for a system; nothing stands for one that does not tell its version.
std::int32_t FindMaxPath(const std::optional<SystemVersion>& version);

} // namespace lumbrix
