// A text of the registry that a test sets or takes away, and that is as before in the end.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tests {

class RegistryValue {
  public:
    // An empty name stands for the key's default value, no text for a value that is missing.
    RegistryValue(HKEY root, const std::string& key, const std::string& name, const std::optional<std::string>& text)
        : root_(root), key_(key), name_(name) {
        Remember();
        if (text) {
            EXPECT_EQ(RegSetKeyValueA(root_, key_.c_str(), name_.c_str(), REG_SZ, text->c_str(), text->size() + 1), 0);
        } else {
            RegDeleteKeyValueA(root_, key_.c_str(), name_.c_str());
        }
    }
    ~RegistryValue() {
        if (wasThere_) {
            RegSetKeyValueA(root_, key_.c_str(), name_.c_str(), type_, before_.data(),
                            static_cast<DWORD>(before_.size()));
        } else {
            RegDeleteKeyValueA(root_, key_.c_str(), name_.c_str());
        }
    }
    RegistryValue(const RegistryValue&) = delete;
    RegistryValue& operator=(const RegistryValue&) = delete;

  private:
    void Remember() {
        HKEY key = nullptr;
        if (RegOpenKeyExA(root_, key_.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
            return;
        }
        DWORD length = 0;
        wasThere_ = RegQueryValueExA(key, name_.c_str(), nullptr, &type_, nullptr, &length) == ERROR_SUCCESS;
        before_.resize(length);
        RegQueryValueExA(key, name_.c_str(), nullptr, nullptr, before_.data(), &length);
        RegCloseKey(key);
    }

    HKEY root_;
    std::string key_;
    std::string name_;
    bool wasThere_ = false;
    DWORD type_ = REG_SZ;
    std::vector<BYTE> before_;
};

} // namespace tests
