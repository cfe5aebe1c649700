// What the file picker begins with, and what its preview shows when the selection changes or the pane is covered.
#include "tests/support/bmpfiles.h"
#include "tests/windows/pickerfixture.h"

#include <commdlg.h>
#include <dlgs.h>

namespace {

using namespace lumbrix;
using namespace tests;

constexpr COLORREF PaneWhite = RGB(255, 255, 255);

// The dialog's size without the preview, as the platform makes it.
SIZE plainPickerSize{};

UINT_PTR CALLBACK MeasurePicker(HWND hook, UINT message, WPARAM, LPARAM longParameter) {
    if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(longParameter)->code == CDN_INITDONE) {
        RECT frame{};
        GetWindowRect(GetParent(hook), &frame);
        plainPickerSize = {frame.right - frame.left, frame.bottom - frame.top};
        PostMessageA(GetParent(hook), WM_COMMAND, IDCANCEL, 0);
    }
    return 0;
}

SIZE SizeWithoutPreview() {
    char name[MAX_PATH] = "";
    OPENFILENAMEA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.lpstrFile = name;
    dialog.nMaxFile = sizeof name;
    dialog.Flags = OFN_EXPLORER | OFN_ENABLEHOOK | OFN_HIDEREADONLY | OFN_FILEMUSTEXIST;
    dialog.lpfnHook = MeasurePicker;
    EXPECT_FALSE(GetOpenFileNameA(&dialog));
    return plainPickerSize;
}

// The picker in a folder of two files, of which the first is a red picture, twice as wide as high, and the second none.
class PickerPreview : public FilePicker {
  protected:
    HWND OpenAmongFiles() {
        MakeFolder("pictures");
        WriteBytes(program_.Folder() / "pictures" / "a.bmp", MakeBmp(20, 10, [](int, int) { return tests::Red; }));
        WriteBytes(program_.Folder() / "pictures" / "b.bmp", "no picture");
        Choose(Open(), Path("pictures\\a.bmp"));
        dialog_ = Open();
        return dialog_;
    }

    // A handle as functions called inside take it.
    static std::uint32_t Number(HWND window) {
        return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window));
    }

    HWND Pane() const { return GetDlgItem(dialog_, PreviewPaneId); }
    HWND HookWindow() const { return FindWindowExA(dialog_, nullptr, "#32770", nullptr); }
    std::string Caption() const { return WindowText(GetDlgItem(dialog_, PreviewCaptionId)); }

    // The colour of the pane at a place, far enough to the right not to be covered by the list.
    COLORREF PaneAt(int y) const {
        RECT pane{};
        GetWindowRect(Pane(), &pane);
        return PixelAt({pane.left + 148, pane.top + y});
    }

    bool ShowsThePicture() const {
        return GetRValue(PaneAt(85)) > 200 && GetGValue(PaneAt(85)) < 60 && PaneAt(20) == PaneWhite &&
               PaneAt(150) == PaneWhite;
    }
    bool IsWhite() const { return PaneAt(85) == PaneWhite && PaneAt(20) == PaneWhite && PaneAt(150) == PaneWhite; }

    // Blackens the pane, as something that covers it would, and has it painted anew.
    void CoverAndUncover() const {
        const RECT all{0, 0, 170, 170};
        const std::uint32_t area = program_.PutInside(&all, sizeof all);
        const std::uint32_t context = program_.CallInside("user32.dll", "GetDC", {Number(Pane())});
        const std::uint32_t black = program_.CallInside("gdi32.dll", "GetStockObject", {BLACK_BRUSH});
        ASSERT_TRUE(WaitFor([&] { // again where the dialog, newly opened, was still to be painted
            program_.CallInside("user32.dll", "FillRect", {context, area, black});
            return PaneAt(20) == 0 && PaneAt(85) == 0;
        })) << "it is not black";
        program_.CallInside("user32.dll", "ReleaseDC", {Number(Pane()), context});
        program_.CallInside("user32.dll", "InvalidateRect", {Number(Pane()), 0, TRUE});
    }

    LOGFONTA FontInside(HWND window) const {
        const std::uint32_t font =
            program_.CallInside("user32.dll", "SendMessageA", {Number(window), WM_GETFONT, 0, 0});
        LOGFONTA description{};
        const std::uint32_t inside = program_.PutInside(&description, sizeof description);
        program_.CallInside("gdi32.dll", "GetObjectA", {font, sizeof description, inside});
        program_.GetFromInside(inside, &description, sizeof description);
        return description;
    }

    HWND dialog_ = nullptr;
};

// The platform lists by it, where it does that at all; Wine only shows it.
TEST_F(PickerPreview, NameAtFirstIsTheListOfWildcards) {
    dialog_ = Open();
    const HWND list = GetDlgItem(dialog_, cmb13);
    const HWND box = list != nullptr ? FindBelow(list, "Edit") : GetDlgItem(dialog_, edt1);
    EXPECT_TRUE(WaitFor([&] { return WindowText(box) == "*.bmp;*.gif;*.tiff;*.jpg;*.png;*.ico;*.emf;*.wmf"; }))
        << WindowText(box);
    Cancel(dialog_);
}

TEST_F(PickerPreview, RefusedFileClearsThePaneAndLeavesTheCaption) {
    OpenAmongFiles();
    Select(dialog_, 0);
    EXPECT_TRUE(WaitFor([&] { return ShowsThePicture(); }));
    EXPECT_TRUE(WaitFor([&] { return WindowText(HookWindow()) == Path("pictures\\a.bmp"); }))
        << WindowText(HookWindow());
    Select(dialog_, 1);
    EXPECT_TRUE(WaitFor([&] { return WindowText(HookWindow()) == "Error"; })) << WindowText(HookWindow());
    EXPECT_TRUE(WaitFor([&] { return IsWhite(); }));
    EXPECT_EQ(Caption(), "PREVIEW:");
    CoverAndUncover();
    EXPECT_TRUE(WaitFor([&] { return IsWhite(); })) << "the picture before is not kept";
    Cancel(dialog_);
}

TEST_F(PickerPreview, PaneIsWhiteWhenItOpensAndWhenItIsUncovered) {
    OpenAmongFiles();
    EXPECT_TRUE(WaitFor([&] { return IsWhite(); }));
    CoverAndUncover();
    EXPECT_TRUE(WaitFor([&] { return IsWhite(); }));
    Cancel(dialog_);
}

TEST_F(PickerPreview, PictureAndItsMarginsComeBackWhenTheyAreUncovered) {
    OpenAmongFiles();
    Select(dialog_, 0);
    EXPECT_TRUE(WaitFor([&] { return ShowsThePicture(); }));
    CoverAndUncover();
    EXPECT_TRUE(WaitFor([&] { return ShowsThePicture(); }));
    Cancel(dialog_);
}

TEST_F(PickerPreview, MakesTheDialogWiderBy182PixelsAndNoHigher) {
    const SIZE plain = SizeWithoutPreview();
    dialog_ = Open();
    RECT frame{};
    EXPECT_TRUE(WaitUntilLasting([&] {
        GetWindowRect(dialog_, &frame);
        return frame.right - frame.left == plain.cx + 182 && frame.bottom - frame.top == plain.cy;
    })) << frame.right - frame.left
        << " by " << frame.bottom - frame.top << " instead of " << plain.cx << " by " << plain.cy;
    Cancel(dialog_);
}

TEST_F(PickerPreview, CaptionHasTheSystemsVariableFontAndThePaneASunkenEdge) {
    dialog_ = Open();
    LOGFONTA stock{};
    GetObjectA(GetStockObject(ANSI_VAR_FONT), sizeof stock, &stock);
    const LOGFONTA font = FontInside(GetDlgItem(dialog_, PreviewCaptionId));
    EXPECT_STREQ(font.lfFaceName, stock.lfFaceName);
    EXPECT_EQ(font.lfHeight, stock.lfHeight);
    EXPECT_EQ(font.lfCharSet, stock.lfCharSet);
    EXPECT_EQ(GetWindowLongA(GetDlgItem(dialog_, PreviewCaptionId), GWL_STYLE), 0x50000000);
    EXPECT_EQ(GetWindowLongA(Pane(), GWL_STYLE), 0x5000100E);
    Cancel(dialog_);
}

TEST_F(PickerPreview, CancellingKeepsTheFolderOfTheLastFile) {
    OpenAmongFiles();
    Cancel(dialog_);
    const std::string elsewhere = MakeFolder("elsewhere"); // where the dialog would begin without a folder of its own
    program_.CallInside("kernel32.dll", "SetCurrentDirectoryA",
                        {program_.PutInside(elsewhere.c_str(), elsewhere.size() + 1)});
    Choose(Open(), "a.bmp");
    EXPECT_TRUE(WaitFor([&] { return program_.Text(SourceFileBox) == Path("pictures\\a.bmp"); }));
}

} // namespace
