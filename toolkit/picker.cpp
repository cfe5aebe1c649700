// Choosing an image file, with a preview beside the list.
#include "toolkit/picker.h"

#include "toolkit/controlwatch.h"
#include "toolkit/handles.h"
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

std::string CurrentFolder() {
    char folder[DialogTextBytes] = "";
    GetCurrentDirectoryA(sizeof folder, folder);
    return folder;
}

// Where the picture is shown. One that was drawn stays through every repainting; without one it is white.
class PreviewPane : public ControlWatch {
  public:
    // Releases the one before first.
    void Load(const std::string& path) {
        picture_.reset();
        picture_ = LoadPreviewPicture(path);
    }

    bool HasPicture() const { return picture_ != nullptr; }
    void Clear() const { ClearPreviewPane(Watched()); }
    void Draw() const { DrawPreview(Watched(), *picture_); }

  private:
    LRESULT OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) override {
        switch (message) {
        case WM_ERASEBKGND:
            if (!HasPicture()) {
                Clear();
            }
            return 1;
        case WM_PAINT: // today's control would fill itself with the dialog's colour
            ValidateRect(Watched(), nullptr);
            Clear();
            if (HasPicture()) {
                Draw();
            }
            return 0;
        default:
            return PassOn(message, wordParameter, longParameter);
        }
    }

    OwnedInterface<IPicture> picture_;
};

HWND CreateStatic(HWND dialog, DWORD style, int id, const RECT& place) {
    return CreateWindowExA(0, "static", "", WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, dialog,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr), nullptr);
}

// What stands beside the list of one dialog.
class Preview {
  public:
    // Makes room beside the dialog's own controls, and fills it.
    void AddTo(HWND dialog);

    // Shows what is selected, and says so in the text of the hook's own window.
    void ShowSelection(HWND hook, HWND dialog);

  private:
    OwnedFont font_;
    HWND caption_ = nullptr;
    PreviewPane pane_;
};

void Preview::AddTo(HWND dialog) {
    LOGFONTA description{};
    GetObjectA(GetStockObject(ANSI_VAR_FONT), sizeof description, &description);
    font_ = OwnedFont(CreateFontIndirectA(&description));
    caption_ = CreateStatic(dialog, 0, PreviewCaptionId, {424, 16, 424 + 170, 16 + 14});
    SendMessageA(caption_, WM_SETFONT, reinterpret_cast<WPARAM>(font_.Get()), TRUE);
    pane_.Attach(CreateStatic(dialog, SS_SUNKEN | SS_BITMAP, PreviewPaneId, {424, 33, 424 + 170, 33 + 170}));
    RECT frame{};
    GetWindowRect(dialog, &frame);
    SetWindowPos(dialog, nullptr, PickerPlace.x, PickerPlace.y, frame.right - frame.left + PreviewWidening,
                 frame.bottom - frame.top, SWP_NOZORDER);
}

void Preview::ShowSelection(HWND hook, HWND dialog) {
    char path[DialogTextBytes];
    const LRESULT length = SendMessageA(dialog, CDM_GETFILEPATH, sizeof path, reinterpret_cast<LPARAM>(path));
    const bool isAnswered = length > 0 && length <= static_cast<LRESULT>(sizeof path);
    const std::string selected =
        isAnswered ? std::string(path, static_cast<std::size_t>(length) - 1) : std::string(sizeof path, ' ');
    pane_.Load(selected);
    SetWindowTextA(hook, pane_.HasPicture() ? selected.c_str() : "Error");
    pane_.Clear();
    if (!pane_.HasPicture()) {
        return;
    }
    pane_.Draw();
    InvalidateRect(pane_.Watched(), nullptr, TRUE);
    UpdateWindow(pane_.Watched());
    SetWindowTextA(caption_, "PREVIEW:");
}

UINT_PTR CALLBACK Hook(HWND hook, UINT message, WPARAM /*wordParameter*/, LPARAM longParameter) {
    const HWND dialog = GetParent(hook);
    if (message == WM_INITDIALOG) {
        const auto* opening = reinterpret_cast<const OPENFILENAMEA*>(longParameter);
        SetWindowLongPtrA(hook, GWLP_USERDATA, opening->lCustData);
        return 0;
    }
    auto* preview = reinterpret_cast<Preview*>(GetWindowLongPtrA(hook, GWLP_USERDATA));
    if (message != WM_NOTIFY || preview == nullptr) {
        return 0;
    }
    const UINT code = reinterpret_cast<const NMHDR*>(longParameter)->code;
    if (code == CDN_INITDONE) {
        preview->AddTo(dialog);
        return 1;
    }
    if (code == CDN_SELCHANGE) {
        preview->ShowSelection(hook, dialog);
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
    Preview preview;
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
    dialog.lCustData = reinterpret_cast<LPARAM>(&preview);
    if (!GetOpenFileNameA(&dialog)) {
        return {};
    }
    lastPickedFolder.assign(name, dialog.nFileOffset);
    return name;
}

} // namespace lumbrix
