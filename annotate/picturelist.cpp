// The list view that shows a picture behind its icons.
#include "annotate/picturelist.h"

#include "annotate/layout.h"
#include "imaging/exports/internal.h"
#include "toolkit/handles.h"

#include <commctrl.h>

namespace lumbrix {

namespace {

// As the control would load and draw it: over white, pixel for pixel. Null for what cannot be read.
OwnedBitmap LoadPicture(const std::string& path) {
    std::int32_t width = 0;
    std::int32_t height = 0;
    GetImageDimensions(path.c_str(), &width, &height);
    if (width <= 0 || height <= 0) {
        return {};
    }
    const WindowContext screen(nullptr);
    const OwnedContext context(CreateCompatibleDC(screen.Get()));
    OwnedBitmap bitmap(CreateCompatibleBitmap(screen.Get(), width, height));
    {
        const SelectedObject selected(context.Get(), bitmap.Get());
        const RECT all{0, 0, width, height};
        FillRect(context.Get(), &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        if (DrawImageFile(path.c_str(), context.Get()) != 0) {
            return {};
        }
    }
    return bitmap;
}

bool SetBackground(HWND control, const LVBKIMAGEA& background) {
    return SendMessageA(control, LVM_SETBKIMAGEA, 0, reinterpret_cast<LPARAM>(&background)) != 0;
}

// A control that takes a bitmap owns it.
void ShowAsBitmap(HWND control, const std::string& path) {
    OwnedBitmap bitmap = LoadPicture(path);
    LVBKIMAGEA background{};
    background.ulFlags = LVBKIF_SOURCE_HBITMAP | LVBKIF_STYLE_NORMAL;
    background.hbm = bitmap.Get();
    if (bitmap && SetBackground(control, background)) {
        bitmap.Release();
    }
}

bool IsButtonDown() { return GetKeyState(VK_LBUTTON) < 0; }

} // namespace

void SetPreviewImage(HWND window, const std::string& path) {
    const HWND control = GetDlgItem(window, annotatewindow::PictureControl);
    std::string url = path;
    LVBKIMAGEA background{};
    background.ulFlags = LVBKIF_SOURCE_URL | LVBKIF_STYLE_NORMAL;
    background.pszImage = url.data();
    background.cchImageMax = static_cast<UINT>(url.size());
    if (!SetBackground(control, background)) {
        ShowAsBitmap(control, path);
    }
    InvalidateRect(control, nullptr, TRUE);
    UpdateWindow(control);
}

LRESULT ButtonWatch::OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) {
    if (message == WM_LBUTTONDBLCLK) {
        message = WM_LBUTTONDOWN; // nothing here can be double-clicked; it is a press like the one before
    }
    if (message == WM_LBUTTONDOWN) {
        isPressed_ = true;
        Notify(NM_LDOWN);
    }
    const LRESULT result = PassInside(message, wordParameter, longParameter);
    // A control that waits for the release within its answer to the press swallows the message of it.
    if (message == WM_LBUTTONUP || (message == WM_LBUTTONDOWN && !IsButtonDown())) {
        Release();
    }
    return result;
}

LRESULT ButtonWatch::PassInside(UINT message, WPARAM wordParameter, LPARAM longParameter) {
    ++messagesInside_;
    const LRESULT result = PassOn(message, wordParameter, longParameter);
    --messagesInside_;
    return result;
}

void ButtonWatch::Release() {
    if (isPressed_) {
        isPressed_ = false;
        isNotifyingRelease_ = true;
        Notify(NM_RELEASEDCAPTURE);
    }
}

void ButtonWatch::Notify(UINT code) const {
    const HWND control = Watched();
    const auto id = static_cast<UINT_PTR>(GetDlgCtrlID(control));
    const NMHDR notification{control, id, code};
    SendMessageA(GetParent(control), WM_NOTIFY, id, reinterpret_cast<LPARAM>(&notification));
}

} // namespace lumbrix
