// A window made from a layout, and what happens in it.
#pragma once

#include "toolkit/handles.h"
#include "toolkit/layout.h"

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

namespace lumbrix {

// Derive, and say in the handlers what the window does. Fonts are set once all controls exist, on the window first;
// they and the brushes live as long as the object.
class Dialog {
  public:
    explicit Dialog(const WindowLayout& layout) : layout_(layout) {}
    virtual ~Dialog() = default;
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    // Shows the window and works off messages until it has ended; gives back its end value, 0 for the close box.
    INT_PTR RunModal(HWND owner);

    HWND Handle() const { return window_; }

    HWND Item(int id) const { return GetDlgItem(window_, id); }
    std::string TextOf(int id) const;
    void SetText(int id, const std::string& text) { SetDlgItemTextA(window_, id, text.c_str()); }
    bool IsChecked(int id) const { return IsDlgButtonChecked(window_, id) == BST_CHECKED; }
    void SetChecked(int id, bool isChecked) { CheckDlgButton(window_, id, isChecked ? BST_CHECKED : BST_UNCHECKED); }
    void Hide(int id) { ShowWindow(Item(id), SW_HIDE); }

    // Puts a control below another, which covers it from now on.
    void PutBelow(int id, int above);

    // Dialog units as pixels of this window.
    RECT InPixels(RECT units) const;

    // Puts the frame's top left corner at a place of the screen, in pixels, and gives the area inside a size, in dialog
    // units.
    void MoveTo(int x, int y, int width, int height);

  protected:
    // Whether a button's notification is a click, or the stroke of an accelerator, which counts as one.
    static bool IsClick(int notification) {
        constexpr int Accelerator = 1;
        return notification == BN_CLICKED || notification == Accelerator;
    }

    // All controls are there, with their fonts.
    virtual void OnStart() {}

    // The control that has the keyboard at first, or 0 for the first one that can be reached by the tab key. Asked for
    // behind OnStart.
    virtual int FirstFocus() const { return 0; }

    virtual void OnCommand(int /*id*/, int /*notification*/) {}
    virtual void OnNotify(const NMHDR& /*notification*/) {}
    virtual void OnDrop(HDROP /*files*/) {}

    // The close box and the system menu.
    virtual void OnClose() { EndDialog(window_, 0); }
    virtual void OnDestroy() {}

  private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
    INT_PTR Handle(UINT message, WPARAM first, LPARAM second);
    void SetFonts();
    HBRUSH Paint(HDC context, HWND control);
    HBRUSH BrushFor(WindowColor color);

    const WindowLayout& layout_;
    HWND window_ = nullptr;
    std::vector<OwnedFont> fonts_;
    std::vector<std::pair<WindowColor, OwnedBrush>> brushes_;
};

} // namespace lumbrix
