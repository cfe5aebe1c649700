// A window made from a layout, and what happens in it.
#include "toolkit/dialog.h"

#include "toolkit/template.h"

#include <algorithm>

namespace lumbrix {

namespace {

HFONT MakeFont(const WindowFont& font) {
    const WindowContext screen(nullptr);
    LOGFONTA description{};
    description.lfHeight = FontHeight(font.points, GetDeviceCaps(screen.Get(), LOGPIXELSY));
    description.lfWeight = font.weight;
    lstrcpynA(description.lfFaceName, font.face, LF_FACESIZE);
    return CreateFontIndirectA(&description);
}

} // namespace

INT_PTR Dialog::RunModal(HWND owner) {
    const std::vector<WORD> pieces = DialogTemplate(layout_);
    const auto* form = reinterpret_cast<const DLGTEMPLATE*>(pieces.data());
    return DialogBoxIndirectParamA(GetModuleHandleA(nullptr), form, owner, Procedure, reinterpret_cast<LPARAM>(this));
}

std::string Dialog::TextOf(int id) const {
    const HWND item = Item(id);
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(item)), '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(item, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

RECT Dialog::InPixels(RECT units) const {
    MapDialogRect(window_, &units);
    return units;
}

void Dialog::MoveTo(int x, int y, int width, int height) {
    RECT frame = InPixels({0, 0, width, height});
    AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongPtrA(window_, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongPtrA(window_, GWL_EXSTYLE)));
    SetWindowPos(window_, nullptr, x, y, frame.right - frame.left, frame.bottom - frame.top, SWP_NOZORDER);
}

void Dialog::PutBelow(int id, int above) {
    SetWindowPos(Item(id), Item(above), 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

INT_PTR CALLBACK Dialog::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrA(window, GWLP_USERDATA, second);
        reinterpret_cast<Dialog*>(second)->window_ = window;
    }
    auto* dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    try {
        return dialog == nullptr ? FALSE : dialog->Handle(message, first, second);
    } catch (...) {
        return FALSE; // nothing may leave a window procedure; the action has simply ended
    }
}

INT_PTR Dialog::Handle(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
    case WM_INITDIALOG:
        SetFonts();
        OnStart();
        if (FirstFocus() != 0) {
            SetFocus(Item(FirstFocus()));
        }
        return FirstFocus() == 0;
    case WM_CTLCOLORDLG:
        return reinterpret_cast<INT_PTR>(BrushFor(layout_.background));
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
        return reinterpret_cast<INT_PTR>(Paint(reinterpret_cast<HDC>(first), reinterpret_cast<HWND>(second)));
    case WM_COMMAND:
        OnCommand(LOWORD(first), HIWORD(first));
        return FALSE;
    case WM_NOTIFY:
        OnNotify(*reinterpret_cast<const NMHDR*>(second));
        return FALSE;
    case WM_DROPFILES:
        OnDrop(reinterpret_cast<HDROP>(first));
        return FALSE;
    case WM_CLOSE:
        OnClose();
        return TRUE;
    case WM_DESTROY:
        OnDestroy();
        return FALSE;
    default:
        return FALSE;
    }
}

void Dialog::SetFonts() {
    for (const WindowFont& font : layout_.fonts) {
        fonts_.emplace_back(MakeFont(font));
    }
    const auto set = [&](HWND window, int font) {
        SendMessageA(window, WM_SETFONT, reinterpret_cast<WPARAM>(fonts_[static_cast<std::size_t>(font)].Get()), FALSE);
    };
    if (!fonts_.empty()) {
        set(window_, 0);
    }
    for (const Control& control : layout_.controls) {
        if (control.font != NoFont) {
            set(Item(control.id), control.font);
        }
    }
}

// The colour of a control as its row has it; null leaves the system's.
HBRUSH Dialog::Paint(HDC context, HWND control) {
    const int id = GetDlgCtrlID(control);
    const auto row = std::find_if(layout_.controls.begin(), layout_.controls.end(),
                                  [&](const Control& candidate) { return candidate.id == id; });
    if (row == layout_.controls.end() || row->background == SystemColor) {
        return nullptr;
    }
    SetBkColor(context, row->background);
    if (row->text != SystemColor) {
        SetTextColor(context, row->text);
    }
    return BrushFor(row->background);
}

HBRUSH Dialog::BrushFor(WindowColor color) {
    if (color == SystemColor) {
        return nullptr;
    }
    for (const auto& [known, brush] : brushes_) {
        if (known == color) {
            return brush.Get();
        }
    }
    brushes_.emplace_back(color, OwnedBrush(CreateSolidBrush(color)));
    return brushes_.back().second.Get();
}

} // namespace lumbrix
