// BMP files in all their historic forms, and what is written back.
#include "tests/support/bmpmaker.h"
#include "tests/support/codecs.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using namespace imaginglibrary;
using namespace tests;

class Bmp : public testing::Test {
  protected:
    Result<std::unique_ptr<Decoder>> Open(const BmpFile& file) { return OpenBytes(file.Whole()); }

    Result<std::unique_ptr<Decoder>> OpenBytes(const std::string& bytes) {
        WriteBytes(folder_ / "picture.bmp", bytes);
        return OpenPicture(folder_ / "picture.bmp");
    }

    TemporaryFolder folder_;
};

// Bottom row red and blue, top row black and white, each row padded to eight bytes.
const std::string TrueColorRows = Bytes({0, 0, 255, 255, 0, 0, 0, 0, 0, 0, 0, 255, 255, 255, 0, 0});
const std::vector<Color> TrueColorPicture{Black, White, Red, Blue};

TEST_F(Bmp, BottomRowComesFirst) {
    const auto picture = Open({.pixels = TrueColorRows});
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().format, PixelFormat::Rgb24);
    EXPECT_EQ(ColorsOf(**picture), TrueColorPicture);
}

TEST_F(Bmp, NegativeHeightPutsTheTopRowFirst) {
    const auto picture = Open({.height = -2, .pixels = TrueColorRows});
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().height, 2u);
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{Red, Blue, Black, White}));
}

TEST_F(Bmp, EveryHeaderLengthIsRead) {
    for (const std::uint32_t length : {12u, 16u, 40u, 52u, 56u, 64u, 108u, 124u}) {
        const auto picture = Open({.headerBytes = length, .pixels = TrueColorRows});
        ASSERT_TRUE(picture.Ok()) << length;
        EXPECT_EQ(ColorsOf(**picture), TrueColorPicture) << length;
    }
}

TEST_F(Bmp, MissingPixelOffsetMeansBehindThePalette) {
    const auto picture = Open({.pixels = TrueColorRows, .namesPixelOffset = false});
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ(ColorsOf(**picture), TrueColorPicture);
}

TEST_F(Bmp, OldPaletteHasThreeBytesAnEntry) {
    const auto picture = Open({.headerBytes = 12,
                               .height = 1,
                               .bits = 1,
                               .behindHeader = Bytes({0, 0, 255, 255, 0, 0}),
                               .pixels = Bytes({0x40, 0, 0, 0})});
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().format, PixelFormat::Indexed1);
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{Red, Blue}));
}

TEST_F(Bmp, PaletteIsAsLongAsTheFileSays) {
    const auto picture = Open({.width = 3,
                               .height = 1,
                               .bits = 4,
                               .colorsUsed = 2,
                               .behindHeader = Bytes({0, 0, 255, 0, 255, 0, 0, 0}),
                               .pixels = Bytes({0x01, 0x70, 0, 0})});
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().format, PixelFormat::Indexed4);
    EXPECT_EQ((*picture)->Info().palette.size(), 2u);
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{Red, Blue, Black})) << "an index beyond the palette is black";
}

TEST_F(Bmp, PixelsMayBeginInThePaletteAndLeaveItWhole) {
    std::string palette = Bytes({0, 0, 255, 0, 255, 0, 0, 0, 255, 255, 255, 0});
    palette += Bytes({0x31, 0x02, 0, 0}) + std::string(4 * 12, '\0'); // the fourth entry is four pixels too
    std::string bytes = BmpFile{.width = 4, .height = 1, .bits = 4, .behindHeader = palette}.Whole();
    bytes.replace(10, 4, Number32(54 + 4 * 3));
    const auto picture = OpenBytes(bytes);
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().palette.size(), 16u);
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{MakeColor(0, 2, 0x31), Blue, Red, White}));
}

TEST_F(Bmp, PaletteThatRunsOverTheEndOfTheFileHasTheEntriesBeforeIt) {
    std::string bytes = BmpFile{.width = 3,
                                .height = 1,
                                .bits = 4,
                                .behindHeader = Bytes({0, 0, 255, 0, 255, 0, 0, 0}),
                                .pixels = Bytes({0x01, 0x20, 0, 0})}
                            .Whole();
    const auto picture = OpenBytes(bytes);
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().palette, (Palette{Red, Blue, MakeColor(0, 0x20, 0x01)}));
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{Red, Blue, MakeColor(0, 0x20, 0x01)}));
}

TEST_F(Bmp, SixteenBitsAre555ByDefault) {
    const auto picture = Open({.height = 1, .bits = 16, .pixels = Bytes({0x00, 0x7C, 0x1F, 0x00})});
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().format, PixelFormat::Rgb555);
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{Red, Blue}));
}

TEST_F(Bmp, SixteenBitMasksOf565AreKept) {
    const auto picture = Open({.height = 1,
                               .bits = 16,
                               .compression = 3,
                               .behindHeader = Number32(0xF800) + Number32(0x07E0) + Number32(0x001F),
                               .pixels = Bytes({0x00, 0xF8, 0xE0, 0x07})});
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().format, PixelFormat::Rgb565);
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{Red, MakeColor(0, 255, 0)}));
}

TEST_F(Bmp, UnusualMasksBecomeTrueColor) {
    const auto picture = Open({.height = 1,
                               .bits = 16,
                               .compression = 3,
                               .behindHeader = Number32(0x000F) + Number32(0x00F0) + Number32(0x0F00),
                               .pixels = Bytes({0x0F, 0x00, 0x80, 0x0F})});
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().format, PixelFormat::Rgb32);
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{Red, MakeColor(0, 136, 255)}));
}

TEST_F(Bmp, MasksInsideALongerHeaderAreUsed) {
    const auto picture = Open({.headerBytes = 108,
                               .height = 1,
                               .bits = 32,
                               .compression = 3,
                               .masks = Number32(0xFF) + Number32(0xFF00) + Number32(0xFF0000) + Number32(0xFF000000),
                               .pixels = Bytes({255, 0, 0, 9, 0, 0, 255, 0})});
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{Red, Blue}));
}

TEST_F(Bmp, FourthByteOfThirtyTwoBitsIsNoAlpha) {
    const auto picture = Open({.height = 1, .bits = 32, .pixels = Bytes({0, 0, 255, 0, 255, 0, 0, 77})});
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().format, PixelFormat::Rgb32);
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{Red, Blue}));
}

TEST_F(Bmp, Rle8RunsLiteralsAndRowEndsAreDecoded) {
    const auto picture = Open(RleFile(8, 4, 2, Bytes({4, 2, 0, 0, 0, 3, 1, 0, 3, 0, 1, 1, 0, 1})));
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().format, PixelFormat::Indexed8);
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{White, Black, Blue, White, Red, Red, Red, Red}));
}

TEST_F(Bmp, Rle4AlternatesTheHalvesOfARun) {
    const auto picture = Open(RleFile(4, 5, 1, Bytes({5, 0x12, 0, 1})));
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ((*picture)->Info().format, PixelFormat::Indexed4);
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{White, Red, White, Red, White}));
}

TEST_F(Bmp, Rle4LiteralsAreHalfBytesPaddedToWords) {
    const auto picture = Open(RleFile(4, 5, 1, Bytes({0, 5, 0x12, 0x31, 0x20, 0x00, 0, 1})));
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{White, Red, Blue, White, Red}));
}

TEST_F(Bmp, RleMovesSkipPixelsAndRows) {
    // One red pixel at the bottom left, then two to the right and one up: a white one.
    const auto picture = Open(RleFile(8, 4, 2, Bytes({1, 2, 0, 2, 2, 1, 1, 1, 0, 1})));
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{Black, Black, Black, White, Red, Black, Black, Black}));
}

TEST_F(Bmp, RleRunsBeyondTheRowAreCutOff) {
    const auto picture = Open(RleFile(8, 2, 2, Bytes({255, 2, 0, 0, 2, 1, 0, 1})));
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{White, White, Red, Red}));
}

TEST_F(Bmp, RleRowsMayBeStoredFromTheTop) {
    const auto bytes = Open(RleFile(8, 4, -2, Bytes({4, 2, 0, 0, 0, 3, 1, 0, 3, 0, 1, 1, 0, 1})));
    ASSERT_TRUE(bytes.Ok());
    EXPECT_EQ(ColorsOf(**bytes), (std::vector<Color>{Red, Red, Red, Red, White, Black, Blue, White}));
}

TEST_F(Bmp, RleRowsOfHalfBytesMayBeStoredFromTheTop) {
    const auto halves = Open(RleFile(4, 2, -2, Bytes({2, 0x12, 0, 0, 2, 0x33, 0, 1})));
    ASSERT_TRUE(halves.Ok());
    EXPECT_EQ(ColorsOf(**halves), (std::vector<Color>{White, Red, Blue, Blue}));
}

struct ShortRle {
    std::string pixels;
    std::vector<Color> colors;
    bool isDamaged;
};

TEST_F(Bmp, RleDataThatEndEarlyAreShownAsFarAsTheyGo) {
    const ShortRle files[] = {
        {Bytes({2, 2, 0, 0, 1, 1}), {White, Black, Red, Red}, true},
        {Bytes({2, 2, 0, 0, 1}), {Black, Black, Red, Red}, true},
        {Bytes({2, 2, 0}), {Black, Black, Red, Red}, true},
        {Bytes({2, 2}), {Black, Black, Red, Red}, true},
        {Bytes({1, 2}), {Black, Black, Red, Black}, true},
        {Bytes({2, 2, 0, 2, 0}), {Black, Black, Red, Red}, true},
        {Bytes({0, 3, 1}), {Black, Black, White, Black}, true},
        // What an end mark says is never damage, nor is its absence.
        {Bytes({2, 2, 0, 1}), {Black, Black, Red, Red}, false},
        {Bytes({2, 2, 0, 0, 2, 1}), {White, White, Red, Red}, false},
    };
    for (const auto& [pixels, colors, isDamaged] : files) {
        const auto picture = Open(RleFile(8, 2, 2, pixels));
        ASSERT_TRUE(picture.Ok());
        EXPECT_EQ(ColorsOf(**picture), colors) << pixels.size();
        EXPECT_EQ((*picture)->Damage()->IsMet(), isDamaged) << pixels.size();
    }
}

TEST_F(Bmp, RlePixelsThatAreMissingInTheLastLiteralAreDamage) {
    struct {
        BmpFile file;
        std::vector<Color> colors;
        bool isDamaged;
    } const cases[] = {
        {RleFile(8, 3, 1, Bytes({0, 3, 1, 2, 3})), {White, Red, Blue}, false}, // the padding may be missing
        {RleFile(8, 3, 1, Bytes({1, 1, 0, 3, 2})), {White, Red, Black}, true},
        {RleFile(4, 6, 1, Bytes({0, 6, 0x12, 0x31})), {White, Red, Blue, White, Black, Black}, true},
    };
    for (const auto& [file, colors, isDamaged] : cases) {
        const auto picture = Open(file);
        ASSERT_TRUE(picture.Ok());
        EXPECT_EQ(ColorsOf(**picture), colors);
        EXPECT_EQ((*picture)->Damage()->IsMet(), isDamaged);
    }
}

TEST_F(Bmp, RleDataWithoutAPixelOrWhoseDamageIsRefusedAreUndecodable) {
    for (const std::string& pixels : {Bytes({2}), Bytes({0, 3}), Bytes({0, 2, 0})}) {
        const auto picture = Open(RleFile(8, 2, 2, pixels));
        ASSERT_TRUE(picture.Ok());
        EXPECT_EQ(ReadAllRows(**picture), UndecodableContent) << pixels.size();
    }
    const auto refused = Open(RleFile(8, 2, 2, Bytes({2, 2})));
    (*refused)->Damage()->Refuse();
    EXPECT_EQ(ReadAllRows(**refused), UndecodableContent);
}

TEST_F(Bmp, DamageOfUncompressedPixelsIsNeverPutUpWith) {
    const auto picture = Open({.pixels = TrueColorRows});
    EXPECT_EQ((*picture)->Damage(), nullptr);
}

TEST_F(Bmp, ResolutionIsInDotsPerInch) {
    const auto picture = Open({.dotsPerMetre = 11811, .pixels = TrueColorRows});
    ASSERT_TRUE(picture.Ok());
    EXPECT_NEAR((*picture)->Info().resolution.horizontal, 300, 0.01);
}

TEST_F(Bmp, SizesBeyondTheLimitAreRefusedBeforeMemoryIsTaken) {
    EXPECT_EQ(Open({.width = 70000, .pixels = TrueColorRows}).GetStatus(), Status::InvalidParameter);
    EXPECT_EQ(Open({.width = 0, .pixels = TrueColorRows}).GetStatus(), Status::InvalidParameter);
    EXPECT_EQ(Open({.width = -4, .pixels = TrueColorRows}).GetStatus(), Status::InvalidParameter);
    EXPECT_EQ(Open({.height = INT32_MIN, .pixels = TrueColorRows}).GetStatus(), Status::InvalidParameter);
}

TEST_F(Bmp, UnknownCompressionsAreUndecodable) {
    for (const std::uint32_t compression : {4u, 5u, 7u, 0xFFFFFFFFu}) {
        EXPECT_EQ(Open({.compression = compression, .pixels = TrueColorRows}).GetStatus(), UndecodableContent);
    }
}

TEST_F(Bmp, CutOffAnywhereItGivesAStatus) {
    const std::string rows = BmpFile{.pixels = TrueColorRows}.Whole();
    const std::string runs = RleFile(8, 4, 2, Bytes({4, 2, 0, 0, 0, 3, 1, 0, 3, 0, 1, 1, 0, 1})).Whole();
    const auto statusOfCut = [&](const std::string& whole, std::size_t length) {
        const auto picture = OpenBytes(whole.substr(0, length));
        return picture.Ok() ? ReadAllRows(**picture) : picture.GetStatus();
    };
    // The last row's padding may be missing.
    for (std::size_t length = 0; length + 2 < rows.size(); ++length) {
        EXPECT_EQ(statusOfCut(rows, length), UndecodableContent) << "cut at " << length;
    }
    constexpr std::size_t FirstRun = 14 + 40 + 4 * 4 + 2;
    for (std::size_t length = 0; length < runs.size(); ++length) {
        EXPECT_EQ(statusOfCut(runs, length), length < FirstRun ? UndecodableContent : Status::Ok) << length;
    }
}

TEST_F(Bmp, AnyBrokenByteGivesAPictureOrAStatus) {
    for (const std::int32_t height : {3, -3}) {
        const std::string whole =
            RleFile(4, 5, height, Bytes({5, 0x12, 0, 0, 0, 5, 0x12, 0x31, 0x20, 0, 0, 2, 1, 1, 4, 1, 0, 1})).Whole();
        for (std::size_t at = 2; at < whole.size(); ++at) {
            for (const int flip : {0x01, 0x80, 0xFF}) {
                std::string broken = whole;
                broken[at] = static_cast<char>(broken[at] ^ flip);
                const auto picture = OpenBytes(broken);
                if (picture.Ok() && (*picture)->Info().width < 1000 && (*picture)->Info().height < 1000) {
                    (void)ReadAllRows(**picture);
                }
            }
        }
    }
}

TEST_F(Bmp, TwoReadersOfOnePictureDoNotDisturbEachOther) {
    const auto picture = Open({.pixels = TrueColorRows});
    ASSERT_TRUE(picture.Ok());
    auto first = (*picture)->OpenRows();
    auto second = (*picture)->OpenRows();
    std::array<std::uint8_t, 6> row{};
    ASSERT_EQ((*first)->ReadRow(row.data()), Status::Ok);
    ASSERT_EQ((*second)->ReadRow(row.data()), Status::Ok);
    ASSERT_EQ((*first)->ReadRow(row.data()), Status::Ok);
    EXPECT_EQ(row, (std::array<std::uint8_t, 6>{0, 0, 255, 255, 0, 0}));
}

class WrittenBmp : public testing::TestWithParam<std::pair<PixelFormat, PixelFormat>> {
  protected:
    TemporaryFolder folder_;
};

// Each format at sizes that leave rows, bytes and strips half filled.
TEST_P(WrittenBmp, ReadsBackAsTheSamePicture) {
    const auto [format, writtenFormat] = GetParam();
    for (const auto& [width, height] :
         {std::pair(1u, 1u), std::pair(7u, 5u), std::pair(33u, 2u), std::pair(64u, 1u), std::pair(3000u, 301u)}) {
        const auto picture = MakePicture(format, width, height);
        ASSERT_EQ(WritePicture(BmpCodec(), *picture, folder_ / "written.bmp"), Status::Ok);
        const auto back = OpenPicture(folder_ / "written.bmp");
        ASSERT_TRUE(back.Ok());
        EXPECT_EQ((*back)->Info().format, writtenFormat);
        EXPECT_EQ((*back)->Info().palette, picture->Info().palette);
        EXPECT_EQ(ColorsOf(**back), ColorsOverWhite(*picture)) << width << " by " << height;
    }
}

INSTANTIATE_TEST_SUITE_P(AllFormats, WrittenBmp,
                         testing::Values(std::pair(PixelFormat::Indexed1, PixelFormat::Indexed1),
                                         std::pair(PixelFormat::Indexed4, PixelFormat::Indexed4),
                                         std::pair(PixelFormat::Indexed8, PixelFormat::Indexed8),
                                         std::pair(PixelFormat::Rgb555, PixelFormat::Rgb32),
                                         std::pair(PixelFormat::Rgb565, PixelFormat::Rgb32),
                                         std::pair(PixelFormat::Argb1555, PixelFormat::Rgb32),
                                         std::pair(PixelFormat::Rgb24, PixelFormat::Rgb24),
                                         std::pair(PixelFormat::Rgb32, PixelFormat::Rgb32),
                                         std::pair(PixelFormat::Argb32, PixelFormat::Rgb32),
                                         std::pair(PixelFormat::Pargb32, PixelFormat::Rgb32),
                                         std::pair(PixelFormat::Rgb48, PixelFormat::Rgb24)));

TEST_F(Bmp, ResolutionIsWrittenAndIs96WhereThereIsNone) {
    PictureInfo info{.width = 1, .height = 1, .format = PixelFormat::Rgb24, .resolution = {300, 150}};
    ASSERT_EQ(WritePicture(BmpCodec(), **Bitmap::Create(info), folder_ / "a.bmp"), Status::Ok);
    info.resolution = {};
    ASSERT_EQ(WritePicture(BmpCodec(), **Bitmap::Create(info), folder_ / "b.bmp"), Status::Ok);
    EXPECT_EQ(ReadBytes(folder_ / "a.bmp").substr(38, 8), Number32(11811) + Number32(5906));
    EXPECT_EQ(ReadBytes(folder_ / "b.bmp").substr(38, 8), Number32(3780) + Number32(3780));
}

TEST_F(Bmp, ClearPaletteEntriesAreWrittenAsWhite) {
    const auto bitmap = *Bitmap::Create({.width = 2,
                                         .height = 1,
                                         .format = PixelFormat::Indexed8,
                                         .palette = {MakeColor(1, 2, 3, 0), MakeColor(10, 20, 30)}});
    bitmap->Row(0)[1] = 1;
    ASSERT_EQ(WritePicture(BmpCodec(), *bitmap, folder_ / "clear.bmp"), Status::Ok);
    const auto back = OpenPicture(folder_ / "clear.bmp");
    ASSERT_TRUE(back.Ok());
    EXPECT_EQ(ColorsOf(**back), (std::vector<Color>{White, MakeColor(10, 20, 30)}));
}

TEST_F(Bmp, FullDiskIsTheWritersStatus) {
    const auto picture = MakePicture(PixelFormat::Rgb24, 200, 200);
    for (const std::size_t room : {0u, 53u, 60000u, 54u + 600 * 200 - 1}) {
        MemoryOutput file(room);
        const Status status = BmpCodec().write(*picture, {}, {}, file);
        EXPECT_EQ(status == Status::Ok ? file.Commit() : status, MemoryOutput::DiskFull) << room;
    }
    MemoryOutput file(54 + 600 * 200);
    EXPECT_EQ(BmpCodec().write(*picture, {}, {}, file), Status::Ok);
    EXPECT_EQ(file.Commit(), Status::Ok);
}

} // namespace
