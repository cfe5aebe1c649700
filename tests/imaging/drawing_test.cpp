// Annotating and stamping as programs call them.
#include "tests/imaging/editingfixture.h"

#include <algorithm>

namespace {

using namespace tests;

using Annotating = Editing;
using Stamping = Editing;

// How many files this process holds open. A system that does not tell so refuses to write over them instead.
std::ptrdiff_t OpenFiles() {
    const std::filesystem::path files = "/proc/self/fd";
    return std::filesystem::exists(files) ? std::distance(std::filesystem::directory_iterator(files), {}) : 0;
}

// Where a picture on white is not white.
PixelRect MarkedPart(const std::vector<Color>& colors, std::int64_t width) {
    PixelRect box{width, INT32_MAX, -1, -1};
    for (std::size_t i = 0; i < colors.size(); ++i) {
        if (GreenOf(colors[i]) < 128) {
            const auto x = static_cast<std::int64_t>(i) % width;
            const auto y = static_cast<std::int64_t>(i) / width;
            box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                   std::max(box.bottom, y + 1)};
        }
    }
    return box;
}

TEST_F(Annotating, TextStandsWhereItShouldInItsColor) {
    const std::string source = MakeWhite("a.png", 300, 100);
    EXPECT_EQ(Annotate(source, "b.png", 20, 10, "HHH"), 0);
    const auto colors = Pixels("b.png");
    const PixelRect box = MarkedPart(colors, 300);
    EXPECT_NEAR(static_cast<double>(box.left), 20 + 40 / 6.0 + 40 * 161 / 2048.0, 1.5);
    EXPECT_NEAR(static_cast<double>(box.bottom), 10 + 40 * 0.905, 1.5);
    // Blue and green were 0, red 255.
    EXPECT_NE(std::find(colors.begin(), colors.end(), MakeColor(255, 0, 0)), colors.end());
}

TEST_F(Annotating, HeightOfTextIsInPixelsWhateverThePicturesSize) {
    Annotate(MakeWhite("small.png", 100, 60), "b.png", 0, 0, "H", 10);
    Annotate(MakeWhite("large.png", 4000, 60), "c.png", 0, 0, "H", 10);
    EXPECT_EQ(MarkedPart(Pixels("b.png"), 100).Height(), MarkedPart(Pixels("c.png"), 4000).Height());
}

TEST_F(Annotating, AlphaMixesAndItsOddValuesAreOpaque) {
    const std::string source = MakeWhite("a.png", 100, 60);
    for (const auto& [alpha, green] :
         {std::pair<int32_t, int>{0, 0}, {-1, 0}, {256, 0}, {255, 0}, {128, 127}, {1, 254}, {254, 1}}) {
        Annotate(source, "b.png", 0, 0, "H", 60, alpha);
        const auto colors = Pixels("b.png");
        int least = 255;
        for (const Color color : colors) {
            least = std::min<int>(least, GreenOf(color));
        }
        EXPECT_EQ(least, green) << alpha;
    }
}

TEST_F(Annotating, TextBeyondThePictureIsNoFailure) {
    const std::string source = MakeWhite("a.png", 100, 60);
    EXPECT_EQ(Annotate(source, "b.png", 500, 0, "H"), 0);
    EXPECT_EQ(Pixels("b.png"), Pixels("a.png"));
}

// Neither files nor memory may be left behind, however often it is done.
TEST_F(Annotating, FilesAreFreeAgain) {
    const std::string source = MakeWhite("a.png", 20, 20);
    const auto before = OpenFiles();
    for (int round = 0; round < 100; ++round) {
        ASSERT_EQ(Annotate(source, "b.png", 0, 0, "", 10), 0) << round;
    }
    EXPECT_LT(OpenFiles(), before + 50);
    EXPECT_EQ(StampImage(source.c_str(), Path("b.png").c_str(), 0, 0, Path("b.png").c_str()), 0);
    EXPECT_EQ(ConvertImageToPng(Path("b.png").c_str(), source.c_str()), 0); // nobody holds the source
    EXPECT_EQ(Annotate(source, "c.png", 0, 0, "H"), 0);
    EXPECT_TRUE(Exists("c.png"));
}

TEST_F(Annotating, AbsentFontGivesACopy) {
    const std::string source = MakeWhite("a.png", 100, 60);
    EXPECT_EQ(Annotate(source, "b.png", 0, 0, "H", 40, 255, "Nonesuch"), 0);
    EXPECT_EQ(Pixels("b.png"), Pixels("a.png"));
}

TEST_F(Annotating, IndexedSourceGivesAPlainCopy) {
    const std::string source = Make("a.png", *MakePicture(PixelFormat::Indexed8, 100, 60));
    EXPECT_EQ(Annotate(source, "b.png", 0, 0, "H"), 0);
    EXPECT_EQ(Pixels("b.png"), Pixels("a.png"));
}

TEST_F(Annotating, SourceAsItsOwnDestinationStays) {
    const std::string source = MakeWhite("a.png", 100, 60);
    EXPECT_EQ(Annotate(source, "a.png", 0, 0, "H"), 0);
    EXPECT_EQ(MarkedPart(Pixels("a.png"), 100).right, -1);
}

TEST_F(Annotating, BadNamesAndSourcesHaveTheirNumbers) {
    EXPECT_EQ(Annotate("", "b.png", 0, 0, "H"), -16003);
    EXPECT_EQ(Annotate(Path("none.png"), "b.png", 0, 0, "H"), -16004);
    EXPECT_EQ(Annotate(MakeWhite("a.png", 9, 9), "b.txt", 0, 0, "H"), -16003);
    EXPECT_EQ(AnnotateImage(nullptr, nullptr, 0, 0, nullptr, nullptr, 0, 0, 0, 0, 0, 0, 0, 0, 0), -16003);
}

TEST_F(Annotating, StoredPropertiesStay) {
    EXPECT_EQ(Annotate(LUMBRIX_SAMPLES "/photo.jpg", "b.jpg", 0, 0, "H"), 0);
    char* date = GetImageDateTime(Path("b.jpg").c_str());
    EXPECT_STREQ(date, "2026:11:21 09:30:00");
    lumbrix_free(date);
}

TEST_F(Stamping, SoftAlphaBlendsExactly) {
    const auto stamp =
        MakePictureOf(4, 1, [](auto x, auto) { return MakeColor(255, 0, 0, static_cast<std::uint8_t>(x * 85)); });
    const std::string source = Make("a.png", *MakePictureOf(10, 3, [](auto, auto) { return MakeColor(0, 0, 100); }));
    EXPECT_EQ(StampImage(source.c_str(), Path("b.png").c_str(), 2, 1, Make("s.png", *stamp).c_str()), 0);
    const auto colors = Pixels("b.png");
    EXPECT_EQ(colors[12], MakeColor(0, 0, 100));
    EXPECT_EQ(colors[13], MakeColor(85, 0, 67));
    EXPECT_EQ(colors[14], MakeColor(170, 0, 33));
    EXPECT_EQ(colors[15], MakeColor(255, 0, 0));
    EXPECT_EQ(colors[16], MakeColor(0, 0, 100));
    EXPECT_EQ(colors[3], MakeColor(0, 0, 100));
}

TEST_F(Stamping, LargerStampShowsItsTopLeftPart) {
    const auto stamp = MakePictureOf(50, 50, [](auto x, auto y) {
        return MakeColor(static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(y), 0);
    });
    const std::string source = MakeWhite("a.png", 10, 8);
    EXPECT_EQ(StampImage(source.c_str(), Path("b.png").c_str(), 4, 3, Make("s.png", *stamp).c_str()), 0);
    ExpectSize("b.png", 10, 8);
    const auto colors = Pixels("b.png");
    EXPECT_EQ(colors[3 * 10 + 4], MakeColor(0, 0, 0));
    EXPECT_EQ(colors[7 * 10 + 9], MakeColor(5, 4, 0));
    EXPECT_EQ(colors[3 * 10 + 3], White);
}

TEST_F(Stamping, IndexedStampKeepsItsHoles) {
    auto stamp = MakePicture(PixelFormat::Indexed8, 4, 4);
    const std::string path = Make("s.gif", *stamp, GifCodec());
    EXPECT_EQ(StampImage(MakeWhite("a.png", 4, 4).c_str(), Path("b.png").c_str(), 0, 0, path.c_str()), 0);
    EXPECT_EQ(Pixels("b.png"), ColorsOverWhite(*Open("s.gif")));
}

TEST_F(Stamping, WhatDoesNotLoadHasItsNumber) {
    const std::string source = MakeWhite("a.png", 10, 8);
    EXPECT_EQ(StampImage(source.c_str(), Path("b.png").c_str(), 0, 0, ""), -16004);
    EXPECT_EQ(StampImage(source.c_str(), Path("b.png").c_str(), 0, 0, nullptr), -16004);
    EXPECT_EQ(StampImage(Path("none.png").c_str(), Path("b.png").c_str(), 0, 0, source.c_str()), -16004);
    EXPECT_EQ(StampImage(source.c_str(), "", 0, 0, source.c_str()), -16003);
}

} // namespace
