// Choosing an image file, with a preview beside the list.
#include "toolkit/picker.h"

#include "toolkit/pickerrules.h"
#include "toolkit/previewpicture.h"

#include <commdlg.h>
#include <dlgs.h>

namespace lumbrix {

namespace {

constexpr std::size_t DialogTextBytes = 256;
constexpr int PreviewCaptionId = 345;
constexpr int PreviewPaneId = 346;
constexpr int PreviewWidening = 182; // pixels
constexpr POINT PickerPlace{50, 50};

std::string lastPickedFolder; // with its backslash
IPicture* previewPicture = nullptr;
std::string previewPath;
HWND previewPane = nullptr;
HWND previewCaption = nullptr;
HFONT previewFont = nullptr;
WNDPROC previewPaneProc = nullptr;

std::string CurrentFolder() {
    char folder[DialogTextBytes] = "";
    GetCurrentDirectoryA(sizeof folder, folder);
    return folder;
}

// A picture that was drawn stays through every repainting; without one the pane is white.
LRESULT CALLBACK PaneProcedure(HWND pane, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_ERASEBKGND) {
        if (previewPicture == nullptr) {
            ClearPreviewPane(pane);
        }
        return 1;
    }
    return CallWindowProcA(previewPaneProc, pane, message, first, second);
}

HWND CreateStatic(HWND dialog, DWORD style, int id, const RECT& place) {
    return CreateWindowExA(0, "static", "", WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, dialog,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr), nullptr);
}

// Makes room beside the dialog's own controls, and fills it.
void AddPreview(HWND dialog) {
    LOGFONTA description{};
    GetObjectA(GetStockObject(ANSI_VAR_FONT), sizeof description, &description);
    previewFont = CreateFontIndirectA(&description);
    previewCaption = CreateStatic(dialog, 0, PreviewCaptionId, {424, 16, 424 + 170, 16 + 14});
    SendMessageA(previewCaption, WM_SETFONT, reinterpret_cast<WPARAM>(previewFont), TRUE);
    previewPane = CreateStatic(dialog, SS_SUNKEN | SS_BITMAP, PreviewPaneId, {424, 33, 424 + 170, 33 + 170});
    previewPaneProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(previewPane, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(PaneProcedure)));
    RECT frame{};
    GetWindowRect(dialog, &frame);
    SetWindowPos(dialog, nullptr, PickerPlace.x, PickerPlace.y, frame.right - frame.left + PreviewWidening,
                 frame.bottom - frame.top, SWP_NOZORDER);
}

void ShowSelection(HWND hook, HWND dialog) {
    char path[DialogTextBytes];
    const LRESULT length = SendMessageA(dialog, CDM_GETFILEPATH, sizeof path, reinterpret_cast<LPARAM>(path));
    const bool isAnswered = length > 0 && length <= static_cast<LRESULT>(sizeof path);
    previewPath = isAnswered ? std::string(path, static_cast<std::size_t>(length) - 1) : std::string(sizeof path, ' ');
    LoadPreviewPicture(previewPath, previewPicture);
    if (previewPicture == nullptr) {
        SetWindowTextA(hook, "Error");
        ClearPreviewPane(previewPane);
        return;
    }
    SetWindowTextA(hook, previewPath.c_str());
    ClearPreviewPane(previewPane);
    DrawPreview(previewPane, *previewPicture);
    InvalidateRect(previewPane, nullptr, TRUE);
    UpdateWindow(previewPane);
    SetWindowTextA(previewCaption, "PREVIEW:");
}

void RemovePreview() {
    LoadPreviewPicture("", previewPicture);
    DeleteObject(previewFont);
    SetWindowLongPtrA(previewPane, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(previewPaneProc));
}

UINT_PTR CALLBACK Hook(HWND hook, UINT message, WPARAM, LPARAM second) {
    const HWND dialog = GetParent(hook);
    if (message == WM_NOTIFY) {
        const UINT code = reinterpret_cast<const NMHDR*>(second)->code;
        if (code == CDN_INITDONE) {
            AddPreview(dialog);
            return 1;
        }
        if (code == CDN_SELCHANGE) {
            ShowSelection(hook, dialog);
        }
    } else if (message == WM_DESTROY && previewPicture != nullptr) {
        RemovePreview();
    }
    return 0;
}

} // namespace

std::string PickImageFile(HWND owner, const std::string& caption, PickMode mode) {
    if (lastPickedFolder.empty()) {
        lastPickedFolder = CurrentFolder();
    }
    const std::string filter = FilterInDialog(PickerFilter()) + std::string(2, '\0');
    const std::string folder = lastPickedFolder.substr(0, DialogTextBytes - 1);
    char name[DialogTextBytes];
    lstrcpynA(name, PickerWildcards, sizeof name);
    OPENFILENAMEA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.hInstance = GetModuleHandleA(nullptr);
    dialog.lpstrFilter = filter.c_str();
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = name;
    dialog.nMaxFile = sizeof name;
    dialog.lpstrInitialDir = folder.c_str();
    dialog.lpstrTitle = caption.empty() ? nullptr : caption.c_str();
    dialog.Flags =
        OFN_EXPLORER | OFN_ENABLEHOOK | OFN_HIDEREADONLY | (mode == PickMode::ExistingFile ? OFN_FILEMUSTEXIST : 0);
    dialog.lpfnHook = Hook;
    if (!GetOpenFileNameA(&dialog)) {
        return {};
    }
    lastPickedFolder.assign(name, dialog.nFileOffset);
    return name;
}

} // namespace lumbrix
