// The Free Edit window, in which a picture is turned, stretched, skewed and panned.
#include "freeedit/transformwindow.h"

#include "draw/drawwindow.h"
#include "freeedit/canvas.h"
#include "freeedit/handover.h"
#include "freeedit/saving.h"
#include "freeedit/skewdialog.h"
#include "freeedit/sliders.h"
#include "freeedit/transformlayout.h"
#include "imaging/exports/internal.h"
#include "toolkit/controlwatch.h"
#include "toolkit/dialog.h"
#include "toolkit/hover.h"
#include "toolkit/mousepoint.h"
#include "toolkit/picker.h"

#include <commctrl.h>

namespace lumbrix {

namespace {

using namespace transformwindow;

static_assert(static_cast<int>(SliderCode::PageUp) == TB_PAGEUP);
static_assert(static_cast<int>(SliderCode::PageDown) == TB_PAGEDOWN);
static_assert(static_cast<int>(SliderCode::ThumbTrack) == TB_THUMBTRACK);
static_assert(static_cast<int>(SliderCode::EndTrack) == TB_ENDTRACK);

constexpr UINT LoadDelayMs = 100;
constexpr int CanvasTimer = 1;
constexpr UINT CanvasDelayMs = 200;

// The window's own messages.
constexpr UINT RaiseMessage = WM_APP; // the canvas is to come above it again
constexpr UINT OpenedMessage = WM_APP + 1;

// Tells the window that one of its controls has got the keyboard.
class FocusWatch : public ControlWatch {
  private:
    LRESULT OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) override {
        if (message == WM_SETFOCUS) {
            PostMessageA(GetParent(Watched()), RaiseMessage, 0, 0);
        }
        return PassOn(message, wordParameter, longParameter);
    }
};

class TransformWindow : public Dialog, private HandOverView {
  public:
    TransformWindow(const Order& order, FreeEditState& state, Messages& messages)
        : Dialog(TransformWindowLayout), order_(order), state_(state), messages_(messages) {}

  private:
    void OnStart() override;
    void OnTimer(int timer) override;
    void OnCommand(int id, int notification) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) override;
    void OnDestroy() override;

    bool StartSession();
    void SetUpSlider(int id, const SliderRange& range);
    int SliderPosition(int id) const { return static_cast<int>(SendMessageA(Item(id), TBM_GETPOS, 0, 0)); }

    void LoadPicture(const std::string& path);
    void RefreshStretch();
    void MoveSlider(HWND slider);
    void OnSize(WPARAM kind);
    void LayOut();
    void PlaceCanvas();
    void Press();
    void Save();
    void Skew();

    // As the hand-over to the paint window sees it.
    void ApplyTransform() override { canvas_.ApplyTransform(); }
    const CornerPoints& Points() const override { return canvas_.Points(); }
    bool Capture(const std::string& path, const CanvasArea& area) override { return canvas_.Capture(path, area); }
    void HideWindow() override;
    void ShowWindow() override;
    void RaiseCanvasAgain();
    bool Draw(const std::string& drawFile) override {
        return DrawWindow(Handle(), drawFile, state_.textFont, messages_);
    }
    void LoadCanvasImage(const std::string& path) override { canvas_.LoadCanvasImage(path); }

    // Lights the label that the mouse is over; 0 lights none.
    void PaintLabels(int lit);

    const Order& order_;
    FreeEditState& state_;
    Messages& messages_;
    uintptr_t session_ = 0;
    int canvasRaises_ = 0;
    bool isOpening_ = true;
    CanvasTransform transform_;
    Canvas canvas_{transform_};
    std::array<FocusWatch, 2> focusWatches_;
    Hover hover_{{ButtonLabels.begin(), ButtonLabels.end()}};
};

void TransformWindow::OnStart() {
    if (!StartSession()) {
        return End();
    }
    SetText(PathBox, order_.SourceFile());
    transform_.settings.cornerTexts.fill("0");
    canvas_.CreateCanvas(Handle());
    ::ShowWindow(Handle(), SW_MAXIMIZE);
    SetUpSlider(StretchSlider, StretchRange);
    SetUpSlider(RotationSlider, RotationRange);
    SetText(StretchLabel, StretchText(SliderPosition(StretchSlider)));
    Hide(BarLabel);
    focusWatches_[0].Attach(Item(RotationSlider));
    focusWatches_[1].Attach(Item(StretchSlider));
    StartTimer(LoadTimer, LoadDelayMs); // the window is to be seen before the picture is decoded
}

bool TransformWindow::StartSession() {
    if (StartCanvasSession(&session_) == 0) {
        return true;
    }
    messages_.ShowTechnical("Error initializing GDI+");
    return false;
}

void TransformWindow::SetUpSlider(int id, const SliderRange& range) {
    constexpr int TickDistance = 11;
    constexpr int PageSize = 1;
    constexpr int FirstPosition = 15;
    const HWND slider = Item(id);
    SendMessageA(slider, TBM_SETRANGE, TRUE, MAKELPARAM(range.least, range.most));
    SendMessageA(slider, TBM_SETTICFREQ, TickDistance, 0);
    SendMessageA(slider, TBM_SETPAGESIZE, 0, PageSize);
    SendMessageA(slider, TBM_SETPOS, TRUE, FirstPosition);
    SendMessageA(slider, TBM_SETPOS, TRUE, range.start);
}

void TransformWindow::OnTimer(int timer) {
    if (timer == CanvasTimer) {
        RaiseCanvasAgain();
    }
    if (timer == LoadTimer) {
        StopTimer(LoadTimer);
        PostMessageA(Handle(), OpenedMessage, 0, 0); // for a modal window may be shown right behind its first timer
        LoadPicture(TextOf(PathBox));
        InvalidateRect(Handle(), nullptr, TRUE);
        UpdateWindow(Handle());
    }
}

// The corners are the picture's size in dialog units, and count as pixels of the canvas.
void TransformWindow::LoadPicture(const std::string& path) {
    const WaitCursor waiting(messages_);
    PixelSize pixels;
    GetImageDimensions(path.c_str(), &pixels.width, &pixels.height);
    const PixelSize units = InUnits(pixels);
    transform_.settings.cornerTexts = {"0", "0", std::to_string(units.width), "0", "0", std::to_string(units.height)};
    canvas_.LoadCanvasImage(path);
    RefreshStretch();
}

void TransformWindow::RefreshStretch() {
    transform_.settings.stretchFactor = StretchOfPosition(SliderPosition(StretchSlider));
    canvas_.ApplyTransform();
}

void TransformWindow::OnCommand(int id, int notification) {
    if (id == SelectButton && IsClick(notification)) {
        const std::string path = PickImageFile(Handle(), "Select the image", PickMode::ExistingFile);
        SetText(PathBox, path);
        LoadPicture(path);
    }
}

std::optional<LRESULT> TransformWindow::OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) {
    switch (message) {
    case WM_SIZE:
        OnSize(wordParameter);
        break;
    case WM_MOVE:
        PlaceCanvas();
        break;
    case WM_ACTIVATE:
        PostMessageA(Handle(), RaiseMessage, 0, 0); // once it has come to the front
        break;
    case RaiseMessage:
        canvas_.Raise();
        break;
    case OpenedMessage:
        isOpening_ = false;
        break;
    case WM_MOUSEMOVE:
        hover_.MoveTo(Handle(), UnsignedMousePoint(static_cast<std::uint32_t>(longParameter)));
        PaintLabels(hover_.IsOverLink() ? hover_.Control() : 0);
        break;
    case WM_LBUTTONDOWN:
        Press();
        break;
    case WM_HSCROLL:
        if (IsSliderMove(LOWORD(wordParameter))) {
            MoveSlider(reinterpret_cast<HWND>(longParameter));
        }
        break;
    default:
        break;
    }
    return std::nullopt;
}

void TransformWindow::MoveSlider(HWND slider) {
    if (slider == Item(StretchSlider)) {
        SetText(StretchLabel, StretchText(SliderPosition(StretchSlider)));
        RefreshStretch();
    } else if (slider == Item(RotationSlider)) {
        const int degrees = SliderPosition(RotationSlider);
        transform_.settings.rotationAngle = static_cast<float>(degrees);
        SetText(RotationLabel, RotationText(degrees));
        canvas_.ApplyTransform();
    }
}

// A modal window may be shown in its normal size once more when it has nothing left to do at first.
void TransformWindow::OnSize(WPARAM kind) {
    if (isOpening_ && kind == SIZE_RESTORED && canvas_.Handle() != nullptr) {
        ::ShowWindow(Handle(), SW_MAXIMIZE);
    } else {
        LayOut();
    }
}

void TransformWindow::LayOut() {
    for (const ControlPlace& place : BarPlaces(InUnits(ClientSizeOf(Handle())))) {
        MoveControl(place.id, place.x, place.y, place.width, place.height);
    }
    for (const int id : HiddenAtEachSize) {
        Hide(id);
    }
    PlaceCanvas();
    InvalidateRect(Handle(), nullptr, TRUE);
}

void TransformWindow::PlaceCanvas() {
    if (canvas_.Handle() == nullptr) {
        return;
    }
    const PixelSize units = CanvasSize(InUnits(ClientSizeOf(Handle())));
    const RECT size = InPixels({0, 0, units.width, units.height});
    POINT corner{};
    ClientToScreen(Handle(), &corner);
    SetWindowPos(canvas_.Handle(), nullptr, corner.x, corner.y, size.right, size.bottom, SWP_NOACTIVATE | SWP_NOZORDER);
    PostMessageA(Handle(), RaiseMessage, 0, 0); // once the window has come to the front, as it may with its new place
}

void TransformWindow::PaintLabels(int lit) {
    for (const int id : ButtonLabels) {
        SetColors(id, id == lit ? Red : BarTextColor, id == lit ? HoveredColor : RestingColor);
    }
}

// Where the mouse was last seen moving decides, not where it is pressed.
void TransformWindow::Press() {
    switch (hover_.Control()) {
    case SaveLabel:
        Save();
        break;
    case SkewLabel:
        Skew();
        break;
    case DrawLabel:
        HandOverToDraw(*this, transform_, order_.Target(), state_.steps);
        break;
    default:
        break;
    }
    PaintLabels(0);
}

void TransformWindow::Save() {
    const WaitCursor waiting(messages_);
    SavePicture(canvas_, order_.Target(), state_.steps.counter);
}

void TransformWindow::Skew() {
    ShowSkewDialog(Handle(), transform_.settings.cornerTexts);
    canvas_.ApplyTransform();
}

void TransformWindow::HideWindow() {
    StopTimer(CanvasTimer); // it may still be coming back from the last time
    ::ShowWindow(canvas_.Handle(), SW_HIDE);
    ::ShowWindow(Handle(), SW_HIDE);
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        DispatchMessageA(&message);
    }
}

void TransformWindow::ShowWindow() {
    ::ShowWindow(Handle(), SW_SHOW);
    ::ShowWindow(canvas_.Handle(), SW_SHOWNA);
    canvasRaises_ = 0;
    StartTimer(CanvasTimer, CanvasDelayMs);
}

// Whatever gets the keyboard comes to the front of some displays, and that may take a while, so the canvas makes sure
// of its place for a while.
void TransformWindow::RaiseCanvasAgain() {
    constexpr int Raises = 5;
    canvas_.Raise();
    if (++canvasRaises_ == Raises) {
        StopTimer(CanvasTimer);
    }
}

// The picture goes with its session.
void TransformWindow::OnDestroy() {
    canvas_.End();
    EndCanvasSession(session_);
    state_.steps = {};
}

} // namespace

void ShowTransformWindow(HWND parent, const Order& order, FreeEditState& state, Messages& messages) {
    if (order.SourceFile().empty()) {
        return;
    }
    TransformWindow(order, state, messages).RunModal(parent);
    RemoveStepFiles(state.steps);
}

} // namespace lumbrix
