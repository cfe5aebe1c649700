// Which control the mouse is over, and the pointer that says whether a press on it does something.
#pragma once

#include "base/geometry.h"
#include "toolkit/hoveredcontrol.h"

#include <windows.h>

#include <vector>

namespace lumbrix {

// For labels that let the mouse through, so that their window has to find out what lies below it.
class Hover {
  public:
    // Over these controls the pointer is a hand, elsewhere an arrow.
    explicit Hover(std::vector<int> links) : control_(std::move(links)) {}

    // The mouse has moved to a place in the client area of a window: remembers the control there, hidden and disabled
    // ones passed over, and sets the pointer. Where no control is found, neither the window itself, the one before
    // stays.
    void MoveTo(HWND window, PixelPoint place);

    // The control remembered, 0 for none yet. A press acts on it wherever it is.
    int Control() const { return control_.Id(); }
    bool IsOverLink() const { return control_.IsLink(); }

  private:
    HoveredControl control_;
};

} // namespace lumbrix
