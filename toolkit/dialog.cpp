// A window made from a layout, and what happens in it.
#include "toolkit/dialog.h"

#include "toolkit/template.h"

namespace lumbrix {

namespace {

constexpr int ManyUnits = 1024;

HFONT MakeFont(const WindowFont& font) {
    const WindowContext screen(nullptr);
    LOGFONTA description{};
    description.lfHeight = FontHeight(font.points, GetDeviceCaps(screen.Get(), LOGPIXELSY));
    description.lfWeight = font.weight;
    description.lfItalic = font.slant == FontSlant::Italic;
    description.lfUnderline = font.lines == FontLines::Underline;
    lstrcpynA(description.lfFaceName, font.face, LF_FACESIZE);
    return CreateFontIndirectA(&description);
}

// Whether the answer to a message comes back from a dialog procedure itself, not by way of the window.
bool IsAnsweredDirectly(UINT message) {
    return (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) || message == WM_COMPAREITEM ||
           message == WM_VKEYTOITEM || message == WM_CHARTOITEM || message == WM_QUERYDRAGICON;
}

} // namespace

Dialog::~Dialog() {
    if (window_ != nullptr) {
        SetWindowLongPtrA(window_, GWLP_USERDATA, 0); // what it does from now on is nobody's
        DestroyWindow(window_);
    }
}

INT_PTR Dialog::RunModal(HWND owner) {
    way_ = Way::Modal;
    const std::vector<WORD> pieces = DialogTemplate(layout_);
    const auto* form = reinterpret_cast<const DLGTEMPLATE*>(pieces.data());
    return DialogBoxIndirectParamA(GetModuleHandleA(nullptr), form, owner, Procedure, reinterpret_cast<LPARAM>(this));
}

bool Dialog::OpenModeless(HWND owner) {
    way_ = Way::Modeless;
    const std::vector<WORD> pieces = DialogTemplate(layout_);
    const auto* form = reinterpret_cast<const DLGTEMPLATE*>(pieces.data());
    return CreateDialogIndirectParamA(GetModuleHandleA(nullptr), form, owner, Procedure,
                                      reinterpret_cast<LPARAM>(this)) != nullptr;
}

void Dialog::End(INT_PTR value) {
    if (way_ == Way::Modal) {
        EndDialog(window_, value);
    } else {
        DestroyWindow(window_);
    }
}

std::string Dialog::TextOf(int id) const {
    const HWND item = Item(id);
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(item)), '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(item, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

void Dialog::AddListItem(int id, const char* text) {
    SendMessageA(Item(id), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
}

void Dialog::SelectListItem(int id, int item) { SendMessageA(Item(id), CB_SETCURSEL, static_cast<WPARAM>(item), 0); }

int Dialog::SelectedListItem(int id) const { return static_cast<int>(SendMessageA(Item(id), CB_GETCURSEL, 0, 0)); }

void Dialog::PutBelow(int id, int above) {
    SetWindowPos(Item(id), Item(above), 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void Dialog::SetColors(int id, WindowColor text, WindowColor background) {
    OwnedControl* row = FindRow(layout_.controls, id);
    if (row != nullptr && (row->text != text || row->background != background)) {
        row->text = text;
        row->background = background;
        InvalidateRect(Item(id), nullptr, TRUE);
        UpdateWindow(Item(id));
    }
}

RECT Dialog::InPixels(RECT units) const {
    MapDialogRect(window_, &units);
    return units;
}

PixelSize Dialog::InUnits(PixelSize pixels) const {
    const RECT many = InPixels({0, 0, ManyUnits, ManyUnits});
    return {UnitsOfPixels(pixels.width, many.right), UnitsOfPixels(pixels.height, many.bottom)};
}

void Dialog::MoveTo(int x, int y, int width, int height) {
    RECT frame = InPixels({0, 0, width, height});
    AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongPtrA(window_, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongPtrA(window_, GWL_EXSTYLE)));
    SetWindowPos(window_, nullptr, x, y, frame.right - frame.left, frame.bottom - frame.top, SWP_NOZORDER);
}

void Dialog::MoveControl(int id, int x, int y, int width, int height) {
    const RECT place = InPixels({x, y, width, height});
    MoveWindow(Item(id), place.left, place.top, place.right, place.bottom, FALSE);
}

INT_PTR CALLBACK Dialog::Procedure(HWND window, UINT message, WPARAM wordParameter, LPARAM longParameter) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrA(window, GWLP_USERDATA, longParameter);
        reinterpret_cast<Dialog*>(longParameter)->window_ = window;
    }
    auto* dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (dialog == nullptr) {
        return FALSE;
    }
    if (message == WM_NCDESTROY) { // the last one
        dialog->window_ = nullptr;
        return FALSE;
    }
    try {
        return dialog->Handle(message, wordParameter, longParameter);
    } catch (...) {
        return FALSE; // nothing may leave a window procedure; the action has simply ended
    }
}

INT_PTR Dialog::Handle(UINT message, WPARAM wordParameter, LPARAM longParameter) {
    if (message == WM_INITDIALOG) {
        return HandleStart();
    }
    if (const std::optional<LRESULT> answer = OnMessage(message, wordParameter, longParameter)) {
        if (IsAnsweredDirectly(message)) {
            return *answer;
        }
        SetWindowLongPtrA(window_, DWLP_MSGRESULT, *answer);
        return TRUE;
    }
    switch (message) {
    case WM_CTLCOLORDLG:
        return reinterpret_cast<INT_PTR>(BrushFor(layout_.background));
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
        return reinterpret_cast<INT_PTR>(
            Paint(reinterpret_cast<HDC>(wordParameter), reinterpret_cast<HWND>(longParameter)));
    default:
        return HandleEvent(message, wordParameter, longParameter);
    }
}

INT_PTR Dialog::HandleStart() {
    SetFonts();
    OnStart();
    if (FirstFocus() != 0) {
        SetFocus(Item(FirstFocus()));
    }
    return FirstFocus() == 0;
}

// Whether that is all that is to be done about it.
bool Dialog::HandleEvent(UINT message, WPARAM wordParameter, LPARAM longParameter) {
    switch (message) {
    case WM_COMMAND:
        OnCommand(LOWORD(wordParameter), HIWORD(wordParameter));
        return false;
    case WM_NOTIFY:
        OnNotify(*reinterpret_cast<const NMHDR*>(longParameter));
        return false;
    case WM_DROPFILES:
        OnDrop(reinterpret_cast<HDROP>(wordParameter));
        return false;
    case WM_TIMER:
        OnTimer(static_cast<int>(wordParameter));
        return true;
    case WM_DRAWITEM: {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(longParameter);
        OnDraw(static_cast<int>(item.CtlID), item.hDC, item.rcItem);
        return true;
    }
    case WM_CLOSE:
        OnClose();
        return true;
    case WM_DESTROY:
        OnDestroy();
        return false;
    default:
        return false;
    }
}

void Dialog::SetFonts() {
    fonts_.clear();
    for (const WindowFont& font : layout_.fonts) {
        fonts_.emplace_back(MakeFont(font));
    }
    const auto set = [&](HWND window, int font) {
        SendMessageA(window, WM_SETFONT, reinterpret_cast<WPARAM>(fonts_[static_cast<std::size_t>(font)].Get()), FALSE);
    };
    if (!fonts_.empty()) {
        set(window_, 0);
    }
    for (const OwnedControl& control : layout_.controls) {
        if (control.font != NoFont) {
            set(Item(control.id), control.font);
        }
    }
}

// The colours of a control as its row has them; null leaves the system's.
HBRUSH Dialog::Paint(HDC context, HWND control) {
    const OwnedControl* row = FindRow(layout_.controls, GetDlgCtrlID(control));
    if (row == nullptr || (row->background == SystemColor && row->text == SystemColor)) {
        return nullptr;
    }
    if (row->text != SystemColor) {
        SetTextColor(context, row->text);
    }
    if (row->background == SystemColor) {
        SetBkColor(context, GetSysColor(COLOR_BTNFACE));
        return GetSysColorBrush(COLOR_BTNFACE);
    }
    SetBkColor(context, row->background);
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

PixelSize PixelsOf1024Units() {
    class Probe : public Dialog {
      public:
        Probe() : Dialog(OwnedLayout()) {}
    };
    Probe probe;
    if (!probe.OpenModeless(nullptr)) {
        return {};
    }
    const RECT many = probe.InPixels({0, 0, ManyUnits, ManyUnits});
    return {many.right, many.bottom};
}

} // namespace lumbrix
