// Pictures prepared to be drawn many times: the sizes they are kept at, and what they are made of.
#include "imaginglibrary/operations/picturepyramid.h"

#include "tests/support/pictures.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

constexpr std::size_t Plenty = std::size_t{1} << 28;

std::shared_ptr<const PicturePyramid> PyramidOf(const PixelSource& picture, std::size_t mostBytes = Plenty) {
    const auto made = PicturePyramid::Make(picture, mostBytes);
    EXPECT_TRUE(made.Ok());
    return *made;
}

// Counts how often its rows are opened, and may fail at one of them.
class CountedPicture : public PixelSource {
  public:
    explicit CountedPicture(std::uint32_t failingRow = UINT32_MAX) : failingRow_(failingRow) {}

    const PictureInfo& Info() const override { return info_; }
    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        ++openings;
        return std::unique_ptr<RowReader>(std::make_unique<Rows>(failingRow_));
    }

    mutable int openings = 0;

  private:
    class Rows : public RowReader {
      public:
        explicit Rows(std::uint32_t failingRow) : failingRow_(failingRow) {}
        Status ReadRow(std::uint8_t* row) override {
            std::fill_n(row, 300, static_cast<std::uint8_t>(next_));
            return next_++ == failingRow_ ? UndecodableContent : Status::Ok;
        }

      private:
        std::uint32_t failingRow_;
        std::uint32_t next_ = 0;
    };

    PictureInfo info_{.width = 100, .height = 60, .format = PixelFormat::Rgb24};
    std::uint32_t failingRow_;
};

TEST(PicturePyramid, SidesShrinkByThirdsOfAHalving) {
    const auto pyramid = PyramidOf(*WhitePicture(640, 320));
    const auto& levels = pyramid->Levels();
    ASSERT_GT(levels.size(), 6u);
    const std::uint32_t widths[] = {640, 508, 403, 320, 254, 202, 160};
    const std::uint32_t heights[] = {320, 254, 202, 160, 127, 101, 80};
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_EQ(levels[i]->Width(), widths[i]);
        EXPECT_EQ(levels[i]->Height(), heights[i]);
    }
    EXPECT_EQ(levels.back()->Width(), 1u);
    EXPECT_EQ(levels.back()->Height(), 1u);
}

TEST(PicturePyramid, LevelsComeInThreesDownToASinglePixel) {
    const auto sizesOf = [](std::uint32_t width, std::uint32_t height) {
        const auto pyramid = PyramidOf(*WhitePicture(width, height));
        std::vector<std::uint32_t> sides;
        for (const auto& level : pyramid->Levels()) {
            sides.push_back(std::max(level->Width(), level->Height()));
        }
        return sides;
    };
    EXPECT_EQ(sizesOf(1, 1), (std::vector<std::uint32_t>{1}));
    EXPECT_EQ(sizesOf(2, 1), (std::vector<std::uint32_t>{2, 2, 1, 1}));
    EXPECT_EQ(sizesOf(1, 5), (std::vector<std::uint32_t>{5, 4, 3, 3, 2, 2, 1}));
    const auto pyramid = PyramidOf(*WhitePicture(5, 1));
    EXPECT_EQ(pyramid->Levels().size(), 7u);
    EXPECT_EQ(&pyramid->LevelFor(0), pyramid->Levels().back().get());
}

// Drawn 1.08 times as large as it is a level is still large enough, in either direction.
TEST(PicturePyramid, LevelIsDrawnALittleLargerThanItIs) {
    const auto wide = PyramidOf(*WhitePicture(1000, 10));
    EXPECT_EQ(wide->LevelFor(0.857).Width(), 794u); // 794 * 1.08 = 857.5
    EXPECT_EQ(wide->LevelFor(0.858).Width(), 1000u);
    const auto tall = PyramidOf(*WhitePicture(10, 1000));
    EXPECT_EQ(tall->LevelFor(0.857).Height(), 794u);
    EXPECT_EQ(tall->LevelFor(0.858).Height(), 1000u);
}

TEST(PicturePyramid, LevelIsTheSmallestThatLosesLittle) {
    const auto pyramid = PyramidOf(*WhitePicture(640, 320));
    const auto widthFor = [&](double scale) { return pyramid->LevelFor(scale).Width(); };
    EXPECT_EQ(widthFor(5), 640u);
    EXPECT_EQ(widthFor(1), 640u);
    EXPECT_EQ(widthFor(0.9), 640u);
    EXPECT_EQ(widthFor(0.8), 508u);
    EXPECT_EQ(widthFor(0.5), 320u);
    EXPECT_EQ(widthFor(0.25), 160u);
    EXPECT_EQ(widthFor(0), 1u);
}

TEST(PicturePyramid, LargestLevelIsThePictureWithItsBorderRepeated) {
    const auto picture = MakePicture(PixelFormat::Pargb32, 5, 3);
    const auto pyramid = PyramidOf(*picture);
    const PyramidLevel& level = *pyramid->Levels()[0];
    EXPECT_EQ(level.RowBytes(), (5u + 4) * 4);
    for (int y = -2; y < 5; ++y) {
        for (int x = -2; x < 7; ++x) {
            const std::uint8_t* const pixel = level.Padded() + static_cast<std::size_t>(y + 2) * level.RowBytes() +
                                              static_cast<std::size_t>(x + 2) * 4;
            const std::uint8_t* const expected =
                picture->Row(static_cast<std::uint32_t>(std::clamp(y, 0, 2))) + std::clamp(x, 0, 4) * 4;
            EXPECT_TRUE(std::equal(pixel, pixel + 4, expected)) << x << "," << y;
        }
    }
}

TEST(PicturePyramid, PictureIsReadOnce) {
    const CountedPicture picture;
    PyramidOf(picture);
    EXPECT_EQ(picture.openings, 1);
    PyramidOf(picture, 4000);
    EXPECT_EQ(picture.openings, 2);
}

TEST(PicturePyramid, UndecodablePictureGivesItsStatus) {
    EXPECT_EQ(PicturePyramid::Make(CountedPicture(59), Plenty).GetStatus(), UndecodableContent);
    EXPECT_EQ(PicturePyramid::Make(CountedPicture(59), 4000).GetStatus(), UndecodableContent);
}

TEST(PicturePyramid, TooLittleMemoryLeavesOutTheLargestForms) {
    const auto pyramid = PyramidOf(*MakePicture(PixelFormat::Rgb24, 400, 200), 100000);
    EXPECT_EQ(pyramid->Width(), 400u);
    EXPECT_EQ(pyramid->Height(), 200u);
    std::size_t bytes = 0;
    for (const auto& level : pyramid->Levels()) {
        bytes += std::size_t{4} * level->Width() * level->Height();
    }
    EXPECT_LE(bytes, 104000u);
    EXPECT_GE(bytes, 90000u);
    const PyramidLevel& largest = *pyramid->Levels()[0];
    EXPECT_NEAR(largest.Width() / 2.0, largest.Height(), 1);
    EXPECT_EQ(pyramid->LevelFor(1).Width(), largest.Width());
}

TEST(PicturePyramid, OpaqueIsWhatNeverLetsThrough) {
    EXPECT_TRUE(PyramidOf(*MakePicture(PixelFormat::Rgb24, 4, 4))->IsOpaque());
    EXPECT_TRUE(PyramidOf(*MakePicture(PixelFormat::Rgb32, 4, 4))->IsOpaque());
    EXPECT_FALSE(PyramidOf(*MakePicture(PixelFormat::Argb32, 4, 4))->IsOpaque());
}

TEST(PicturePyramid, EveryLevelHasTheAverage) {
    const auto stripes = MakePictureOf(64, 64, [](auto x, auto) { return x % 2 == 0 ? White : Black; });
    const auto pyramid = PyramidOf(*stripes);
    for (const auto& level : pyramid->Levels()) {
        double sum = 0;
        for (std::uint32_t x = 0; x < level->Width(); ++x) {
            sum += level->Row(level->Height() / 2)[x * 4];
        }
        EXPECT_NEAR(sum / level->Width(), 127.5, 6) << level->Width();
    }
}

} // namespace
