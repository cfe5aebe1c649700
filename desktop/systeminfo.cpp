// The system information tool: where the settings of the machine say it is.
#include "desktop/systeminfo.h"

#include "platform/files.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace lumbrix {

namespace {

constexpr const char* ToolKey = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
constexpr const char* ToolValue = "PATH";
constexpr const char* FolderKey = "SOFTWARE\\Microsoft\\Shared Tools Location";
constexpr const char* FolderValue = "MSINFO";
constexpr const char* ToolInFolder = "\\MSINFO32.EXE";

// The sizes in bytes of the buffers: of the key and then the name, with a zero behind, and of the value.
constexpr std::size_t NameBytes = 255;
constexpr std::size_t ValueBytes = 1024;

std::string FittingName(const std::string& name) { return name.substr(0, NameBytes - 1); }

// A number's bytes as its digits, the last one first.
std::string NumberText(const std::string& bytes) {
    std::string text = "&h";
    std::for_each(bytes.rbegin(), bytes.rend(), [&](char byte) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%X", static_cast<unsigned char>(byte));
        text += digits;
    });
    return text;
}

} // namespace

std::int16_t ReadInfoValue(SettingsRoot root, const std::string& key, const std::string& name, std::string& text,
                           SettingsStore& store) {
    SettingsStore::Key opened = 0;
    std::array<char, ValueBytes> value{};
    std::uint32_t type = 0;
    std::uint32_t length = value.size();
    const bool isRead = store.OpenKey(root, FittingName(key).c_str(), AllAccess, opened) == SettingsDone &&
                        store.QueryValue(opened, FittingName(name).c_str(), type, value.data(), length) == SettingsDone;
    const std::string bytes(value.begin(), std::find(value.begin(), value.end(), '\0'));
    if (!isRead) {
        text.clear();
    } else if (type == TextType) {
        text = bytes;
    } else if (type == NumberType) {
        text = NumberText(bytes);
    }
    store.CloseKey(opened); // also one that is not open
    return isRead ? InfoValueRead : InfoValueMissing;
}

void OpenSystemInfo(Launcher& launcher, SettingsStore& store) {
    std::string program;
    if (ReadInfoValue(LocalMachineRoot, ToolKey, ToolValue, program, store) == InfoValueMissing) {
        if (ReadInfoValue(LocalMachineRoot, FolderKey, FolderValue, program, store) == InfoValueMissing) {
            return;
        }
        program += ToolInFolder;
        if (!FileExists(program)) {
            return;
        }
    }
    launcher.StartProgram(program);
}

} // namespace lumbrix
