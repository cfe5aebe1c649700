// The main window under real keys.
#include "tests/windows/programfixture.h"

namespace {

using namespace lumbrix;
using namespace tests;
using Keyboard = ProgramTest;

TEST_F(Keyboard, TabGoesInTheOrderOfTheTable) {
    program_.Activate();
    ASSERT_EQ(program_.FocusedId(), SourceFileBox);
    for (const int id : {TargetBox, SourceFileButton, TargetButton, BmpRadio, SmallerCheck, HeightBox, ConvertButton,
                         AboutButton, SourceFolderBox, SourceFolderButton, AnnotateButton, Rotate0Radio}) {
        PressKey(VK_TAB);
        EXPECT_TRUE(WaitFor([&] { return program_.FocusedId() == id; })) << id << ", not " << program_.FocusedId();
    }
    PressKey(VK_TAB, true);
    EXPECT_TRUE(WaitFor([&] { return program_.FocusedId() == AnnotateButton; }));
}

TEST_F(Keyboard, ArrowsCheckWithinAGroup) {
    program_.SetText(TargetBox, "C:\\x\\a.bmp");
    program_.Activate();
    Send(program_.Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(program_.Item(BmpRadio)), TRUE);
    ASSERT_TRUE(WaitFor([&] { return program_.FocusedId() == BmpRadio; }));
    PressKey(VK_DOWN);
    EXPECT_TRUE(WaitFor([&] { return program_.IsChecked(JpgRadio); }));
    EXPECT_FALSE(program_.IsChecked(BmpRadio));
    EXPECT_EQ(program_.FocusedId(), JpgRadio);
    EXPECT_TRUE(WaitFor([&] { return program_.Text(TargetBox) == "C:\\x\\a.jpg"; })) << program_.Text(TargetBox);
    PressKey(VK_UP);
    EXPECT_TRUE(WaitFor([&] { return program_.IsChecked(BmpRadio); }));
}

TEST_F(Keyboard, SpacePressesWhatHasTheKeyboard) {
    program_.Activate();
    Send(program_.Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(program_.Item(SmallerCheck)), TRUE);
    ASSERT_TRUE(WaitFor([&] { return program_.FocusedId() == SmallerCheck; }));
    PressKey(VK_SPACE);
    EXPECT_TRUE(WaitFor([&] { return program_.IsChecked(SmallerCheck); }));
    PressKey(VK_SPACE);
    EXPECT_TRUE(WaitFor([&] { return !program_.IsChecked(SmallerCheck); }));
}

TEST_F(Keyboard, EnterPressesTheFocusedButtonAndAnswersItsMessage) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    program_.SetText(TargetBox, Path("a.png"));
    program_.Activate();
    Send(program_.Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(program_.Item(ConvertButton)), TRUE);
    ASSERT_TRUE(WaitFor([&] { return program_.FocusedId() == ConvertButton; }));
    PressKey(VK_RETURN);
    const HWND message = program_.WaitForDialog();
    ASSERT_TRUE(WaitFor([&] { return GetForegroundWindow() == message; }));
    PressKey(VK_RETURN);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(message); }));
    EXPECT_EQ(Start("a.png"), "\x89P");
}

TEST_F(Keyboard, TypedLettersGoIntoTheBox) {
    program_.Activate();
    for (const char key : {'A', 'B', '1'}) {
        PressKey(static_cast<WORD>(key));
    }
    EXPECT_TRUE(WaitFor([&] { return program_.Text(SourceFileBox) == "ab1"; })) << program_.Text(SourceFileBox);
}

TEST_F(Keyboard, EscapeLeavesTheWindowOpen) {
    program_.Activate();
    PressKey(VK_ESCAPE);
    PressKey('X');
    EXPECT_TRUE(WaitFor([&] { return program_.Text(SourceFileBox) == "x"; }));
    EXPECT_TRUE(IsWindow(program_.Window()));
}

} // namespace
