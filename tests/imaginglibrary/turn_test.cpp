// Turns, mirrors and parts of pictures in every pixel format.
#include "imaginglibrary/operations/turn.h"

#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/operations/crop.h"
#include "tests/support/codecs.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace imaginglibrary;
using namespace tests;

constexpr PixelFormat TurnedFormats[] = {PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Indexed8,
                                         PixelFormat::Rgb555,   PixelFormat::Rgb24,    PixelFormat::Argb32,
                                         PixelFormat::Rgb48};

// Applies the meaning of a code one quarter turn after the other, then the mirror.
std::vector<Color> TurnedByHand(std::vector<Color> colors, std::uint32_t width, std::uint32_t height, unsigned code) {
    for (unsigned i = 0; i < (code & 3); ++i) {
        std::vector<Color> turned(colors.size());
        for (std::uint32_t y = 0; y < height; ++y) {
            for (std::uint32_t x = 0; x < width; ++x) {
                turned[x * height + (height - 1 - y)] = colors[y * width + x];
            }
        }
        colors = std::move(turned);
        std::swap(width, height);
    }
    for (std::uint32_t y = 0; (code & 4) != 0 && y < height; ++y) {
        std::reverse(colors.begin() + y * width, colors.begin() + (y + 1) * width);
    }
    return colors;
}

TEST(Turn, EveryCodeMovesEveryPixelInEveryFormat) {
    for (const PixelFormat format : TurnedFormats) {
        for (unsigned code = 0; code < TurnCodes; ++code) {
            const auto picture = MakePicture(format, 37, 70);
            const auto turned = Turned(picture, code);
            ASSERT_TRUE(turned.Ok());
            EXPECT_EQ((*turned)->Info().width, code % 2 == 0 ? 37u : 70u);
            EXPECT_EQ((*turned)->Info().format, format);
            EXPECT_EQ(ColorsOf(**turned), TurnedByHand(ColorsOf(*picture), 37, 70, code))
                << "code " << code << ", format " << static_cast<unsigned>(format);
        }
    }
}

// Another picture's rows, from the top only, as most files have them; counts how often they are opened.
class FromTopOnly : public PixelSource {
  public:
    explicit FromTopOnly(std::shared_ptr<const PixelSource> picture) : picture_(std::move(picture)) {}

    const PictureInfo& Info() const override { return picture_->Info(); }

    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        ++opened_;
        return picture_->OpenRows();
    }

    int Opened() const { return opened_; }

  private:
    std::shared_ptr<const PixelSource> picture_;
    mutable int opened_ = 0;
};

TEST(Turn, PictureWithRowsFromTheTopOnlyTurnsAlike) {
    for (const PixelFormat format : TurnedFormats) {
        for (unsigned code = 0; code < TurnCodes; ++code) {
            const auto picture = MakePicture(format, 37, 70);
            const auto turned = Turned(std::make_shared<FromTopOnly>(picture), code);
            ASSERT_TRUE(turned.Ok());
            EXPECT_EQ(ColorsOf(**turned), TurnedByHand(ColorsOf(*picture), 37, 70, code))
                << "code " << code << ", format " << static_cast<unsigned>(format);
            ExpectIndependentReaders(**turned);
        }
    }
}

TEST(Turn, TurnsFollowOneAnother) {
    const auto picture = MakePicture(PixelFormat::Rgb24, 5, 3);
    for (unsigned first = 0; first < TurnCodes; ++first) {
        for (unsigned second = 0; second < TurnCodes; ++second) {
            const auto once = Turned(picture, first);
            const auto twice = Turned(*once, second);
            const PictureInfo& info = (*once)->Info();
            EXPECT_EQ(ColorsOf(**twice), TurnedByHand(ColorsOf(**once), info.width, info.height, second))
                << first << ", then " << second;
        }
    }
}

TEST(Turn, TurnBackIsThePictureItself) {
    const std::shared_ptr<const PixelSource> picture = MakePicture(PixelFormat::Rgb24, 5, 3);
    EXPECT_EQ(*Turned(*Turned(picture, 1), 3), picture);
    EXPECT_EQ(*Turned(*Turned(picture, 5), 5), picture);
}

TEST(Turn, NothingIsReadBeforeRowsAreAskedForAndThenOnceWhereItIsKept) {
    for (unsigned code = 1; code < TurnCodes; ++code) {
        const auto picture = std::make_shared<FromTopOnly>(MakePicture(PixelFormat::Rgb24, 5, 3));
        const auto turned = Turned(picture, code);
        EXPECT_EQ(picture->Opened(), 0);
        EXPECT_EQ(ReadAllRows(**turned), Status::Ok);
        EXPECT_EQ(ReadAllRows(**turned), Status::Ok);
        EXPECT_EQ(picture->Opened(), code == Mirror ? 2 : 1);
    }
}

TEST(Turn, OnlyWhatMustBeHeldIsBoundByTheMemoryLimit) {
    const PictureInfo info{.width = 65000, .height = 65000, .format = PixelFormat::Rgb24};
    class Huge : public PixelSource {
      public:
        Huge(PictureInfo info, bool hasRowsFromBottom) : info_(std::move(info)), hasBoth_(hasRowsFromBottom) {}
        const PictureInfo& Info() const override { return info_; }
        Result<std::unique_ptr<RowReader>> OpenRows() const override { return Status::ObjectBusy; }
        bool HasRowsFromBottom() const override { return hasBoth_; }

      private:
        PictureInfo info_;
        bool hasBoth_;
    };
    for (unsigned code = 1; code < TurnCodes; ++code) {
        const bool isInRows = code == 2 || code == 4 || code == 6;
        EXPECT_EQ(Turned(std::make_shared<Huge>(info, true), code).GetStatus(),
                  isInRows ? Status::Ok : Status::OutOfMemory)
            << code;
        EXPECT_EQ(Turned(std::make_shared<Huge>(info, false), code).GetStatus(),
                  code == 4 ? Status::Ok : Status::OutOfMemory)
            << code;
    }
}

TEST(Turn, PictureThatCannotBeReadSaysSoWhenItIsAskedFor) {
    class Unreadable : public PixelSource {
      public:
        const PictureInfo& Info() const override { return info_; }
        Result<std::unique_ptr<RowReader>> OpenRows() const override { return Status::ObjectBusy; }

      private:
        PictureInfo info_{.width = 3, .height = 3, .format = PixelFormat::Rgb24};
    };
    for (unsigned code = 1; code < TurnCodes; ++code) {
        const auto turned = Turned(std::make_shared<Unreadable>(), code);
        ASSERT_TRUE(turned.Ok());
        EXPECT_EQ((*turned)->OpenRows().GetStatus(), Status::ObjectBusy);
    }
}

// The rows from the bottom up, which must be those from the top in the other order.
void ExpectRowsFromBothEnds(const PixelSource& picture) {
    ASSERT_TRUE(picture.HasRowsFromBottom());
    const PictureInfo& info = picture.Info();
    const std::size_t rowBytes = BytesPerRow(info.format, info.width);
    std::vector<std::vector<std::uint8_t>> down(info.height, std::vector<std::uint8_t>(rowBytes));
    auto up = down;
    auto fromTop = picture.OpenRows();
    auto fromBottom = picture.OpenRowsFromBottom();
    ASSERT_TRUE(fromTop.Ok() && fromBottom.Ok());
    for (std::uint32_t y = 0; y < info.height; ++y) {
        ASSERT_EQ((*fromTop)->ReadRow(down[y].data()), Status::Ok);
        ASSERT_EQ((*fromBottom)->ReadRow(up[info.height - 1 - y].data()), Status::Ok);
    }
    EXPECT_EQ(up, down);
}

TEST(Turn, RowsComeFromBothEndsWhereTheyCan) {
    const auto picture = MakePicture(PixelFormat::Argb32, 9, 300);
    ExpectRowsFromBothEnds(*picture);
    ExpectRowsFromBothEnds(*CroppedTo(picture, {2, 3, 8, 280}));
    ExpectRowsFromBothEnds(*ConvertedTo(picture, PixelFormat::Rgb24));
    for (unsigned code = 1; code < TurnCodes; ++code) {
        ExpectRowsFromBothEnds(**Turned(picture, code));
    }
    ExpectRowsFromBothEnds(*Rewritten(BmpCodec(), *MakePicture(PixelFormat::Rgb24, 200, 300)));
    ExpectRowsFromBothEnds(*Rewritten(BmpCodec(), *MakePicture(PixelFormat::Indexed4, 7, 5)));
    EXPECT_FALSE(Rewritten(PngCodec(), *picture)->HasRowsFromBottom());
}

TEST(Turn, ResolutionsTurnAlong) {
    auto bitmap = Bitmap::Create({.width = 2, .height = 3, .format = PixelFormat::Rgb24, .resolution = {300, 150}});
    EXPECT_EQ((*Turned(*bitmap, 1))->Info().resolution.horizontal, 150);
    EXPECT_EQ((*Turned(*bitmap, 2))->Info().resolution.horizontal, 300);
}

TEST(Crop, PartsHoldTheirPixelsInEveryFormat) {
    for (const PixelFormat format : TurnedFormats) {
        const auto picture = MakePicture(format, 21, 13);
        const auto all = ColorsOf(*picture);
        for (std::int64_t left = 0; left < 10; ++left) {
            const auto part = CroppedTo(picture, {left, 3, left + 9, 11});
            std::vector<Color> expected;
            for (std::int64_t y = 3; y < 11; ++y) {
                expected.insert(expected.end(), all.begin() + y * 21 + left, all.begin() + y * 21 + left + 9);
            }
            EXPECT_EQ(ColorsOf(*part), expected) << "from " << left << ", format " << static_cast<unsigned>(format);
        }
    }
}

TEST(Crop, ReadersAreIndependent) {
    ExpectIndependentReaders(*CroppedTo(MakePicture(PixelFormat::Rgb24, 20, 20), {3, 4, 17, 18}));
}

} // namespace
