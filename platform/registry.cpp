// Reading, writing and deleting a user's settings one by one, as strings.
#include "platform/registry.h"

#include <algorithm>
#include <array>

namespace lumbrix {

namespace {

// The sizes in bytes of the buffers that texts pass through, each with a zero behind the text.
constexpr std::size_t PathBytes = 300;
constexpr std::size_t DeletedPathBytes = 255;
constexpr std::size_t NameBytes = 256;
constexpr std::size_t ReadBytes = 256;
constexpr std::size_t WrittenBytes = 2048;

std::string FittingInto(std::size_t bytes, const std::string& text) { return text.substr(0, bytes - 1); }

std::string ValueName(const std::string& name) { return name == "*" ? std::string() : name; }

} // namespace

std::int32_t DeleteRegValue(SettingsRoot root, const std::string& path, const std::string& name, SettingsStore& store) {
    SettingsStore::Key key = 0;
    std::int32_t status = store.OpenKey(root, FittingInto(PathBytes, path).c_str(), AllAccess, key);
    if (status == SettingsDone) {
        status = store.DeleteValue(key, ValueName(name).c_str());
    }
    store.CloseKey(key); // also one that is not open
    return status;
}

std::string GetRegValue(SettingsRoot root, const std::string& path, const std::string& name, SettingsStore& store) {
    SettingsStore::Key key = 0; // left open on purpose
    if (store.OpenKey(root, FittingInto(PathBytes, path).c_str(), AllAccess, key) != SettingsDone) {
        return {};
    }
    std::array<char, ReadBytes> bytes{};
    std::uint32_t type = 0; // any will do
    std::uint32_t length = bytes.size();
    store.QueryValue(key, FittingInto(NameBytes, ValueName(name)).c_str(), type, bytes.data(), length);
    return {bytes.begin(), std::find(bytes.begin(), bytes.end(), '\0')};
}

std::int32_t SetRegValue(SettingsRoot root, const std::string& path, const std::string& name, const std::string& data,
                         SettingsStore& store) {
    SettingsStore::Key key = 0;
    if (store.CreateKey(root, path.c_str(), AllAccess, key) != SettingsDone) {
        return 0;
    }
    std::string bytes = FittingInto(WrittenBytes, data);
    bytes.resize(data.size() + 1); // as long as the whole data with its zero
    store.SetValue(key, ValueName(name).c_str(), TextType, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    store.CloseKey(key);
    return 0;
}

std::int32_t DeleteRegKey(SettingsRoot root, const std::string& path, SettingsStore& store) {
    const std::string fitting = FittingInto(DeletedPathBytes, path);
    SettingsStore::Key key = 0;
    if (store.OpenKey(root, fitting.c_str(), AllAccess, key) != SettingsDone) {
        return 0;
    }
    const std::int32_t status = store.DeleteKey(root, fitting.c_str());
    store.CloseKey(key);
    return status;
}

} // namespace lumbrix
