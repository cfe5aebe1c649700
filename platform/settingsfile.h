// Settings as a text file that a person can read.
//
// One line in brackets for each key, below it one for each of its values:
//
//     [HKEY_CURRENT_USER\SOFTWARE\Lumbrix]
//     "Delete" = "C:\pictures\out1.bmp"
//     "Other" = 3: 00 1A FF
//
// What is no text stands as its type and its bytes. In names and texts a percent sign with two hexadecimal digits
// stands for a byte that cannot be written as it is. Empty lines and those that begin with # are passed over.
#pragma once

#include "platform/settingsstore.h"

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumbrix {

struct Setting {
    std::string name; // empty for the key's default value
    std::uint32_t type = TextType;
    std::string bytes; // of a text with the zero behind

    bool operator==(const Setting&) const = default;
};

struct SettingsKey {
    SettingsRoot root = CurrentUserRoot;
    std::string path; // without a backslash at either end
    std::vector<Setting> values;

    // Null where there is none.
    Setting* Find(const std::string& name);
};

class Settings {
  public:
    // Whether a key is there: a root that has a name, what was added, and all above that.
    bool Has(SettingsRoot root, const std::string& path) const;
    bool HasKeysBelow(SettingsRoot root, const std::string& path) const;

    // Null where nothing was added at that place itself.
    SettingsKey* Find(SettingsRoot root, const std::string& path);

    // Finds a key or makes it; the root must have a name.
    SettingsKey& Add(SettingsRoot root, const std::string& path);

    // Removes a key that has none below it; the one above it stays.
    void Remove(SettingsRoot root, const std::string& path);

    std::string Text() const;

    // Nothing where the text is not wholly what stands above.
    static std::optional<Settings> FromText(const std::string& text);

  private:
    using Place = std::pair<SettingsRoot, std::string>; // the path without empty parts, in capitals
    static Place PlaceOf(SettingsRoot root, const std::string& path);

    std::map<Place, SettingsKey> keys_;
};

// Whether a root has a name.
bool IsNamedRoot(SettingsRoot root);

} // namespace lumbrix
