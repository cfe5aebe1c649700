// The main window under a real mouse.
#include "tests/windows/mouse.h"
#include "tests/windows/programfixture.h"

namespace {

using namespace lumbrix;
using namespace tests;

class Mouse : public ProgramTest {
  protected:
    Mouse() { program_.Activate(); }

    void ClickOn(int id) const { ClickAt(MiddleOf(program_.Item(id))); }

    RECT PlaceOf(HWND window) const {
        RECT place{};
        GetWindowRect(window, &place);
        return place;
    }
};

TEST_F(Mouse, ProgramFindsItWhereItWasMoved) {
    const std::uint32_t inside = program_.PutInside("\0\0\0\0\0\0\0", sizeof(POINT));
    for (const POINT point : {POINT{0, 0}, {1279, 1023}, {333, 777}, MiddleOf(program_.Window())}) {
        MoveMouse(point);
        program_.CallInside("user32.dll", "GetCursorPos", {inside});
        POINT seen{};
        program_.GetFromInside(inside, &seen, sizeof seen);
        EXPECT_EQ(seen.x, point.x);
        EXPECT_EQ(seen.y, point.y);
    }
}

TEST_F(Mouse, ClickChecksARadioButton) {
    program_.SetText(TargetBox, "C:\\x\\a.bmp");
    ClickOn(PngRadio);
    EXPECT_TRUE(WaitFor([&] { return program_.IsChecked(PngRadio); }));
    EXPECT_FALSE(program_.IsChecked(BmpRadio));
    EXPECT_TRUE(WaitFor([&] { return program_.Text(TargetBox) == "C:\\x\\a.png"; })) << program_.Text(TargetBox);
}

TEST_F(Mouse, ClickGivesTheKeyboard) {
    for (const int id : {Rotate180Radio, FlipVerticalCheck, TargetBox, AboutButton}) {
        MoveMouse(MiddleOf(program_.Item(id)));
        PressMouse();
        EXPECT_TRUE(WaitFor([&] { return program_.FocusedId() == id; })) << id << ", not " << program_.FocusedId();
        MoveMouse(MiddleOf(program_.Item(SizeLabel))); // where nothing happens when it is let go
        ReleaseMouse();
    }
}

TEST_F(Mouse, ClickTogglesACheckBox) {
    ClickOn(SmallerCheck);
    EXPECT_TRUE(WaitFor([&] { return program_.IsChecked(SmallerCheck); }));
    ClickOn(SmallerCheck);
    EXPECT_TRUE(WaitFor([&] { return !program_.IsChecked(SmallerCheck); }));
}

TEST_F(Mouse, ClickPressesAButtonAndAnswersItsMessage) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    program_.SetText(TargetBox, Path("a.png"));
    ClickOn(ConvertButton);
    const OpenWindow message = program_.Further();
    message.Activate();
    ClickAt(MiddleOf(message.Focused()));
    message.WaitUntilGone();
    EXPECT_EQ(Start("a.png"), "\x89P");
}

TEST_F(Mouse, ButtonLetGoElsewhereIsNotPressed) {
    MoveMouse(MiddleOf(program_.Item(SmallerCheck)));
    PressMouse();
    MoveMouse(MiddleOf(program_.Item(SizeLabel)));
    ReleaseMouse();
    ClickOn(FlipVerticalCheck);
    EXPECT_TRUE(WaitFor([&] { return program_.IsChecked(FlipVerticalCheck); }));
    EXPECT_FALSE(program_.IsChecked(SmallerCheck));
}

TEST_F(Mouse, CheckBoxReachesToItsLastPixelAndNoFurther) {
    const RECT place = PlaceOf(program_.Item(SmallerCheck));
    ClickAt({place.right, place.top});
    ClickOn(FlipVerticalCheck);
    EXPECT_TRUE(WaitFor([&] { return program_.IsChecked(FlipVerticalCheck); }));
    EXPECT_FALSE(program_.IsChecked(SmallerCheck));
    ClickAt({place.right - 1, place.top});
    EXPECT_TRUE(WaitFor([&] { return program_.IsChecked(SmallerCheck); }));
}

TEST_F(Mouse, DragSelectsTextInABox) {
    program_.SetText(TargetBox, "C:\\x\\a.bmp");
    const RECT place = PlaceOf(program_.Item(TargetBox));
    const LONG middle = (place.top + place.bottom) / 2;
    DragMouse({place.right - 10, middle}, {place.left + 3, middle});
    const auto selection = [&] { return Send(program_.Item(TargetBox), EM_GETSEL); };
    EXPECT_TRUE(WaitFor([&] { return selection() == MAKELONG(0, 10); })) << selection();
}

TEST_F(Mouse, DraggingTheTitleBarMovesTheWindow) {
    RECT expected = PlaceOf(program_.Window());
    const POINT title{(expected.left + expected.right) / 2, expected.top + 10};
    OffsetRect(&expected, 40, -30);
    DragMouse(title, {title.x + 40, title.y - 30});
    EXPECT_TRUE(WaitFor([&] {
        const RECT place = PlaceOf(program_.Window());
        return EqualRect(&place, &expected);
    })) << PlaceOf(program_.Window()).left
        << "," << PlaceOf(program_.Window()).top;
}

} // namespace
