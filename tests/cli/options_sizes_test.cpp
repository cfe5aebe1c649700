// The options of the command line that say how large a picture is to be made.
#include "tests/cli/folderfixture.h"

namespace {

using namespace tests;

class SizeOptions : public Folder {
  protected:
    SizeOptions() { MakePicture("a.bmp", 40, 20); }

    // Runs `resize a.bmp out.bmp` with these words behind.
    Outcome Resize(std::vector<std::string> words) {
        words.insert(words.begin(), {"resize", Path("a.bmp"), Path("out.bmp")});
        return Run(words);
    }

    void ExpectSize(const std::string& name, int width, int height) const {
        EXPECT_EQ(View(name).Width(), width);
        EXPECT_EQ(View(name).Height(), height);
    }

    void ExpectResized(const std::vector<std::string>& words, int width, int height) {
        ExpectSuccess(Resize(words));
        ExpectSize("out.bmp", width, height);
    }
};

TEST_F(SizeOptions, EveryFormResizes) {
    ExpectResized({"10"}, 20, 10);
    ExpectResized({"--height", "10"}, 20, 10);
    ExpectResized({"--width", "10"}, 10, 5);
    ExpectResized({"--fit", "30x8"}, 16, 8);
    ExpectResized({"--fit", "30X30"}, 30, 15);
    ExpectResized({"--percent", "12.5"}, 5, 2);
    ExpectResized({"--percent", "250"}, 100, 50);
    ExpectResized({"--percent", "0.001"}, 1, 1);
}

TEST_F(SizeOptions, OnlyShrinkKeepsWhatIsSmallEnough) {
    ExpectResized({"20", "--only-shrink"}, 40, 20);
    ExpectResized({"30", "--only-shrink"}, 40, 20);
    ExpectResized({"19", "--only-shrink"}, 38, 19);
    ExpectResized({"--width", "80", "--only-shrink"}, 40, 20);
    ExpectResized({"--fit", "40x20", "--only-shrink"}, 40, 20);
    ExpectResized({"--fit", "40x10", "--only-shrink"}, 20, 10);
    ExpectResized({"--percent", "250", "--only-shrink"}, 40, 20);
    ExpectResized({"--percent", "50", "--only-shrink"}, 20, 10);
}

TEST_F(SizeOptions, ThumbMayOnlyShrinkToo) {
    ExpectSuccess(Run({"thumb", Path("a.bmp"), "30", Path("out.bmp")}));
    ExpectSize("out.bmp", 60, 30);
    ExpectSuccess(Run({"thumb", Path("a.bmp"), "30", Path("out.bmp"), "--only-shrink"}));
    ExpectSize("out.bmp", 40, 20);
    ExpectWrongUsage(Run({"thumb", Path("a.bmp"), "30", Path("out.bmp"), "--width", "5"}), "unknown option '--width'");
}

TEST_F(SizeOptions, ExactlyOneSizeMustBeGiven) {
    ExpectWrongUsage(Resize({}), "no size was given: use one of HEIGHT, --width, --height, --fit or --percent");
    ExpectWrongUsage(Resize({"--only-shrink"}), "no size was given");
    for (const std::vector<std::string>& words : {std::vector<std::string>{"10", "--width", "10"},
                                                  {"10", "--height", "10"},
                                                  {"--width", "10", "--height", "10"},
                                                  {"--fit", "10x10", "--percent", "50"},
                                                  {"10", "--percent", "50"},
                                                  {"--width", "5", "--fit", "5x5"}}) {
        ExpectWrongUsage(Resize(words), "more than one size was given");
    }
    EXPECT_EQ(NamesIn("").count("out.bmp"), 0u);
}

TEST_F(SizeOptions, NumbersThatMeanNothingAreWrong) {
    for (const char* number : {"0", "-1", "x", "2x", "", "1.5"}) {
        ExpectWrongUsage(Resize({"--width", number}), "invalid width ");
        ExpectWrongUsage(Resize({"--height", number}), "invalid height ");
    }
    for (const char* box : {"10", "", "10,10"}) {
        ExpectWrongUsage(Resize({"--fit", box}), "invalid box ");
    }
    for (const char* box : {"x10", "0x10", "-1x10", " 1x10"}) {
        ExpectWrongUsage(Resize({"--fit", box}), "invalid width ");
    }
    for (const char* box : {"10x", "10x0", "10x10x10", "10x10 "}) {
        ExpectWrongUsage(Resize({"--fit", box}), "invalid height ");
    }
    for (const char* percentage : {"0", "-5", "50%", "x", "", " 5", "nan", "inf", "1e2"}) {
        ExpectWrongUsage(Resize({"--percent", percentage}), "invalid percentage ");
    }
}

TEST_F(SizeOptions, PictureKeepsAPixelOfWidth) {
    MakePicture("a.bmp", 1, 90);
    ExpectResized({"30"}, 1, 30);
}

TEST_F(SizeOptions, FolderTakesThemAndNeverEnlarges) {
    MakePicture("in/a.bmp", 40, 20);
    for (const auto& [option, value] :
         {std::pair{"--width", "20"}, {"--height", "10"}, {"--fit", "20x20"}, {"--percent", "50"}}) {
        ExpectSuccess(RunFolder({"bmp", option, value}), "1 written, 0 skipped, 0 failed\n");
        ExpectSize("out/a.bmp", 20, 10);
    }
    for (const auto& [option, value] : {std::pair{"--width", "80"}, {"--fit", "90x90"}, {"--percent", "250"}}) {
        ExpectSuccess(RunFolder({"bmp", option, value, "--only-shrink"}), "1 written, 0 skipped, 0 failed\n");
        ExpectSize("out/a.bmp", 40, 20);
        ExpectSuccess(RunFolder({"bmp", option, value}), "1 written, 0 skipped, 0 failed\n");
        ExpectSize("out/a.bmp", 40, 20);
    }
    ExpectWrongUsage(RunFolder({"bmp", "10", "--width", "10"}), "more than one size was given");
}

TEST_F(SizeOptions, AreInTheHelp) {
    const std::string help = Run({"resize", "--help"}).output;
    for (const char* word :
         {"SOURCE TARGET [HEIGHT]", "--width N", "--height N", "--fit WxH", "--percent P", "--only-shrink"}) {
        EXPECT_NE(help.find(word), std::string::npos) << word;
    }
}

} // namespace
