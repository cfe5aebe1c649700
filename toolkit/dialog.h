// A window made from a layout, and what happens in it.
#pragma once

#include "base/geometry.h"
#include "toolkit/handles.h"
#include "toolkit/layout.h"

#include <windows.h>

#include <shellapi.h>

#include <optional>
#include <string>
#include <vector>

namespace lumbrix {

// Derive, and say in the handlers what the window does. Fonts are set once all controls exist, on the window first;
// they and the brushes live as long as the object. A window that is still open ends with the object.
class Dialog {
  public:
    explicit Dialog(const WindowLayout& layout) : layout_(layout) {}
    explicit Dialog(OwnedLayout layout) : layout_(std::move(layout)) {}
    virtual ~Dialog();
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    // Shows the window and works off messages until it has ended; gives back its end value, 0 for the close box.
    INT_PTR RunModal(HWND owner);

    // Makes the window, which stays above its owner and ends with it, and comes back at once. Whether it could be made.
    bool OpenModeless(HWND owner);

    // Ends the window. The value comes back from RunModal.
    void End(INT_PTR value = 0);

    // Null while the window is not open.
    HWND Handle() const { return window_; }

    HWND Item(int id) const { return GetDlgItem(window_, id); }
    std::string TextOf(int id) const;
    void SetText(int id, const std::string& text) { SetDlgItemTextA(window_, id, text.c_str()); }
    bool IsChecked(int id) const { return IsDlgButtonChecked(window_, id) == BST_CHECKED; }
    void SetChecked(int id, bool isChecked) { CheckDlgButton(window_, id, isChecked ? BST_CHECKED : BST_UNCHECKED); }
    void Hide(int id) { ShowWindow(Item(id), SW_HIDE); }
    void Enable(int id, bool isEnabled) { EnableWindow(Item(id), isEnabled); }

    // The items of a drop-down list, counted from 0; -1 where none is selected.
    void AddListItem(int id, const char* text);
    void SelectListItem(int id, int item);
    int SelectedListItem(int id) const;

    // Puts a control below another, which covers it from now on.
    void PutBelow(int id, int above);

    // Gives a control other colours, and draws it anew at once; nothing where they are those that it has.
    void SetColors(int id, WindowColor text, WindowColor background);

    // The row of a control as it is now; the id must be one of the layout's.
    const OwnedControl& Row(int id) const { return *FindRow(layout_.controls, id); }

    // Dialog units as pixels of this window, and pixels as dialog units, rounded down.
    RECT InPixels(RECT units) const;
    PixelSize InUnits(PixelSize pixels) const;

    // Puts the frame's top left corner at a place of the screen, in pixels, and gives the area inside a size, in dialog
    // units.
    void MoveTo(int x, int y, int width, int height);

    // Puts a control at a place within the window, in dialog units.
    void MoveControl(int id, int x, int y, int width, int height);

  protected:
    // Whether a button's notification is a click, or the stroke of an accelerator, which counts as one.
    static bool IsClick(int notification) {
        constexpr int Accelerator = 1;
        return notification == BN_CLICKED || notification == Accelerator;
    }

    // Has OnTimer called again and again, until it is stopped or the window ends.
    void StartTimer(int timer, UINT milliseconds) {
        SetTimer(window_, static_cast<UINT_PTR>(timer), milliseconds, nullptr);
    }
    void StopTimer(int timer) { KillTimer(window_, static_cast<UINT_PTR>(timer)); }

    // All controls are there, with their fonts.
    virtual void OnStart() {}

    // The control that has the keyboard at first, or 0 for the first one that can be reached by the tab key. Asked for
    // behind OnStart.
    virtual int FirstFocus() const { return 0; }

    // Any message, before the handlers below. With an answer it goes no further; the start is not asked here.
    virtual std::optional<LRESULT> OnMessage(UINT /*message*/, WPARAM /*wordParameter*/, LPARAM /*longParameter*/) {
        return std::nullopt;
    }

    virtual void OnCommand(int /*id*/, int /*notification*/) {}
    virtual void OnNotify(const NMHDR& /*notification*/) {}
    virtual void OnDrop(HDROP /*files*/) {}
    virtual void OnTimer(int /*timer*/) {}

    // A graphic control wants to be drawn.
    virtual void OnDraw(int /*id*/, HDC /*context*/, const RECT& /*area*/) {}

    // The close box and the system menu.
    virtual void OnClose() { End(0); }
    virtual void OnDestroy() {}

  private:
    enum class Way {
        Modal,
        Modeless,
    };

    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wordParameter, LPARAM longParameter);
    INT_PTR Handle(UINT message, WPARAM wordParameter, LPARAM longParameter);
    INT_PTR HandleStart();
    bool HandleEvent(UINT message, WPARAM wordParameter, LPARAM longParameter);
    void SetFonts();
    HBRUSH Paint(HDC context, HWND control);
    HBRUSH BrushFor(WindowColor color);

    OwnedLayout layout_;
    Way way_ = Way::Modal;
    HWND window_ = nullptr;
    std::vector<OwnedFont> fonts_;
    std::vector<std::pair<WindowColor, OwnedBrush>> brushes_;
};

// The area inside a window's frame and scroll bars.
inline PixelSize ClientSizeOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

// How many pixels 1024 dialog units are on this screen, across and down, for layouts that are worked out before their
// window is made.
PixelSize PixelsOf1024Units();

} // namespace lumbrix
