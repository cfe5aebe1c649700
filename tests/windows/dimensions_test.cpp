// The crop dimensions dialog of the running program, and the batch that uses its rectangle.
#include "annotate/dimensionslayout.h"
#include "tests/windows/annotatefixture.h"
#include "tests/windows/expected/cropdimensions.h"
#include "tests/windows/seenwindow.h"

namespace {

using namespace lumbrix;
using namespace lumbrix::cropdimensions;
using namespace tests;

class CropDimensions : public OwnTemporaryFiles, public ProgramTest {
  protected:
    OpenWindow Open(int button = CropButton) const {
        program_.BeginClick(button);
        return program_.Further();
    }

    static void PressOk(const OpenWindow& dialog) {
        dialog.BeginClick(CropOkButton);
        dialog.WaitUntilGone();
    }

    void TypeRectangle() const {
        const OpenWindow dialog = Open();
        dialog.SetText(CropLeftBox, "10");
        dialog.SetText(CropTopBox, "20");
        dialog.SetText(CropWidthBox, "30");
        dialog.SetText(CropHeightBox, "40");
        PressOk(dialog);
    }

    // Its red is the column, its green the row.
    static Rgb ColorOfPicture(int x, int y) { return {static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(y), 7}; }

    // Sets the window up for a batch over one picture of 60 by 70 pixels that batches do not make smaller.
    void FillFolder() const {
        program_.SetText(SourceFolderBox, MakeFolder("in"));
        program_.SetText(TargetBox, MakeFolder("out"));
        WriteBytes(program_.Folder() / "in" / "photo.tif", MakeBmp(60, 70, ColorOfPicture));
    }

    std::string ConvertFolder() const {
        program_.BeginClick(ConvertButton);
        return program_.Answer();
    }
};

TEST_F(CropDimensions, WindowIsAsExpected) {
    const OpenWindow dialog = Open();
    SeenWindow(dialog).Expect(ExpectedCropDimensions());
    PressOk(dialog);
}

TEST_F(CropDimensions, MainWindowWaitsForIt) {
    const OpenWindow dialog = Open();
    EXPECT_EQ(GetWindow(dialog.Window(), GW_OWNER), program_.Window());
    EXPECT_FALSE(IsWindowEnabled(program_.Window()));
    PressOk(dialog);
    EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(program_.Window()) != 0; }));
}

TEST_F(CropDimensions, OkIsTheOnlyWayOut) {
    const OpenWindow dialog = Open();
    Send(dialog.Window(), WM_CLOSE);
    Send(dialog.Window(), WM_SYSCOMMAND, SC_CLOSE, 0);
    Send(dialog.Window(), WM_COMMAND, IDCANCEL, 0);
    Send(dialog.Window(), WM_COMMAND, IDOK, 0);
    Send(dialog.Window(), WM_COMMAND, MAKEWPARAM(CropOkButton, BN_DBLCLK), 0);
    EXPECT_TRUE(WaitUntilLasting([&] { return IsWindowVisible(dialog.Window()) != 0; }));
    PressOk(dialog);
}

TEST_F(CropDimensions, AcceleratorOfOkCountsAsAClick) {
    const OpenWindow dialog = Open();
    PostMessageA(dialog.Window(), WM_COMMAND, MAKEWPARAM(CropOkButton, 1), 0);
    dialog.WaitUntilGone();
}

TEST_F(CropDimensions, KeysTypeAndPressOkAlone) {
    const OpenWindow dialog = Open();
    dialog.Activate();
    EXPECT_EQ(dialog.FocusedId(), CropOkButton);
    PressKey(VK_TAB);
    EXPECT_TRUE(WaitFor([&] { return dialog.FocusedId() == CropLeftBox; }));
    PressKey(VK_ESCAPE);
    PressKey(VK_RETURN); // no button is the default one while a box has the keyboard
    PressKey('7');
    EXPECT_TRUE(WaitFor([&] { return dialog.Text(CropLeftBox) == "7"; }));
    PressKey(VK_TAB, true);
    EXPECT_TRUE(WaitFor([&] { return dialog.FocusedId() == CropOkButton; }));
    PressKey(VK_SPACE);
    dialog.WaitUntilGone();
}

TEST_F(CropDimensions, BoxesAreEmptyAtEachOpening) {
    TypeRectangle();
    const OpenWindow dialog = Open();
    for (const int box : {CropLeftBox, CropTopBox, CropWidthBox, CropHeightBox}) {
        EXPECT_EQ(dialog.Text(box), "") << box;
    }
    PressOk(dialog);
}

TEST_F(CropDimensions, BatchCropsToTheRectangle) {
    TypeRectangle();
    FillFolder();
    EXPECT_EQ(ConvertFolder(), "Lumbrix: 1 files were processed. \r\n0 files could not be resized.");
    const BmpView cropped(ReadBytes(program_.Folder() / "out" / "photo_cropped.bmp"));
    ASSERT_EQ(cropped.Width(), 30);
    ASSERT_EQ(cropped.Height(), 40);
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 30; ++x) {
            ASSERT_EQ(cropped.At(x, y), ColorOfPicture(x + 10, y + 20)) << x << "," << y;
        }
    }
}

TEST_F(CropDimensions, BatchCropsNothingWithoutARectangle) {
    FillFolder();
    EXPECT_EQ(ConvertFolder(), "Lumbrix: 0 files were processed. \r\n1 files could not be resized.");
    EXPECT_TRUE(std::filesystem::is_empty(program_.Folder() / "out"));
}

TEST_F(CropDimensions, EmptyBoxesTakeTheRectangleAway) {
    TypeRectangle();
    PressOk(Open());
    FillFolder();
    EXPECT_EQ(ConvertFolder(), "Lumbrix: 0 files were processed. \r\n1 files could not be resized.");
}

TEST_F(CropDimensions, CropBoxOpensItWhenItBecomesChecked) {
    PressOk(Open(CropCheck));
    EXPECT_TRUE(program_.IsChecked(CropCheck));
    program_.Click(CropCheck);
    EXPECT_FALSE(program_.IsChecked(CropCheck));
    EXPECT_TRUE(program_.IsQuiet());
}

TEST_F(CropDimensions, AnyCommandOfTheCheckedCropBoxOpensIt) {
    Send(program_.Window(), WM_COMMAND, MAKEWPARAM(CropCheck, BN_SETFOCUS), 0);
    Send(program_.Item(CropCheck), BM_SETCHECK, BST_CHECKED, 0);
    EXPECT_TRUE(program_.IsQuiet());
    PostMessageA(program_.Window(), WM_COMMAND, MAKEWPARAM(CropCheck, BN_SETFOCUS), 0);
    PressOk(program_.Further());
}

TEST_F(CropDimensions, ChosenPictureOpensTheWindowToMarkItInInstead) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    const OpenWindow window = Open();
    EXPECT_EQ(WindowText(window.Window()), "Crop image");
    window.Close();
    window.WaitUntilGone();
}

} // namespace
