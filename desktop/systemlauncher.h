// Starting what lies outside the program, by the system itself.
#pragma once

#include "desktop/launcher.h"

#include <windows.h>

namespace lumbrix {

class SystemLauncher : public Launcher {
  public:
    // The window is named to the system as the one that asks for a page.
    explicit SystemLauncher(HWND window) : window_(window) {}

    void OpenPage(const std::string& address) override;
    void StartProgram(const std::string& program) override;

  private:
    HWND window_;
};

} // namespace lumbrix
