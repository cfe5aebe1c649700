// Reading, writing and deleting a user's settings one by one, as strings.
//
// `path` is that of a key below a root, `name` that of a value; the name "*" stands for the key's default value.
// Nothing is shown and nothing raised. Longer paths and names than stated are cut.
#pragma once

#include "platform/settingsstore.h"

#include <string>

namespace lumbrix {

// Deletes a value of a key whose path has 299 characters at most. The status of opening the key or of deleting the
// value, whichever was the last.
std::int32_t DeleteRegValue(SettingsRoot root, const std::string& path, const std::string& name,
                            SettingsStore& store = SystemSettings());

// The text of a value, whose name has 255 characters at most, of a key whose path has 299 at most; of a value that is
// no text, its bytes up to the first zero. Empty where there is no such value or it takes more than 256 bytes. The key
// stays open until the program ends.
std::string GetRegValue(SettingsRoot root, const std::string& path, const std::string& name,
                        SettingsStore& store = SystemSettings());

// Writes a text, and makes the key if it is missing. Of data beyond 2047 characters the rest is written as zeros. 0,
// whether that worked or not.
std::int32_t SetRegValue(SettingsRoot root, const std::string& path, const std::string& name, const std::string& data,
                         SettingsStore& store = SystemSettings());

// Deletes a key, whose path has 254 characters at most, with its values. The status of that; 0 also where the key
// cannot be opened.
std::int32_t DeleteRegKey(SettingsRoot root, const std::string& path, SettingsStore& store = SystemSettings());

} // namespace lumbrix
