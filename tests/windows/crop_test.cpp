// Cropping a picture in the running program with a real mouse.
#include "tests/windows/annotatefixture.h"

#include <commctrl.h>

namespace {

using namespace lumbrix;
using namespace tests;

class CropWindow : public PictureWindowTest {
  protected:
    // A picture smaller than the control, so that one pixel of the screen is one of its own. Its colours tell places.
    CropWindow() { WriteBytes(program_.Folder() / "map.bmp", MakeBmp(250, 200, ColorOfMap)); }

    static Rgb ColorOfMap(int x, int y) { return {static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(y), 7}; }

    OpenWindow OpenMap() const { return Open(CropButton, Path("map.bmp"), Path("out.png")); }

    OpenWindow Cropped() const {
        const OpenWindow window = Opened(program_.Further());
        EXPECT_EQ(WindowText(window.Window()), "Cropped image");
        return window;
    }

    void End(const OpenWindow& window) const {
        CloseAndWait(window);
        WaitForTheEnd();
    }

    // Sends a notification of a control, as a picture control that notifies no press would.
    static void Notify(const OpenWindow& window, UINT code, std::uint32_t id = PictureControl) {
        const std::uint32_t control =
            static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window.Item(static_cast<int>(id))));
        const std::uint32_t dialog = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window.Window()));
        const std::uint32_t notification[] = {control, id, code};
        const std::uint32_t inside = window.PutInside(notification, sizeof notification);
        window.CallInside("user32.dll", "SendMessageA", {dialog, WM_NOTIFY, id, inside});
    }
};

TEST_F(CropWindow, DraggingCutsOutWhatWasMarkedAndShowsIt) {
    const OpenWindow window = OpenMap();
    DragMouse(On(window, 30, 20), On(window, 180, 120));
    window.WaitUntilGone();
    const OpenWindow cropped = Cropped();
    EXPECT_TRUE(WaitFor([&] { return PixelAt(On(cropped, 0, 0)) == RGB(30, 20, 7); }));
    EXPECT_EQ(PixelAt(On(cropped, 149, 99)), RGB(179, 119, 7));
    EXPECT_EQ(PixelAt(On(cropped, 150, 50)), RGB(255, 255, 255));
    End(cropped);
    const BmpView picture = ReadPicture(Path("out.png"));
    ASSERT_EQ(picture.Width(), 150);
    ASSERT_EQ(picture.Height(), 100);
    EXPECT_EQ(picture.At(0, 0), ColorOfMap(30, 20));
    EXPECT_EQ(picture.At(149, 99), ColorOfMap(179, 119));
    EXPECT_EQ(TemporaryFiles().size(), 3u); // they stay
}

TEST_F(CropWindow, RubberBandFollowsTheMouse) {
    const OpenWindow window = OpenMap();
    MoveMouse(On(window, 30, 20));
    PressMouse();
    for (int step = 1; step <= 8; ++step) {
        MoveMouse(On(window, 30 + 15 * step, 20 + 10 * step));
    }
    // The frame of the marquee is drawn over the picture, in dots.
    EXPECT_TRUE(WaitFor([&] {
        int changed = 0;
        for (int x = 40; x < 140; ++x) {
            changed += PixelAt(On(window, x, 20)) != RGB(x, 20, 7) ? 1 : 0;
        }
        return changed > 30;
    }));
    EXPECT_EQ(PixelAt(On(window, 90, 60)), RGB(90, 60, 7));
    ReleaseMouse();
    window.WaitUntilGone();
    End(Cropped());
}

TEST_F(CropWindow, NothingBesidesThePictureChangesWhileMarking) {
    const OpenWindow window = OpenMap();
    const HWND keep = window.Item(KeepCheck);
    PressKey(VK_TAB); // the keyboard comes to Keep, and leaves it at the press
    EXPECT_TRUE(WaitFor([&] { return window.FocusedId() == KeepCheck; }));
    const auto seen = [&] {
        RECT place{};
        GetWindowRect(keep, &place);
        std::vector<COLORREF> colors;
        for (LONG y = place.top; y < place.bottom; ++y) {
            for (LONG x = place.left; x < place.right; ++x) {
                colors.push_back(PixelAt({x, y}));
            }
        }
        return colors;
    };
    Send(window.Window(), WM_UPDATEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS));
    RedrawWindow(window.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    Settle(window);
    EXPECT_TRUE(WaitFor([&] { return GetUpdateRect(window.Item(HelpLabel), nullptr, FALSE) == 0; }));
    const auto before = seen();
    MoveMouse(On(window, 30, 20));
    PressMouse();
    for (int step = 1; step <= 8; ++step) {
        MoveMouse(On(window, 30 + 15 * step, 20 + 10 * step));
    }
    EXPECT_TRUE(WaitFor([&] { return window.FocusedId() == PictureControl; }));
    EXPECT_TRUE(seen() == before);
    EXPECT_TRUE(window.IsVisible(KeepCheck));
    ReleaseMouse();
    window.WaitUntilGone();
    End(Cropped());
}

TEST_F(CropWindow, KeepIsPressedWhereItLiesBelowTheHelp) {
    const OpenWindow window = OpenMap();
    ClickAt(MiddleOf(window.Item(KeepCheck)));
    window.WaitUntilGone();
    WaitForTheEnd();
    EXPECT_FALSE(Exists("out.png"));
}

TEST_F(CropWindow, PictureMayBeLeftWhileMarking) {
    const OpenWindow window = OpenMap();
    DragMouse(On(window, 30, 20), On(window, 240, 450)); // far below the control
    window.WaitUntilGone();
    End(Cropped());
    // The rectangle runs over the edge, which the crop refuses.
    EXPECT_FALSE(Exists("out.png"));
}

TEST_F(CropWindow, RectangleDrawnUpwardsIsNotTurnedRound) {
    const OpenWindow window = OpenMap();
    DragMouse(On(window, 180, 120), On(window, 30, 20));
    window.WaitUntilGone();
    End(Cropped());
    EXPECT_FALSE(Exists("out.png"));
}

TEST_F(CropWindow, ClickOnOnePlaceMakesNoCrop) {
    const OpenWindow window = OpenMap();
    ClickAt(On(window, 50, 60));
    window.WaitUntilGone();
    WaitForTheEnd();
    EXPECT_TRUE(program_.IsQuiet());
    EXPECT_FALSE(Exists("out.png"));
}

TEST_F(CropWindow, RightButtonMarksNothing) {
    WriteBytes(program_.Folder() / "out.png", "old");
    const OpenWindow window = OpenMap();
    ClickRightOn(window, 30, 20);
    ClickRightOn(window, 180, 120);
    EXPECT_TRUE(IsWindow(window.Window()));
    End(window);
    EXPECT_TRUE(program_.IsQuiet());
    EXPECT_EQ(Start("out.png"), "ol");
}

TEST_F(CropWindow, WithoutANotifiedPressTwoReleasesMarkTheCorners) {
    const OpenWindow window = OpenMap();
    MoveMouse(On(window, 30, 20));
    Notify(window, static_cast<UINT>(NM_RELEASEDCAPTURE));
    EXPECT_TRUE(IsWindow(window.Window()));
    MoveMouse(On(window, 130, 70));
    Notify(window, static_cast<UINT>(NM_RELEASEDCAPTURE));
    window.WaitUntilGone();
    End(Cropped());
    EXPECT_EQ(SizeOf(Path("out.png")), std::pair(100, 50));
}

TEST_F(CropWindow, NotificationsOfOtherControlsMarkNothing) {
    const OpenWindow window = OpenMap();
    for (const POINT place : {POINT{30, 20}, POINT{130, 70}}) {
        MoveMouse(On(window, place.x, place.y));
        Notify(window, static_cast<UINT>(NM_RELEASEDCAPTURE), KeepCheck);
    }
    Notify(window, static_cast<UINT>(NM_LDOWN), KeepCheck);
    Notify(window, static_cast<UINT>(NM_CLICK));
    Notify(window, static_cast<UINT>(NM_RCLICK));
    EXPECT_TRUE(IsWindow(window.Window()));
    Notify(window, static_cast<UINT>(NM_RELEASEDCAPTURE)); // the first corner
    EXPECT_TRUE(IsWindow(window.Window()));
    End(window);
    EXPECT_FALSE(Exists("out.png"));
}

TEST_F(CropWindow, PressWhileAnnotatingIsNoCorner) {
    const OpenWindow annotating = Open(AnnotateButton, Path("map.bmp"), Path("out.jpg"));
    annotating.SetText(AnnotationBox, "text");
    const auto before = TemporaryFiles();
    ClickAt(On(annotating, 50, 60));
    EXPECT_TRUE(WaitFor([&] { return TemporaryFiles() != before; }));
    End(annotating);
    const OpenWindow window = OpenMap();
    MoveMouse(On(window, 30, 20));
    Notify(window, static_cast<UINT>(NM_RELEASEDCAPTURE));
    EXPECT_TRUE(IsWindow(window.Window()));
    End(window);
    EXPECT_TRUE(program_.IsQuiet());
}

TEST_F(CropWindow, CornerThatWaitsOutlivesTheWindow) {
    const OpenWindow first = OpenMap();
    MoveMouse(On(first, 30, 20));
    Notify(first, static_cast<UINT>(NM_RELEASEDCAPTURE));
    End(first);
    const OpenWindow second = OpenMap();
    MoveMouse(On(second, 130, 70));
    Notify(second, static_cast<UINT>(NM_RELEASEDCAPTURE));
    second.WaitUntilGone();
    End(Cropped());
    EXPECT_EQ(SizeOf(Path("out.png")), std::pair(100, 50));
}

// The stamp stands in a box that is not seen, and its place becomes the first corner.
TEST_F(CropWindow, DroppedStampIsPutOnTheOutputInPlaceOfACrop) {
    WritePlainPng(Path("stamp.png"), 40, 20, tests::Black);
    const OpenWindow window = OpenMap();
    window.Drop({Path("stamp.png")});
    DragMouse(On(window, 30, 20), On(window, 180, 120));
    window.WaitUntilGone();
    WaitForTheEnd();
    EXPECT_TRUE(program_.IsQuiet());
    const BmpView picture = ReadPicture(Path("out.png"));
    ASSERT_EQ(picture.Width(), 250);
    ASSERT_EQ(picture.Height(), 200);
    EXPECT_EQ(picture.At(181, 121), tests::Black);
    EXPECT_EQ(picture.At(218, 138), tests::Black);
    EXPECT_EQ(picture.At(178, 121), ColorOfMap(178, 121));
    EXPECT_EQ(picture.At(222, 121), ColorOfMap(222, 121));
}

TEST_F(CropWindow, ClosingItMakesNoCrop) {
    End(OpenMap());
    EXPECT_TRUE(program_.IsQuiet());
    EXPECT_FALSE(Exists("out.png"));
    EXPECT_EQ(TemporaryFiles().size(), 2u); // they stay
}

TEST_F(CropWindow, KeepClosesItWithoutACropAndIsForgottenAtTheNextOpening) {
    const OpenWindow window = OpenMap();
    window.BeginClick(KeepCheck);
    window.WaitUntilGone();
    WaitForTheEnd();
    EXPECT_FALSE(Exists("out.png"));
    const OpenWindow again = Open(AnnotateButton, Path("map.bmp"), Path("out.png"));
    End(again); // a Keep that is still asked for would open it once more
    EXPECT_TRUE(program_.IsQuiet());
}

TEST_F(CropWindow, ExistingTargetIsReplacedWithoutAQuestion) {
    WriteBytes(program_.Folder() / "out.png", "old");
    const OpenWindow window = OpenMap();
    DragMouse(On(window, 30, 20), On(window, 180, 120));
    window.WaitUntilGone();
    End(Cropped());
    EXPECT_EQ(SizeOf(Path("out.png")), std::pair(150, 100));
}

TEST_F(CropWindow, EmptyTargetShowsTheCroppedWindowAllTheSame) {
    const OpenWindow window = Open(CropButton, Path("map.bmp"), "");
    DragMouse(On(window, 30, 20), On(window, 180, 120));
    window.WaitUntilGone();
    End(Cropped());
}

} // namespace
