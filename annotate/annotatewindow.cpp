// The window in which pictures are annotated and cropped.
#include "annotate/annotatewindow.h"

#include "annotate/fontchoice.h"
#include "annotate/layout.h"
#include "annotate/picturelist.h"
#include "annotate/placing.h"
#include "desktop/helpfile.h"
#include "platform/cleanup.h"
#include "toolkit/dialog.h"
#include "toolkit/dropping.h"
#include "toolkit/picker.h"

#include <commctrl.h>

namespace lumbrix {

namespace {

using namespace annotatewindow;

constexpr std::size_t LongestText = 259;

class AnnotateWindow : public Dialog, private PictureView {
  public:
    AnnotateWindow(AnnotateState& state, Messages& messages, std::size_t stage, PixelSize size,
                   const std::string& title)
        : Dialog(AnnotateWindowLayout), state_(state), messages_(messages), stage_(stage), size_(size), title_(title) {}

  private:
    void OnStart() override;
    int FirstFocus() const override { return LayoutOf(state_.mode).firstFocus; }
    void OnCommand(int id, int notification) override;
    void OnNotify(const NMHDR& notification) override;
    void OnDrop(HDROP files) override;

    void ApplyMode();
    void RestoreKeptText();
    void Keep();
    void PickStamp();
    void ReleaseButton();

    PixelPoint CursorPoint() const;
    PixelSize PictureControlSize() const;
    void SetPreviewImage(const std::string& path) override { lumbrix::SetPreviewImage(Handle(), path); }

    AnnotateState& state_;
    Messages& messages_;
    std::size_t stage_;
    PixelSize size_;
    std::string title_;
    ButtonWatch buttonWatch_;
};

void AnnotateWindow::OnStart() {
    SetWindowTextA(Handle(), title_.c_str());
    ApplyMode();
    RestoreKeptText();
    DragAcceptFiles(Handle(), TRUE);
    buttonWatch_.Attach(Item(PictureControl));
    OpenPicture(state_, *this, messages_, stage_, size_, PictureControlSize());
}

void AnnotateWindow::ApplyMode() {
    const AnnotateModeLayout& mode = LayoutOf(state_.mode);
    for (const int id : mode.hidden) {
        if (id != 0) {
            Hide(id);
        }
    }
    MoveControl(HelpLabel, Row(HelpLabel).x, mode.helpY, Row(HelpLabel).width, mode.helpHeight);
    SetText(HelpLabel, mode.helpText);
    if (mode.covered != 0) {
        PutBelow(mode.covered, HelpLabel);
    }
    MoveTo(0, 0, AnnotateWindowLayout.width, mode.windowHeight);
}

// What was typed survives the end of the window that Keep brings about.
void AnnotateWindow::RestoreKeptText() {
    if (state_.isKeepRequested) {
        state_.isKeepRequested = false;
        SetText(AnnotationBox, state_.keptText);
    }
}

void AnnotateWindow::OnCommand(int id, int notification) {
    if (id == KeepCheck) {
        return Keep();
    }
    if (!IsClick(notification)) {
        return;
    }
    switch (id) {
    case FontButton:
        return ChooseAnnotationFont(*this, state_.textStyle);
    case FontColorButton:
        return ChooseUnusedColor(*this);
    case StampButton:
        return PickStamp();
    case HelpButton:
        return WriteHelpFile();
    default:
        return;
    }
}

void AnnotateWindow::Keep() {
    state_.keptText = TextOf(AnnotationBox).substr(0, LongestText);
    state_.isKeepRequested = !state_.isKeepRequested;
    if (state_.isKeepRequested) {
        End();
    }
}

void AnnotateWindow::PickStamp() {
    const std::string path = PickImageFile(Handle(), "Select the image", PickMode::ExistingFile);
    if (!path.empty()) {
        SetText(AnnotationBox, path);
    }
}

void AnnotateWindow::OnDrop(HDROP files) {
    for (const std::string& path : TakeDroppedFiles(files)) {
        SetText(AnnotationBox, path);
    }
}

void AnnotateWindow::OnNotify(const NMHDR& notification) {
    if (notification.idFrom != PictureControl) {
        return;
    }
    if (notification.code == NM_LDOWN && state_.mode == EditMode::Crop) {
        MarkFirstCorner(state_, CursorPoint());
    } else if (notification.code == NM_RELEASEDCAPTURE && buttonWatch_.IsRelease()) {
        ReleaseButton();
    }
}

void AnnotateWindow::ReleaseButton() {
    PlaceAnnotation(state_, *this, messages_, TextOf(AnnotationBox), CursorPoint());
    if (state_.mode == EditMode::Crop && MarkCorner(state_, CursorPoint())) {
        End();
    }
}

PixelPoint AnnotateWindow::CursorPoint() const {
    POINT cursor{};
    GetCursorPos(&cursor);
    ScreenToClient(Item(PictureControl), &cursor);
    return {cursor.x, cursor.y};
}

PixelSize AnnotateWindow::PictureControlSize() const {
    const OwnedControl& control = Row(PictureControl);
    const RECT size = InPixels({0, 0, control.width, control.height});
    return {size.right, size.bottom};
}

} // namespace

INT_PTR ShowAnnotateWindow(HWND parent, AnnotateState& state, Messages& messages, std::size_t stage, PixelSize size,
                           const std::string& title) {
    const std::string shown = TitleOrAnnotate(title);
    state.mode = EditModeForTitle(shown, state.mode);
    AnnotateWindow(state, messages, stage, size, shown).RunModal(parent);
    SweepWorkFolder();
    return 0;
}

} // namespace lumbrix
