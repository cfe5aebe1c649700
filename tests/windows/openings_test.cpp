// The windows that work on no picture, opened and closed again and again. Some openings are enough for objects;
// OPENINGS=1000 is for memory too.
#include "annotate/cropdimensions.h"
#include "annotate/dimensionslayout.h"
#include "desktop/aboutbox.h"
#include "draw/textentry.h"
#include "draw/textentrylayout.h"
#include "freeedit/skewdialog.h"
#include "freeedit/skewlayout.h"
#include "mainwindow/mainwindow.h"
#include "tests/support/bmpfiles.h"
#include "tests/windows/openings.h"
#include "toolkit/browsefolder.h"
#include "toolkit/fontdialog.h"
#include "toolkit/messageboxes.h"
#include "toolkit/picker.h"

#include <commctrl.h>
#include <commdlg.h>

namespace {

using namespace lumbrix;
using namespace tests;

TEST_F(Opening, MainWindow) {
    WriteBytes(ShortcutOnDesktop(), "of another start");
    const Growth growth = Measure(
        "main window", [] { BuildMainWindow(nullptr); }, [] { return std::deque{Closing("Lumbrix")}; });
    ExpectNothing(growth);
}

TEST_F(Opening, AboutBox) {
    const Growth growth = Measure(
        "About", [] { ShowAbout(nullptr, {}); }, [] { return std::deque{Closing("About Lumbrix...")}; });
    ExpectNothing(growth);
}

TEST_F(Opening, Message) {
    MessageBoxes boxes;
    const Growth growth = Measure(
        "message", [&] { boxes.Show("All is well.", "Lumbrix"); },
        [] { return std::deque{Pressing("Lumbrix", IDOK)}; });
    ExpectNothing(growth);
}

// Wine loses an object of its own with every dialog for files.
TEST_F(Opening, FilePicker) {
    constexpr int PreviewPane = 346;
    WriteBytes(folder_ / "picture.bmp", MakeBmp(20, 10, [](int, int) { return tests::Red; }));
    SetCurrentDirectoryA(folder_.Path().string().c_str());
    const auto open = [] {
        char name[MAX_PATH] = "";
        OPENFILENAMEA dialog{};
        dialog.lStructSize = sizeof dialog;
        dialog.lpstrFile = name;
        dialog.nMaxFile = sizeof name;
        dialog.lpstrTitle = "Bare";
        dialog.Flags = OFN_EXPLORER;
        GetOpenFileNameA(&dialog);
    };
    const Growth bare =
        Measure("the system's own file dialog", open, [] { return std::deque{Pressing("Bare", IDCANCEL)}; });
    const auto select = [](HWND window) {
        const HWND list = FindBelow(window, "SysListView32");
        if (GetDlgItem(window, PreviewPane) == nullptr || list == nullptr || Send(list, LVM_GETITEMCOUNT, 0, 0) == 0) {
            return false;
        }
        LVITEMA selected{};
        selected.stateMask = selected.state = LVIS_SELECTED | LVIS_FOCUSED;
        Send(list, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&selected));
        Press(window, IDCANCEL);
        return true;
    };
    Growth growth = Measure(
        "file picker, with a preview", [] { PickImageFile(nullptr, "Select the image", PickMode::ExistingFile); },
        [&] {
            return std::deque{Visit{"Select the image", select}};
        });
    growth.userObjects -= bare.userObjects;
    ExpectNothing(growth);
}

TEST_F(Opening, FolderDialog) {
    const Growth growth = Measure(
        "folder dialog", [] { BrowseForFolder(nullptr, "prompt", "caption"); },
        [] { return std::deque{Pressing("caption", IDCANCEL)}; });
    ExpectNothing(growth);
}

TEST_F(Opening, FontDialog) {
    const Growth growth = Measure(
        "font dialog", [] { ChooseFontOf(nullptr, FontKinds::All); },
        [] { return std::deque{Pressing("Font", IDCANCEL)}; });
    ExpectNothing(growth);
}

TEST_F(Opening, CropDimensions) {
    PixelRectangle rectangle;
    const Growth growth = Measure(
        "crop dimensions", [&] { lumbrix::ShowCropDimensions(nullptr, rectangle); },
        [] { return std::deque{Pressing("Crop dimensions", cropdimensions::CropOkButton)}; });
    ExpectNothing(growth);
}

TEST_F(Opening, Skewing) {
    CornerTexts corners;
    corners.fill("0");
    const Growth growth = Measure(
        "skew dialog", [&] { ShowSkewDialog(nullptr, corners); },
        [] { return std::deque{Pressing("Skewing", skewdialog::SetButton)}; });
    ExpectNothing(growth);
}

TEST_F(Opening, TextEntry) {
    TextFont font;
    OwnedFont drawnWith;
    const Growth growth = Measure(
        "text entry, with the font dialog",
        [&] {
            std::string text;
            ShowTextEntry(
                nullptr, font, 0, [&](OwnedFont chosen) { drawnWith = std::move(chosen); }, text);
            EXPECT_EQ(text, "by the lake");
        },
        [] {
            const Visit change{"Enter Text", [](HWND window) {
                                   SetDlgItemTextA(window, textentry::TextBox, "by the lake");
                                   Press(window, textentry::ChangeFontButton);
                                   return true;
                               }};
            return std::deque{change, Pressing("Font", IDOK), Pressing("Enter Text", textentry::ExitButton)};
        });
    ExpectNothing(growth);
}

} // namespace
