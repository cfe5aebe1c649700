// What a press in the About box does.
#include "desktop/aboutpress.h"

#include "desktop/systeminfo.h"

namespace lumbrix {

void ActOnPress(int control, Launcher& launcher, const RemovalSteps& removal, SettingsStore& store) {
    switch (control) {
    case aboutbox::WebPageLabel:
        return launcher.OpenPage(maker::WebAddress);
    case aboutbox::SystemInfoLabel:
        return OpenSystemInfo(launcher, store);
    case aboutbox::UninstallLabel:
        return Uninstall(removal);
    default:
        return;
    }
}

} // namespace lumbrix
