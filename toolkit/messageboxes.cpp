// Messages as the platform shows them.
#include "toolkit/messageboxes.h"

namespace lumbrix {

void MessageBoxes::Show(const std::string& text, const std::string& title) { ShowBox(text, title, MB_OK); }

void MessageBoxes::ShowTechnical(const std::string& text) { ShowBox(text, "", MB_TASKMODAL | MB_SETFOREGROUND); }

bool MessageBoxes::Confirm(const std::string& text, const std::string& title) {
    return ShowBox(text, title, MB_YESNO) == IDYES;
}

// A box waits for the user, not the other way round.
int MessageBoxes::ShowBox(const std::string& text, const std::string& title, UINT style) const {
    const HCURSOR before = SetCursor(LoadCursorA(nullptr, IDC_ARROW));
    const int answer = MessageBoxA(nullptr, text.c_str(), title.c_str(), style);
    if (waits_ > 0) {
        SetCursor(before);
    }
    return answer;
}

void MessageBoxes::BeginWaiting() {
    if (waits_++ == 0) {
        before_ = SetCursor(LoadCursorA(nullptr, IDC_WAIT));
    }
}

void MessageBoxes::EndWaiting() {
    if (--waits_ == 0) {
        SetCursor(before_);
    }
}

} // namespace lumbrix
