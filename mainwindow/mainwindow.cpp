// The window from which everything starts.
#include "mainwindow/mainwindow.h"

#include "annotate/cropdimensions.h"
#include "batch/driver.h"
#include "batch/options.h"
#include "imaging/exports/lumbrix.h"
#include "imaging/paths.h"
#include "mainwindow/layout.h"
#include "mainwindow/rules.h"
#include "platform/files.h"
#include "toolkit/browsefolder.h"
#include "toolkit/dialog.h"
#include "toolkit/messages.h"
#include "toolkit/picker.h"

namespace lumbrix {

namespace {

constexpr const char* InitialHeight = "512";
constexpr std::size_t LongestDroppedPath = 254;

class MainWindow : public Dialog, private OrderDesk {
  public:
    MainWindow() : Dialog(MainWindowLayout) {}

  private:
    void OnStart() override;
    void OnCommand(int id, int notification) override;
    void OnDrop(HDROP files) override;

    void SetInitialChecks();
    void RefreshSizeLabel();
    void TakeSource(const std::string& path);
    void TakeDroppedFile(const std::string& path);

    void BrowseSourceFile();
    void BrowseTarget();
    void BrowseSourceFolder();
    void ApplyOutputType();
    void RotateAndFlip();
    void Crop();

    template <std::size_t Count> std::array<bool, Count> ChecksOf(const std::array<MainWindowId, Count>& ids) const {
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
    void Show(const std::string& text, const std::string& title) override { ShowMessage(text, title); }
    bool Confirm(const std::string& text, const std::string& title) override { return AskYesNo(text, title); }
};

void MainWindow::OnStart() {
    ShowWindow(Item(CropCheck), SW_HIDE);
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
        return Crop();
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
    case CropButton:
        return Crop();
    default:
        return;
    }
}

// Each file replaces the one before it, so the last one stands.
void MainWindow::OnDrop(HDROP files) {
    const UINT count = DragQueryFileA(files, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        char path[LongestDroppedPath + 1] = "";
        DragQueryFileA(files, i, path, sizeof path);
        TakeDroppedFile(path);
    }
    DragFinish(files);
}

void MainWindow::TakeDroppedFile(const std::string& path) {
    if (!IsPlainFolder(GetFileAttributesA(path.c_str()))) {
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
    GetImageDimensions(SourceFile().c_str(), &width, &height);
    SetText(SizeLabel, SizeText(width, height));
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

// Without a picture to mark it in, the rectangle for a batch is typed.
void MainWindow::Crop() {
    if (SourceFile().empty()) {
        ShowCropDimensions(Handle());
    }
}

} // namespace

int BuildMainWindow(HWND parent) { return static_cast<int>(MainWindow().RunModal(parent)); }

} // namespace lumbrix
