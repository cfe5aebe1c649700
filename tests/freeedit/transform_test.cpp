// How the picture lies on the canvas.
#include "freeedit/transform.h"

#include <gtest/gtest.h>

namespace lumbrix {

void PrintTo(const PixelPoint& point, std::ostream* stream) { *stream << point.x << ',' << point.y; }

void PrintTo(const CanvasArea& area, std::ostream* stream) {
    *stream << area.left << ',' << area.top << ' ' << area.width << 'x' << area.height;
}

} // namespace lumbrix

namespace {

using namespace lumbrix;

CanvasSettings SettingsOf(CornerTexts corners, float angle = 0, float stretch = 1) {
    return {.cornerTexts = std::move(corners), .rotationAngle = angle, .stretchFactor = stretch};
}

// Where one corner of the picture goes; it is the same for all three.
PixelPoint Moved(const char* x, const char* y, float angle, float stretch, std::int32_t panX = 0,
                 std::int32_t panY = 0) {
    CanvasSettings settings = SettingsOf({x, y, x, y, x, y}, angle, stretch);
    settings.panX = panX;
    settings.panY = panY;
    const CornerPoints points = TransformedCorners(settings);
    EXPECT_EQ(points[0], points[1]);
    EXPECT_EQ(points[0], points[2]);
    return points[0];
}

TEST(TransformedCorner, StaysWhereNothingIsSet) { EXPECT_EQ(Moved("100", "50", 0, 1), (PixelPoint{100, 50})); }

TEST(TransformedCorner, EachCornerHasItsOwnTwoTexts) {
    EXPECT_EQ(TransformedCorners(SettingsOf({"1", "2", "30", "4", "5", "60"})),
              (CornerPoints{{{1, 2}, {30, 4}, {5, 60}}}));
}

TEST(TransformedCorner, TurnsCounterclockwiseAroundTheOrigin) {
    EXPECT_EQ(Moved("100", "0", 90, 1), (PixelPoint{0, -100}));
    EXPECT_EQ(Moved("0", "50", 90, 1), (PixelPoint{50, 0}));
    EXPECT_EQ(Moved("100", "0", -90, 1), (PixelPoint{0, 100}));
    EXPECT_EQ(Moved("100", "50", 180, 1), (PixelPoint{-100, -50}));
    EXPECT_EQ(Moved("100", "50", -180, 1), (PixelPoint{-100, -50}));
    EXPECT_EQ(Moved("100", "0", 30, 1), (PixelPoint{87, -50}));
    EXPECT_EQ(Moved("0", "100", 30, 1), (PixelPoint{50, 87}));
    EXPECT_EQ(Moved("200", "100", 45, 1), (PixelPoint{212, -71}));
}

TEST(TransformedCorner, StretchRoundsTiesToEven) {
    EXPECT_EQ(Moved("1", "3", 0, 0.5f), (PixelPoint{0, 2}));
    EXPECT_EQ(Moved("5", "7", 0, 0.5f), (PixelPoint{2, 4}));
}

TEST(TransformedCorner, StretchIsOfSinglePrecision) {
    EXPECT_EQ(Moved("10", "20", 0, 1.15f), (PixelPoint{11, 23})); // a little less than 1.15
    EXPECT_EQ(Moved("10", "30", 0, 0.05f), (PixelPoint{1, 2}));   // a little more than 0.05
}

TEST(TransformedCorner, SineAndCosineAreOfSinglePrecision) {
    EXPECT_EQ(Moved("3", "0", 30, 1), (PixelPoint{3, -2})); // a half exactly, so the tie goes to the even number
    EXPECT_EQ(Moved("1", "0", 60, 1), (PixelPoint{0, -1}));
}

TEST(TransformedCorner, EachStepRoundsToWholePixels) {
    EXPECT_EQ(Moved("1", "0", 30, 1.5f), (PixelPoint{2, -1})); // 1.5 is 2, and that turned 1.73
    EXPECT_EQ(Moved("1", "1", 45, 1), (PixelPoint{1, 0}));
}

TEST(TransformedCorner, PanIsAddedAtLast) {
    EXPECT_EQ(Moved("100", "0", 90, 2, 7, -9), (PixelPoint{7, -209}));
    EXPECT_EQ(Moved("100", "0", 0, 1, -1000, 65535), (PixelPoint{-900, 65535}));
}

TEST(TransformedCorner, StretchOfZeroLeavesThePanAlone) {
    EXPECT_EQ(Moved("4000", "3000", 33, 0, 12, 34), (PixelPoint{12, 34}));
}

TEST(TransformedCorner, TextCountsAsItsLeadingNumberInWholePixels) {
    EXPECT_EQ(Moved("", "abc", 0, 1), (PixelPoint{0, 0}));
    EXPECT_EQ(Moved("12abc", " 7", 0, 1), (PixelPoint{12, 7}));
    EXPECT_EQ(Moved("1.5", "2.5", 0, 1), (PixelPoint{2, 2}));
    EXPECT_EQ(Moved("-3", "007", 0, 1), (PixelPoint{-3, 7}));
    EXPECT_EQ(Moved("1.4", "0", 0, 2), (PixelPoint{2, 0})); // whole before it is stretched
}

TEST(TransformedCorner, NumbersBeyondAllMeasureStayWithinTheirBounds) {
    EXPECT_EQ(Moved("99999999999", "0", 0, 5, 1000), (PixelPoint{INT32_MAX, 0}));
    EXPECT_EQ(Moved("99999999999", "0", 180, 5, -1000), (PixelPoint{INT32_MIN, 0}));
}

TEST(CanvasTransform, AppliesNothingAtFirst) {
    CanvasTransform transform;
    EXPECT_FALSE(transform.Apply());
    EXPECT_EQ(transform.Points(), CornerPoints{});
}

TEST(CanvasTransform, AppliesAChangeOnce) {
    CanvasTransform transform;
    transform.settings = SettingsOf({"0", "0", "30", "0", "0", "20"});
    EXPECT_TRUE(transform.Apply());
    EXPECT_EQ(transform.Points(), (CornerPoints{{{0, 0}, {30, 0}, {0, 20}}}));
    EXPECT_FALSE(transform.Apply());
}

TEST(CanvasTransform, EachOfTheTenSettingsIsAChange) {
    CanvasTransform transform;
    transform.settings = SettingsOf({"0", "0", "30", "0", "0", "20"});
    transform.Apply();
    for (std::string& text : transform.settings.cornerTexts) {
        text = "1";
        EXPECT_TRUE(transform.Apply());
        EXPECT_FALSE(transform.Apply());
    }
    transform.settings.rotationAngle = 1;
    EXPECT_TRUE(transform.Apply());
    transform.settings.stretchFactor = 2;
    EXPECT_TRUE(transform.Apply());
    transform.settings.panX = 1;
    EXPECT_TRUE(transform.Apply());
    transform.settings.panY = 1;
    EXPECT_TRUE(transform.Apply());
    EXPECT_FALSE(transform.Apply());
}

TEST(CanvasTransform, TextsAreComparedAsTexts) {
    CanvasTransform transform;
    transform.settings = SettingsOf({"0", "0", "30", "0", "0", "20"});
    transform.Apply();
    const CornerPoints before = transform.Points();
    transform.settings.cornerTexts[0] = "00";
    EXPECT_TRUE(transform.Apply());
    EXPECT_EQ(transform.Points(), before);
}

TEST(CanvasTransform, LoadedPictureLiesAtItsOwnSizeButForOneNumber) {
    CanvasTransform transform;
    transform.settings = SettingsOf({"1", "2", "3", "4", "5", "6"});
    transform.Apply();
    transform.PlaceNaturally({640, 480});
    EXPECT_EQ(transform.Points(), (CornerPoints{{{0, 0}, {640, 4}, {0, 480}}}));
}

TEST(PicturesBox, OfAnUprightPictureIsThePicture) {
    EXPECT_EQ(BoundingBox({{{10, 20}, {110, 20}, {10, 70}}}), (CanvasArea{10, 20, 100, 50}));
}

TEST(PicturesBox, OfOneTurnedCounterclockwiseReachesUpToItsRightCorner) {
    EXPECT_EQ(BoundingBox({{{10, 60}, {97, 10}, {35, 103}}}), (CanvasArea{10, 10, 112, 93}));
    EXPECT_EQ(BoundingBox({{{0, 1}, {100, 0}, {1, 51}}}), (CanvasArea{0, 0, 101, 51}));
}

TEST(PicturesBox, OfOneTurnedClockwiseReachesLeftToItsLowerCorner) {
    EXPECT_EQ(BoundingBox({{{35, 10}, {122, 60}, {10, 53}}}), (CanvasArea{10, 10, 112, 93}));
    EXPECT_EQ(BoundingBox({{{1, 0}, {101, 1}, {0, 50}}}), (CanvasArea{0, 0, 101, 51}));
}

TEST(PicturesBox, OfOneWithALevelTopReachesFromItsLowerToItsRightCorner) {
    EXPECT_EQ(BoundingBox({{{10, 20}, {110, 20}, {40, 70}}}), (CanvasArea{40, 20, 70, 50}));
}

TEST(PicturesBox, UsesTheSameFormulasUpsideDown) {
    EXPECT_EQ(BoundingBox({{{200, 100}, {100, 100}, {200, 50}}}), (CanvasArea{200, 100, -100, -50}));
}

TEST(PicturesBox, OfNothingHasNoSize) { EXPECT_EQ(BoundingBox({{{7, 9}, {7, 9}, {7, 9}}}), (CanvasArea{7, 9, 0, 0})); }

TEST(PicturesBox, IsWorkedOutWithin32Bits) {
    EXPECT_EQ(BoundingBox({{{INT32_MIN, 0}, {INT32_MAX, 0}, {INT32_MIN, 5}}}), (CanvasArea{INT32_MIN, 0, -1, 5}));
}

} // namespace
