// Palettes chosen for pictures, and how near the picture stays to itself.
#include "imaginglibrary/operations/quantizer.h"

#include "imaginglibrary/operations/colorhistogram.h"
#include "imaginglibrary/operations/nearestcolor.h"
#include "imaginglibrary/operations/palettechoice.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>

namespace {

using namespace imaginglibrary;
using namespace tests;

std::uint8_t Byte(double value) { return static_cast<std::uint8_t>(std::clamp(value, 0.0, 255.0)); }

// One pixel per colour, `count` of them, in rows of 16.
std::shared_ptr<Bitmap> MakePictureOfColors(std::uint32_t count) {
    const std::uint32_t height = (count + 15) / 16;
    return MakePictureOf(16, height, [&](auto x, auto y) {
        const std::uint32_t i = std::min(y * 16 + x, count - 1);
        return MakeColor(static_cast<std::uint8_t>(i * 7), static_cast<std::uint8_t>(i / 2),
                         static_cast<std::uint8_t>(255 - i % 251));
    });
}

// Soft light over hills of several hues, with some grain: what photographs have.
std::shared_ptr<Bitmap> MakePhoto() {
    std::mt19937 random(1);
    return MakePictureOf(320, 240, [&](auto column, auto row) {
        const double x = column / 320.0;
        const double y = row / 240.0;
        const double grain = static_cast<double>(random() % 9) - 4;
        const double hill = 0.55 + 0.15 * std::sin(x * 7) + 0.05 * std::sin(x * 23);
        if (y < hill) {
            return MakeColor(Byte(120 + 90 * y + grain), Byte(160 + 60 * y + grain), Byte(235 - 40 * x + grain));
        }
        const double shade = (y - hill) * 220;
        return MakeColor(Byte(40 + shade * x + grain), Byte(110 + 60 * std::sin(x * 40 + y * 31) + grain),
                         Byte(30 + shade * (1 - x) + grain));
    });
}

double QualityOf(const PixelSource& picture, unsigned entries = 256) {
    const auto reduced = ReducedToPalette(picture, entries);
    EXPECT_TRUE(reduced.Ok());
    return PeakSignalToNoise(ColorsOf(picture), ColorsOf(**reduced));
}

TEST(Quantizer, Keeps256ColorsExactly) {
    const auto picture = MakePictureOfColors(256);
    const auto reduced = ReducedToPalette(*picture);
    ASSERT_TRUE(reduced.Ok());
    EXPECT_EQ((*reduced)->Info().format, PixelFormat::Indexed8);
    EXPECT_EQ((*reduced)->Info().palette.size(), 256u);
    EXPECT_EQ(ColorsOf(**reduced), ColorsOf(*picture));
}

TEST(Quantizer, BringsMoreColorsDownTo256) {
    const auto picture = MakePictureOfColors(257);
    const auto reduced = ReducedToPalette(*picture);
    ASSERT_TRUE(reduced.Ok());
    EXPECT_LE((*reduced)->Info().palette.size(), 256u);
    EXPECT_GT(PeakSignalToNoise(ColorsOf(*picture), ColorsOf(**reduced)), 63);
}

TEST(Quantizer, HolesTakeOneOfTheEntries) {
    const auto exact = MakePictureOf(
        256, 1, [](auto x, auto) { return x == 0 ? 0x00ABCDEFu : MakeColor(static_cast<std::uint8_t>(x), 0, 0); });
    const auto reduced = ReducedToPalette(*exact);
    ASSERT_TRUE(reduced.Ok());
    EXPECT_EQ((*reduced)->Info().palette.size(), 256u);
    EXPECT_EQ((*reduced)->Info().palette.back(), 0x00ABCDEFu);
    EXPECT_EQ(ColorsOf(**reduced), ColorsOf(*exact));
}

TEST(Quantizer, AsksForNoMoreEntriesThanAllowed) {
    const auto reduced = ReducedToPalette(*MakePhoto(), 16);
    ASSERT_TRUE(reduced.Ok());
    EXPECT_LE((*reduced)->Info().palette.size(), 16u);
}

TEST(Quantizer, PartialAlphaGoesOverWhiteFromTheMiddleOn) {
    const auto picture = MakePictureOf(2, 1, [](auto x, auto) { return x == 0 ? 0x7F000000u : 0x80000000u; });
    const auto reduced = ReducedToPalette(*picture);
    ASSERT_TRUE(reduced.Ok());
    EXPECT_EQ(ColorsOf(**reduced), (Palette{0x00000000, 0xFF7F7F7F}));
}

// The bars are close below what is reached.
TEST(Quantizer, PhotoStaysCloseToItself) {
    const auto photo = MakePhoto();
    const std::pair<unsigned, double> bars[] = {{256, 36.7}, {128, 34.65}, {64, 32.2}, {16, 28.1}, {4, 23.85}};
    for (const auto& [entries, bar] : bars) {
        EXPECT_GT(QualityOf(*photo, entries), bar) << entries;
    }
}

TEST(Quantizer, FineShadesOfOneHueStayApart) {
    const auto sepia = MakePictureOf(1000, 40, [](auto x, auto y) {
        const double light = (x + y * 0.5) / 1020;
        return MakeColor(Byte(60 + 180 * light), Byte(40 + 170 * light), Byte(20 + 140 * light));
    });
    EXPECT_GT(QualityOf(*sepia), 56.1);
}

// Eight greys must make all shades between them, seen from a distance.
TEST(Quantizer, DiffusionKeepsTheMeanOfSmallAreas) {
    constexpr std::uint32_t Side = 16;
    const auto gradient = MakePictureOf(512, Side, [](auto x, auto) {
        const auto grey = static_cast<std::uint8_t>(x / 2);
        return MakeColor(grey, grey, grey);
    });
    const auto reduced = ReducedToPalette(*gradient, 8);
    ASSERT_TRUE(reduced.Ok());
    const auto before = ColorsOf(*gradient);
    const auto after = ColorsOf(**reduced);
    for (std::uint32_t left = 48; left < 464; left += Side) {
        int difference = 0;
        for (std::uint32_t i = 0; i < Side * Side; ++i) {
            const std::size_t at = i / Side * 512 + left + i % Side;
            difference += GreenOf(after[at]) - GreenOf(before[at]);
        }
        EXPECT_LT(std::abs(difference / static_cast<double>(Side * Side)), 2) << left;
    }
}

// Grey rows of which only as many may be read as there are.
class FinitePicture : public PixelSource {
  public:
    explicit FinitePicture(std::uint32_t height)
        : info_{.width = 300, .height = height, .format = PixelFormat::Rgb24, .palette = {}, .resolution = {}} {}

    const PictureInfo& Info() const override { return info_; }
    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        return std::unique_ptr<RowReader>(std::make_unique<Rows>(info_.height));
    }

  private:
    class Rows : public RowReader {
      public:
        explicit Rows(std::uint32_t height) : left_(height) {}

        Status ReadRow(std::uint8_t* row) override {
            if (left_ == 0) {
                return Status::Win32Error;
            }
            for (std::uint32_t i = 0; i < 900; ++i) {
                row[i] = static_cast<std::uint8_t>(i + 30 * left_);
            }
            --left_;
            return Status::Ok;
        }

      private:
        std::uint32_t left_;
    };

    PictureInfo info_;
};

TEST(Quantizer, NothingIsReadBehindTheLastRow) {
    for (const std::uint32_t height : {1u, 2u, 3u, 8u}) {
        const FinitePicture picture(height);
        const auto reduced = ReducedToPalette(picture);
        ASSERT_TRUE(reduced.Ok());
        EXPECT_GT(PeakSignalToNoise(ColorsOf(picture), ColorsOf(**reduced)), 25) << height;
    }
}

TEST(Quantizer, ReadersOfOneResultAgree) {
    const auto photo = MakePhoto();
    const auto reduced = ReducedToPalette(*photo);
    ASSERT_TRUE(reduced.Ok());
    EXPECT_EQ(ColorsOf(**reduced), ColorsOf(**reduced));
}

// Of every three pixels beside each other one is looked at where the picture has this size and so many colours.
constexpr std::uint32_t SampledWidth = 2048;
constexpr std::uint32_t SampledHeight = 1024;

TEST(Quantizer, SamplesOfALargePictureShowAllItsColumns) {
    std::mt19937 random(3);
    const auto striped = MakePictureOf(SampledWidth, SampledHeight, [&](auto x, auto y) {
        if (y < 2) {
            return 0xFF000000 | (x << 4);
        }
        const auto strong = static_cast<std::uint8_t>(160 + random() % 64);
        const auto weak = static_cast<std::uint8_t>(random() % 32);
        return x % 3 == 0   ? MakeColor(strong, weak, 0)
               : x % 3 == 1 ? MakeColor(0, strong, weak)
                            : MakeColor(weak, 0, strong);
    });
    EXPECT_GT(QualityOf(*striped), 44.2);
}

TEST(Quantizer, ColorsOfSinglePixelsInALargePictureAreExact) {
    const auto picture = MakePictureOf(SampledWidth, SampledHeight, [](auto x, auto y) {
        const bool isSingle = y >= SampledHeight - 8 && x < 255 && x % 8 == y % 8;
        return isSingle ? MakeColor(static_cast<std::uint8_t>(x), 200, 100) : 0xFF0000FF;
    });
    const auto reduced = ReducedToPalette(*picture);
    ASSERT_TRUE(reduced.Ok());
    EXPECT_EQ((*reduced)->Info().palette.size(), 256u);
    EXPECT_EQ(ColorsOf(**reduced), ColorsOf(*picture));
}

// Dark above in few colours, all of whose pixels are counted, and light below in many. Beside the hole there is room
// for one colour: the mean.
TEST(Quantizer, SampledPixelsStandForThoseLeftOut) {
    const auto picture = MakePictureOf(SampledWidth, SampledHeight, [](auto x, auto y) {
        if (x == 0 && y == 0) {
            return 0u;
        }
        const auto fine = static_cast<std::uint8_t>(x % 64);
        return y < SampledHeight / 2 ? MakeColor(10, 10, 10) : MakeColor(210, 210, 178 + fine) ^ (y % 64 << 16);
    });
    const auto reduced = ReducedToPalette(*picture, 2);
    ASSERT_TRUE(reduced.Ok());
    ASSERT_EQ((*reduced)->Info().palette.size(), 2u);
    const Color mean = (*reduced)->Info().palette.front();
    EXPECT_NEAR(GreenOf(mean), 110, 2);
    EXPECT_NEAR(BlueOf(mean), (10 + 209.5) / 2, 2);
}

TEST(Quantizer, HoleOfASinglePixelInALargePictureIsFound) {
    const auto picture = MakePictureOf(SampledWidth, SampledHeight, [](auto x, auto y) {
        if (y == SampledHeight - 1 && x >= 100 && x < 103) {
            return 0x00123400 | (x - 100);
        }
        return 0xFF000000 | (x << 3) | (y >> 7);
    });
    const auto reduced = ReducedToPalette(*picture);
    ASSERT_TRUE(reduced.Ok());
    EXPECT_EQ((*reduced)->Info().palette.back(), 0x00123400u);
}

// Three strong colours beside each other, so that a sample would miss two.
TEST(Quantizer, AThousandColorsAreAllCounted) {
    const auto picture = MakePictureOf(SampledWidth, SampledHeight, [](auto x, auto y) {
        if (y == SampledHeight - 1 && x >= 700 && x < 703) {
            return x == 700 ? 0xFFFF0000 : x == 701 ? 0xFF00FF00 : 0xFFFFFF00;
        }
        return 0xFF300000 | (x % 32) << 8 | (y * 31 / SampledHeight);
    });
    const auto reduced = ReducedToPalette(*picture);
    ASSERT_TRUE(reduced.Ok());
    const Palette& palette = (*reduced)->Info().palette;
    for (const Color color : {0xFFFF0000, 0xFF00FF00, 0xFFFFFF00}) {
        EXPECT_NE(std::find(palette.begin(), palette.end(), color), palette.end()) << std::hex << color;
    }
}

TEST(ColorHistogram, PixelMayStandForSeveral) {
    ColorHistogram histogram;
    histogram.Add(0xFF102030, 3);
    histogram.Add(0xFF102030);
    ASSERT_EQ(histogram.Size(), 1u);
    const ColorCell cell = histogram.Cells().front();
    EXPECT_EQ(cell.pixels, 4u);
    EXPECT_EQ(cell.red, 4u * 0x10);
    EXPECT_EQ(cell.green, 4u * 0x20);
    EXPECT_EQ(cell.blue, 4u * 0x30);
}

TEST(ColorHistogram, MergesOnlyWhenThereAreTooManyColors) {
    ColorHistogram histogram;
    for (std::uint32_t i = 0; i < 65536; ++i) {
        histogram.Add(0xFF000000 | i);
    }
    EXPECT_TRUE(histogram.IsExact());
    EXPECT_EQ(histogram.Size(), 65536u);
    histogram.Add(0xFFFFFFFF);
    EXPECT_FALSE(histogram.IsExact());
    EXPECT_EQ(histogram.Size(), 128u * 128 + 1);
}

TEST(ColorHistogram, LosesNoPixelOfAnyNumberOfColors) {
    ColorHistogram histogram;
    std::uint64_t red = 0, green = 0, blue = 0;
    for (std::uint32_t i = 0; i < 1000000; ++i) {
        const Color color = i * 2654435761u;
        red += RedOf(color);
        green += GreenOf(color);
        blue += BlueOf(color);
        histogram.Add(color);
    }
    EXPECT_LE(histogram.Size(), 65536u);
    ColorCell all;
    for (const ColorCell& cell : histogram.Cells()) {
        all.pixels += cell.pixels;
        all.red += cell.red;
        all.green += cell.green;
        all.blue += cell.blue;
    }
    EXPECT_EQ(all.pixels, 1000000u);
    EXPECT_EQ(all.red, red);
    EXPECT_EQ(all.green, green);
    EXPECT_EQ(all.blue, blue);
}

TEST(PaletteChoice, UsesAllEntriesWhereTheyHelp) {
    ColorHistogram histogram;
    for (std::uint32_t i = 0; i < 4096; ++i) {
        histogram.Add(MakeColor(static_cast<std::uint8_t>(i % 16 * 17), static_cast<std::uint8_t>(i / 16 % 16 * 17),
                                static_cast<std::uint8_t>(i / 256 * 17)));
    }
    const Palette palette = ChoosePalette(histogram.Cells(), 256);
    EXPECT_EQ(std::set<Color>(palette.begin(), palette.end()).size(), 256u);
}

std::size_t NearestByComparingAll(const Palette& palette, Color color) {
    const auto distance = [&](Color entry) {
        const auto square = [](int value) { return value * value; };
        return square(RedOf(entry) - RedOf(color)) + square(GreenOf(entry) - GreenOf(color)) +
               square(BlueOf(entry) - BlueOf(color));
    };
    const auto nearest =
        std::min_element(palette.begin(), palette.end(), [&](Color a, Color b) { return distance(a) < distance(b); });
    return static_cast<std::size_t>(nearest - palette.begin());
}

TEST(NearestColor, FindsWhatComparingAllFinds) {
    std::mt19937 random(7);
    for (const std::size_t count : {1u, 2u, 17u, 256u}) {
        Palette palette;
        for (std::size_t i = 0; i < count; ++i) {
            palette.push_back(0xFF000000 | (random() & 0xFFFFFF));
        }
        NearestColor nearest(palette);
        for (int i = 0; i < 20000; ++i) {
            const Color color = random() & 0xFFFFFF;
            ASSERT_EQ(nearest.Find(RedOf(color), GreenOf(color), BlueOf(color)), NearestByComparingAll(palette, color));
        }
    }
}

// Of every few colours that lie together many are equally far from several entries.
TEST(NearestColor, FindsTheFirstOfEntriesThatLieCloseTogether) {
    std::mt19937 random(8);
    Palette palette;
    for (int i = 0; i < 256; ++i) {
        palette.push_back(0xFF000000 | ((random() & 0x0F0F0F) + 0x48F000));
    }
    NearestColor nearest(palette);
    for (int i = 0; i < 30000; ++i) {
        const Color color = (random() & 0x1F0F1F) + 0x40F000;
        ASSERT_EQ(nearest.Find(RedOf(color), GreenOf(color), BlueOf(color)), NearestByComparingAll(palette, color));
    }
}

} // namespace
