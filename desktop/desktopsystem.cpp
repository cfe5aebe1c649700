// What the steps of the shortcut and of the removal ask of Windows.
#include "desktop/desktopsystem.h"

#include "imaging/paths.h"
#include "platform/cleanup.h"

#include <windows.h>

namespace lumbrix {

std::string DesktopSystem::ProgramPath() { return lumbrix::ProgramPath(); }

std::string DesktopSystem::DestinationFolder(std::int32_t id) { return GetDestinationFolder(id); }

std::int32_t DesktopSystem::FileSize(const std::string& path) { return ShortcutSize(path); }

void DesktopSystem::RemoveFile(const std::string& path) { lumbrix::RemoveFile(path); }

void DesktopSystem::DuplicateFile(const std::string& source, const std::string& target) {
    lumbrix::DuplicateFile(source, target);
}

void DesktopSystem::DeleteOrListFile(const std::string& path) { lumbrix::DeleteOrListFile(path); }

void DesktopSystem::CreateLink(std::int32_t folder, const std::string& name, const LinkFields& fields) {
    lumbrix::CreateLink(folder, name, fields);
}

std::int32_t DesktopSystem::MillisecondsOfDay() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return ((now.wHour * 60 + now.wMinute) * 60 + now.wSecond) * 1000 + now.wMilliseconds;
}

void DesktopSystem::Pause(int milliseconds) { Sleep(static_cast<DWORD>(milliseconds)); }

void DeleteAtRestart(const std::string& path) { MoveFileExA(path.c_str(), nullptr, MOVEFILE_DELAY_UNTIL_REBOOT); }

} // namespace lumbrix
