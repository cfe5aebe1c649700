// The paint window.
#include "draw/drawwindow.h"

#include "draw/drawfile.h"
#include "draw/drawlayout.h"
#include "draw/paintcanvas.h"
#include "draw/textentry.h"
#include "draw/tools.h"
#include "imaging/exports/lumbrix.h"
#include "platform/files.h"
#include "toolkit/browsefolder.h"
#include "toolkit/dialog.h"
#include "toolkit/mousepoint.h"

namespace lumbrix {

namespace {

using namespace drawwindow;

class PaintWindow : public Dialog {
  public:
    PaintWindow(OwnedLayout layout, const std::string& drawFile, TextFont& textFont, Messages& messages)
        : Dialog(std::move(layout)), drawFile_(drawFile), textFont_(textFont), messages_(messages),
          canvas_(state_, {[this](const std::string& text) { SetText(StatusLabel, text); },
                           [this] { PostMessageA(Handle(), WM_COMMAND, TextButton, 0); },
                           [this](std::string& text) { EnterText(text); }}) {}

    bool IsSaved() const { return isSaved_; }

  private:
    void OnStart() override;
    void OnCommand(int id, int notification) override;
    void OnDraw(int id, HDC context, const RECT& area) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) override;
    void OnDestroy() override { canvas_.LeaveControl(); }

    void FillLists();
    void LetColorFieldsTellOfPresses();
    void OpenPicture();
    void Save();

    bool IsListCommand(int id, int notification);
    void PressedOnChild(int mouseMessage, LPARAM place);
    void EnterText(std::string& text);

    const std::string& drawFile_;
    TextFont& textFont_;
    Messages& messages_;
    DrawingState state_;
    PaintCanvas canvas_;
    bool isSaved_ = false;
};

void PaintWindow::OnStart() {
    canvas_.TakePlace(Item(DrawCanvas));
    FillLists();
    CheckRadioButton(Handle(), StartOption, LastOptionClearedAtStart, StartOption);
    for (const int id : HiddenAtStart) {
        Hide(id);
    }
    LetColorFieldsTellOfPresses();
    SetWindowIconFromModule(Handle());
    OpenPicture();
}

void PaintWindow::FillLists() {
    const auto fill = [&](int id, const auto& items, int selected) {
        for (const char* item : items) {
            AddListItem(id, item);
        }
        SelectListItem(id, selected);
    };
    fill(PatternList, Patterns, StartPattern);
    fill(PenWidthList, PenWidths, StartPenWidth);
    fill(PenTypeList, PenTypes, StartPenType);
}

// Controls of a dialog tell their window nothing of the mouse unless they are asked to.
void PaintWindow::LetColorFieldsTellOfPresses() {
    for (int id = FirstColorField; id <= LastColorField; ++id) {
        const LONG style = GetWindowLongA(Item(id), GWL_EXSTYLE);
        SetWindowLongA(Item(id), GWL_EXSTYLE, style & ~WS_EX_NOPARENTNOTIFY);
    }
}

void PaintWindow::OpenPicture() {
    if (!FileExists(drawFile_)) {
        messages_.ShowTechnical(MissingFileMessage(drawFile_));
        return;
    }
    PixelSize size;
    GetImageDimensions(drawFile_.c_str(), &size.width, &size.height);
    canvas_.LoadPicture(drawFile_, size);
    TryToRemoveFile(drawFile_);
}

std::optional<LRESULT> PaintWindow::OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) {
    switch (message) {
    case WM_PARENTNOTIFY:
        PressedOnChild(LOWORD(wordParameter), longParameter);
        break;
    case WM_SETCURSOR:
        if (reinterpret_cast<HWND>(wordParameter) != Item(DrawCanvas) && TextOf(StatusLabel) != RestingStatus) {
            SetText(StatusLabel, RestingStatus);
        }
        break;
    default:
        break;
    }
    return std::nullopt;
}

void PaintWindow::PressedOnChild(int mouseMessage, LPARAM place) {
    const PixelPoint client = SignedMousePoint(static_cast<std::uint32_t>(place));
    POINT screen{client.x, client.y};
    ClientToScreen(Handle(), &screen);
    const int id = GetDlgCtrlID(WindowFromPoint(screen));
    if (mouseMessage == WM_LBUTTONDOWN && ChoosePenColor(state_, id)) {
        SetColors(PenIndicator, SystemColor, state_.penColor);
        InvalidateRect(Item(FillIndicator), nullptr, TRUE);
        UpdateWindow(Item(FillIndicator));
    } else if (mouseMessage == WM_RBUTTONDOWN && ChooseFillColor(state_, id)) {
        SetColors(FillIndicator, SystemColor, ColorOfFillValue(state_.fillColor));
    }
}

bool PaintWindow::IsListCommand(int id, int notification) {
    if (notification != CBN_SELENDOK) {
        return false;
    }
    const int item = SelectedListItem(id);
    switch (id) {
    case PatternList:
        ChoosePattern(state_, item);
        return true;
    case PenWidthList:
        ChoosePenWidth(state_, item);
        Enable(PenTypeList, TakesPenType(state_));
        return true;
    case PenTypeList:
        ChoosePenType(state_, item);
        return true;
    default:
        return false;
    }
}

void PaintWindow::OnCommand(int id, int notification) {
    if (IsListCommand(id, notification) || !IsClick(notification)) {
        return;
    }
    ChooseTool(state_, id);
    // Whatever the window does itself is seen at once.
    switch (id) {
    case SaveButton:
        return Save();
    case UndoButton:
        canvas_.Attach(Painting::AtOnce);
        return canvas_.Undo();
    case RedoButton:
        canvas_.Attach(Painting::AtOnce);
        return canvas_.Redo();
    case ClearButton:
        canvas_.Attach(Painting::AtOnce);
        return ClearCanvas(state_, canvas_);
    case TextButton:
        return PlaceText(state_, canvas_);
    case QuitButton:
        return End(0);
    default:
        return;
    }
}

void PaintWindow::Save() {
    canvas_.SavePicture(SavedDrawing(drawFile_));
    isSaved_ = true;
    End(0);
}

void PaintWindow::OnDraw(int id, HDC context, const RECT& /*area*/) {
    if (id == DrawCanvas) {
        canvas_.Show(context);
    }
}

void PaintWindow::EnterText(std::string& text) {
    ShowTextEntry(
        Handle(), textFont_, state_.fillColor, [this](OwnedFont font) { canvas_.SetTextFont(std::move(font)); }, text);
}

// The picture's size in dialog units, which are the same in every window of this program.
PixelSize UnitsOf(PixelSize pixels) {
    const PixelSize many = PixelsOf1024Units();
    return many.width <= 0 || many.height <= 0
               ? PixelSize{}
               : PixelSize{UnitsOfPixels(pixels.width, many.width), UnitsOfPixels(pixels.height, many.height)};
}

} // namespace

bool DrawWindow(HWND parent, const std::string& drawFile, TextFont& textFont, Messages& messages) {
    PixelSize picture;
    GetImageDimensions(drawFile.c_str(), &picture.width, &picture.height);
    const PixelSize screen{GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    auto layout = DrawWindowLayout(UnitsOf(screen), UnitsOf(picture));
    if (!layout) {
        return false;
    }
    PaintWindow window(std::move(*layout), drawFile, textFont, messages);
    window.RunModal(parent);
    return window.IsSaved();
}

} // namespace lumbrix
