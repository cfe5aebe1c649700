// Standing before a control: seeing its messages first, and answering some of them in its place.
#include "toolkit/controlwatch.h"

#include <commctrl.h>

namespace lumbrix {

void ControlWatch::Attach(HWND control) {
    Detach();
    // Several may stand before one control; each is known by its own address.
    if (SetWindowSubclass(control, Procedure, reinterpret_cast<UINT_PTR>(this), reinterpret_cast<DWORD_PTR>(this))) {
        control_ = control;
    }
}

void ControlWatch::Detach() {
    if (control_ != nullptr) {
        RemoveWindowSubclass(control_, Procedure, reinterpret_cast<UINT_PTR>(this));
        control_ = nullptr;
    }
}

LRESULT ControlWatch::PassOn(UINT message, WPARAM wordParameter, LPARAM longParameter) {
    return control_ == nullptr ? 0 : DefSubclassProc(control_, message, wordParameter, longParameter);
}

LRESULT CALLBACK ControlWatch::Procedure(HWND control, UINT message, WPARAM wordParameter, LPARAM longParameter,
                                         UINT_PTR /*id*/, DWORD_PTR watch) {
    auto& self = *reinterpret_cast<ControlWatch*>(watch);
    if (message == WM_NCDESTROY) { // the last one; the control is as good as gone
        self.Detach();
        return DefSubclassProc(control, message, wordParameter, longParameter);
    }
    try {
        return self.OnMessage(message, wordParameter, longParameter);
    } catch (...) {
        return 0;
    }
}

} // namespace lumbrix
