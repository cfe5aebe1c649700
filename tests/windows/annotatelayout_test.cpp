// The annotate and crop window of the running program in its three modes, held against what is expected of it.
#include "tests/windows/annotatefixture.h"
#include "tests/windows/expected/annotatewindow.h"
#include "tests/windows/seenwindow.h"

namespace {

using namespace lumbrix;
using namespace tests;

class AnnotateLayout : public PictureWindowTest {
  protected:
    AnnotateLayout() { WritePlainPng(Path("source.png"), 300, 200, White); }

    OpenWindow OpenMode(EditMode mode) const {
        const OpenWindow window =
            Open(mode == EditMode::Annotate ? AnnotateButton : CropButton, Path("source.png"), Path("target.png"));
        if (mode != EditMode::Cropped) {
            return window;
        }
        DragMouse(On(window, 20, 10), On(window, 120, 90));
        window.WaitUntilGone();
        return Opened(program_.Further());
    }
};

class EachMode : public AnnotateLayout, public testing::WithParamInterface<EditMode> {};

TEST_P(EachMode, WindowIsAsExpected) {
    const OpenWindow window = OpenMode(GetParam());
    SeenWindow(window).Expect(ExpectedInMode(static_cast<int>(GetParam())));
    CloseAndWait(window);
}

std::string NameOfMode(const testing::TestParamInfo<EditMode>& info) {
    constexpr const char* Names[] = {"Annotate", "Crop", "Cropped"};
    return Names[static_cast<std::size_t>(info.param)];
}

INSTANTIATE_TEST_SUITE_P(Annotate, EachMode, testing::Values(EditMode::Annotate, EditMode::Crop, EditMode::Cropped),
                         NameOfMode);

TEST_F(AnnotateLayout, BackgroundIsSeenToBeCyan) {
    const OpenWindow window = OpenMode(EditMode::Annotate);
    RECT client{};
    GetClientRect(window.Window(), &client);
    constexpr COLORREF SeenCyan = RGB(0, 255, 255);
    EXPECT_EQ(PixelAt(ScreenPointOf(window.Window(), {client.right - 2, client.bottom - 2})), SeenCyan);
    CloseAndWait(window);
}

TEST_F(AnnotateLayout, PictureControlIsAListOfIconsThatTheKeyboardPassesOver) {
    const OpenWindow window = OpenMode(EditMode::Annotate);
    const LONG style = GetWindowLongA(window.Item(PictureControl), GWL_STYLE);
    EXPECT_EQ(style & 3, 0); // icons
    EXPECT_EQ(style & WS_TABSTOP, 0);
    EXPECT_EQ(window.FocusedId(), AnnotationBox);
    CloseAndWait(window);
}

TEST_F(AnnotateLayout, PictureStandsAtTheTopLeftInItsOwnSize) {
    WritePlainPng(Path("source.png"), 300, 200, tests::Black);
    const OpenWindow black = OpenMode(EditMode::Annotate);
    EXPECT_TRUE(WaitFor([&] { return PixelAt(On(black, 0, 0)) == 0; }));
    EXPECT_EQ(PixelAt(On(black, 299, 199)), 0u);
    EXPECT_EQ(PixelAt(On(black, 300, 100)), RGB(255, 255, 255));
    EXPECT_EQ(PixelAt(On(black, 100, 200)), RGB(255, 255, 255));
    CloseAndWait(black);
}

TEST_F(AnnotateLayout, KeyboardIsAtThePictureWhereThereIsNoText) {
    for (const EditMode mode : {EditMode::Crop, EditMode::Cropped}) {
        const OpenWindow window = OpenMode(mode);
        EXPECT_EQ(window.FocusedId(), PictureControl) << static_cast<int>(mode);
        PressKey(VK_SPACE);
        PressKey(VK_TAB); // worked off behind it
        EXPECT_TRUE(WaitFor([&] { return window.FocusedId() == KeepCheck; })) << static_cast<int>(mode);
        EXPECT_TRUE(IsWindow(window.Window())) << static_cast<int>(mode);
        CloseAndWait(window);
    }
}

TEST_F(AnnotateLayout, EscapeAndEnterLeaveItOpen) {
    const OpenWindow window = OpenMode(EditMode::Annotate);
    PressKey(VK_ESCAPE);
    PressKey(VK_RETURN);
    PressKey('7');
    EXPECT_TRUE(WaitFor([&] { return window.Text(AnnotationBox) == "7"; }));
    EXPECT_TRUE(window.IsQuiet());
    CloseAndWait(window);
}

} // namespace
