// Taking the program off the machine, as the About box does it.
#include "desktop/removal.h"

#include "platform/files.h"

namespace lumbrix {

void Uninstall(const RemovalSteps& steps) {
    const std::string program = ProgramPath();
    steps.removeDesktopShortcut();
    steps.endAboutBox();
    steps.deleteAtRestart(program);
    steps.endMainWindow();
}

} // namespace lumbrix
