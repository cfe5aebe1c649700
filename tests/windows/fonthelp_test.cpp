// The dialog for the font of annotations, and the help, as the annotate and crop window opens them.
#include "tests/windows/annotatefixture.h"
#include "tests/windows/seenwindow.h"

#include <dlgs.h>

namespace {

using namespace lumbrix;
using namespace tests;

class AnnotationFont : public PictureWindowTest {
  protected:
    AnnotationFont() { WritePlainPng(Path("white.png"), 400, 200, White); }

    OpenWindow OpenWhite() const { return Open(AnnotateButton, Path("white.png"), Path("out.jpg")); }

    static OpenWindow OpenFonts(const OpenWindow& window) {
        window.BeginClick(FontButton);
        const OpenWindow fonts = window.Further();
        EXPECT_TRUE(WaitFor([&] { return Send(fonts.Item(cmb1), CB_GETCOUNT) > 0; }));
        return fonts;
    }

    // Selects an entry of a list as a click on it would.
    static void Select(const OpenWindow& dialog, int list, int entry) {
        ASSERT_NE(Send(dialog.Item(list), CB_SETCURSEL, static_cast<WPARAM>(entry), 0), CB_ERR) << list;
        Send(dialog.Window(), WM_COMMAND, static_cast<WPARAM>(MAKEWPARAM(list, CBN_SELCHANGE)),
             reinterpret_cast<LPARAM>(dialog.Item(list)));
    }

    static void Choose(const OpenWindow& fonts, const std::string& size) {
        Select(fonts, cmb1, EntryOf(fonts, cmb1, "Liberation Sans"));
        Select(fonts, cmb3, EntryOf(fonts, cmb3, size));
    }

    static int EntryOf(const OpenWindow& dialog, int list, const std::string& text) {
        return static_cast<int>(Send(dialog.Item(list), CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                     reinterpret_cast<LPARAM>(text.c_str())));
    }

    static void Press(const OpenWindow& dialog, int button) {
        dialog.BeginClick(button);
        dialog.WaitUntilGone();
    }

    // What is on the picture after a click at its top left.
    InkBox Annotate(const OpenWindow& window) const {
        window.SetText(AnnotationBox, "HHHH");
        const auto before = TemporaryFiles();
        ClickAt(On(window, 10, 10));
        EXPECT_TRUE(WaitFor([&] { return TemporaryFiles() != before; }));
        CloseAndWait(window);
        WaitForTheEnd();
        return InkIn(Path("out.jpg"));
    }
};

TEST_F(AnnotationFont, ChoiceHoldsForAllAnnotationsToCome) {
    const InkBox plain = Annotate(OpenWhite());
    const OpenWindow window = OpenWhite();
    const OpenWindow fonts = OpenFonts(window);
    EXPECT_EQ(WindowText(fonts.Window()), "Font");
    Choose(fonts, "20");
    fonts.Click(chx1); // strikeout
    fonts.Click(chx2); // underline
    Press(fonts, IDOK);
    const InkBox large = Annotate(window);
    EXPECT_NE(large, plain);
    // Twenty points are 27 pixels at 96 dots per inch, which are taken for dialog units once more.
    const int size = SeenWindow::InPixels({0, 0, 0, 27}).height;
    AnnotateImage(Path("white.png").c_str(), Path("expected.jpg").c_str(), 10, 10, "HHHH", "Liberation Sans", size, 0,
                  0, 1, 1, 255, 0, 0, 0);
    EXPECT_EQ(large, InkIn(Path("expected.jpg"))) << size;
    EXPECT_GT(size, 27);
    const InkBox again = Annotate(OpenWhite());
    EXPECT_EQ(again, large);
    // The line through the letters goes on where they have gaps.
    const BmpView picture = ReadPicture(Path("out.jpg"));
    int lines = 0;
    for (int y = large.top; y < large.bottom; ++y) {
        int inked = 0;
        for (int x = large.left; x < large.right; ++x) {
            inked += picture.At(x, y).red < 100 ? 1 : 0;
        }
        lines += inked > (large.right - large.left) * 9 / 10 ? 1 : 0;
    }
    EXPECT_GE(lines, 2);
}

TEST_F(AnnotationFont, FamilyAndStyleAreThoseOfTheDialog) {
    const OpenWindow window = OpenWhite();
    const OpenWindow fonts = OpenFonts(window);
    Select(fonts, cmb1, EntryOf(fonts, cmb1, "Liberation Mono"));
    Select(fonts, cmb2, EntryOf(fonts, cmb2, "Bold Italic"));
    Select(fonts, cmb3, EntryOf(fonts, cmb3, "20"));
    Press(fonts, IDOK);
    Annotate(window);
    const int size = SeenWindow::InPixels({0, 0, 0, 27}).height;
    const auto written = [&](const char* family, int bold, int italic) {
        AnnotateImage(Path("white.png").c_str(), Path("expected.jpg").c_str(), 10, 10, "HHHH", family, size, bold,
                      italic, 0, 0, 255, 0, 0, 0);
        return ReadBytes(program_.Folder() / "expected.jpg");
    };
    const std::string seen = ReadBytes(program_.Folder() / "out.jpg");
    EXPECT_TRUE(seen == written("Liberation Mono", 1, 1));
    EXPECT_FALSE(seen == written("Arial", 1, 1));
    EXPECT_FALSE(seen == written("Liberation Mono", 0, 1));
    EXPECT_FALSE(seen == written("Liberation Mono", 1, 0));
}

TEST_F(AnnotationFont, ButtonsActOnClicksAndAcceleratorsAlone) {
    const OpenWindow window = OpenWhite();
    const auto before = TemporaryFiles();
    for (const int notification : {2, 3, BN_DBLCLK, BN_SETFOCUS, BN_KILLFOCUS}) {
        for (const int button : {FontButton, FontColorButton, StampButton, HelpButton}) {
            PostMessageA(window.Window(), WM_COMMAND, MAKEWPARAM(button, notification), 0);
            Settle(window);
            ASSERT_TRUE(window.IsQuiet()) << button << " with " << notification;
            ASSERT_EQ(TemporaryFiles(), before) << button << " with " << notification;
        }
    }
    PostMessageA(window.Window(), WM_COMMAND, MAKEWPARAM(FontButton, 1), 0);
    const OpenWindow fonts = window.Further();
    EXPECT_EQ(WindowText(fonts.Window()), "Font");
    Press(fonts, IDCANCEL);
    CloseAndWait(window);
}

TEST_F(AnnotationFont, CancellingChangesNothing) {
    const InkBox plain = Annotate(OpenWhite());
    const OpenWindow window = OpenWhite();
    const OpenWindow fonts = OpenFonts(window);
    Choose(fonts, "36");
    Press(fonts, IDCANCEL);
    EXPECT_EQ(Annotate(window), plain);
}

TEST_F(AnnotationFont, ColorOfTheDialogIsThatOfTheText) {
    const OpenWindow window = OpenWhite();
    const OpenWindow fonts = OpenFonts(window);
    Choose(fonts, "36");
    Select(fonts, cmb4, 9); // red of the sixteen colours
    Press(fonts, IDOK);
    const InkBox ink = Annotate(window);
    const BmpView picture = ReadPicture(Path("out.jpg"));
    int red = 0;
    for (int y = ink.top; y < ink.bottom; ++y) {
        for (int x = ink.left; x < ink.right; ++x) {
            const Rgb color = picture.At(x, y);
            red += color.red > 200 && color.green < 60 && color.blue < 60 ? 1 : 0;
            EXPECT_FALSE(color.red < 100) << x << "," << y;
        }
    }
    EXPECT_GT(red, 100);
}

TEST_F(AnnotationFont, CommandOfTheHiddenColorButtonChangesNothing) {
    const InkBox plain = Annotate(OpenWhite());
    const OpenWindow window = OpenWhite();
    PostMessageA(window.Window(), WM_COMMAND, MAKEWPARAM(FontColorButton, BN_CLICKED), 0);
    const OpenWindow colors = window.Further();
    EXPECT_EQ(WindowText(colors.Window()), "Color");
    Press(colors, IDOK);
    EXPECT_EQ(Annotate(window), plain);
}

class Help : public PictureWindowTest {};

TEST_F(Help, OpensTheTextInTheSystemsViewer) {
    WritePlainPng(Path("white.png"), 40, 20, White);
    const OpenWindow window = Open(AnnotateButton, Path("white.png"), Path("out.jpg"));
    const std::size_t before = TemporaryFiles().size();
    window.Click(HelpButton);
    const auto files = TemporaryFiles();
    EXPECT_EQ(files.size(), before + 2); // the name's own empty file and the text
    const auto help = std::find_if(files.begin(), files.end(),
                                   [](const auto& file) { return file.first.find(".txt") != std::string::npos; });
    ASSERT_NE(help, files.end());
    const std::string& name = help->first;
    const std::string text = ReadBytes(temporary_ / name);
    EXPECT_EQ(text.find("How to annotate images?\r\n-----------------------\r\n\r\nFirst you must"), 0u);
    EXPECT_NE(text.find("release the mosue button.\r\n"), std::string::npos);
    HWND viewer = nullptr;
    const std::string stem = name.substr(0, name.find('.'));
    const auto isViewer = [&](HWND candidate) { return WindowText(candidate).find(stem) != std::string::npos; };
    EXPECT_TRUE(WaitFor([&] {
        for (HWND top = GetTopWindow(nullptr); top != nullptr; top = GetWindow(top, GW_HWNDNEXT)) {
            if (IsWindowVisible(top) && isViewer(top)) {
                viewer = top;
            }
        }
        return viewer != nullptr;
    })) << "no viewer for "
        << name;
    PostMessageA(viewer, WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(viewer); }));
    EXPECT_TRUE(IsWindow(window.Window()));
    CloseAndWait(window);
}

} // namespace
