// Standing before a control: seeing its messages first, and answering some of them in its place.
#pragma once

#include <windows.h>

namespace lumbrix {

// Derive, and say in OnMessage what is done. It stands before the control until one of the two is gone, or Detach.
class ControlWatch {
  public:
    ControlWatch() = default;
    virtual ~ControlWatch() { Detach(); }
    ControlWatch(const ControlWatch&) = delete;
    ControlWatch& operator=(const ControlWatch&) = delete;

    // Leaves the control that it stood before, if any.
    void Attach(HWND control);
    void Detach();

    // Null where it stands before none.
    HWND Watched() const { return control_; }

  protected:
    // Call PassOn for what the control itself is to answer. An exception ends here and leaves the answer 0.
    virtual LRESULT OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) = 0;
    LRESULT PassOn(UINT message, WPARAM wordParameter, LPARAM longParameter);

  private:
    static LRESULT CALLBACK Procedure(HWND control, UINT message, WPARAM wordParameter, LPARAM longParameter,
                                      UINT_PTR id, DWORD_PTR watch);

    HWND control_ = nullptr;
};

} // namespace lumbrix
