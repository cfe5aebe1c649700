// The commands annotate and stamp: what they draw and what they refuse.
#include "tests/cli/commandline.h"
#include "tests/support/bmpfiles.h"

namespace {

using namespace tests;

class Drawing : public CommandLine {
  protected:
    Drawing() {
        WriteBytes(folder_ / "page.bmp", MakeBmp(200, 60, [](int, int) { return White; }));
        WriteBytes(folder_ / "stamp.bmp", MakeBmp(4, 3, [](int x, int y) { return x == 0 && y == 0 ? Red : Green; }));
    }

    BmpView View(const std::string& name) const { return BmpView(ReadBytes(folder_ / name)); }

    // How many pixels an annotation at (2, 2) with these further words touches.
    int Ink(std::vector<std::string> words) {
        words.insert(words.begin(), {"annotate", Path("page.bmp"), Path("ink.bmp"), "2", "2"});
        ExpectSuccess(Run(words));
        return View("ink.bmp").CountOthers(White);
    }

    void ExpectAnnotateIsWrong(std::vector<std::string> words, const std::string& text) {
        words.insert(words.begin(), {"annotate", Path("page.bmp"), Path("a.bmp")});
        ExpectWrongUsage(Run(words), text);
    }
};

TEST_F(Drawing, AnnotateWritesBlackLettersFromTheCornerOn) {
    ExpectSuccess(Run({"annotate", Path("page.bmp"), Path("a.bmp"), "100", "20", "HI"}));
    const BmpView view = View("a.bmp");
    bool hasBlack = false;
    for (int y = 0; y < view.Height(); ++y) {
        for (int x = 0; x < view.Width(); ++x) {
            EXPECT_TRUE(view.At(x, y) == White || (x >= 100 && y >= 20)) << x << ", " << y;
            hasBlack = hasBlack || view.At(x, y) == Black;
        }
    }
    EXPECT_TRUE(hasBlack);
}

TEST_F(Drawing, AnnotateTakesItsOptions) {
    const int plain = Ink({"HI"});
    EXPECT_EQ(Ink({"--size", "24", "--font", "Arial", "HI"}), plain);
    EXPECT_GT(Ink({"HI", "--size", "48"}), 2 * plain);
    EXPECT_GT(Ink({"HI", "--bold"}), plain);
    EXPECT_NE(Ink({"HI", "--italic"}), plain);
    EXPECT_GT(Ink({"HI", "--underline"}), plain);
    EXPECT_GT(Ink({"A A", "--strikeout"}), Ink({"A A"}));
}

TEST_F(Drawing, AnnotateTakesColorAndAlpha) {
    const auto hasColor = [&](Rgb color) {
        const BmpView view = View("ink.bmp");
        return view.CountOthers(color) < view.Width() * view.Height();
    };
    Ink({"HI", "--color", "00FF00", "--bold"});
    EXPECT_TRUE(hasColor(Green));
    Ink({"HI", "--color", "ff0000", "--alpha", "51", "--bold"});
    EXPECT_TRUE(hasColor({255, 204, 204}));
    EXPECT_FALSE(hasColor(Red));
}

TEST_F(Drawing, AnnotateWritesTextsThatLookLikeOptions) { EXPECT_GT(Ink({"--", "--bold"}), 0); }

TEST_F(Drawing, AnnotateDrawsOnPicturesWithPalettesToo) {
    WriteBytes(folder_ / "grey.bmp", MakePaletteBmp(200, 60, White));
    ExpectSuccess(Run({"annotate", Path("grey.bmp"), Path("a.bmp"), "2", "2", "HI"}));
    EXPECT_GT(View("a.bmp").CountOthers(White), 0);
}

TEST_F(Drawing, AnnotateNamesAFontThatIsNotInstalled) {
    ExpectFailure(Run({"annotate", Path("page.bmp"), Path("a.bmp"), "2", "2", "HI", "--font", "No Such Font"}), "a.bmp",
                  "the font 'No Such Font' is not installed");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "a.bmp"));
}

TEST_F(Drawing, AnnotateCalledWronglyEndsWithTwo) {
    ExpectAnnotateIsWrong({"x", "0", "HI"}, "invalid X ");
    ExpectAnnotateIsWrong({"0", "1.5", "HI"}, "invalid Y ");
    ExpectAnnotateIsWrong({"0", "0"}, "annotate SOURCE TARGET X Y TEXT");
    ExpectAnnotateIsWrong({"0", "0", ""}, "empty text");
    ExpectAnnotateIsWrong({"0", "0", "HI", "--size", "0"}, "invalid size ");
    ExpectAnnotateIsWrong({"0", "0", "HI", "--size"}, "--size N");
    ExpectAnnotateIsWrong({"0", "0", "HI", "--blink"}, "unknown option '--blink'");
    for (const char* color : {"red", "FF00", "#FF0000", "-12345", "0x1234", "GG0000", "FF000000"}) {
        ExpectAnnotateIsWrong({"0", "0", "HI", "--color", color}, "invalid colour ");
    }
    for (const char* alpha : {"0", "256", "-1", "half"}) {
        ExpectAnnotateIsWrong({"0", "0", "HI", "--alpha", alpha}, "invalid alpha ");
    }
}

TEST_F(Drawing, StampIsPlacedPixelForPixel) {
    ExpectSuccess(Run({"stamp", Path("page.bmp"), Path("a.bmp"), "10", "20", Path("stamp.bmp")}));
    const BmpView view = View("a.bmp");
    EXPECT_EQ(view.At(10, 20), Red);
    EXPECT_EQ(view.At(13, 22), Green);
    EXPECT_EQ(view.CountOthers(White), 12);
}

TEST_F(Drawing, StampOutsideIsCutOff) {
    ExpectSuccess(Run({"stamp", Path("page.bmp"), Path("a.bmp"), "-1", "58", Path("stamp.bmp")}));
    EXPECT_EQ(View("a.bmp").CountOthers(White), 6);
}

TEST_F(Drawing, StampIsPlacedOnPicturesWithPalettesToo) {
    WriteBytes(folder_ / "grey.bmp", MakePaletteBmp(20, 20, White));
    ExpectSuccess(Run({"stamp", Path("grey.bmp"), Path("a.bmp"), "5", "5", Path("stamp.bmp")}));
    EXPECT_EQ(View("a.bmp").CountOthers(White), 12);
}

TEST_F(Drawing, StampThatCannotBeReadIsNamed) {
    WriteBytes(folder_ / "cut.bmp", ReadBytes(folder_ / "stamp.bmp").substr(0, 60));
    ExpectFailure(Run({"stamp", Path("page.bmp"), Path("a.bmp"), "0", "0", Path("none.png")}), "none.png",
                  "no such file");
    ExpectFailure(Run({"stamp", Path("page.bmp"), Path("a.bmp"), "0", "0", Path("cut.bmp")}), "cut.bmp", "damaged");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "a.bmp"));
}

TEST_F(Drawing, StampAsTargetIsRefused) {
    ExpectFailure(Run({"stamp", Path("page.bmp"), Path("stamp.bmp"), "0", "0", Path("stamp.bmp")}), "stamp.bmp",
                  "it is the stamp itself");
    EXPECT_EQ(View("stamp.bmp").Width(), 4);
}

} // namespace
