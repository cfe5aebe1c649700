// The list view that shows a picture behind its icons, of which it has none: its marquee is the rubber band of a crop.
#pragma once

#include "toolkit/controlwatch.h"

#include <windows.h>

#include <string>
#include <utility>

namespace lumbrix {

// Shows a picture file in a window's picture control, at its top left in its own size, and draws it at once. The
// control loads the file itself; where it cannot, it is given the same picture as a bitmap. A file that cannot be read
// changes nothing.
void SetPreviewImage(HWND window, const std::string& path);

// Sees to it that a press of the left button is notified once as NM_LDOWN, and its release once as NM_RELEASEDCAPTURE:
// the control itself does not notify a press, and notifies the release of the mouse when it pleases: at the press of
// either button, at the beginning of a marquee or at its end.
class ButtonWatch : public ControlWatch {
  public:
    // Whether the NM_RELEASEDCAPTURE that was just notified is about the release of the left button; to be asked once
    // for each. What the control notifies while it works off a message of its own is about one of those other moments.
    bool IsRelease() { return std::exchange(isNotifyingRelease_, false) || messagesInside_ == 0; }

  private:
    LRESULT OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) override;
    LRESULT PassInside(UINT message, WPARAM wordParameter, LPARAM longParameter);
    void Notify(UINT code) const;
    void Release();

    bool isPressed_ = false;
    bool isNotifyingRelease_ = false;
    int messagesInside_ = 0; // that the control is working off, one within the other
};

} // namespace lumbrix
