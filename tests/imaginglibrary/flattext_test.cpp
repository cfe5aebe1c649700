// Fonts, brushes and text through the flat interface.
#include "tests/support/flatdrawing.h"

#include <algorithm>
#include <cmath>

namespace {

using namespace imaginglibrary;
using namespace tests;
using namespace tests::flat;

constexpr std::int32_t UnitPixel = 2;
constexpr std::int32_t UnitPoint = 3;

class FlatText : public FlatTest {
  protected:
    GpFont* NewFont(float size = 20, std::int32_t style = 0, std::int32_t unit = UnitPixel) {
        GpFontFamily* family = nullptr;
        EXPECT_EQ(Family(u"Arial", &family), Status::Ok);
        GpFont* font = nullptr;
        EXPECT_EQ(CreateFont(family, size, style, unit, &font), Status::Ok);
        EXPECT_EQ(CallFlat("GdipDeleteFontFamily", family), Status::Ok);
        return font;
    }

    GpBrush* NewBrush(Color color) {
        GpBrush* brush = nullptr;
        EXPECT_EQ(CallFlat("GdipCreateSolidFill", color, &brush), Status::Ok);
        return brush;
    }

    static Status Family(const char16_t* name, GpFontFamily** family) {
        return CallFlat("GdipCreateFontFamilyFromName", name, static_cast<void*>(nullptr), family);
    }

    static Status CreateFont(GpFontFamily* family, float size, std::int32_t style, std::int32_t unit, GpFont** font) {
        return CallFlat("GdipCreateFont", family, size, style, unit, font);
    }

    static Status Draw(GpGraphics* graphics, const char16_t* text, std::int32_t length, GpFont* font,
                       const FlatRectangle& place, GpBrush* brush) {
        return CallFlat("GdipDrawString", graphics, text, length, font, &place, static_cast<const void*>(nullptr),
                        brush);
    }

    // Which rows and columns of a clear bitmap hold text.
    struct Extent {
        int top = 1000, bottom = -1, left = 1000, right = -1;
        int greatestAlpha = 0;
    };

    Extent DrawnExtent(const char16_t* text, std::int32_t length, GpFont* font, Color color = 0xFF000000,
                       FlatRectangle place = {10, 10, 0, 0}) {
        GpImage* const image = NewBitmap(200, 120);
        EXPECT_EQ(Draw(NewGraphics(image), text, length, font, place, NewBrush(color)), Status::Ok);
        const auto pixels = PixelsOf(image);
        Extent extent;
        for (int i = 0; i < 200 * 120; ++i) {
            const int alpha = AlphaOf(pixels[static_cast<std::size_t>(i)]);
            extent.greatestAlpha = std::max(extent.greatestAlpha, alpha);
            if (alpha > 100) {
                extent.top = std::min(extent.top, i / 200);
                extent.bottom = std::max(extent.bottom, i / 200);
                extent.left = std::min(extent.left, i % 200);
                extent.right = std::max(extent.right, i % 200);
            }
        }
        return extent;
    }
};

TEST_F(FlatText, AbsentFamilyIsNotFound) {
    GpFontFamily* family = nullptr;
    EXPECT_EQ(Family(u"Nonesuch", &family), Status::FontFamilyNotFound);
    EXPECT_EQ(Family(u"", &family), Status::FontFamilyNotFound);
    EXPECT_EQ(Family(nullptr, &family), Status::InvalidParameter);
    EXPECT_EQ(Family(u"Arial", nullptr), Status::InvalidParameter);
    EXPECT_EQ(family, nullptr);
}

TEST_F(FlatText, FontNeedsAFamilyASizeAndAUnit) {
    GpFontFamily* family = nullptr;
    GpFont* font = nullptr;
    ASSERT_EQ(Family(u"Arial", &family), Status::Ok);
    EXPECT_EQ(CreateFont(nullptr, 10, 0, UnitPixel, &font), Status::InvalidParameter);
    EXPECT_EQ(CreateFont(family, 0, 0, UnitPixel, &font), Status::InvalidParameter);
    EXPECT_EQ(CreateFont(family, -3, 0, UnitPixel, &font), Status::InvalidParameter);
    EXPECT_EQ(CreateFont(family, 10, 16, UnitPixel, &font), Status::InvalidParameter);
    EXPECT_EQ(CreateFont(family, 10, 0, 7, &font), Status::InvalidParameter);
    EXPECT_EQ(font, nullptr);
    EXPECT_EQ(CreateFont(family, 10, 15, UnitPixel, &font), Status::Ok);
    EXPECT_EQ(CallFlat("GdipDeleteFont", font), Status::Ok);
    EXPECT_EQ(CallFlat("GdipDeleteFont", font), Status::InvalidParameter);
}

TEST_F(FlatText, LengthEndsTheText) {
    GpFont* const font = NewFont();
    const auto one = DrawnExtent(u"H", -1, font);
    EXPECT_EQ(DrawnExtent(u"HHHH", 1, font).right, one.right);
    EXPECT_EQ(DrawnExtent(u"H\0HH", 4, font).right, one.right);
    EXPECT_GT(DrawnExtent(u"HHHH", -1, font).right, one.right);
    EXPECT_EQ(DrawnExtent(u"HHHH", 0, font).right, -1);
}

TEST_F(FlatText, ColorKeepsItsAlpha) {
    EXPECT_EQ(DrawnExtent(u"HHH", -1, NewFont(60), 0x80FF0000).greatestAlpha, 128);
    EXPECT_EQ(DrawnExtent(u"HHH", -1, NewFont(60)).greatestAlpha, 255);
}

TEST_F(FlatText, PointsScaleWithTheResolutionAndPixelsDoNot) {
    const auto pixels = DrawnExtent(u"H", -1, NewFont(36));
    const auto points = DrawnExtent(u"H", -1, NewFont(27, 0, UnitPoint)); // 27 / 72 * 96
    EXPECT_EQ(points.top, pixels.top);
    EXPECT_EQ(points.bottom, pixels.bottom);
}

TEST_F(FlatText, StylesShow) {
    const auto plain = DrawnExtent(u"HH", -1, NewFont(40));
    EXPECT_GT(DrawnExtent(u"HH", -1, NewFont(40, 1)).right, plain.right);   // bold runs wider
    EXPECT_GT(DrawnExtent(u"HH", -1, NewFont(40, 2)).right, plain.right);   // italic leans
    EXPECT_GT(DrawnExtent(u"HH", -1, NewFont(40, 4)).bottom, plain.bottom); // underline lies below
    EXPECT_LT(DrawnExtent(u"HH", -1, NewFont(40, 8)).left, plain.left);     // strikeout begins at the pen
}

TEST_F(FlatText, TextBeyondTheSurfaceIsNoFailure) {
    EXPECT_EQ(DrawnExtent(u"far away", -1, NewFont(), 0xFF000000, {5000, 10, 0, 0}).right, -1);
    EXPECT_EQ(DrawnExtent(u"far away", -1, NewFont(), 0xFF000000, {-1e20f, 10, 0, 0}).right, -1);
}

TEST_F(FlatText, HugeFontFillsTheSurface) {
    EXPECT_EQ(DrawnExtent(u"\u2588I", -1, NewFont(20000), 0xFF000000, {-9000, -9000, 0, 0}).top, 0);
}

TEST_F(FlatText, ArgumentsAreChecked) {
    GpGraphics* const graphics = NewGraphics(NewBitmap(10, 10));
    GpFont* const font = NewFont();
    GpBrush* const brush = NewBrush(0xFF000000);
    const FlatRectangle place{0, 0, 0, 0};
    EXPECT_EQ(Draw(nullptr, u"x", 1, font, place, brush), Status::InvalidParameter);
    EXPECT_EQ(Draw(graphics, nullptr, 1, font, place, brush), Status::InvalidParameter);
    EXPECT_EQ(Draw(graphics, u"x", 1, nullptr, place, brush), Status::InvalidParameter);
    EXPECT_EQ(Draw(graphics, u"x", 1, font, place, nullptr), Status::InvalidParameter);
    EXPECT_EQ(Draw(graphics, u"x", 1, font, {0, 0, 50, 0}, brush), Status::NotImplemented);
    EXPECT_EQ(CallFlat("GdipDeleteBrush", brush), Status::Ok);
    EXPECT_EQ(Draw(graphics, u"x", 1, font, place, brush), Status::InvalidParameter);
}

TEST_F(FlatText, PlaceMustBeFinite) {
    GpGraphics* const graphics = NewGraphics(NewBitmap(10, 10));
    GpFont* const font = NewFont();
    GpBrush* const brush = NewBrush(0xFF000000);
    for (const float beyond : {NAN, INFINITY, -INFINITY}) {
        for (const FlatRectangle& place :
             {FlatRectangle{beyond, 0, 0, 0}, {0, beyond, 0, 0}, {0, 0, beyond, 0}, {0, 0, 0, beyond}}) {
            EXPECT_EQ(Draw(graphics, u"x", 1, font, place, brush), Status::InvalidParameter);
        }
    }
}

TEST_F(FlatText, WorldTransformTurnsText) {
    GpImage* const image = NewBitmap(200, 200);
    GpGraphics* const graphics = NewGraphics(image);
    Translate(graphics, 100, 0);
    Rotate(graphics, 90);
    ASSERT_EQ(Draw(graphics, u"HHHHHH", -1, NewFont(), {0, 0, 0, 0}, NewBrush(0xFF000000)), Status::Ok);
    const auto pixels = PixelsOf(image);
    int lowest = 0;
    for (int i = 0; i < 200 * 200; ++i) {
        if (AlphaOf(pixels[static_cast<std::size_t>(i)]) > 100) {
            EXPECT_LE(i % 200, 100);
            EXPECT_GE(i % 200, 70);
            lowest = i / 200;
        }
    }
    EXPECT_GT(lowest, 70);
}

} // namespace
