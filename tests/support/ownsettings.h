// Settings that belong to one test: on Linux in a folder of its own, on Windows below a key of its own.
#pragma once

#include "platform/settingsstore.h"
#include "tests/support/environment.h"
#include "tests/support/temporaryfolder.h"

#include <random>
#include <string>

#ifdef _WIN32
#include <windows.h>
#endif

namespace tests {

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
