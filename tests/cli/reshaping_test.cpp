// The commands resize, crop and rotate: what they write and what they refuse.
#include "tests/cli/commandline.h"
#include "tests/support/bmpfiles.h"

namespace {

using namespace tests;

class Reshaping : public CommandLine {
  protected:
    // Red on the left, green on the right; the lower half is blue. 40 x 20 pixels.
    Reshaping() {
        WriteBytes(folder_ / "flag.bmp", MakeBmp(40, 20, [](int x, int y) {
                       return y >= 10 ? Blue : x < 20 ? Red : Green;
                   }));
    }

    BmpView View(const std::string& name) const { return BmpView(ReadBytes(folder_ / name)); }

    // The colours in the four corners, from the top left on clockwise.
    std::vector<Rgb> Corners(const std::string& name) const {
        const BmpView view = View(name);
        const int right = view.Width() - 1;
        const int bottom = view.Height() - 1;
        return {view.At(0, 0), view.At(right, 0), view.At(right, bottom), view.At(0, bottom)};
    }

    void ExpectSize(const std::string& name, int width, int height) const {
        EXPECT_EQ(View(name).Width(), width);
        EXPECT_EQ(View(name).Height(), height);
    }
};

TEST_F(Reshaping, ResizeKeepsTheProportions) {
    ExpectSuccess(Run({"resize", Path("flag.bmp"), Path("a.bmp"), "10"}));
    ExpectSize("a.bmp", 20, 10);
    EXPECT_EQ(Corners("a.bmp"), (std::vector{Red, Green, Blue, Blue}));
}

TEST_F(Reshaping, ResizeEnlarges) {
    ExpectSuccess(Run({"resize", Path("flag.bmp"), Path("a.bmp"), "80"}));
    ExpectSize("a.bmp", 160, 80);
}

TEST_F(Reshaping, ResizeDrawsPicturesWithPalettesToo) {
    WriteBytes(folder_ / "grey.bmp", MakePaletteBmp(40, 20, Green));
    ExpectSuccess(Run({"resize", Path("grey.bmp"), Path("a.bmp"), "10"}));
    ExpectSize("a.bmp", 20, 10);
    EXPECT_EQ(View("a.bmp").At(10, 5), Green);
}

TEST_F(Reshaping, ResizeBeyondTheLimitIsRefusedWithTheSize) {
    ExpectFailure(Run({"resize", Path("flag.bmp"), Path("a.png"), "65536"}), "a.png", "131072 x 65536");
    ExpectFailure(Run({"resize", Path("flag.bmp"), Path("a.png"), "40000"}), "a.png", "80000 x 40000");
}

TEST_F(Reshaping, ResizeToMoreThanMemoryHoldsIsRefused) {
    ExpectFailure(Run({"resize", Path("flag.bmp"), Path("a.png"), "32000"}), "a.png", "not enough memory");
    EXPECT_EQ(NamesIn(""), (std::set<std::string>{"flag.bmp", "source.bmp"}));
}

TEST_F(Reshaping, CropCutsOutTheRectangle) {
    ExpectSuccess(Run({"crop", Path("flag.bmp"), Path("a.bmp"), "15", "5", "25", "15"}));
    ExpectSize("a.bmp", 25, 15);
    EXPECT_EQ(View("a.bmp").At(4, 4), Red);
    EXPECT_EQ(View("a.bmp").At(5, 4), Green);
    EXPECT_EQ(View("a.bmp").At(5, 5), Blue);
}

TEST_F(Reshaping, CropBeyondThePictureNamesItsSize) {
    for (const auto& [x, width] : {std::pair{"16", "25"}, {"0", "41"}, {"2147483647", "1"}, {"40", "1"}}) {
        ExpectFailure(Run({"crop", Path("flag.bmp"), Path("a.bmp"), x, "0", width, "1"}), "flag.bmp", "40 x 20");
    }
    ExpectFailure(Run({"crop", Path("flag.bmp"), Path("a.bmp"), "0", "11", "1", "10"}), "flag.bmp", "40 x 20");
}

TEST_F(Reshaping, RotateTurnsClockwise) {
    ExpectSuccess(Run({"rotate", Path("flag.bmp"), Path("a.bmp"), "90"}));
    ExpectSize("a.bmp", 20, 40);
    EXPECT_EQ(Corners("a.bmp"), (std::vector{Blue, Red, Green, Blue}));
}

TEST_F(Reshaping, RotateByNothingCopies) {
    ExpectSuccess(Run({"rotate", Path("flag.bmp"), Path("a.bmp"), "0"}));
    EXPECT_EQ(Corners("a.bmp"), Corners("flag.bmp"));
}

TEST_F(Reshaping, RotateFlipsAfterwardsInAnyLetterCase) {
    const std::pair<const char*, std::vector<Rgb>> flips[] = {{"h", {Green, Red, Blue, Blue}},
                                                              {"V", {Blue, Blue, Green, Red}},
                                                              {"Hv", {Blue, Blue, Red, Green}},
                                                              {"vh", {Blue, Blue, Red, Green}}};
    for (const auto& [flip, corners] : flips) {
        ExpectSuccess(Run({"rotate", Path("flag.bmp"), Path("a.bmp"), "0", flip}));
        EXPECT_EQ(Corners("a.bmp"), corners) << flip;
    }
    ExpectSuccess(Run({"rotate", Path("flag.bmp"), Path("a.bmp"), "270", "h"}));
    EXPECT_EQ(Corners("a.bmp"), (std::vector{Blue, Green, Red, Blue}));
}

TEST_F(Reshaping, WrongNumbersAndWordsEndWithTwo) {
    const std::string source = Path("flag.bmp");
    for (const char* number : {"0", "-1", "x", "2x", ""}) {
        ExpectWrongUsage(Run({"resize", source, Path("a.bmp"), number}), "invalid height ");
        ExpectWrongUsage(Run({"crop", source, Path("a.bmp"), "0", "0", number, "1"}), "invalid width ");
        ExpectWrongUsage(Run({"crop", source, Path("a.bmp"), "0", "0", "1", number}), "invalid height ");
    }
    ExpectWrongUsage(Run({"crop", source, Path("a.bmp"), "-1", "0", "1", "1"}), "invalid X ");
    ExpectWrongUsage(Run({"crop", source, Path("a.bmp"), "0", "-1", "1", "1"}), "invalid Y ");
    for (const char* angle : {"45", "360", "-90", "right"}) {
        ExpectWrongUsage(Run({"rotate", source, Path("a.bmp"), angle}), "invalid angle ");
    }
    for (const char* flip : {"hh", "x", ""}) {
        ExpectWrongUsage(Run({"rotate", source, Path("a.bmp"), "0", flip}), "invalid flip ");
    }
}

TEST_F(Reshaping, UnknownFormatsEndWithTwo) {
    ExpectWrongUsage(Run({"resize", Path("flag.bmp"), Path("a.ico"), "5"}), "must end in .bmp");
    ExpectWrongUsage(Run({"crop", Path("flag.bmp"), Path("a.tmp"), "0", "0", "1", "1"}), "must end in .bmp");
    ExpectWrongUsage(Run({"rotate", Path("flag.bmp"), Path("png"), "90"}), "must end in .bmp");
}

} // namespace
