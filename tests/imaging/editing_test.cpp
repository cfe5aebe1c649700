// The editing procedures as programs call them, with the real imaging library behind; what they wrote is judged by the
// decoders on their own.
#include "imaging/exports/lumbrix.h"
#include "imaginglibrary/codecs/rows.h"
#include "imaginglibrary/core/geometry.h"
#include "tests/support/pictures.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

using namespace imaginglibrary;
using namespace tests;

constexpr Color White = 0xFFFFFFFF;

class Editing : public testing::Test {
  protected:
    void SetUp() override { LoadImagingLibrary(); }
    void TearDown() override { UnloadImagingLibrary(); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    bool Exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

    std::string Make(const std::string& name, const PixelSource& picture, const Codec& codec = PngCodec()) const {
        EXPECT_EQ(WritePicture(codec, picture, folder_ / name), Status::Ok);
        return Path(name);
    }

    std::string MakeWhite(const std::string& name, std::uint32_t width, std::uint32_t height) const {
        return Make(name, *MakePictureOf(width, height, [](auto, auto) { return White; }));
    }

    std::unique_ptr<Decoder> Open(const std::string& name) const {
        auto picture = OpenPicture(folder_ / name);
        EXPECT_TRUE(picture.Ok()) << name;
        return picture.Ok() ? std::move(*picture) : nullptr;
    }

    std::vector<Color> Pixels(const std::string& name) const { return ColorsOf(*Open(name)); }

    void ExpectSize(const std::string& name, std::uint32_t width, std::uint32_t height) const {
        const auto picture = Open(name);
        EXPECT_EQ(picture->Info().width, width);
        EXPECT_EQ(picture->Info().height, height);
    }

    int32_t Annotate(const std::string& source, const std::string& target, float x, float y, const char* text,
                     int32_t size = 40, int32_t alpha = 255, const char* font = "Arial") const {
        return AnnotateImage(source.c_str(), Path(target).c_str(), x, y, text, font, size, 0, 0, 0, 0, alpha, 0, 0,
                             255);
    }

    TemporaryFolder folder_;
};

using Resizing = Editing;
using Cropping = Editing;
using Rotating = Editing;
using Annotating = Editing;
using Stamping = Editing;
using PropertyDoors = Editing;

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
    for (int round = 0; round < 1500; ++round) {
        ASSERT_EQ(Annotate(source, "b.png", 0, 0, "", 10), 0) << round;
    }
    EXPECT_EQ(StampImage(source.c_str(), Path("b.png").c_str(), 0, 0, Path("b.png").c_str()), 0);
    EXPECT_EQ(ConvertImageToPng(Path("b.png").c_str(), source.c_str()), 0); // nobody holds the source
    EXPECT_EQ(Annotate(source, "c.png", 0, 0, "H"), 0);
    EXPECT_TRUE(Exists("c.png"));
}

TEST_F(Annotating, AbsentFontGivesACopy) {
    const std::string source = MakeWhite("a.png", 100, 60);
    EXPECT_EQ(Annotate(source, "b.png", 0, 0, "H", 40, 255, "Nonesuch"), 0);
    EXPECT_EQ(Pixels("b.png"), Pixels("a.png"));
    EXPECT_EQ(lumbrix_has_font("Nonesuch"), 0);
    EXPECT_EQ(lumbrix_has_font("Arial"), 1);
}

TEST_F(Annotating, IndexedSourceGivesAPlainCopyAndATrueColorCopyHelps) {
    const std::string source = Make("a.png", *MakePicture(PixelFormat::Indexed8, 100, 60));
    EXPECT_EQ(Annotate(source, "b.png", 0, 0, "H"), 0);
    EXPECT_EQ(Pixels("b.png"), Pixels("a.png"));
    EXPECT_EQ(lumbrix_has_palette(source.c_str()), 1);
    EXPECT_EQ(lumbrix_copy_true_color(source.c_str(), Path("true.png").c_str()), 0);
    EXPECT_EQ(lumbrix_has_palette(Path("true.png").c_str()), 0);
    EXPECT_EQ(Pixels("true.png"), Pixels("a.png"));
    EXPECT_EQ(Annotate(Path("true.png"), "c.png", 0, 0, "H"), 0);
    EXPECT_NE(Pixels("c.png"), Pixels("a.png"));
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

TEST_F(PropertyDoors, ListIsHandedOutAsText) {
    char* error = nullptr;
    char* list = nullptr;
    EXPECT_EQ(EnumerateImageProperties(LUMBRIX_SAMPLES "/photo.jpg", &error, &list), 0);
    EXPECT_EQ(error, nullptr);
    ASSERT_NE(list, nullptr);
    const std::string text = list;
    EXPECT_NE(text.find("Camera Manufacturer\tLumbrix\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("DateTime\t2026:11:21 09:30:00"), std::string::npos);
    EXPECT_EQ(EnumerateImageProperties(LUMBRIX_SAMPLES "/photo.jpg", &error, &list), 0);
    EXPECT_EQ(std::string(list), text + "\r\n" + text);
    lumbrix_free(list);
}

TEST_F(PropertyDoors, FileWithoutPropertiesGivesNoText) {
    char* error = nullptr;
    char* list = nullptr;
    const std::string source = Make("a.bmp", *MakePicture(PixelFormat::Rgb24, 4, 4), BmpCodec());
    EXPECT_EQ(EnumerateImageProperties(source.c_str(), &error, &list), 0);
    EXPECT_EQ(list, nullptr);
    EXPECT_EQ(EnumerateImageProperties(Path("none.jpg").c_str(), &error, &list), 0);
    EXPECT_EQ(list, nullptr);
    EXPECT_EQ(error, nullptr);
}

TEST_F(PropertyDoors, TagListStaysWithoutAnImage) {
    lumbrix_tag_list list{nullptr, 3};
    EXPECT_EQ(GetPropertyIdList(nullptr, &list), 0);
    EXPECT_EQ(list.count, 3);
}

TEST_F(PropertyDoors, PictureWithoutADateHasAnEmptyOne) {
    for (const std::string& name : {MakeWhite("a.png", 3, 3), Path("none.png"), std::string(" ")}) {
        char* date = GetImageDateTime(name.c_str());
        EXPECT_STREQ(date, "");
        lumbrix_free(date);
    }
}

// Works in the folder of the test, for names without a folder and, on Linux, all names write to the current one.
class Stamped : public Editing {
  protected:
    void SetUp() override {
        Editing::SetUp();
        before_ = std::filesystem::current_path();
        std::filesystem::current_path(folder_.Path());
    }
    void TearDown() override {
        std::filesystem::current_path(before_);
        Editing::TearDown();
    }

    std::filesystem::path before_;
};

TEST_F(Stamped, CopyIsAJpegWithTheDateNamedUpToTheFirstDot) {
    MakeWhite("two.dots.png", 20, 10);
    const std::string before = ReadBytes(folder_ / "two.dots.png");
#ifdef _WIN32
    std::filesystem::current_path(before_);
    EXPECT_EQ(DateStampImage(Path("two.dots.png").c_str(), "the day before"), 0);
#else
    EXPECT_EQ(DateStampImage("two.dots.png", "the day before"), 0);
#endif
    EXPECT_EQ(ReadBytes(folder_ / "two_stamped.jpg").substr(0, 2), "\xFF\xD8");
    char* date = GetImageDateTime(Path("two_stamped.jpg").c_str());
    EXPECT_STREQ(date, "the day before");
    lumbrix_free(date);
    EXPECT_EQ(ReadBytes(folder_ / "two.dots.png"), before);
}

TEST_F(Stamped, NameWithoutAFolderGoesToTheCurrentOne) {
    MakeWhite("a.png", 20, 10);
    EXPECT_EQ(DateStampImage("a.png", "x"), 0);
    EXPECT_TRUE(Exists("a_stamped.jpg"));
}

TEST_F(Stamped, LaterOneOfTheSameNameReplacesTheEarlier) {
    MakeWhite("a.one.png", 20, 10);
    MakeWhite("a.two.png", 30, 10);
    EXPECT_EQ(DateStampImage("a.one.png", "x"), 0);
    EXPECT_EQ(DateStampImage("a.two.png", "x"), 0);
    ExpectSize("a_stamped.jpg", 30, 10);
}

TEST_F(Stamped, EmptyDateIsTaken) {
    MakeWhite("a.png", 20, 10);
    EXPECT_EQ(DateStampImage("a.png", ""), 0);
    EXPECT_TRUE(Exists("a_stamped.jpg"));
}

TEST_F(Stamped, FileThatDoesNotLoadIsRefused) {
    EXPECT_EQ(DateStampImage("none.png", "x"), -1);
    EXPECT_EQ(DateStampImage("", "x"), 0);
}

TEST_F(Stamped, OtherPropertiesGoAlong) {
    std::filesystem::copy_file(LUMBRIX_SAMPLES "/photo.jpg", folder_ / "photo.jpg");
    EXPECT_EQ(DateStampImage("photo.jpg", "2000:01:01 00:00:00"), 0);
    const auto stamped = Open("photo_stamped.jpg");
    const Property* make = stamped->Properties().Find(271);
    ASSERT_NE(make, nullptr);
    EXPECT_EQ(*make, AsciiProperty(271, "Lumbrix"));
    EXPECT_EQ(*stamped->Properties().Find(306), AsciiProperty(306, "2000:01:01 00:00:00"));
}

TEST_F(Editing, DisplayingIsHarmlessAndDrawsNothing) {
    const std::string source = MakeWhite("a.png", 3, 3);
    EXPECT_EQ(DisplayImage(source.c_str(), nullptr, 0, 0), 0);
    EXPECT_EQ(DisplayImage("", nullptr, 0, 0), 0);
    EXPECT_EQ(DisplayImage(nullptr, nullptr, 0, 0), 0);
}

} // namespace
