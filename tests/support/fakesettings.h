// A settings store in memory that writes down what is asked of it.
#pragma once

#include "platform/settingsstore.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace tests {

class FakeSettings : public lumbrix::SettingsStore {
  public:
    // One row for each call: what is done, then the root or the key's number, then the other arguments. Keys are
    // numbered from 1 in the order of opening.
    std::vector<std::string> calls;
    std::set<Key> openKeys;

    // What the calls return, if not success.
    std::int32_t openStatus = 0;
    std::int32_t createStatus = 0;
    std::int32_t deleteStatus = 0;
    std::int32_t deleteKeyStatus = 0;

    // By name, whatever the key; a value whose type is not there is text.
    std::map<std::string, std::string> values;
    std::map<std::string, std::uint32_t> types;

    long Count(const std::string& call) const {
        return std::count_if(calls.begin(), calls.end(), [&](const std::string& row) { return row.starts_with(call); });
    }

    std::int32_t OpenKey(lumbrix::SettingsRoot root, const char* path, std::uint32_t access, Key& key) override {
        calls.push_back("open " + Hexadecimal(root) + " " + path + " " + Hexadecimal(access));
        return Open(openStatus, key);
    }

    std::int32_t CreateKey(lumbrix::SettingsRoot root, const char* path, std::uint32_t access, Key& key) override {
        calls.push_back("create " + Hexadecimal(root) + " " + path + " " + Hexadecimal(access));
        return Open(createStatus, key);
    }

    std::int32_t QueryValue(Key key, const char* name, std::uint32_t& type, char* bytes,
                            std::uint32_t& length) override {
        calls.push_back("query " + std::to_string(key) + " '" + name + "' " + std::to_string(length));
        const auto found = values.find(name);
        if (found == values.end()) {
            return lumbrix::SettingNotFound;
        }
        if (found->second.size() > length) {
            return lumbrix::MoreSettingData;
        }
        const auto knownType = types.find(name);
        type = knownType == types.end() ? lumbrix::TextType : knownType->second;
        length = static_cast<std::uint32_t>(found->second.size());
        std::copy(found->second.begin(), found->second.end(), bytes);
        return 0;
    }

    std::int32_t SetValue(Key key, const char* name, std::uint32_t type, const char* bytes,
                          std::uint32_t length) override {
        calls.push_back("set " + std::to_string(key) + " '" + name + "' " + std::to_string(type) + " " +
                        std::to_string(length));
        values[name] = std::string(bytes, length);
        types[name] = type;
        return 0;
    }

    std::int32_t DeleteValue(Key key, const char* name) override {
        calls.push_back("delete " + std::to_string(key) + " '" + name + "'");
        values.erase(name);
        return deleteStatus;
    }

    std::int32_t DeleteKey(lumbrix::SettingsRoot root, const char* path) override {
        calls.push_back("delete key " + Hexadecimal(root) + " " + path);
        return deleteKeyStatus;
    }

    std::int32_t CloseKey(Key key) override {
        calls.push_back("close " + std::to_string(key));
        openKeys.erase(key);
        return 0;
    }

  private:
    static std::string Hexadecimal(std::uint32_t number) {
        char digits[9];
        std::snprintf(digits, sizeof digits, "%08X", static_cast<unsigned>(number));
        return digits;
    }

    std::int32_t Open(std::int32_t status, Key& key) {
        if (status == 0) {
            key = ++last_;
            openKeys.insert(key);
        }
        return status;
    }

    Key last_ = 0;
};

} // namespace tests
