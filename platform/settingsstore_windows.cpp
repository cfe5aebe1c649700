// The settings of a user in the registry.
#include "platform/settingsstore.h"

#include <windows.h>

#include <cstring>
#include <vector>

namespace lumbrix {

namespace {

HKEY HandleOf(std::uintptr_t key) { return reinterpret_cast<HKEY>(key); }

class Registry : public SettingsStore {
  public:
    std::int32_t OpenKey(SettingsRoot root, const char* path, std::uint32_t access, Key& key) override {
        HKEY opened = nullptr;
        const LSTATUS status = RegOpenKeyExA(HandleOf(root), path, 0, access, &opened);
        if (status == ERROR_SUCCESS) {
            key = reinterpret_cast<Key>(opened);
        }
        return status;
    }

    std::int32_t CreateKey(SettingsRoot root, const char* path, std::uint32_t access, Key& key) override {
        HKEY opened = nullptr;
        char noClass[] = "";
        const LSTATUS status = RegCreateKeyExA(HandleOf(root), path, 0, noClass, 0, access, nullptr, &opened, nullptr);
        if (status == ERROR_SUCCESS) {
            key = reinterpret_cast<Key>(opened);
        }
        return status;
    }

    // What the registry puts into a buffer that is too small is not settled.
    std::int32_t QueryValue(Key key, const char* name, std::uint32_t& type, char* bytes,
                            std::uint32_t& length) override {
        std::vector<char> value(bytes, bytes + length);
        DWORD valueType = 0;
        DWORD valueLength = length;
        const LSTATUS status = RegQueryValueExA(HandleOf(key), name, nullptr, &valueType,
                                                reinterpret_cast<BYTE*>(value.data()), &valueLength);
        if (status == ERROR_SUCCESS) {
            type = valueType;
            std::memcpy(bytes, value.data(), value.size());
        }
        length = valueLength;
        return status;
    }

    std::int32_t SetValue(Key key, const char* name, std::uint32_t type, const char* bytes,
                          std::uint32_t length) override {
        return RegSetValueExA(HandleOf(key), name, 0, type, reinterpret_cast<const BYTE*>(bytes), length);
    }

    std::int32_t DeleteValue(Key key, const char* name) override { return RegDeleteValueA(HandleOf(key), name); }

    std::int32_t DeleteKey(SettingsRoot root, const char* path) override { return RegDeleteKeyA(HandleOf(root), path); }

    std::int32_t CloseKey(Key key) override { return RegCloseKey(HandleOf(key)); }
};

} // namespace

SettingsStore& SystemSettings() {
    static Registry registry;
    return registry;
}

} // namespace lumbrix
