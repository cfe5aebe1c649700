// Which notifications the main window acts on, and when its label of the size is read anew.
#include "tests/support/bmpfiles.h"
#include "tests/windows/programfixture.h"

namespace {

using namespace lumbrix;
using namespace tests;

class Notifications : public ProgramTest {
  protected:
    // A notification of a control as the window gets it.
    void Notify(int id, WORD code) const {
        Send(program_.Window(), WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(program_.Item(id)));
    }

    // The same without waiting for what comes of it.
    void BeginNotify(int id, WORD code) const {
        PostMessageA(program_.Window(), WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(program_.Item(id)));
    }
};

constexpr WORD Accelerator = 1;

TEST_F(Notifications, OfSixButtonsCountWhereTheyAreClicks) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    for (const int id :
         {SourceFileButton, TargetButton, ConvertButton, SourceFolderButton, AnnotateButton, CropButton}) {
        for (const WORD code : {BN_SETFOCUS, BN_KILLFOCUS, BN_DOUBLECLICKED, BN_DISABLE}) {
            Notify(id, code);
            ASSERT_TRUE(program_.IsQuiet()) << id << " with " << code;
            ASSERT_EQ(program_.Text(SizeLabel), "") << id << " with " << code;
        }
    }
}

TEST_F(Notifications, OfTheOutputTypesAllCount) {
    program_.Click(PngRadio);
    for (const int id : {BmpRadio, JpgRadio, GifRadio, TiffRadio, PngRadio, SglRadio}) {
        program_.SetText(TargetBox, "C:\\x\\a.old");
        Notify(id, BN_SETFOCUS);
        EXPECT_EQ(program_.Text(TargetBox), "C:\\x\\a.png") << id;
    }
}

TEST_F(Notifications, OfTheButtonThatTurnsAllCount) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    program_.SetText(TargetBox, Path("turned.bmp"));
    BeginNotify(RotateFlipButton, BN_SETFOCUS);
    EXPECT_EQ(program_.Answer(), "Lumbrix: Done");
    EXPECT_EQ(Start("turned.bmp"), "BM");
}

TEST_F(Notifications, StrokeOfAnAcceleratorIsAClick) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    Notify(ConvertButton, Accelerator);
    EXPECT_EQ(program_.Text(SizeLabel), "(W1 x H2)");
}

TEST_F(Notifications, OutputTypeIsWrittenIntoTheTargetThoughItStays) {
    const auto selectionBehindAClick = [&](const char* target, int end) {
        program_.SetText(TargetBox, target);
        Send(program_.Item(TargetBox), EM_SETSEL, static_cast<WPARAM>(end), end);
        program_.Click(PngRadio);
        EXPECT_EQ(program_.Text(TargetBox), target);
        return Send(program_.Item(TargetBox), EM_GETSEL);
    };
    EXPECT_EQ(selectionBehindAClick("C:\\x\\a.png", 10), 0) << "a text that is written anew has its caret in front";
    EXPECT_EQ(selectionBehindAClick("C:\\out\\", 7), MAKELONG(7, 7)) << "without an extension nothing is written";
}

TEST_F(Notifications, EachRadioTurnsByItsAngle) {
    const RgbAt corners = [](int x, int y) {
        return y == 0 ? (x == 0 ? tests::Red : tests::Green) : (x == 0 ? tests::Blue : tests::White);
    };
    WriteBytes(program_.Folder() / "corners.bmp", MakeBmp(2, 2, corners));
    program_.SetText(SourceFileBox, Path("corners.bmp"));
    program_.SetText(TargetBox, Path("turned.bmp"));
    for (const auto& [radio, corner] : {std::pair{Rotate90Radio, tests::Blue},
                                        {Rotate180Radio, tests::White},
                                        {Rotate270Radio, tests::Green},
                                        {Rotate0Radio, tests::Red}}) {
        std::filesystem::remove(program_.Folder() / "turned.bmp");
        program_.Click(radio);
        program_.BeginClick(RotateFlipButton);
        EXPECT_EQ(program_.Answer(), "Lumbrix: Done");
        EXPECT_EQ(BmpView(ReadBytes(program_.Folder() / "turned.bmp")).At(0, 0), corner) << radio;
    }
}

TEST_F(Notifications, VerticalFlipExchangesLeftAndRight) {
    WriteBytes(program_.Folder() / "wide.bmp",
               MakeBmp(2, 1, [](int x, int) { return x == 0 ? tests::Red : tests::Blue; }));
    program_.SetText(SourceFileBox, Path("wide.bmp"));
    program_.SetText(TargetBox, Path("flipped.bmp"));
    program_.Click(FlipVerticalCheck);
    program_.BeginClick(RotateFlipButton);
    EXPECT_EQ(program_.Answer(), "Lumbrix: Done");
    EXPECT_EQ(BmpView(ReadBytes(program_.Folder() / "flipped.bmp")).At(0, 0), tests::Blue);
}

class SizeOfTheSource : public ProgramTest {
  protected:
    SizeOfTheSource() { program_.SetText(SourceFileBox, Path("source.bmp")); }

    void Cancel(HWND dialog) const {
        ASSERT_TRUE(WaitFor([&] { return GetDlgItem(dialog, IDCANCEL) != nullptr; }));
        PostMessageA(GetDlgItem(dialog, IDCANCEL), BM_CLICK, 0, 0);
        EXPECT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    }
};

TEST_F(SizeOfTheSource, IsTakenAwayByOneThatCannotBeRead) {
    program_.Click(ConvertButton); // without a target only the label is refreshed
    ASSERT_EQ(program_.Text(SizeLabel), "(W1 x H2)");
    WriteBytes(program_.Folder() / "letter.bmp", "Dear Sir");
    program_.SetText(SourceFileBox, Path("letter.bmp"));
    program_.Click(ConvertButton);
    EXPECT_EQ(program_.Text(SizeLabel), "");
}

TEST_F(SizeOfTheSource, IsReadBehindTheChoiceOfATargetThoughThatIsCancelled) {
    program_.BeginClick(TargetButton);
    const HWND dialog = program_.WaitForDialog();
    EXPECT_EQ(program_.Text(SizeLabel), "") << "not before";
    Cancel(dialog);
    EXPECT_TRUE(WaitFor([&] { return program_.Text(SizeLabel) == "(W1 x H2)"; }));
}

TEST_F(SizeOfTheSource, IsReadBeforeTheConversion) {
    program_.SetText(TargetBox, Path("a.png"));
    program_.BeginClick(ConvertButton);
    program_.WaitForDialog();
    EXPECT_EQ(program_.Text(SizeLabel), "(W1 x H2)");
    EXPECT_EQ(program_.Answer(), "Lumbrix: Done");
}

TEST_F(SizeOfTheSource, IsReadBeforeTheChoiceOfAFolder) {
    program_.BeginClick(SourceFolderButton);
    const HWND dialog = program_.WaitForDialog();
    EXPECT_EQ(program_.Text(SizeLabel), "(W1 x H2)");
    Cancel(dialog);
}

} // namespace
