// Messages to the user. They have no owner, so the windows that are open go on being served.
#pragma once

#include <string>

namespace lumbrix {

// With one button, OK.
void ShowMessage(const std::string& text, const std::string& title);

// With two buttons; whether Yes was pressed.
bool AskYesNo(const std::string& text, const std::string& title);

} // namespace lumbrix
