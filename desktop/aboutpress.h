// What a press in the About box does.
#pragma once

#include "desktop/aboutlayout.h"
#include "desktop/launcher.h"
#include "desktop/removal.h"
#include "platform/settingsstore.h"

#include <array>

namespace lumbrix {

// The lines that do something.
inline constexpr std::array<aboutbox::Id, 3> AboutBoxLinks{aboutbox::WebPageLabel, aboutbox::SystemInfoLabel,
                                                           aboutbox::UninstallLabel};

// Does what belongs to the control that the mouse was last seen over, wherever the press is: nothing for all but links.
void ActOnPress(int control, Launcher& launcher, const RemovalSteps& removal, SettingsStore& store = SystemSettings());

} // namespace lumbrix
