// The main window of the running program: what it looks like, and what each control does.
#include "tests/windows/expected/mainwindow.h"
#include "tests/windows/programfixture.h"
#include "tests/windows/seenwindow.h"

namespace {

using namespace lumbrix;
using namespace tests;

using MainWindow = ProgramTest;

TEST_F(MainWindow, IsAsExpected) { SeenWindow(program_).Expect(ExpectedMainWindow()); }

TEST_F(MainWindow, OnlyTheHeightIsFilledIn) {
    for (const int id : {SourceFileBox, TargetBox, SourceFolderBox}) {
        EXPECT_EQ(program_.Text(id), "") << id;
    }
    EXPECT_EQ(program_.Text(HeightBox), "512");
}

TEST_F(MainWindow, BitmapAndNoTurnAreChecked) {
    for (const Control& control : MainWindowControls) {
        if (control.kind == ControlKind::RadioButton || control.kind == ControlKind::CheckBox) {
            const bool isChecked = control.id == BmpRadio || control.id == Rotate0Radio;
            EXPECT_EQ(program_.IsChecked(control.id), isChecked) << control.id;
        }
    }
}

TEST_F(MainWindow, ColorsAreSeenOnTheScreen) {
    constexpr COLORREF SeenCyan = RGB(0, 255, 255);
    const auto leftTopOf = [&](int id) {
        RECT place{};
        GetWindowRect(program_.Item(id), &place);
        return POINT{place.left + 1, place.bottom - 2};
    };
    for (const int id : {SingleFileLabel, BmpRadio, SmallerCheck, Rotate270Radio, FlipHorizontalCheck}) {
        const POINT point = leftTopOf(id);
        EXPECT_TRUE(WaitFor([&] { return PixelAt(point) == SeenCyan; })) << id;
    }
    RECT client{};
    GetClientRect(program_.Window(), &client);
    EXPECT_EQ(PixelAt(ScreenPointOf(program_.Window(), {client.right - 3, client.bottom - 3})), SeenCyan);
    EXPECT_EQ(PixelAt(MiddleOf(program_.Item(TargetBox))), GetSysColor(COLOR_WINDOW));
}

TEST_F(MainWindow, HasAnIcon) { EXPECT_NE(SeenWindow(program_).Ask(program_.Window(), WM_GETICON, ICON_BIG), 0u); }

TEST_F(MainWindow, CloseBoxEndsTheProgramWithZero) { EXPECT_EQ(program_.Close(), 0u); }

TEST_F(MainWindow, EscapeDoesNotEndIt) {
    SetForegroundWindow(program_.Window());
    Send(program_.Window(), WM_COMMAND, IDCANCEL, 0);
    EXPECT_TRUE(IsWindow(program_.Window()));
}

TEST_F(MainWindow, ConvertsOneFile) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    program_.SetText(TargetBox, Path("a.png"));
    program_.BeginClick(ConvertButton);
    EXPECT_EQ(program_.Answer(), "Lumbrix: Done");
    EXPECT_EQ(Start("a.png"), "\x89P");
    EXPECT_EQ(program_.Text(SizeLabel), "(W1 x H2)");
}

TEST_F(MainWindow, SaysWhereConvertingFailed) {
    WriteBytes(program_.Folder() / "letter.bmp", "Dear Sir");
    program_.SetText(SourceFileBox, Path("letter.bmp"));
    program_.SetText(TargetBox, Path("a.png"));
    program_.BeginClick(ConvertButton);
    EXPECT_EQ(program_.Answer(), "Lumbrix: Faliure");
    EXPECT_EQ(program_.Text(SizeLabel), "");
}

TEST_F(MainWindow, AsksBeforeItOverwrites) {
    WriteBytes(program_.Folder() / "a.png", "old");
    program_.SetText(SourceFileBox, Path("source.bmp"));
    program_.SetText(TargetBox, Path("a.png"));
    program_.BeginClick(ConvertButton);
    EXPECT_EQ(program_.Answer(IDNO), "Please verify...: " + Path("a.png") + " file exists. Overwrite it?");
    EXPECT_EQ(ReadBytes(program_.Folder() / "a.png"), "old");
    program_.BeginClick(ConvertButton);
    program_.Answer(IDYES);
    EXPECT_EQ(program_.Answer(), "Lumbrix: Done");
    EXPECT_EQ(Start("a.png"), "\x89P");
}

TEST_F(MainWindow, SmallerCopyTakesTheHeight) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    program_.SetText(TargetBox, Path("a.bmp"));
    program_.SetText(HeightBox, "8");
    program_.Click(SmallerCheck);
    program_.BeginClick(ConvertButton);
    EXPECT_EQ(program_.Answer(), "Lumbrix: Done");
    program_.SetText(SourceFileBox, Path("a.bmp"));
    program_.SetText(TargetBox, "");
    program_.Click(ConvertButton); // only refreshes the size
    EXPECT_EQ(program_.Text(SizeLabel), "(W4 x H8)");
}

TEST_F(MainWindow, SglIsNotSupported) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    program_.SetText(TargetBox, Path("a.bmp"));
    program_.Click(SglRadio);
    EXPECT_EQ(program_.Text(TargetBox), Path("a.sgl"));
    program_.BeginClick(ConvertButton);
    EXPECT_EQ(program_.Answer(), "Sorry...: The selected type of output is not supported");
    EXPECT_EQ(program_.Answer(), "Lumbrix: Faliure");
}

TEST_F(MainWindow, ConvertDoesNothingWithoutATarget) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    program_.Click(ConvertButton);
    EXPECT_TRUE(program_.IsQuiet());
}

TEST_F(MainWindow, MakesAllFilesOfAFolderSmaller) {
    program_.SetText(SourceFolderBox, MakeFolder("in"));
    program_.SetText(TargetBox, MakeFolder("out"));
    program_.SetText(HeightBox, "4");
    WriteBytes(program_.Folder() / "in" / "a.bmp", SmallBmp);
    WriteBytes(program_.Folder() / "in" / "b.jpg", SmallBmp);
    WriteBytes(program_.Folder() / "in" / "c.png", "no picture");
    WriteBytes(program_.Folder() / "in" / "d.txt", "Dear Sir");
    program_.Click(PngRadio);
    program_.BeginClick(ConvertButton);
    EXPECT_EQ(program_.Answer(), "Lumbrix: 2 files were processed. \r\n2 files could not be resized.");
    EXPECT_EQ(Start("out\\a.png"), "\x89P");
    EXPECT_EQ(Start("out\\b.png"), "\x89P");
    EXPECT_FALSE(Exists("out\\c.png"));
}

TEST_F(MainWindow, OutputTypesRewriteEveryOccurrence) {
    program_.SetText(TargetBox, "C:\\a.jpg.d\\b.jpg");
    program_.Click(PngRadio);
    EXPECT_EQ(program_.Text(TargetBox), "C:\\a.png.d\\b.png");
    program_.Click(TiffRadio);
    EXPECT_EQ(program_.Text(TargetBox), "C:\\a.tiff.d\\b.tiff");
    program_.SetText(TargetBox, "C:\\out\\");
    program_.Click(GifRadio);
    EXPECT_EQ(program_.Text(TargetBox), "C:\\out\\");
    EXPECT_TRUE(program_.IsChecked(GifRadio));
    EXPECT_FALSE(program_.IsChecked(TiffRadio));
}

TEST_F(MainWindow, TurnsAndFlips) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    program_.SetText(TargetBox, Path("turned.bmp"));
    program_.Click(Rotate90Radio);
    program_.BeginClick(RotateFlipButton);
    EXPECT_EQ(program_.Answer(), "Lumbrix: Done");
    program_.SetText(SourceFileBox, Path("turned.bmp"));
    program_.SetText(TargetBox, "");
    program_.Click(ConvertButton);
    EXPECT_EQ(program_.Text(SizeLabel), "(W2 x H1)");
    program_.SetText(SourceFileBox, Path("source.bmp"));
    program_.SetText(TargetBox, Path("flipped.bmp"));
    program_.Click(Rotate0Radio);
    program_.Click(FlipHorizontalCheck); // which turns upside down
    program_.BeginClick(RotateFlipButton);
    EXPECT_EQ(program_.Answer(), "Lumbrix: Done");
    EXPECT_EQ(ReadBytes(program_.Folder() / "flipped.bmp").substr(54, 3), std::string("\xFF\0\0", 3));
}

TEST_F(MainWindow, TurningNeedsBothBoxes) {
    program_.Click(RotateFlipButton);
    program_.SetText(TargetBox, Path("turned.bmp"));
    program_.Click(RotateFlipButton);
    EXPECT_TRUE(program_.IsQuiet());
    EXPECT_FALSE(Exists("turned.bmp"));
    program_.SetText(TargetBox, "");
    program_.SetText(SourceFileBox, Path("source.bmp"));
    program_.Click(RotateFlipButton);
    EXPECT_TRUE(program_.IsQuiet()) << "a source without a target";
}

TEST_F(MainWindow, DroppedFileBecomesTheSource) {
    program_.Drop({Path("source.bmp")});
    EXPECT_EQ(program_.Text(SourceFileBox), Path("source.bmp"));
    EXPECT_EQ(program_.Text(TargetBox), "");
    EXPECT_EQ(program_.Text(SizeLabel), "");
}

TEST_F(MainWindow, LastOfSeveralDroppedFilesStandsAndTheTargetFollows) {
    program_.SetText(TargetBox, "C:\\out\\old.gif");
    program_.Drop({Path("source.bmp"), "C:\\x\\two.png", "C:\\x\\three.b.png"});
    EXPECT_EQ(program_.Text(SourceFileBox), "C:\\x\\three.b.png");
    EXPECT_EQ(program_.Text(TargetBox), "C:\\out\\three.gif");
}

TEST_F(MainWindow, DroppedFolderIsPassedOverUnlessItHasOtherAttributes) {
    std::filesystem::create_directory(program_.Folder() / "plain");
    program_.Drop({Path("plain")});
    EXPECT_EQ(program_.Text(SourceFileBox), "");
    std::filesystem::create_directory(program_.Folder() / "marked");
    SetFileAttributesA(Path("marked").c_str(), FILE_ATTRIBUTE_READONLY);
    if (GetFileAttributesA(Path("marked").c_str()) != FILE_ATTRIBUTE_DIRECTORY) {
        program_.Drop({Path("marked")});
        EXPECT_EQ(program_.Text(SourceFileBox), Path("marked"));
        SetFileAttributesA(Path("marked").c_str(), FILE_ATTRIBUTE_NORMAL);
    }
}

TEST_F(MainWindow, TypingChangesNothingElse) {
    program_.SetText(TargetBox, "C:\\out\\old.gif");
    program_.SetText(SourceFileBox, Path("source.bmp"));
    EXPECT_EQ(program_.Text(TargetBox), "C:\\out\\old.gif");
    EXPECT_EQ(program_.Text(SizeLabel), "");
}

} // namespace
