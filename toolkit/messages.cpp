// Messages to the user. They have no owner, so the windows that are open go on being served.
#include "toolkit/messages.h"

#include <windows.h>

namespace lumbrix {

void ShowMessage(const std::string& text, const std::string& title) {
    MessageBoxA(nullptr, text.c_str(), title.c_str(), MB_OK);
}

bool AskYesNo(const std::string& text, const std::string& title) {
    return MessageBoxA(nullptr, text.c_str(), title.c_str(), MB_YESNO) == IDYES;
}

} // namespace lumbrix
