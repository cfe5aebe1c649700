// Resizing, cropping, turning and displaying as programs call them.
#include "tests/imaging/editingfixture.h"

#include <algorithm>

namespace {

using namespace tests;

using Resizing = Editing;
using Cropping = Editing;
using Rotating = Editing;

TEST_F(Resizing, KeepsProportionsInTheFormatOfTheExtension) {
    const std::string source = MakeWhite("a.png", 3000, 2000);
    EXPECT_EQ(ResizeImage(source.c_str(), Path("b.jpg").c_str(), 100), 0);
    ExpectSize("b.jpg", 150, 100);
    EXPECT_EQ(ReadBytes(folder_ / "b.jpg").substr(0, 2), "\xFF\xD8");
}

TEST_F(Resizing, EnlargesAndRoundsTiesToEven) {
    const std::string square = MakeWhite("square.png", 100, 100);
    EXPECT_EQ(ResizeImage(square.c_str(), Path("b.png").c_str(), 200), 0);
    ExpectSize("b.png", 200, 200);
    const std::string small = MakeWhite("small.png", 5, 2);
    EXPECT_EQ(ResizeImage(small.c_str(), Path("c.png").c_str(), 1), 0);
    ExpectSize("c.png", 2, 1);
    EXPECT_EQ(ResizeImage(small.c_str(), Path("d.png").c_str(), 3), 0);
    ExpectSize("d.png", 8, 3);
    for (const Color color : Pixels("d.png")) {
        EXPECT_EQ(color, White); // neither darkened nor faded at the borders
    }
}

TEST_F(Resizing, ShowsTheWholeSource) {
    const auto quarters =
        MakePictureOf(40, 40, [](auto x, auto y) { return MakeColor(x < 20 ? 255 : 0, y < 20 ? 255 : 0, 0); });
    EXPECT_EQ(ResizeImage(Make("a.png", *quarters).c_str(), Path("b.png").c_str(), 10), 0);
    const auto colors = Pixels("b.png");
    EXPECT_EQ(colors[0], MakeColor(255, 255, 0));
    EXPECT_EQ(colors[9], MakeColor(0, 255, 0));
    EXPECT_EQ(colors[90], MakeColor(255, 0, 0));
    EXPECT_EQ(colors[99], MakeColor(0, 0, 0));
}

TEST_F(Resizing, HeightNotAboveZeroWritesNothing) {
    const std::string source = MakeWhite("a.png", 30, 20);
    EXPECT_EQ(ResizeImage(source.c_str(), Path("b.png").c_str(), 0), 0);
    EXPECT_EQ(ResizeImage(source.c_str(), Path("b.png").c_str(), -5), 0);
    EXPECT_FALSE(Exists("b.png"));
}

TEST_F(Resizing, SourceAsItsOwnDestinationStays) {
    const std::string source = MakeWhite("a.png", 30, 20);
    const std::string before = ReadBytes(folder_ / "a.png");
    EXPECT_EQ(ResizeImage(source.c_str(), source.c_str(), 10), 0);
    EXPECT_EQ(ReadBytes(folder_ / "a.png"), before);
}

TEST_F(Resizing, KnownExtensionsWithoutEncoderWriteNothing) {
    const std::string source = MakeWhite("a.png", 30, 20);
    for (const char* name : {"b.ico", "b.emf", "b.wmf"}) {
        EXPECT_EQ(ResizeImage(source.c_str(), Path(name).c_str(), 10), 0);
        EXPECT_FALSE(Exists(name));
    }
    EXPECT_EQ(ResizeImage(source.c_str(), Path("b.sgl").c_str(), 10), -1);
    EXPECT_EQ(ResizeImage(Path("none.png").c_str(), Path("b.png").c_str(), 10), -1);
}

TEST_F(Resizing, IndexedSourceGivesAnEmptyBitmapOfTheRightSize) {
    const std::string source = Make("a.gif", *MakePicture(PixelFormat::Indexed8, 30, 20), GifCodec());
    EXPECT_EQ(ResizeImage(source.c_str(), Path("b.gif").c_str(), 10), 0);
    ExpectSize("b.gif", 15, 10);
    const auto colors = Pixels("b.gif");
    EXPECT_TRUE(std::all_of(colors.begin(), colors.end(), [&](Color color) { return color == colors[0]; }));
}

TEST_F(Resizing, FolderThatIsMissingIsNotTold) {
    EXPECT_EQ(ResizeImage(MakeWhite("a.png", 30, 20).c_str(), Path("none/b.png").c_str(), 10), 0);
}

TEST_F(Resizing, StoredPropertiesGoAlongUnchanged) {
    EXPECT_EQ(ResizeImage(LUMBRIX_SAMPLES "/photo.jpg", Path("b.jpg").c_str(), 100), 0);
    const auto source = OpenPicture(LUMBRIX_SAMPLES "/photo.jpg");
    const auto written = Open("b.jpg");
    int compared = 0;
    for (const Property& item : (*source)->Properties().Items()) {
        constexpr std::uint32_t ChrominanceTable = 0x5091;
        constexpr std::uint32_t LuminanceTable = 0x5090;
        if (item.tag != ChrominanceTable && item.tag != LuminanceTable) {
            const Property* copy = written->Properties().Find(item.tag);
            ASSERT_NE(copy, nullptr) << item.tag;
            EXPECT_EQ(*copy, item);
            ++compared;
        }
    }
    EXPECT_GE(compared, 3);
}

TEST_F(Cropping, WholeImageIsACopyInTheDestinationsFormat) {
    const auto picture = MakePicture(PixelFormat::Rgb24, 30, 20);
    const std::string source = Make("a.png", *picture);
    EXPECT_EQ(CropImage(source.c_str(), Path("b.bmp").c_str(), 0, 0, 30, 20), 0);
    EXPECT_EQ(Pixels("b.bmp"), ColorsOf(*picture));
}

TEST_F(Cropping, HoldsTheRectangleInTheSourcesFormat) {
    const auto picture = MakePicture(PixelFormat::Indexed4, 30, 20);
    const std::string source = Make("a.png", *picture);
    EXPECT_EQ(CropImage(source.c_str(), Path("b.png").c_str(), 7, 5, 4, 3), 0);
    ExpectSize("b.png", 4, 3);
    EXPECT_EQ(Open("b.png")->Info().format, PixelFormat::Indexed4);
    EXPECT_EQ(Pixels("b.png")[5], ColorsOf(*picture)[6 * 30 + 8]);
}

TEST_F(Cropping, RectanglesThatDoNotFitAreRefused) {
    const std::string source = MakeWhite("a.png", 30, 20);
    EXPECT_EQ(CropImage(source.c_str(), Path("b.png").c_str(), 0, 0, 31, 20), -1);
    EXPECT_EQ(CropImage(source.c_str(), Path("b.png").c_str(), 10, 0, 30, 20), 3);
    EXPECT_EQ(CropImage(source.c_str(), Path("b.png").c_str(), -1, 0, 5, 5), 3);
    EXPECT_EQ(CropImage(Path("none.png").c_str(), Path("b.png").c_str(), 0, 0, 5, 5), -1);
    EXPECT_FALSE(Exists("b.png"));
}

TEST_F(Cropping, SourceAsItsOwnDestinationStays) {
    const std::string source = MakeWhite("a.png", 30, 20);
    EXPECT_EQ(CropImage(source.c_str(), source.c_str(), 0, 0, 5, 5), 0);
    ExpectSize("a.png", 30, 20);
}

TEST_F(Rotating, QuarterTurnSwapsTheSides) {
    EXPECT_EQ(RotateImage(MakeWhite("a.png", 200, 100).c_str(), Path("b.png").c_str(), 90, ""), 0);
    ExpectSize("b.png", 100, 200);
}

TEST_F(Rotating, EightTurnsAreEightPictures) {
    const auto picture = MakePicture(PixelFormat::Rgb24, 30, 20);
    const std::string source = Make("a.png", *picture);
    std::vector<std::vector<Color>> seen;
    for (const int32_t angle : {0, 90, 180, 270}) {
        for (const char* flip : {"", "H"}) {
            EXPECT_EQ(RotateImage(source.c_str(), Path("b.png").c_str(), angle, flip), 0);
            seen.push_back(Pixels("b.png"));
        }
    }
    for (std::size_t i = 0; i < seen.size(); ++i) {
        EXPECT_EQ(std::count(seen.begin(), seen.end(), seen[i]), 1);
    }
    EXPECT_EQ(seen[2][19], seen[0][0]);  // 90: the first pixel goes to the upper right
    EXPECT_EQ(seen[4][599], seen[0][0]); // 180: to the lower right
    EXPECT_EQ(seen[6][29 * 20], seen[0][0]);
    EXPECT_EQ(seen[1][29], seen[0][0]);
}

TEST_F(Rotating, TurnsThatAreNoneCopyThePicture) {
    const auto picture = MakePicture(PixelFormat::Rgb24, 30, 20);
    const std::string source = Make("a.png", *picture);
    for (const auto& [angle, flip] :
         {std::pair<int32_t, const char*>{180, "HV"}, {90, "X"}, {45, ""}, {45, "H"}, {-90, ""}, {0, nullptr}}) {
        EXPECT_EQ(RotateImage(source.c_str(), Path("b.png").c_str(), angle, flip), 0);
        EXPECT_EQ(Pixels("b.png"), ColorsOf(*picture)) << angle;
    }
}

TEST_F(Rotating, LetterCaseOfTheFlipDoesNotMatter) {
    const std::string source = Make("a.png", *MakePicture(PixelFormat::Rgb24, 30, 20));
    RotateImage(source.c_str(), Path("b.png").c_str(), 90, "vh");
    RotateImage(source.c_str(), Path("c.png").c_str(), 90, "VH");
    EXPECT_EQ(Pixels("b.png"), Pixels("c.png"));
}

TEST_F(Rotating, SourceThatDoesNotLoadWritesNothing) {
    EXPECT_EQ(RotateImage(Path("none.png").c_str(), Path("b.png").c_str(), 90, ""), 0);
    EXPECT_FALSE(Exists("b.png"));
    EXPECT_EQ(RotateImage(MakeWhite("a.png", 3, 3).c_str(), Path("b.ico").c_str(), 90, ""), 0);
    EXPECT_FALSE(Exists("b.ico"));
}

TEST_F(Rotating, IndexedPicturesKeepTheirPalette) {
    const std::string source = Make("a.gif", *MakePicture(PixelFormat::Indexed8, 30, 20), GifCodec());
    EXPECT_EQ(RotateImage(source.c_str(), Path("b.gif").c_str(), 90, ""), 0);
    EXPECT_EQ(Open("b.gif")->Info().palette, Open("a.gif")->Info().palette);
}

TEST_F(Editing, DisplayingIsHarmlessAndDrawsNothing) {
    const std::string source = MakeWhite("a.png", 3, 3);
    EXPECT_EQ(DisplayImage(source.c_str(), nullptr, 0, 0), 0);
    EXPECT_EQ(DisplayImage("", nullptr, 0, 0), 0);
    EXPECT_EQ(DisplayImage(nullptr, nullptr, 0, 0), 0);
}

} // namespace
