// What the steps of the shortcut and of the removal ask of Windows.
#pragma once

#include "desktop/shortcut.h"
#include "platform/files.h"

namespace lumbrix {

// The shell's folders and links, the disk and the clock.
class DesktopSystem : public ShortcutSystem {
  public:
    std::string ProgramPath() override;
    std::string DestinationFolder(std::int32_t id) override;
    std::string FirstMatch(const std::string& pattern) override { return search_.FirstMatch(pattern); }
    std::int32_t FileSize(const std::string& path) override;
    void RemoveFile(const std::string& path) override;
    void DuplicateFile(const std::string& source, const std::string& target) override;
    void DeleteOrListFile(const std::string& path) override;
    void CreateLink(std::int32_t folder, const std::string& name, const LinkFields& fields) override;
    std::int32_t MillisecondsOfDay() override;
    void Pause(int milliseconds) override;

  private:
    FileSearch search_;
};

// Has a file deleted when the system starts the next time. That needs rights of an administrator; without them nothing
// happens.
void DeleteAtRestart(const std::string& path);

} // namespace lumbrix
