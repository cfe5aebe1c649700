// Settings that belong to one test: on Linux in a folder of its own, on Windows below a key of its own.
#pragma once

#include "platform/settingsstore.h"
#include "tests/support/temporaryfolder.h"

#include <cstdlib>
#include <random>
#include <string>

#ifdef _WIN32
#include <windows.h>
#endif

namespace tests {

// While it lives an environment variable has another value; null for none.
class EnvironmentVariable {
  public:
    EnvironmentVariable(const char* name, const char* value) : name_(name) {
        const char* before = std::getenv(name);
        wasSet_ = before != nullptr;
        before_ = wasSet_ ? before : "";
        Set(value);
    }
    ~EnvironmentVariable() { Set(wasSet_ ? before_.c_str() : nullptr); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

  private:
    void Set(const char* value) {
#ifdef _WIN32
        _putenv_s(name_.c_str(), value == nullptr ? "" : value);
#else
        value == nullptr ? unsetenv(name_.c_str()) : setenv(name_.c_str(), value, 1);
#endif
    }

    std::string name_;
    bool wasSet_ = false;
    std::string before_;
};

// A key that is not there at first, and nothing is left of it in the end.
class OwnSettings {
  public:
    OwnSettings() {
        std::random_device random;
        key_ = "SOFTWARE\\LumbrixTest" + std::to_string(random());
    }
    ~OwnSettings() {
#ifdef _WIN32
        RegDeleteTreeA(HKEY_CURRENT_USER, key_.c_str());
#endif
    }
    OwnSettings(const OwnSettings&) = delete;
    OwnSettings& operator=(const OwnSettings&) = delete;

    const std::string& Key() const { return key_; }

    // Of Linux: the folder of the settings file, which is not there at first.
    std::filesystem::path Folder() const { return folder_ / "lumbrix"; }

  private:
    TemporaryFolder folder_;
    EnvironmentVariable configuration_{"XDG_CONFIG_HOME", folder_.Path().string().c_str()};
    std::string key_;
};

} // namespace tests
