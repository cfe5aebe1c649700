// The window from which everything starts.
#include "mainwindow/mainwindow.h"

#include "annotate/actions.h"
#include "annotate/annotatewindow.h"
#include "annotate/cropdimensions.h"
#include "batch/driver.h"
#include "batch/options.h"
#include "desktop/aboutbox.h"
#include "desktop/desktopsystem.h"
#include "freeedit/stepfiles.h"
#include "freeedit/transformwindow.h"
#include "imaging/exports/lumbrix.h"
#include "imaging/paths.h"
#include "mainwindow/actions.h"
#include "mainwindow/layout.h"
#include "mainwindow/rules.h"
#include "toolkit/browsefolder.h"
#include "toolkit/dialog.h"
#include "toolkit/dropping.h"
#include "toolkit/messageboxes.h"
#include "toolkit/picker.h"

namespace lumbrix {

namespace {

using namespace mainwindow;

constexpr const char* InitialHeight = "512";

class MainWindow : public Dialog, private Order, private ActionWindows {
  public:
    MainWindow() : Dialog(MainWindowLayout) {}

  private:
    void OnStart() override;
    void OnCommand(int id, int notification) override;
    void OnDrop(HDROP files) override;
    void OnDestroy() override { RemoveStepFiles(freeEdit_.steps); } // the controls are still there

    void SetInitialChecks();
    void TakeSource(const std::string& path);

    void BrowseSourceFile();
    void BrowseTarget();
    void BrowseSourceFolder();
    void ApplyOutputType();
    void RotateAndFlip();
    RemovalSteps StepsOfRemoval();

    template <std::size_t Count> std::array<bool, Count> ChecksOf(const std::array<Id, Count>& ids) const {
        std::array<bool, Count> checks;
        for (std::size_t i = 0; i < Count; ++i) {
            checks[i] = IsChecked(ids[i]);
        }
        return checks;
    }

    // The order as the controls have it.
    std::string SourceFile() const override { return TextOf(SourceFileBox); }
    std::string SourceFolder() const override { return TextOf(SourceFolderBox); }
    std::string Target() const override { return TextOf(TargetBox); }
    std::string HeightText() const override { return TextOf(HeightBox); }
    bool IsSmallerChecked() const override { return IsChecked(SmallerCheck); }
    bool IsCropChecked() const override { return IsChecked(CropCheck); }
    std::string SelectedOutputWord() const override { return lumbrix::SelectedOutputWord(ChecksOf(OutputRadioIds)); }

    // The windows of the actions.
    PixelSize RefreshSizeLabel() override;
    void ShowAnnotateWindow(std::size_t stage, PixelSize size, const std::string& title) override {
        lumbrix::ShowAnnotateWindow(Handle(), annotating_, messages_, stage, size, title);
    }
    void ShowCropDimensions() override { lumbrix::ShowCropDimensions(Handle(), annotating_.cropRectangle); }

    MessageBoxes messages_;
    AnnotateState annotating_;
    FreeEditState freeEdit_;
    DesktopSystem desktop_;
};

void MainWindow::OnStart() {
    freeEdit_.steps.owner = this;
    Hide(CropCheck);
    SetInitialChecks();
    SetWindowIconFromModule(Handle());
    EnsureDesktopShortcut(desktop_);
    DragAcceptFiles(Handle(), TRUE);
    SetText(HeightBox, InitialHeight);
}

void MainWindow::SetInitialChecks() {
    for (const int id : OutputRadioIds) {
        SetChecked(id, id == BmpRadio);
    }
    SetChecked(Rotate0Radio, true);
}

void MainWindow::OnCommand(int id, int notification) {
    if (id >= BmpRadio && id <= SglRadio) {
        return ApplyOutputType();
    }
    if (id == RotateFlipButton) {
        return RotateAndFlip();
    }
    if (id == FreeEditButton) {
        return ShowTransformWindow(Handle(), *this, freeEdit_, messages_);
    }
    if (id == CropCheck && IsChecked(CropCheck)) {
        return RunCropAction(*this, *this, messages_, annotating_);
    }
    if (!IsClick(notification)) {
        return;
    }
    switch (id) {
    case SourceFileButton:
        BrowseSourceFile();
        RefreshSizeLabel();
        return;
    case TargetButton:
        BrowseTarget();
        RefreshSizeLabel();
        return;
    case ConvertButton:
        RefreshSizeLabel();
        return RunBatch(*this, messages_, annotating_.cropRectangle);
    case SourceFolderButton:
        RefreshSizeLabel();
        return BrowseSourceFolder();
    case AboutButton:
        RefreshSizeLabel();
        return ShowAbout(Handle(), StepsOfRemoval());
    case AnnotateButton:
        return RunAnnotateAction(*this, *this, annotating_);
    case CropButton:
        return RunCropAction(*this, *this, messages_, annotating_);
    default:
        return;
    }
}

// Each file replaces the one before it, so the last one stands.
void MainWindow::OnDrop(HDROP files) {
    for (const std::string& path : TakeDroppedFiles(files)) {
        TakeSource(path);
    }
}

void MainWindow::TakeSource(const std::string& path) {
    SetText(SourceFileBox, path);
    const std::string target = Target();
    if (!target.empty()) {
        SetText(TargetBox, Retargeted(path, target));
    }
}

PixelSize MainWindow::RefreshSizeLabel() {
    PixelSize size;
    GetImageDimensions(SourceFile().c_str(), &size.width, &size.height);
    SetText(SizeLabel, SizeText(size.width, size.height));
    return size;
}

// Empty text of a picker that was cancelled counts like any other.
void MainWindow::BrowseSourceFile() { TakeSource(PickImageFile(Handle(), "Select the image", PickMode::ExistingFile)); }

void MainWindow::BrowseTarget() {
    const std::string folder = BrowseForFolder(Handle(), "Select output folder", "Image file to create");
    if (folder.empty()) {
        return;
    }
    SetText(TargetBox,
            SourceFolder().empty() ? TargetInFolder(folder, SourceFile(), SelectedOutputWord()) : AddBackslash(folder));
}

void MainWindow::BrowseSourceFolder() {
    const std::string folder =
        BrowseForFolder(Handle(), "Select the folder where the source images are", "ALL image files in this folder");
    if (!folder.empty()) {
        SetText(SourceFolderBox, AddBackslash(folder));
    }
}

// A text that stays the same is written too.
void MainWindow::ApplyOutputType() {
    const std::string target = Target();
    if (!ExtensionPart(target).empty()) {
        SetText(TargetBox, WithOutputType(target, SelectedOutputWord()));
    }
}

void MainWindow::RotateAndFlip() {
    RunRotateAction(*this, SelectedRotation(ChecksOf(RotationRadioIds)),
                    SelectedFlip(IsChecked(FlipVerticalCheck), IsChecked(FlipHorizontalCheck)), messages_);
}

RemovalSteps MainWindow::StepsOfRemoval() {
    return {.removeDesktopShortcut = [this] { RemoveDesktopShortcut(desktop_); },
            .endAboutBox = {}, // the box knows that itself
            .deleteAtRestart = DeleteAtRestart,
            .endMainWindow = [this] { End(); }};
}

} // namespace

int BuildMainWindow(HWND parent) { return static_cast<int>(MainWindow().RunModal(parent)); }

} // namespace lumbrix
