// The window in which pictures are annotated and cropped.
#include "annotate/annotatewindow.h"

#include "annotate/fontchoice.h"
#include "annotate/layout.h"
#include "annotate/picturelist.h"
#include "annotate/placing.h"
#include "annotate/rules.h"
#include "annotate/state.h"
#include "desktop/helpfile.h"
#include "platform/cleanup.h"
#include "toolkit/dialog.h"
#include "toolkit/dropping.h"
#include "toolkit/messages.h"
#include "toolkit/picker.h"

#include <commctrl.h>

namespace lumbrix {

namespace {

constexpr std::size_t LongestText = 259;

class AnnotateWindow : public Dialog, private PictureView {
  public:
    AnnotateWindow(std::size_t stage, std::int32_t width, std::int32_t height, const std::string& title)
        : Dialog(AnnotateWindowLayout), stage_(stage), width_(width), height_(height), title_(title) {}

  private:
    void OnStart() override;
    int FirstFocus() const override { return AnnotateModeLayouts[EditMode].firstFocus; }
    void OnCommand(int id, int notification) override;
    void OnNotify(const NMHDR& notification) override;
    void OnDrop(HDROP files) override;

    void PreparePicture();
    void ApplyMode();
    void RestoreKeptText();
    void Keep();
    void PickStamp();
    void ReleaseButton();

    PixelPoint CursorPoint() const override;
    void SetPreviewImage(const std::string& path) override { lumbrix::SetPreviewImage(Handle(), path); }
    void Show(const std::string& text, const std::string& title) override { ShowMessage(text, title); }

    std::size_t stage_;
    std::int32_t width_;
    std::int32_t height_;
    std::string title_;
    ButtonWatch buttonWatch_;
};

void AnnotateWindow::OnStart() {
    SetWindowTextA(Handle(), title_.c_str());
    PreparePicture();
    ApplyMode();
    RestoreKeptText();
    DragAcceptFiles(Handle(), TRUE);
    buttonWatch_.Attach(Item(PictureControl));
    SetPreviewImage(ImageStages[stage_].previewSource);
}

void AnnotateWindow::PreparePicture() {
    const Control& control = AnnotateWindowControls[0];
    const RECT size = InPixels({0, 0, control.width, control.height});
    PreparePreview(stage_, width_, height_, size.right, size.bottom);
}

void AnnotateWindow::ApplyMode() {
    const AnnotateModeLayout& mode = AnnotateModeLayouts[EditMode];
    for (const int id : mode.hidden) {
        if (id != 0) {
            Hide(id);
        }
    }
    const Control& help = AnnotateWindowControls[std::size(AnnotateWindowControls) - 1];
    const RECT place = InPixels({help.x, mode.helpY, help.width, mode.helpHeight});
    MoveWindow(Item(HelpLabel), place.left, place.top, place.right, place.bottom, FALSE);
    SetText(HelpLabel, mode.helpText);
    if (mode.covered != 0) {
        PutBelow(mode.covered, HelpLabel);
    }
    MoveTo(0, 0, AnnotateWindowLayout.width, mode.windowHeight);
}

// What was typed survives the end of the window that Keep brings about.
void AnnotateWindow::RestoreKeptText() {
    if (KeepRequested) {
        KeepRequested = false;
        SetText(AnnotationBox, KeptText);
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
        return ChooseAnnotationFont(*this);
    case FontColorButton:
        return ChooseColorInVain(*this);
    case StampButton:
        return PickStamp();
    case HelpButton:
        return WriteHelpFile();
    default:
        return;
    }
}

void AnnotateWindow::Keep() {
    KeptText = TextOf(AnnotationBox).substr(0, LongestText);
    KeepRequested = !KeepRequested;
    if (KeepRequested) {
        EndDialog(Handle(), 0);
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
    if (notification.code == NM_LDOWN && EditMode == CropMode) {
        MarkFirstCorner(*this);
    } else if (notification.code == NM_RELEASEDCAPTURE && buttonWatch_.IsRelease()) {
        ReleaseButton();
    }
}

void AnnotateWindow::ReleaseButton() {
    PlaceAnnotation(*this, TextOf(AnnotationBox));
    if (EditMode == CropMode && MarkCorner(*this)) {
        EndDialog(Handle(), 0);
    }
}

PixelPoint AnnotateWindow::CursorPoint() const {
    POINT cursor{};
    GetCursorPos(&cursor);
    ScreenToClient(Item(PictureControl), &cursor);
    return {cursor.x, cursor.y};
}

} // namespace

INT_PTR ShowAnnotateWindow(HWND parent, std::size_t stage, std::int32_t width, std::int32_t height, std::string title) {
    if (title.empty()) {
        title = AnnotateTitle;
    }
    EditMode = EditModeForTitle(title, EditMode);
    AnnotateWindow(stage, width, height, title).RunModal(parent);
    SweepWorkFolder();
    return 0;
}

} // namespace lumbrix
