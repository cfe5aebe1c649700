// Taking the program off the machine, as the About box does it.
#pragma once

#include <functional>
#include <string>

namespace lumbrix {

// What that does to the desktop and the windows, so that tests keep a record in its place.
struct RemovalSteps {
    std::function<void()> removeDesktopShortcut;
    std::function<void()> endAboutBox;
    std::function<void(const std::string& path)> deleteAtRestart;
    std::function<void()> endMainWindow; // and with it the program
};

// Takes away the shortcut and, at the next start of the system, the program file. Asks nothing and says nothing.
// Settings, work files and whatever else lies beside the program stay.
void Uninstall(const RemovalSteps& steps);

} // namespace lumbrix
