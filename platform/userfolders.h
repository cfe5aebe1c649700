// The user's folders on Linux by the numbers that the shell of Windows gives to such.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace lumbrix {

// The full path of a folder, without a separator behind: of the desktop (0, 16), documents (5), what was used recently
// (8), music (13), videos (14), pictures (39) and the user's own (40). Nothing for other numbers, and for a user
// without a folder. Where it lies is what "user-dirs.dirs" in the folder for configuration says, or the folder's
// English name below the user's own. It need not be there.
std::optional<std::string> UserFolder(std::int32_t number);

// What a file of that form says about a name, such as "XDG_DESKTOP_DIR", for a user whose folder is `home`; the last
// line about it counts. Nothing where it does not say a full path or one below `home`.
std::optional<std::string> NamedUserFolder(const std::string& file, const std::string& name, const std::string& home);

} // namespace lumbrix
