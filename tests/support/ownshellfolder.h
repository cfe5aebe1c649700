// A folder of the shell that belongs to one test.
#pragma once

#include "tests/support/environment.h"
#include "tests/support/temporaryfolder.h"

#include <cstdint>
#include <string>

#ifdef _WIN32
#include <windows.h>
#endif

namespace tests {

// On Windows: a folder by its name in the registry and its number. Programs that run at the same time take different
// ones.
struct ShellPlace {
    const char* name;
    std::int32_t number;
};
inline constexpr ShellPlace SendToPlace = {"SendTo", 9};
inline constexpr ShellPlace TemplatesPlace = {"Templates", 21};

#ifdef _WIN32

// While it lives the folder is another one, which is there and empty at first.
class OwnShellFolder {
  public:
    explicit OwnShellFolder(const ShellPlace& place) : place_(place) {
        DWORD size = sizeof before_;
        RegOpenKeyExA(HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders",
                      0, KEY_READ | KEY_WRITE, &key_);
        wasSet_ = RegQueryValueExA(key_, place.name, nullptr, &typeBefore_, before_, &size) == ERROR_SUCCESS;
        sizeBefore_ = size;
        const std::string path = Path();
        const DWORD length = path.size();
        RegSetValueExA(key_, place.name, 0, REG_SZ, reinterpret_cast<const BYTE*>(path.c_str()), length + 1);
    }
    ~OwnShellFolder() {
        if (wasSet_) {
            RegSetValueExA(key_, place_.name, 0, typeBefore_, before_, sizeBefore_);
        } else {
            RegDeleteValueA(key_, place_.name);
        }
        RegCloseKey(key_);
    }
    OwnShellFolder(const OwnShellFolder&) = delete;
    OwnShellFolder& operator=(const OwnShellFolder&) = delete;

    std::int32_t Number() const { return place_.number; }
    std::string Path() const { return folder_.Path().string(); }

  private:
    ShellPlace place_;
    TemporaryFolder folder_;
    HKEY key_ = nullptr;
    bool wasSet_ = false;
    DWORD typeBefore_ = 0;
    BYTE before_[600] = {};
    DWORD sizeBefore_ = 0;
};

#else

// While it lives the desktop is another folder, which is there and empty at first.
class OwnShellFolder {
  public:
    explicit OwnShellFolder(const ShellPlace& /*place*/) { std::filesystem::create_directory(Path()); }

    std::int32_t Number() const { return 16; }
    std::string Path() const { return (home_ / "Desktop").string(); }

  private:
    TemporaryFolder home_;
    EnvironmentVariable homeVariable_{"HOME", home_.Path().c_str()};
    EnvironmentVariable configuration_{"XDG_CONFIG_HOME", nullptr};
};

#endif

// While it lives another folder is the current one.
class CurrentFolder {
  public:
    explicit CurrentFolder(const std::filesystem::path& folder) { std::filesystem::current_path(folder); }
    ~CurrentFolder() { std::filesystem::current_path(before_); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

  private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

} // namespace tests
