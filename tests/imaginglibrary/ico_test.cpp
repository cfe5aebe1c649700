// Icons: which picture of the file is shown, and how its mask becomes alpha.
#include "imaginglibrary/core/bytes.h"
#include "tests/support/codecs.h"
#include "tests/support/pictures.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

std::string Number(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) {
        text.push_back(static_cast<char>(i < 8 ? value >> (8 * i) : 0));
    }
    return text;
}

struct IconEntry {
    unsigned width;
    unsigned height;
    unsigned bits;
    std::string data;
};

std::string IconFile(const std::vector<IconEntry>& entries) {
    std::string directory = Number(0, 2) + Number(1, 2) + Number(static_cast<std::uint32_t>(entries.size()), 2);
    std::string data;
    for (const IconEntry& entry : entries) {
        directory += Number(entry.width, 1) + Number(entry.height, 1) + Number(0, 2) + Number(1, 2) +
                     Number(entry.bits, 2) + Number(static_cast<std::uint32_t>(entry.data.size()), 4) +
                     Number(static_cast<std::uint32_t>(6 + 16 * entries.size() + data.size()), 4);
        data += entry.data;
    }
    return directory + data;
}

std::string DibHeader(unsigned width, unsigned height, unsigned bits) {
    return Number(40, 4) + Number(width, 4) + Number(2 * height, 4) + Number(1, 2) + Number(bits, 2) + Number(0, 24);
}

// A 2 by 1 icon of 32 bits with the given pixels (alpha in front), and a mask byte whose first bits belong to them.
std::string DeepIcon(Color left, Color right, unsigned mask) {
    return DibHeader(2, 1, 32) + Number(left, 4) + Number(right, 4) + Number(mask, 4);
}

class Ico : public testing::Test {
  protected:
    // A file of its own each time, for the one before may still be open.
    Result<std::unique_ptr<Decoder>> Open(const std::string& bytes) {
        const auto file = folder_ / (std::to_string(++filesMade_) + ".ico");
        WriteBytes(file, bytes);
        return OpenPicture(file);
    }

    TemporaryFolder folder_;
    int filesMade_ = 0;
};

TEST_F(Ico, AlphaOfDeepPixelsIsUsed) {
    const auto icon = Open(IconFile({{2, 1, 32, DeepIcon(0x80102030, 0xFF405060, 0)}}));
    ASSERT_TRUE(icon.Ok());
    EXPECT_EQ((*icon)->Info().format, PixelFormat::Argb32);
    EXPECT_EQ(ColorsOf(**icon), (std::vector<Color>{0x80102030, 0xFF405060}));
}

TEST_F(Ico, MaskCountsWhereAlphaIsZeroThroughout) {
    const auto icon = Open(IconFile({{2, 1, 32, DeepIcon(0x00102030, 0x00405060, 0x40)}}));
    ASSERT_TRUE(icon.Ok());
    EXPECT_EQ(ColorsOf(**icon), (std::vector<Color>{0xFF102030, 0x00405060}));
    const auto other = Open(IconFile({{2, 1, 32, DeepIcon(0x00102030, 0x00405060, 0x80)}}));
    ASSERT_TRUE(other.Ok());
    EXPECT_EQ(ColorsOf(**other), (std::vector<Color>{0x00102030, 0xFF405060}));
}

TEST_F(Ico, MaskMakesHolesInAPalettePicture) {
    const std::string data = DibHeader(2, 2, 1) + Number(0x000000FF, 4) + Number(0x00FF0000, 4) + // palette
                             Number(0x40, 4) + Number(0x80, 4) +                                  // bottom row first
                             Number(0x00, 4) + Number(0x40, 4);                                   // mask
    const auto icon = Open(IconFile({{2, 2, 1, data}}));
    ASSERT_TRUE(icon.Ok());
    EXPECT_EQ((*icon)->Info().height, 2u);
    EXPECT_EQ(ColorsOf(**icon), (std::vector<Color>{0xFFFF0000, 0x000000FF, 0xFF0000FF, 0xFFFF0000}));
}

TEST_F(Ico, LargestPictureIsShownAndTheDeepestOfItsSize) {
    const std::string small = DibHeader(1, 1, 32) + Number(0xFF111111, 4) + Number(0, 4);
    const auto icon = Open(IconFile({{1, 1, 32, small},
                                     {2, 1, 8, DibHeader(2, 1, 8)},
                                     {2, 1, 32, DeepIcon(0xFF222222, 0xFF333333, 0)},
                                     {1, 1, 32, small}}));
    ASSERT_TRUE(icon.Ok());
    EXPECT_EQ(ColorsOf(**icon), (std::vector<Color>{0xFF222222, 0xFF333333}));
}

TEST_F(Ico, SizeZeroInTheDirectoryMeans256) {
    const auto icon = Open(IconFile({{255, 255, 32, "junk"}, {0, 0, 32, DeepIcon(0xFF222222, 0xFF333333, 0)}}));
    ASSERT_TRUE(icon.Ok());
    EXPECT_EQ((*icon)->Info().width, 2u) << "the picture's own header counts";
}

TEST_F(Ico, PngInsideIsShownAsTrueColor) {
    const auto picture = MakePicture(PixelFormat::Rgb24, 5, 3);
    ASSERT_EQ(WritePicture(PngCodec(), *picture, folder_ / "inner.png"), Status::Ok);
    const auto icon = Open(IconFile({{5, 3, 32, ReadBytes(folder_ / "inner.png")}}));
    ASSERT_TRUE(icon.Ok());
    EXPECT_EQ((*icon)->Info().format, PixelFormat::Argb32);
    EXPECT_EQ(ColorsOf(**icon), ColorsOf(*picture));
}

TEST_F(Ico, AreaCountsBeforeDepthAndTheFirstOfEqualsWins) {
    const std::string wide =
        DibHeader(3, 1, 32) + Number(0xFF444444, 4) + Number(0xFF444444, 4) + Number(0xFF444444, 4) + Number(0, 4);
    const auto icon =
        Open(IconFile({{4, 1, 8, "junk"}, {3, 2, 8, wide}, {2, 3, 8, "junk"}, {5, 1, 32, "junk"}, {3, 2, 4, "junk"}}));
    ASSERT_TRUE(icon.Ok());
    EXPECT_EQ((*icon)->Info().width, 3u);
    EXPECT_EQ(ColorsOf(**icon), std::vector<Color>(3, 0xFF444444));
}

TEST_F(Ico, AlphaOfTheLastPixelAloneIsAlphaForAll) {
    const auto icon = Open(IconFile({{2, 1, 32, DeepIcon(0x00102030, 0x01405060, 0xC0)}}));
    ASSERT_TRUE(icon.Ok());
    EXPECT_EQ(ColorsOf(**icon), (std::vector<Color>{0x00102030, 0x01405060}));
}

TEST_F(Ico, AlphaOfOneRowIsAlphaForAll) {
    const std::string data =
        DibHeader(1, 2, 32) + Number(0x00102030, 4) + Number(0x80405060, 4) + Number(0x80, 4) + Number(0x80, 4);
    const auto icon = Open(IconFile({{1, 2, 32, data}}));
    ASSERT_TRUE(icon.Ok());
    EXPECT_EQ(ColorsOf(**icon), (std::vector<Color>{0x80405060, 0x00102030}));
}

TEST_F(Ico, MaskOfTrueColorLiesBehindItsPaddedRows) {
    // Three bytes a pixel, padded to eight a row; of the mask four bytes a row.
    const std::string data = DibHeader(2, 2, 24) + Number(0xAABBCC, 3) + Number(0x112233, 3) + Number(0, 2) +
                             Number(0x445566, 3) + Number(0x778899, 3) + Number(0, 2) + Number(0x40, 4) +
                             Number(0x80, 4);
    const auto icon = Open(IconFile({{2, 2, 24, data}}));
    ASSERT_TRUE(icon.Ok());
    EXPECT_EQ(ColorsOf(**icon), (std::vector<Color>{0x00445566, 0xFF778899, 0xFFAABBCC, 0x00112233}));
}

TEST_F(Ico, IconWithoutItsMaskIsOpaque) {
    const std::string data = DibHeader(1, 1, 24) + Number(0x445566, 4);
    const auto icon = Open(IconFile({{1, 1, 24, data}}));
    ASSERT_TRUE(icon.Ok());
    EXPECT_EQ(ColorsOf(**icon), std::vector<Color>{0xFF445566});
}

TEST_F(Ico, HalfOfTheRowsOfTheHeaderAreThePicture) {
    const auto withRows = [&](unsigned rows) {
        std::string data = DibHeader(1, 1, 24) + Number(0x445566, 4) + Number(0, 4);
        data.replace(8, 4, Number(rows, 4));
        return Open(IconFile({{1, 1, 24, data}}));
    };
    EXPECT_EQ(withRows(1).GetStatus(), UndecodableContent);
    EXPECT_EQ((*withRows(3))->Info().height, 1u);
}

TEST_F(Ico, CompressedRowsAreUndecodable) {
    for (const auto& [bits, compression] : {std::pair{8u, 1u}, {4u, 2u}}) {
        std::string data = DibHeader(1, 1, bits) + std::string(1100, '\0');
        data.replace(16, 4, Number(compression, 4));
        EXPECT_EQ(Open(IconFile({{1, 1, bits, data}})).GetStatus(), UndecodableContent);
    }
}

TEST_F(Ico, PngInsideEndsWhereTheDirectorySays) {
    ASSERT_EQ(WritePicture(PngCodec(), *MakePicture(PixelFormat::Rgb24, 5, 3), folder_ / "inner.png"), Status::Ok);
    const std::string whole = IconFile({{5, 3, 32, ReadBytes(folder_ / "inner.png")}});
    const auto icon = Open(whole);
    ASSERT_TRUE(icon.Ok());
    EXPECT_EQ((*icon)->Info().resolution.horizontal, 0) << "an icon has none";
    std::string shortened = whole;
    shortened.replace(6 + 8, 4, Number(40, 4));
    EXPECT_EQ(Open(shortened).GetStatus(), UndecodableContent);
    const auto upToFirstPixels = static_cast<std::uint32_t>(whole.find("IDAT") + 6 - whole.find("\x89PNG"));
    shortened.replace(6 + 8, 4, Number(upToFirstPixels, 4));
    const auto cut = Open(shortened);
    EXPECT_TRUE(!cut.Ok() || ReadAllRows(**cut) != Status::Ok);
}

TEST_F(Ico, EmptyDirectoryIsUndecodable) { EXPECT_EQ(Open(IconFile({})).GetStatus(), UndecodableContent); }

TEST_F(Ico, CutOffBeforeItsPixelsItGivesAStatus) {
    const std::string whole = IconFile({{2, 1, 32, DeepIcon(0x80102030, 0xFF405060, 0)}});
    for (std::size_t length = 0; length < whole.size() - 4; ++length) {
        const auto icon = Open(whole.substr(0, length));
        const Status status = icon.Ok() ? ReadAllRows(**icon) : icon.GetStatus();
        EXPECT_EQ(status, UndecodableContent) << "cut at " << length;
    }
}

TEST_F(Ico, CannotBeWritten) { EXPECT_EQ(IcoCodec().write, nullptr); }

} // namespace
