// The settings of a user: keys that hold named values. On Windows the registry, on Linux a text file.
//
// Keys lie below a root, under a path whose parts are separated by backslashes. Paths and names are compared without
// letter case. Numbers of roots, types and statuses are those of the Windows registry on both systems. Texts are 8-bit.
#pragma once

#include <cstdint>

namespace lumbrix {

// A root by its number. On Windows any open key of the registry will do, on Linux only those that have a name there.
using SettingsRoot = std::uint32_t;
inline constexpr SettingsRoot CurrentUserRoot = 0x80000001;
inline constexpr SettingsRoot LocalMachineRoot = 0x80000002;

inline constexpr std::uint32_t AllAccess = 0xF003F;
inline constexpr std::uint32_t TextType = 1;   // of a value that is text with a zero behind
inline constexpr std::uint32_t NumberType = 4; // of one that is four bytes, the lowest first

// What every operation returns: 0 for success, or the registry's number of what went wrong.
inline constexpr std::int32_t SettingsDone = 0;
inline constexpr std::int32_t SettingNotFound = 2;
inline constexpr std::int32_t SettingsAccessDenied = 5; // also: the key has keys below it
inline constexpr std::int32_t BadSettingsHandle = 6;
inline constexpr std::int32_t MoreSettingData = 234;
inline constexpr std::int32_t SettingsCannotWrite = 1013;
inline constexpr std::int32_t SettingsKeyDeleted = 1018;

class SettingsStore {
  public:
    // An open key; 0 is none.
    using Key = std::uintptr_t;

    virtual ~SettingsStore() = default;

    // Opens a key that is there; `key` stays as it was where there is none. An empty path stands for the root.
    virtual std::int32_t OpenKey(SettingsRoot root, const char* path, std::uint32_t access, Key& key) = 0;

    // Opens a key, and makes it with all keys above it where it is missing.
    virtual std::int32_t CreateKey(SettingsRoot root, const char* path, std::uint32_t access, Key& key) = 0;

    // Fills `bytes`, whose size is in `length`, with a value of any type. `length` becomes the value's. On failure, and
    // where the value is longer, the type and the bytes stay as they were. An empty name stands for the key's default
    // value.
    virtual std::int32_t QueryValue(Key key, const char* name, std::uint32_t& type, char* bytes,
                                    std::uint32_t& length) = 0;

    virtual std::int32_t SetValue(Key key, const char* name, std::uint32_t type, const char* bytes,
                                  std::uint32_t length) = 0;
    virtual std::int32_t DeleteValue(Key key, const char* name) = 0;

    // Deletes a key that has no keys below it, with its values.
    virtual std::int32_t DeleteKey(SettingsRoot root, const char* path) = 0;

    virtual std::int32_t CloseKey(Key key) = 0;
};

// The store of the user who runs the program. Several threads may use it.
SettingsStore& SystemSettings();

} // namespace lumbrix
