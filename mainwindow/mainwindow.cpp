// The window from which everything starts.
#include "mainwindow/mainwindow.h"

#include "annotate/annotatewindow.h"
#include "annotate/cropdimensions.h"
#include "batch/driver.h"
#include "batch/options.h"
#include "imaging/exports/lumbrix.h"
#include "imaging/paths.h"
#include "mainwindow/actions.h"
#include "mainwindow/layout.h"
#include "mainwindow/rules.h"
#include "platform/files.h"
#include "toolkit/browsefolder.h"
#include "toolkit/dialog.h"
#include "toolkit/dropping.h"
#include "toolkit/messages.h"
#include "toolkit/picker.h"

namespace lumbrix {

namespace {

constexpr const char* InitialHeight = "512";

class MainWindow : public Dialog, private OrderDesk, private ActionDesk {
  public:
    MainWindow() : Dialog(MainWindowLayout) {}

  private:
    void OnStart() override;
    void OnCommand(int id, int notification) override;
    void OnDrop(HDROP files) override;

    void SetInitialChecks();
    void RefreshSizeLabel();
    void TakeSource(const std::string& path);

    void BrowseSourceFile();
    void BrowseTarget();
    void BrowseSourceFolder();
    void ApplyOutputType();
    void RotateAndFlip();

    template <std::size_t Count> std::array<bool, Count> ChecksOf(const std::array<MainWindowId, Count>& ids) const {
        std::array<bool, Count> checks;
        for (std::size_t i = 0; i < Count; ++i) {
            checks[i] = IsChecked(ids[i]);
        }
        return checks;
    }

    // The order as the controls have it, and the windows of the actions.
    std::string SourceFile() const override { return TextOf(SourceFileBox); }
    std::string SourceFolder() const override { return TextOf(SourceFolderBox); }
    std::string Target() const override { return TextOf(TargetBox); }
    std::string HeightText() const override { return TextOf(HeightBox); }
    bool IsSmallerChecked() const override { return IsChecked(SmallerCheck); }
    bool IsCropChecked() const override { return IsChecked(CropCheck); }
    std::string SelectedOutputWord() const override { return lumbrix::SelectedOutputWord(ChecksOf(OutputRadioIds)); }
    void Show(const std::string& text, const std::string& title) override { ShowMessage(text, title); }
    bool Confirm(const std::string& text, const std::string& title) override { return AskYesNo(text, title); }
    void RefreshSizeLabel(std::int32_t* width, std::int32_t* height) override;
    void ShowAnnotateWindow(std::size_t stage, std::int32_t width, std::int32_t height,
                            const std::string& title) override {
        lumbrix::ShowAnnotateWindow(Handle(), stage, width, height, title);
    }
    void ShowCropDimensions() override { lumbrix::ShowCropDimensions(Handle()); }
};

void MainWindow::OnStart() {
    Hide(CropCheck);
    SetInitialChecks();
    SetWindowIconFromModule(Handle());
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
    if (id == CropCheck && IsChecked(CropCheck)) {
        return RunCropAction(*this);
    }
    if (!IsClick(notification)) {
        return;
    }
    switch (id) {
    case SourceFileButton:
        BrowseSourceFile();
        return RefreshSizeLabel();
    case TargetButton:
        BrowseTarget();
        return RefreshSizeLabel();
    case ConvertButton:
        RefreshSizeLabel();
        return RunBatch(*this);
    case SourceFolderButton:
        RefreshSizeLabel();
        return BrowseSourceFolder();
    case AnnotateButton:
        return RunAnnotateAction(*this);
    case CropButton:
        return RunCropAction(*this);
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

void MainWindow::RefreshSizeLabel() {
    std::int32_t width = 0;
    std::int32_t height = 0;
    RefreshSizeLabel(&width, &height);
}

void MainWindow::RefreshSizeLabel(std::int32_t* width, std::int32_t* height) {
    GetImageDimensions(SourceFile().c_str(), width, height);
    SetText(SizeLabel, SizeText(*width, *height));
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

void MainWindow::ApplyOutputType() {
    const std::string target = Target();
    const std::string changed = WithOutputType(target, SelectedOutputWord());
    if (changed != target) {
        SetText(TargetBox, changed);
    }
}

void MainWindow::RotateAndFlip() {
    const std::string source = SourceFile();
    const std::string target = Target();
    if (source.empty() || target.empty()) {
        return;
    }
    const std::string flip = SelectedFlip(IsChecked(FlipVerticalCheck), IsChecked(FlipHorizontalCheck));
    RotateImage(source.c_str(), target.c_str(), SelectedRotation(ChecksOf(RotationRadioIds)), flip.c_str());
    ShowMessage(FileExists(target) ? "Done" : "Faliure", ProgramTitle);
}

} // namespace

int BuildMainWindow(HWND parent) { return static_cast<int>(MainWindow().RunModal(parent)); }

} // namespace lumbrix
