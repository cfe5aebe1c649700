// Pictures set upright, laid over a colour and stripped, over the fake imaging library, which has what the platform's
// has and nothing beyond it.
#include "imaging/convert.h"
#include "imaging/crop.h"
#include "imaging/datestamp.h"
#include "imaging/resize.h"
#include "imaging/rotate.h"
#include "imaging/thumbnail.h"
#include "imaging/upright.h"
#include "tests/imaging/fakemodule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

namespace {

using namespace lumbrix;

using namespace std::string_literals;

constexpr std::uint32_t OrientationTag = 274;

class Adjusting : public tests::WithFake {
  protected:
    void StoreOrientation(std::uint8_t value) {
        fake_.GiveProperties({{OrientationTag, PropertyTypeShort, std::string(1, static_cast<char>(value)) + '\0'}});
    }

    void ExpectNoCall(const std::string& function) const {
        for (const std::string& call : fake_.Calls()) {
            EXPECT_NE(call.substr(0, call.find(' ')), function);
        }
    }

    // That the calls come in this order, others between them.
    void ExpectInOrder(const std::vector<std::string>& expected) const {
        const auto calls = fake_.Calls();
        auto from = calls.begin();
        for (const std::string& call : expected) {
            from = std::find(from, calls.end(), call);
            ASSERT_NE(from, calls.end()) << call;
        }
    }

    static constexpr ImageHandle AnyImage = nullptr;
    const Wishes upright_{.turnsUpright = true};
};

TEST_F(Adjusting, EveryOrientationHasItsTurn) {
    constexpr std::int32_t Turns[] = {0, 4, 2, 6, 5, 1, 7, 3};
    for (std::uint8_t value = 1; value <= 8; ++value) {
        StoreOrientation(value);
        EXPECT_EQ(UprightTurn(AnyImage), Turns[value - 1]) << int{value};
    }
}

TEST_F(Adjusting, OtherValuesAndNoneHaveNoTurn) {
    EXPECT_EQ(UprightTurn(AnyImage), std::nullopt);
    for (const std::uint8_t value : {0, 9, 255}) {
        StoreOrientation(value);
        EXPECT_EQ(UprightTurn(AnyImage), std::nullopt) << int{value};
    }
    for (const auto& [type, value] : {std::pair{PropertyTypeShort, "\6"s},
                                      {PropertyTypeLong, "\6\0"s},
                                      {PropertyTypeLong, "\6\0\1\0"s},
                                      {PropertyTypeAscii, "6\0"s},
                                      {PropertyTypeShort, "\6\1"s}}) {
        fake_.GiveProperties({{OrientationTag, type, value}});
        EXPECT_EQ(UprightTurn(AnyImage), std::nullopt) << type;
    }
}

TEST_F(Adjusting, OrientationMayBeALongNumber) {
    fake_.GiveProperties({{OrientationTag, PropertyTypeLong, "\6\0\0\0"s}});
    EXPECT_EQ(UprightTurn(AnyImage), 1);
}

TEST_F(Adjusting, NothingIsTurnedUnlessThatIsWanted) {
    StoreOrientation(6);
    Convert({"a", "b", "image/bmp"}, {});
    Resize({"a", "b", "image/bmp", {.height = 10}}, {});
    MakeThumbnail({"a", "b", "image/bmp"}, 10, {});
    ExpectNoCall("GdipImageRotateFlip");
    ExpectNoCall("GdipRemovePropertyItem");
}

TEST_F(Adjusting, ConversionTurnsTheSourceAndTakesTheOrientationOut) {
    StoreOrientation(8);
    Convert({"a", "b", "image/bmp"}, upright_);
    ExpectInOrder({"GdipImageRotateFlip 11 3", "GdipRemovePropertyItem 11 274", "GdipSaveImageToFile 11"});
}

TEST_F(Adjusting, UprightPictureLosesItsOrientationOnly) {
    StoreOrientation(1);
    Convert({"a", "b", "image/bmp"}, upright_);
    ExpectNoCall("GdipImageRotateFlip");
    EXPECT_EQ(fake_.CountOf("GdipRemovePropertyItem 11 274"), 1u);
}

TEST_F(Adjusting, OrientationThatIsNoneStays) {
    StoreOrientation(9);
    Convert({"a", "b", "image/bmp"}, upright_);
    ExpectNoCall("GdipImageRotateFlip");
    ExpectNoCall("GdipRemovePropertyItem");
}

TEST_F(Adjusting, PictureOnItsSideIsResizedAsItLiesAndTurnedThen) {
    StoreOrientation(6); // 30 x 20 are 20 x 30 upright
    const Outcome outcome = Resize({"a", "b", "image/bmp", {.height = 15}}, upright_);
    EXPECT_EQ(outcome.result, (PixelSize{10, 15}));
    ExpectInOrder({"GdipCreateBitmapFromScan0 0 15 10 0 2.49857e+06",
                   "GdipDrawImageRectRectI 55 11 0 0 15 10 0 0 30 20 2", "GdipImageRotateFlip 33 1",
                   "GdipRemovePropertyItem 33 274", "GdipSaveImageToFile 33"});
}

TEST_F(Adjusting, PictureOnItsSideIsMadeSmallAsItLiesAndTurnedThen) {
    StoreOrientation(6);
    const Outcome outcome = MakeThumbnail({"a", "b", "image/bmp"}, 15, upright_);
    EXPECT_EQ(outcome.result, (PixelSize{10, 15}));
    EXPECT_EQ(fake_.LastThumbnail(), "15 by 10");
    ExpectInOrder({"GdipImageRotateFlip 22 1", "GdipSaveImageToFile 22"});
}

TEST_F(Adjusting, WidthIsThatOfTheTurnedPicture) {
    fake_.ReportSize(2, 5); // 5 x 2 upright
    StoreOrientation(6);
    EXPECT_EQ(Resize({"a", "b", "image/bmp", {.height = 1}}, upright_).result, (PixelSize{2, 1})); // 2.5
    EXPECT_EQ(Resize({"a", "b", "image/bmp", {.height = 3}}, upright_).result, (PixelSize{8, 3})); // 7.5
}

TEST_F(Adjusting, PictureThatIsNotShrunkIsTurnedAllTheSame) {
    StoreOrientation(5);
    const Wishes wishes{.onlyShrinks = true, .turnsUpright = true};
    const Outcome kept = Resize({"a", "b", "image/bmp", {.height = 30}}, wishes);
    EXPECT_EQ(kept.result, (PixelSize{20, 30}));
    ExpectNoCall("GdipCreateBitmapFromScan0");
    ExpectInOrder({"GdipImageRotateFlip 11 5", "GdipRemovePropertyItem 11 274", "GdipSaveImageToFile 11"});
    EXPECT_EQ(Resize({"a", "b", "image/bmp", {.height = 29}}, wishes).result.height, 29);
}

TEST_F(Adjusting, ThumbnailThatOnlyShrinksIsNoHigherThanTheTurnedPicture) {
    StoreOrientation(7);
    const Wishes wishes{.onlyShrinks = true, .turnsUpright = true};
    EXPECT_EQ(MakeThumbnail({"a", "b", "image/bmp"}, 31, wishes).result, (PixelSize{20, 30}));
    EXPECT_EQ(MakeThumbnail({"a", "b", "image/bmp"}, 29, wishes).result.height, 29);
    EXPECT_EQ(MakeThumbnail({"a", "b", "image/bmp"}, 60, upright_).result, (PixelSize{40, 60}));
}

TEST_F(Adjusting, ThumbnailWithoutAWidthIsRefusedAsItLiesToo) {
    fake_.ReportSize(1000, 1); // 1 x 1000 upright
    StoreOrientation(6);
    EXPECT_EQ(MakeThumbnail({"a", "b", "image/bmp"}, 100, upright_).end.step, Step::Make);
    ExpectNoCall("GdipGetImageThumbnail");
}

TEST_F(Adjusting, PictureIsUprightBeforeItIsCutOrTurned) {
    StoreOrientation(6);
    Crop({"a", "b", "image/bmp", 1, 2, 3, 4}, upright_);
    ExpectInOrder({"GdipImageRotateFlip 11 1", "GdipCloneBitmapAreaI 11 1 2 3 4 2.49857e+06"});
    Rotate({"a", "b", "image/bmp", 180, "H"}, upright_);
    ExpectInOrder({"GdipImageRotateFlip 12 1", "GdipCloneImage 12", "GdipImageRotateFlip 44 6"});
}

TEST_F(Adjusting, TurnThatFailsEndsTheOperation) {
    StoreOrientation(6);
    fake_.Answer("GdipImageRotateFlip", 6);
    for (const Outcome& outcome :
         {Convert({"a", "b", "image/bmp"}, upright_), MakeThumbnail({"a", "b", "image/bmp"}, 10, upright_),
          Resize({"a", "b", "image/bmp", {.height = 10}}, upright_),
          Crop({"a", "b", "image/bmp", 0, 0, 1, 1}, upright_), Rotate({"a", "b", "image/bmp", 90, ""}, upright_),
          StampDate({"a", "b", "now"}, upright_)}) {
        EXPECT_EQ(outcome.end.step, Step::Turn);
        EXPECT_EQ(outcome.end.status, 6);
    }
    ExpectNoCall("GdipSaveImageToFile");
}

TEST_F(Adjusting, BackgroundThatTheLibraryCannotLayIsTold) {
    const Wishes wishes{.background = 0xFFFFFFFF};
    for (const Outcome& outcome :
         {Convert({"a", "b", "image/bmp"}, wishes), MakeThumbnail({"a", "b", "image/bmp"}, 10, wishes),
          Resize({"a", "b", "image/bmp", {.height = 10}}, wishes), Crop({"a", "b", "image/bmp", 0, 0, 1, 1}, wishes),
          Rotate({"a", "b", "image/bmp", 90, ""}, wishes), StampDate({"a", "b", "now"}, wishes)}) {
        EXPECT_EQ(outcome.end.step, Step::LayOver);
        EXPECT_EQ(outcome.end.status, 6);
    }
    ExpectNoCall("GdipSaveImageToFile");
}

TEST_F(Adjusting, StrippingTakesEveryItemOut) {
    fake_.GiveProperties({{306, PropertyTypeAscii, "now\0"s}, {0x8773, PropertyTypeByte, "profile"}});
    Convert({"a", "b", "image/bmp"}, {.stripsMetadata = true});
    ExpectInOrder({"GdipRemovePropertyItem 11 306", "GdipRemovePropertyItem 11 34675", "GdipSaveImageToFile 11"});
    Convert({"a", "b", "image/bmp"}, {.stripsMetadata = true, .keepsProfile = true});
    ExpectInOrder({"GdipRemovePropertyItem 12 306", "GdipSaveImageToFile 12"});
    EXPECT_EQ(fake_.CountOf("GdipRemovePropertyItem 12 34675"), 0u);
}

TEST_F(Adjusting, KeepingTheProfileAloneTakesNothingOut) {
    fake_.GiveProperties({{306, PropertyTypeAscii, "now\0"s}});
    Convert({"a", "b", "image/bmp"}, {.keepsProfile = true});
    ExpectNoCall("GdipRemovePropertyItem");
}

TEST_F(Adjusting, DateIsSetBehindTheStripping) {
    fake_.GiveProperties({{306, PropertyTypeAscii, "now\0"s}});
    StampDate({"a", "b", "then"}, {.stripsMetadata = true});
    ExpectInOrder({"GdipRemovePropertyItem 44 306", "GdipSetPropertyItem 44 306", "GdipSaveImageToFile 44"});
    EXPECT_EQ(fake_.PropertiesSet().back(), "306 2 5 then");
}

TEST(TurnedSize, SwapsTheSidesOfWhatLiesOnOne) {
    for (const std::int32_t turn : {0, 2, 4, 6}) {
        EXPECT_EQ(TurnedSize({3, 4}, turn), (PixelSize{3, 4}));
    }
    for (const std::int32_t turn : {1, 3, 5, 7}) {
        EXPECT_EQ(TurnedSize({3, 4}, turn), (PixelSize{4, 3}));
    }
}

} // namespace
