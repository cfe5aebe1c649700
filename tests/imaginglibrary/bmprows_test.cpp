// Rows of BMP files as they lie in the file: padding, run lengths that jump, and every byte that is written.
#include "imaginglibrary/core/rowconverter.h"
#include "tests/support/bmpmaker.h"
#include "tests/support/codecs.h"
#include "tests/support/pictures.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {

using namespace imaginglibrary;
using namespace tests;

class BmpRows : public testing::Test {
  protected:
    // A file of its own each time, for the one before may still be open.
    Result<std::unique_ptr<Decoder>> Open(const std::string& bytes) {
        const auto file = folder_ / (std::to_string(++filesMade_) + ".bmp");
        WriteBytes(file, bytes);
        return OpenPicture(file);
    }

    std::vector<Color> Colors(const BmpFile& file) {
        const auto picture = Open(file.Whole());
        EXPECT_TRUE(picture.Ok());
        return picture.Ok() ? ColorsOf(**picture) : std::vector<Color>{};
    }

    std::string Written(const PixelSource& picture) {
        EXPECT_EQ(WritePicture(BmpCodec(), picture, folder_ / "written.bmp"), Status::Ok);
        return ReadBytes(folder_ / "written.bmp");
    }

    TemporaryFolder folder_;
    int filesMade_ = 0;
};

TEST_F(BmpRows, OnlyTheLastRowOfTheFileMayLackItsPadding) {
    const std::string rows = Bytes({1, 1, 1, 0, 2, 2, 2, 0});
    for (const std::int32_t height : {2, -2}) {
        const std::string whole = BmpFile{.width = 1, .height = height, .pixels = rows}.Whole();
        const auto unpadded = Open(whole.substr(0, whole.size() - 1));
        ASSERT_TRUE(unpadded.Ok());
        const Color first = MakeColor(1, 1, 1), last = MakeColor(2, 2, 2);
        EXPECT_EQ(ColorsOf(**unpadded), height > 0 ? (std::vector<Color>{last, first}) : (std::vector{first, last}));
        const auto cut = Open(whole.substr(0, whole.size() - 2));
        ASSERT_TRUE(cut.Ok());
        EXPECT_EQ(ReadAllRows(**cut), UndecodableContent);
    }
}

TEST_F(BmpRows, LastRowOfBitsEndsWithTheByteOfItsLastPixel) {
    const std::string palette = Bytes({0, 0, 0, 0, 255, 255, 255, 0});
    const std::string whole =
        BmpFile{.width = 9, .height = 1, .bits = 1, .behindHeader = palette, .pixels = Bytes({0x00, 0x80})}.Whole();
    const auto picture = Open(whole);
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{Black, Black, Black, Black, Black, Black, Black, Black, White}));
    const auto cut = Open(whole.substr(0, whole.size() - 1));
    ASSERT_TRUE(cut.Ok());
    EXPECT_EQ(ReadAllRows(**cut), UndecodableContent);
}

TEST_F(BmpRows, RowsOfManyStripsComeInTheirOrder) {
    // 300 rows of 1,000 bytes are several strips, the last of which is not full.
    for (const std::int32_t height : {300, -300}) {
        std::string pixels;
        for (int y = 0; y < 300; ++y) {
            pixels += std::string(1000, static_cast<char>(y % 251));
        }
        const auto picture = Open(BmpFile{
            .width = 1000, .height = height, .bits = 8, .behindHeader = std::string(1024, '\0'), .pixels = pixels}
                                      .Whole());
        ASSERT_TRUE(picture.Ok());
        const auto rows = (*picture)->OpenRows();
        const auto fromBottom = (*picture)->OpenRowsFromBottom();
        ASSERT_TRUE(rows.Ok() && fromBottom.Ok());
        std::vector<std::uint8_t> row(1000);
        for (int y = 0; y < 300; ++y) {
            ASSERT_EQ((*rows)->ReadRow(row.data()), Status::Ok);
            ASSERT_EQ(row[999], (height > 0 ? 299 - y : y) % 251) << y;
            ASSERT_EQ((*fromBottom)->ReadRow(row.data()), Status::Ok);
            ASSERT_EQ(row[0], (height > 0 ? y : 299 - y) % 251) << y;
        }
    }
}

TEST_F(BmpRows, RleMovesWithinARowLeavePixelsOut) {
    EXPECT_EQ(Colors(RleFile(8, 4, 1, Bytes({1, 2, 0, 2, 2, 0, 1, 1, 0, 1}))),
              (std::vector<Color>{Red, Black, Black, White}));
    EXPECT_EQ(Colors(RleFile(4, 4, 1, Bytes({1, 0x20, 0, 2, 1, 0, 2, 0x13, 0, 1}))),
              (std::vector<Color>{Red, Black, White, Blue}));
}

TEST_F(BmpRows, RleMovesUpStartFromTheColumnThatWasReached) {
    // Behind a run, a literal and a move along the row.
    EXPECT_EQ(Colors(RleFile(8, 6, 2, Bytes({1, 2, 0, 3, 1, 2, 3, 0, 0, 2, 1, 0, 0, 2, 0, 1, 1, 1, 0, 1}))),
              (std::vector<Color>{Black, Black, Black, Black, Black, White, Red, White, Red, Blue, Black, Black}));
    // The end of a row begins the next one at its left.
    EXPECT_EQ(Colors(RleFile(8, 3, 3, Bytes({2, 2, 0, 0, 0, 2, 1, 1, 1, 1, 0, 1}))),
              (std::vector<Color>{Black, White, Black, Black, Black, Black, Red, Red, Black}));
}

TEST_F(BmpRows, RleRunsAndLiteralsEndAtTheLastPixelOfTheRow) {
    for (const auto& [bits, pixels] : {std::pair(8u, Bytes({9, 3, 0, 1})),
                                       {8u, Bytes({0, 6, 3, 3, 3, 3, 3, 3, 0, 1})},
                                       {4u, Bytes({9, 0x33, 0, 1})},
                                       {4u, Bytes({0, 8, 0x33, 0x33, 0x33, 0x33, 0, 1})}}) {
        const auto picture = Open(RleFile(bits, 4, 1, pixels).Whole());
        ASSERT_TRUE(picture.Ok());
        std::array<std::uint8_t, 10> row;
        row.fill(0x77);
        ASSERT_EQ((*(*picture)->OpenRows())->ReadRow(row.data()), Status::Ok);
        const std::size_t bytes = bits == 8 ? 4 : 2;
        EXPECT_EQ(row[bytes - 1], bits == 8 ? 3 : 0x33);
        EXPECT_EQ(std::count(row.begin(), row.end(), 0x77), static_cast<std::ptrdiff_t>(row.size() - bytes));
    }
}

TEST_F(BmpRows, RleMovesMayLeaveOutRows) {
    EXPECT_EQ(Colors(RleFile(8, 1, 3, Bytes({1, 2, 0, 0, 0, 2, 0, 1, 1, 1, 0, 1}))),
              (std::vector<Color>{White, Black, Red}));
    EXPECT_EQ(Colors(RleFile(8, 1, -3, Bytes({1, 2, 0, 0, 0, 2, 0, 1, 1, 1, 0, 1}))),
              (std::vector<Color>{Red, Black, White}));
    // A move to just above the picture ends it.
    const auto beyond = Open(RleFile(8, 1, 2, Bytes({1, 2, 0, 2, 0, 2, 9})).Whole());
    ASSERT_TRUE(beyond.Ok());
    EXPECT_EQ(ColorsOf(**beyond), (std::vector<Color>{Black, Red}));
    EXPECT_FALSE((*beyond)->Damage()->IsMet());
}

TEST_F(BmpRows, RleRowThatWasLeftBeforeItsEndIsNoDamage) {
    const auto picture = Open(RleFile(8, 2, 2, Bytes({1, 2, 0, 0, 1, 1, 0, 1})).Whole());
    ASSERT_TRUE(picture.Ok());
    EXPECT_EQ(ColorsOf(**picture), (std::vector<Color>{White, Black, Red, Black}));
    EXPECT_FALSE((*picture)->Damage()->IsMet());
}

TEST_F(BmpRows, RleDataThatBreakOffInALaterRowAreDamage) {
    for (const std::string& pixels : {Bytes({0, 0}), Bytes({0, 0, 0, 3}), Bytes({0, 2, 1, 0, 0, 3})}) {
        const auto picture = Open(RleFile(8, 2, 2, pixels).Whole());
        ASSERT_TRUE(picture.Ok());
        EXPECT_EQ(ReadAllRows(**picture), Status::Ok) << pixels.size();
        EXPECT_TRUE((*picture)->Damage()->IsMet()) << pixels.size();
    }
}

TEST_F(BmpRows, RleHalfBytesCountFromTheStartOfTheirRun) {
    EXPECT_EQ(Colors(RleFile(4, 5, 1, Bytes({1, 0x30, 3, 0x12, 1, 0x20, 0, 1}))),
              (std::vector<Color>{Blue, White, Red, White, Red}));
    EXPECT_EQ(Colors(RleFile(4, 5, 1, Bytes({1, 0x30, 0, 3, 0x12, 0x30, 1, 0x20, 0, 1}))),
              (std::vector<Color>{Blue, White, Red, Blue, Red}));
}

TEST_F(BmpRows, RleLiteralsOfAnyLengthEndAtAWord) {
    // Of n half bytes, padded to a whole number of words; a white pixel follows, then the end of the row.
    for (int count = 3; count <= 9; ++count) {
        std::string pixels = Bytes({0, count}) + std::string(static_cast<std::size_t>((count + 3) / 4 * 2), '\x33');
        const auto colors = Colors(RleFile(4, 10, 1, pixels + Bytes({1, 0x10, 0, 1})));
        ASSERT_EQ(colors.size(), 10u);
        EXPECT_EQ(std::ranges::count(colors, Blue), count);
        EXPECT_EQ(colors[static_cast<std::size_t>(count)], White) << count;
    }
    const auto longest = Colors(RleFile(8, 256, 1, Bytes({0, 255}) + std::string(256, '\3') + Bytes({1, 1, 0, 1})));
    EXPECT_EQ(std::ranges::count(longest, Blue), 255);
    EXPECT_EQ(longest.back(), White);
}

TEST_F(BmpRows, PaletteIsWrittenWholeWithReservedBytesOfZero) {
    const auto bitmap = *Bitmap::Create({.width = 9,
                                         .height = 2,
                                         .format = PixelFormat::Indexed1,
                                         .palette = {MakeColor(1, 2, 3)},
                                         .resolution = {100, 200}});
    bitmap->Row(0)[1] = 0x80;
    // Fourteen bytes, forty, two entries, two rows of four bytes with the bottom one first.
    EXPECT_EQ(Written(*bitmap),
              "BM" + Number32(70) + Number32(0) + Number32(62) +                                            //
                  Number32(40) + Number32(9) + Number32(2) + Number16(1) + Number16(1) +                    //
                  Number32(0) + Number32(8) + Number32(3937) + Number32(7874) + Number32(2) + Number32(0) + //
                  Bytes({3, 2, 1, 0, 0, 0, 0, 0}) + Bytes({0, 0, 0, 0}) + Bytes({0, 0x80, 0, 0}));
}

TEST_F(BmpRows, TrueColorIsWrittenBottomRowFirst) {
    const auto bitmap = MakePictureOf(1, 2, [](auto, auto y) { return MakeColor(1, 2, y == 0 ? 3 : 4, 255); });
    EXPECT_EQ(Written(*ConvertedTo(bitmap, PixelFormat::Rgb24)),
              "BM" + Number32(62) + Number32(0) + Number32(54) +                                            //
                  Number32(40) + Number32(1) + Number32(2) + Number16(1) + Number16(24) +                   //
                  Number32(0) + Number32(8) + Number32(3780) + Number32(3780) + Number32(0) + Number32(0) + //
                  Bytes({4, 2, 1, 0}) + Bytes({3, 2, 1, 0}));
}

TEST_F(BmpRows, HalfClearPaletteEntriesAreLaidOverWhite) {
    const auto bitmap = *Bitmap::Create(
        {.width = 1, .height = 1, .format = PixelFormat::Indexed8, .palette = {MakeColor(0, 100, 200, 128)}});
    EXPECT_EQ(Written(*bitmap).substr(54, 8), Bytes({227, 177, 127, 0}) + Bytes({0, 0, 0, 0}));
}

TEST_F(BmpRows, GreatestResolutionThatAFileCanHoldIsKept) {
    PictureInfo info{.width = 1, .height = 1, .format = PixelFormat::Rgb24, .resolution = {1e9, 54545453}};
    EXPECT_EQ(Written(**Bitmap::Create(info)).substr(38, 8), Number32(0x7FFFFFFF) + Number32(2147458780));
}

// A picture of which only the size is known.
class UnreadablePicture : public PixelSource {
  public:
    explicit UnreadablePicture(PictureInfo info) : info_(std::move(info)) {}

    const PictureInfo& Info() const override { return info_; }
    Result<std::unique_ptr<RowReader>> OpenRows() const override { return Status::Aborted; }

  private:
    PictureInfo info_;
};

TEST_F(BmpRows, FileThatItsOwnLengthCannotTellIsNotWritten) {
    // A row takes 196,608 bytes; 21,845 of them and the header stay below four gigabytes.
    const auto statusOf = [&](std::uint32_t height) {
        return WritePicture(BmpCodec(),
                            UnreadablePicture({.width = 65535, .height = height, .format = PixelFormat::Rgb24}),
                            folder_ / "huge.bmp");
    };
    EXPECT_EQ(statusOf(21845), Status::Aborted);
    EXPECT_EQ(statusOf(21846), Status::ValueOverflow);
}

} // namespace
