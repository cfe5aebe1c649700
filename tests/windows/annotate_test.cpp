// Annotating a picture in the running program with a real mouse.
#include "tests/windows/annotatefixture.h"

#include <cmath>

namespace {

using namespace lumbrix;
using namespace tests;

class AnnotateWindow : public PictureWindowTest {
  protected:
    static constexpr int Width = 1200;
    static constexpr int Height = 600;

    AnnotateWindow() { WritePlainPng(Path("white.png"), Width, Height, White); }

    OpenWindow OpenWhite() const { return Open(AnnotateButton, Path("white.png"), Path("out.jpg")); }

    // Clicks into the picture and comes back when both its sizes are written.
    void ClickPicture(const OpenWindow& window, int x, int y) const {
        const auto before = TemporaryFiles();
        ClickAt(On(window, x, y));
        EXPECT_TRUE(WaitFor([&] { return TemporaryFiles() != before; })) << "nothing was placed";
        Settle(window);
    }

    // Clicks where a message is the answer.
    static std::string ClickAndAnswer(const OpenWindow& window, int x, int y) {
        ClickAt(On(window, x, y));
        const std::string said = window.Answer();
        Settle(window);
        return said;
    }

    // Ticks Keep, which opens the window anew.
    OpenWindow Keep(const OpenWindow& window) const {
        window.BeginClick(KeepCheck);
        window.WaitUntilGone();
        return Opened(program_.Further());
    }

    void End(const OpenWindow& window) const {
        CloseAndWait(window);
        WaitForTheEnd();
    }

    std::string MakeStamp(int width, int height) const {
        WritePlainPng(Path("stamp.png"), width, height, tests::Black);
        return Path("stamp.png");
    }

    std::uintmax_t SizeOfOutput() const { return std::filesystem::file_size(program_.Folder() / "out.jpg"); }
};

// Where ink is to be, within one pixel of the screen.
void ExpectNear(const InkBox& seen, int left, int top, double scale) {
    EXPECT_NEAR(seen.left, left, scale);
    EXPECT_NEAR(seen.top, top, scale);
}

TEST_F(AnnotateWindow, TextStandsWhereTheMouseWas) {
    const OpenWindow window = OpenWhite();
    const double scale = ScaleOf(window, Width, Height);
    EXPECT_GT(scale, 1.5);
    window.SetText(AnnotationBox, "HHH");
    ClickPicture(window, 200, 100);
    EXPECT_TRUE(window.IsQuiet());
    End(window);
    const InkBox ink = InkIn(Path("out.jpg"));
    const double bearing = 3 * scale; // what a letter leaves free at its left and above
    EXPECT_GE(ink.left, 200 * scale - scale);
    EXPECT_LE(ink.left, 200 * scale + bearing);
    EXPECT_GE(ink.top, 100 * scale - scale);
    EXPECT_LE(ink.top, 100 * scale + bearing);
    EXPECT_EQ(SizeOf(Path("out.jpg")), std::pair(Width, Height));
}

TEST_F(AnnotateWindow, AnnotationIsSeenOnThePicture) {
    const OpenWindow window = OpenWhite();
    window.SetText(AnnotationBox, MakeStamp(30, 20));
    EXPECT_EQ(PixelAt(On(window, 110, 60)), RGB(255, 255, 255));
    ClickPicture(window, 100, 50);
    EXPECT_TRUE(WaitFor([&] { return GetRValue(PixelAt(On(window, 110, 60))) < 50; }));
    EXPECT_GT(GetRValue(PixelAt(On(window, 90, 60))), 200);
    EXPECT_GT(GetRValue(PixelAt(On(window, 140, 60))), 200);
    End(window);
}

TEST_F(AnnotateWindow, KeepAddsASecondAnnotation) {
    const OpenWindow first = OpenWhite();
    const double scale = ScaleOf(first, Width, Height);
    first.SetText(AnnotationBox, MakeStamp(40, 20));
    ClickPicture(first, 50, 30);
    const OpenWindow second = Keep(first);
    EXPECT_EQ(second.Text(AnnotationBox), Path("stamp.png"));
    EXPECT_FALSE(second.IsChecked(KeepCheck));
    ClickPicture(second, 300, 200);
    End(second);
    const InkBox ink = InkIn(Path("out.jpg"));
    ExpectNear(ink, static_cast<int>(50 * scale), static_cast<int>(30 * scale), scale);
    EXPECT_NEAR(ink.right, 300 * scale + 40, scale);
    EXPECT_NEAR(ink.bottom, 200 * scale + 20, scale);
    EXPECT_TRUE(TemporaryFiles().empty());
}

TEST_F(AnnotateWindow, SecondClickWithoutKeepTakesThePlaceOfTheFirst) {
    const OpenWindow window = OpenWhite();
    const double scale = ScaleOf(window, Width, Height);
    window.SetText(AnnotationBox, MakeStamp(40, 20));
    ClickPicture(window, 50, 30);
    ClickPicture(window, 300, 200);
    End(window);
    ExpectNear(InkIn(Path("out.jpg")), static_cast<int>(300 * scale), static_cast<int>(200 * scale), scale);
}

TEST_F(AnnotateWindow, DraggedMouseAnnotatesOnceAtItsRelease) {
    const OpenWindow window = OpenWhite();
    const double scale = ScaleOf(window, Width, Height);
    window.SetText(AnnotationBox, MakeStamp(40, 20));
    MoveMouse(On(window, 50, 30));
    PressMouse();
    for (int step = 1; step <= 10; ++step) {
        MoveMouse(On(window, 50 + 25 * step, 30 + 17 * step));
    }
    Settle(window);
    EXPECT_EQ(TemporaryFiles().size(), 3u);
    for (const auto& [name, file] : TemporaryFiles()) {
        EXPECT_TRUE(file.bytes == 0 || InkIn((temporary_ / name).string()) == InkBox{}) << "the press has annotated";
    }
    const auto before = TemporaryFiles();
    ReleaseMouse();
    EXPECT_TRUE(WaitFor([&] { return TemporaryFiles() != before; }));
    Settle(window);
    EXPECT_TRUE(window.IsQuiet());
    End(window);
    ExpectNear(InkIn(Path("out.jpg")), static_cast<int>(300 * scale), static_cast<int>(200 * scale), scale);
}

TEST_F(AnnotateWindow, SecondPressOfADoubleClickAnnotatesAtItsReleaseToo) {
    const OpenWindow window = OpenWhite();
    const double scale = ScaleOf(window, Width, Height);
    window.SetText(AnnotationBox, MakeStamp(40, 20));
    MoveMouse(On(window, 50, 30));
    PressMouse();
    ReleaseMouse();
    PressMouse();
    for (int step = 1; step <= 10; ++step) {
        MoveMouse(On(window, 50 + 25 * step, 30 + 17 * step));
    }
    ReleaseMouse();
    const POINT end = On(window, 300, 200);
    EXPECT_TRUE(WaitFor([&] { return GetRValue(PixelAt({end.x + 5, end.y + 5})) < 50; }));
    Settle(window);
    End(window);
    ExpectNear(InkIn(Path("out.jpg")), static_cast<int>(300 * scale), static_cast<int>(200 * scale), scale);
}

TEST_F(AnnotateWindow, RightButtonAnnotatesNothing) {
    const OpenWindow window = OpenWhite();
    const double scale = ScaleOf(window, Width, Height);
    ClickRightOn(window, 300, 200);
    EXPECT_TRUE(window.IsQuiet()) << "a text is asked for";
    window.SetText(AnnotationBox, MakeStamp(40, 20));
    ClickPicture(window, 50, 30);
    ClickRightOn(window, 300, 200);
    ClickRightOn(window, 300, 200);
    End(window);
    ExpectNear(InkIn(Path("out.jpg")), static_cast<int>(50 * scale), static_cast<int>(30 * scale), scale);
}

// The message does not keep the window from being clicked at.
TEST_F(AnnotateWindow, RightButtonAnnotatesNothingWhileAMessageIsShown) {
    const OpenWindow window = OpenWhite();
    ClickAt(On(window, 50, 30));
    const OpenWindow message = window.Further();
    ClickRightOn(window, 300, 200);
    EXPECT_TRUE(message.IsQuiet());
    message.BeginClick(IDOK);
    message.WaitUntilGone();
    End(window);
}

TEST_F(AnnotateWindow, LastDroppedFileIsTheStamp) {
    const OpenWindow window = OpenWhite();
    const double scale = ScaleOf(window, Width, Height);
    MakeFolder("folder");
    window.Drop({Path("white.png"), MakeStamp(40, 20), Path("folder")});
    EXPECT_EQ(window.Text(AnnotationBox), Path("stamp.png"));
    ClickPicture(window, 100, 50);
    End(window);
    const InkBox ink = InkIn(Path("out.jpg"));
    ExpectNear(ink, static_cast<int>(100 * scale), static_cast<int>(50 * scale), scale);
    EXPECT_EQ(ink.right - ink.left, 40); // stamps keep their own size
    EXPECT_EQ(ink.bottom - ink.top, 20);
}

TEST_F(AnnotateWindow, DroppedFolderChangesNothing) {
    const OpenWindow window = OpenWhite();
    window.SetText(AnnotationBox, "text");
    MakeFolder("folder");
    window.Drop({Path("folder")});
    EXPECT_EQ(window.Text(AnnotationBox), "text");
    End(window);
}

TEST_F(AnnotateWindow, ClosingWithoutAClickEmptiesTheOutput) {
    WriteBytes(program_.Folder() / "out.jpg", "old");
    End(OpenWhite());
    EXPECT_EQ(SizeOfOutput(), 0u);
    EXPECT_TRUE(TemporaryFiles().empty());
}

TEST_F(AnnotateWindow, ClosingRightAfterKeepEmptiesTheOutput) {
    const OpenWindow window = OpenWhite();
    window.SetText(AnnotationBox, "text");
    ClickPicture(window, 50, 30);
    End(Keep(window));
    EXPECT_EQ(SizeOfOutput(), 0u);
}

TEST_F(AnnotateWindow, KeepBeforeAnyClickOpensTheSameStage) {
    const OpenWindow window = OpenWhite();
    window.SetText(AnnotationBox, "text");
    const OpenWindow again = Keep(window);
    EXPECT_EQ(TemporaryFiles().size(), 3u); // those of one stage
    EXPECT_EQ(again.Text(AnnotationBox), "text");
    ClickPicture(again, 50, 30);
    End(again);
    EXPECT_GT(SizeOfOutput(), 0u);
}

TEST_F(AnnotateWindow, AnyCommandOfKeepOpensItAnew) {
    const OpenWindow window = OpenWhite();
    PostMessageA(window.Window(), WM_COMMAND, MAKEWPARAM(KeepCheck, BN_SETFOCUS), 0);
    window.WaitUntilGone();
    End(Opened(program_.Further()));
}

TEST_F(AnnotateWindow, KeepKeeps259Characters) {
    const OpenWindow window = OpenWhite();
    const std::string text = std::string(258, 'a') + "bc" + std::string(40, 'd');
    window.SetText(AnnotationBox, text);
    const OpenWindow again = Keep(window);
    EXPECT_EQ(again.Text(AnnotationBox), std::string(258, 'a') + "b");
    End(again);
}

TEST_F(AnnotateWindow, WorkFolderIsTidiedUpAtItsEnd) {
    MakeFolder("Work");
    WriteBytes(program_.Folder() / "Work" / "left.tmp", "left");
    const OpenWindow window = OpenWhite();
    EXPECT_TRUE(Exists("Work/left.tmp"));
    End(window);
    EXPECT_FALSE(Exists("Work/left.tmp"));
    EXPECT_FALSE(Exists("Work"));
}

TEST_F(AnnotateWindow, EmptyTextIsAskedFor) {
    const OpenWindow window = OpenWhite();
    EXPECT_EQ(ClickAndAnswer(window, 50, 30), "Unable to proceed: You forgot to enter the annotation\r\n"
                                              "Please also select the font you want to use.");
    EXPECT_TRUE(IsWindow(window.Window()));
    End(window);
    EXPECT_EQ(SizeOfOutput(), 0u);
}

// The message has no owner, so nothing waits for it.
TEST_F(AnnotateWindow, WindowsGoOnBeingServedWhileAMessageIsShown) {
    const OpenWindow window = OpenWhite();
    ClickAt(On(window, 50, 30));
    const OpenWindow message = window.Further();
    window.Close();
    EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(program_.Window()) != 0; }));
    program_.BeginClick(AnnotateButton);
    const OpenWindow second = message.Further();
    second.SetText(AnnotationBox, "text");
    End(second);
    EXPECT_EQ(SizeOfOutput(), 0u);
    message.BeginClick(IDOK);
    message.WaitUntilGone();
    window.WaitUntilGone();
    WaitForTheEnd();
    EXPECT_TRUE(program_.IsQuiet());
    EXPECT_EQ(program_.Close(), 0u);
}

TEST_F(AnnotateWindow, StampThatIsNoneIsTold) {
    const OpenWindow window = OpenWhite();
    window.SetText(AnnotationBox, "a: b");
    EXPECT_EQ(ClickAndAnswer(window, 50, 30), "Sorry...: Unable to handle annotation image");
    End(window);
    EXPECT_EQ(SizeOfOutput(), 0u);
}

TEST_F(AnnotateWindow, StampButtonPutsTheChosenFileIntoTheBox) {
    const OpenWindow window = OpenWhite();
    window.SetText(AnnotationBox, "text");
    window.BeginClick(StampButton);
    OpenWindow picker = window.Further();
    EXPECT_EQ(WindowText(picker.Window()), "Select the image");
    picker.BeginClick(IDCANCEL);
    picker.WaitUntilGone();
    Settle(window);
    EXPECT_EQ(window.Text(AnnotationBox), "text");
    window.BeginClick(StampButton);
    picker = window.Further();
    ExpectMissingFileRefused(picker);
    const std::string stamp = MakeStamp(40, 20);
    SetFileName(picker, stamp);
    picker.BeginClick(IDOK);
    picker.WaitUntilGone();
    EXPECT_TRUE(WaitFor([&] { return window.Text(AnnotationBox) == stamp; }));
    End(window);
}

TEST_F(AnnotateWindow, KeysWriteIntoTheBox) {
    const OpenWindow window = OpenWhite();
    for (const char key : {'H', 'E', 'Y'}) {
        PressKey(static_cast<WORD>(key), true);
    }
    EXPECT_TRUE(WaitFor([&] { return window.Text(AnnotationBox) == "HEY"; }));
    ClickPicture(window, 50, 30);
    End(window);
    EXPECT_NE(InkIn(Path("out.jpg")), InkBox{});
}

TEST_F(AnnotateWindow, MainWindowWaitsForIt) {
    const OpenWindow window = OpenWhite();
    EXPECT_FALSE(IsWindowEnabled(program_.Window()));
    EXPECT_EQ(GetWindow(window.Window(), GW_OWNER), program_.Window());
    End(window);
    EXPECT_EQ(program_.Text(SizeLabel), "(W1200 x H600)");
    EXPECT_TRUE(program_.IsQuiet());
}

TEST_F(AnnotateWindow, NothingOpensWithoutAReadableSource) {
    program_.SetText(SourceFileBox, Path("none.png"));
    program_.Click(AnnotateButton);
    EXPECT_TRUE(program_.IsQuiet());
    program_.SetText(SourceFileBox, "");
    program_.Click(AnnotateButton);
    EXPECT_TRUE(program_.IsQuiet());
}

} // namespace
