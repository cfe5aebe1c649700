// Which control the mouse is over, and the pointer that says whether a press on it does something.
#include "toolkit/hover.h"

namespace lumbrix {

void Hover::MoveTo(HWND window, PixelPoint place) {
    const HWND found = ChildWindowFromPointEx(window, {place.x, place.y}, CWP_SKIPINVISIBLE | CWP_SKIPDISABLED);
    control_.MoveOver(found == nullptr ? std::nullopt : std::optional(GetDlgCtrlID(found)));
    SetCursor(LoadCursorA(nullptr, IsOverLink() ? IDC_HAND : IDC_ARROW));
}

} // namespace lumbrix
