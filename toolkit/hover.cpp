// Which control the mouse is over, and the pointer that says whether a press on it does something.
#include "toolkit/hover.h"

#include <algorithm>

namespace lumbrix {

void Hover::MoveTo(HWND window, PixelPoint place) {
    const HWND found = ChildWindowFromPointEx(window, {place.x, place.y}, CWP_SKIPINVISIBLE | CWP_SKIPDISABLED);
    if (found != nullptr) {
        control_ = GetDlgCtrlID(found);
    }
    SetCursor(LoadCursorA(nullptr, IsOverLink() ? IDC_HAND : IDC_ARROW));
}

bool Hover::IsOverLink() const { return std::find(links_.begin(), links_.end(), control_) != links_.end(); }

} // namespace lumbrix
