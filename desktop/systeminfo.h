// The system information tool: where the settings of the machine say it is.
#pragma once

#include "desktop/launcher.h"
#include "platform/settingsstore.h"

#include <cstdint>
#include <string>

namespace lumbrix {

inline constexpr std::int16_t InfoValueRead = -1;
inline constexpr std::int16_t InfoValueMissing = 0;

// Reads a value into a text. Of text it is what stands before the first zero. A number is read as such a text, too:
// "&h" and, from the last of its bytes to the first, the hexadecimal digits of each, of small ones without a leading
// zero. A value of another type is read and leaves the text as it was. Where there is no such value, or it takes more
// than 1024 bytes, the text is emptied. Key and name are cut at 254 characters.
std::int16_t ReadInfoValue(SettingsRoot root, const std::string& key, const std::string& name, std::string& text,
                           SettingsStore& store = SystemSettings());

// Starts the tool, wherever it is; nothing where it is not found.
void OpenSystemInfo(Launcher& launcher, SettingsStore& store = SystemSettings());

} // namespace lumbrix
