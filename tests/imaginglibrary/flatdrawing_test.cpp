// Drawing through the flat interface: surfaces, modes, transforms, pictures, outlines.
#include "imaginglibrary/core/geometry.h"
#include "tests/support/flatdrawing.h"

#include <algorithm>
#include <limits>

namespace {

using namespace imaginglibrary;
using namespace tests;
using namespace tests::flat;
using FlatDrawing = FlatTest;

constexpr std::int32_t AntiAlias = 4;

TEST_F(FlatDrawing, IndexedPicturesGiveNoSurface) {
    GpGraphics* graphics = nullptr;
    for (const PixelFormat format :
         {PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Indexed8, PixelFormat::Argb1555}) {
        EXPECT_EQ(GraphicsOf(NewBitmap(5, 5, format), &graphics), Status::OutOfMemory);
    }
    EXPECT_EQ(graphics, nullptr);
    for (const PixelFormat format : {PixelFormat::Rgb555, PixelFormat::Rgb565, PixelFormat::Rgb24, PixelFormat::Rgb32,
                                     PixelFormat::Argb32, PixelFormat::Pargb32, PixelFormat::Rgb48}) {
        EXPECT_EQ(GraphicsOf(NewBitmap(5, 5, format), &graphics), Status::Ok);
    }
}

TEST_F(FlatDrawing, HandlesAreChecked) {
    GpImage* const image = NewBitmap(5, 5);
    GpGraphics* const graphics = NewGraphics(image);
    GpGraphics* out = nullptr;
    EXPECT_EQ(GraphicsOf(nullptr, &out), Status::InvalidParameter);
    EXPECT_EQ(GraphicsOf(image, nullptr), Status::InvalidParameter);
    EXPECT_EQ(DrawImage(nullptr, image, 0, 0), Status::InvalidParameter);
    EXPECT_EQ(DrawImage(graphics, nullptr, 0, 0), Status::InvalidParameter);
    EXPECT_EQ(CallFlat("GdipDeleteGraphics", graphics), Status::Ok);
    EXPECT_EQ(CallFlat("GdipDeleteGraphics", graphics), Status::InvalidParameter);
    EXPECT_EQ(DrawImage(graphics, image, 0, 0), Status::InvalidParameter);
}

TEST_F(FlatDrawing, ModesAreReadAsTheyAreSettled) {
    GpGraphics* const graphics = NewGraphics(NewBitmap(5, 5));
    std::int32_t mode = 0;
    EXPECT_EQ(CallFlat("GdipGetInterpolationMode", graphics, &mode), Status::Ok);
    EXPECT_EQ(mode, 3);
    const std::int32_t settled[] = {3, 3, 7, 3, 4, 5, 6, 7};
    for (std::int32_t i = 0; i < 8; ++i) {
        EXPECT_EQ(SetInterpolation(graphics, i), Status::Ok);
        CallFlat("GdipGetInterpolationMode", graphics, &mode);
        EXPECT_EQ(mode, settled[i]);
    }
    EXPECT_EQ(SetInterpolation(graphics, -1), Status::InvalidParameter);
    EXPECT_EQ(SetInterpolation(graphics, 8), Status::InvalidParameter);
    CallFlat("GdipGetSmoothingMode", graphics, &mode);
    EXPECT_EQ(mode, 3);
    const std::int32_t smoothing[] = {3, 3, 4, 3, 4};
    for (std::int32_t i = 0; i < 5; ++i) {
        EXPECT_EQ(CallFlat("GdipSetSmoothingMode", graphics, i), Status::Ok);
        CallFlat("GdipGetSmoothingMode", graphics, &mode);
        EXPECT_EQ(mode, smoothing[i]);
    }
    EXPECT_EQ(CallFlat("GdipSetSmoothingMode", graphics, std::int32_t{-1}), Status::InvalidParameter);
}

TEST_F(FlatDrawing, SavedStatesAreCountedFromOne) {
    GpGraphics* const graphics = NewGraphics(NewBitmap(5, 5));
    std::uint32_t state = 0;
    EXPECT_EQ(CallFlat("GdipSaveGraphics", graphics, &state), Status::Ok);
    EXPECT_EQ(state, 1u);
    EXPECT_EQ(CallFlat("GdipSaveGraphics", graphics, &state), Status::Ok);
    EXPECT_EQ(state, 2u);
}

TEST_F(FlatDrawing, NaturalSizeIsPixelForPixelWhateverTheResolution) {
    const auto picture =
        *Bitmap::Create({.width = 20, .height = 10, .format = PixelFormat::Rgb24, .resolution = {300, 300}});
    GpImage* const image = NewBitmap(40, 40);
    EXPECT_EQ(DrawImage(NewGraphics(image), ImageOf(*picture), 3, 4), Status::Ok);
    const auto pixels = PixelsOf(image);
    EXPECT_EQ(pixels[4 * 40 + 3], 0xFF000000u);
    EXPECT_EQ(pixels[13 * 40 + 22], 0xFF000000u);
    EXPECT_EQ(pixels[14 * 40 + 22], 0u);
    EXPECT_EQ(pixels[13 * 40 + 23], 0u);
}

TEST_F(FlatDrawing, PositionBetweenPixelsGoesToTheNearest) {
    GpImage* const image = NewBitmap(10, 1);
    EXPECT_EQ(DrawImage(NewGraphics(image), ImageOf(*WhitePicture(1, 1)), 2.6f, -0.4f), Status::Ok);
    EXPECT_EQ(PixelsOf(image)[3], White);
}

TEST_F(FlatDrawing, CoordinatesBeyondAllBoundsOverflow) {
    GpImage* const image = NewBitmap(5, 5);
    GpGraphics* const graphics = NewGraphics(image);
    EXPECT_EQ(DrawImage(graphics, image, 3e9f, 0), Status::ValueOverflow);
    EXPECT_EQ(DrawImage(graphics, image, 0, std::numeric_limits<float>::quiet_NaN()), Status::ValueOverflow);
    EXPECT_EQ(DrawImageRect(graphics, image, INT32_MIN, 0, 5, 5), Status::ValueOverflow);
}

TEST_F(FlatDrawing, RectanglesScaleMirrorAndMayBeEmpty) {
    const auto picture = MakePictureOf(2, 1, [](auto x, auto) { return x == 0 ? MakeColor(255, 0, 0) : White; });
    GpImage* const source = ImageOf(*picture);
    GpImage* const image = NewBitmap(8, 4);
    GpGraphics* const graphics = NewGraphics(image);
    EXPECT_EQ(DrawImageRect(graphics, source, 0, 0, 0, 0), Status::Ok);
    EXPECT_EQ(PixelsOf(image)[0], 0u);
    SetInterpolation(graphics, 5);
    EXPECT_EQ(DrawImageRect(graphics, source, 0, 0, 8, 4), Status::Ok);
    EXPECT_EQ(PixelsOf(image)[3], MakeColor(255, 0, 0));
    EXPECT_EQ(PixelsOf(image)[4], White);
    EXPECT_EQ(DrawImageRect(graphics, source, 8, 0, -8, 4), Status::Ok);
    EXPECT_EQ(PixelsOf(image)[3], White);
}

TEST_F(FlatDrawing, InterpolationModesAreActedOn) {
    const auto picture = MakePictureOf(2, 1, [](auto x, auto) { return x == 0 ? MakeColor(0, 0, 0) : White; });
    GpImage* const source = ImageOf(*picture);
    const auto redAt2 = [&](std::int32_t mode) {
        GpImage* const image = NewBitmap(8, 1);
        GpGraphics* const graphics = NewGraphics(image);
        if (mode >= 0) {
            SetInterpolation(graphics, mode);
        }
        DrawImageRect(graphics, source, 0, 0, 8, 1);
        return static_cast<int>(RedOf(PixelsOf(image)[2]));
    };
    const int nearest = redAt2(5);
    const int linear = redAt2(6);
    const int cubic = redAt2(7);
    EXPECT_EQ(nearest, 0);
    EXPECT_NEAR(linear, 32, 2);
    EXPECT_NE(cubic, linear);
    EXPECT_EQ(redAt2(3), linear);
    EXPECT_EQ(redAt2(-1), cubic); // unless a mode is chosen
}

TEST_F(FlatDrawing, SourceRectanglesAreTakenOut) {
    const auto picture = MakePictureOf(10, 10, [](auto x, auto y) {
        return MakeColor(static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(y), 7);
    });
    GpImage* const source = ImageOf(*picture);
    GpImage* const image = NewBitmap(4, 4);
    GpGraphics* const graphics = NewGraphics(image);
    EXPECT_EQ(DrawImageRectRect(graphics, source, {0, 0, 4, 4}, {3, 5, 4, 4}), Status::Ok);
    EXPECT_EQ(PixelsOf(image)[0], MakeColor(3, 5, 7));
    EXPECT_EQ(PixelsOf(image)[15], MakeColor(6, 8, 7));
    EXPECT_EQ(DrawImageRectRect(graphics, source, {0, 0, 4, 4}, {3, 5, 0, 4}), Status::Ok);
    EXPECT_EQ(DrawImageRectRect(graphics, source, {0, 0, 4, 4}, {3, 5, 4, 4}, 1), Status::InvalidParameter);
}

TEST_F(FlatDrawing, ParallelogramOfARectangleIsThatRectangle) {
    GpImage* const source = ImageOf(*MakePicture(PixelFormat::Rgb24, 20, 10));
    GpImage* const slanted = NewBitmap(60, 60);
    GpImage* const straight = NewBitmap(60, 60);
    EXPECT_EQ(DrawImagePoints(NewGraphics(slanted), source, {{10, 10}, {50, 10}, {10, 40}}), Status::Ok);
    EXPECT_EQ(DrawImageRect(NewGraphics(straight), source, 10, 10, 40, 30), Status::Ok);
    // Each rounds in its own way, the one its weights too.
    EXPECT_LE(GreatestDifference(PixelsOf(slanted), PixelsOf(straight)), 2);
    EXPECT_EQ(AlphaOf(PixelsOf(slanted)[10 * 60 + 10]), 255);
    EXPECT_EQ(AlphaOf(PixelsOf(slanted)[39 * 60 + 49]), 255);
    EXPECT_EQ(AlphaOf(PixelsOf(slanted)[40 * 60 + 49]), 0);
}

TEST_F(FlatDrawing, ParallelogramCarriesTheCorners) {
    const auto picture =
        MakePictureOf(20, 20, [](auto x, auto y) { return MakeColor(x < 10 ? 255 : 0, y < 10 ? 255 : 0, 0); });
    GpImage* const image = NewBitmap(100, 100);
    EXPECT_EQ(DrawImagePoints(NewGraphics(image), ImageOf(*picture), {{40, 10}, {90, 30}, {20, 60}}), Status::Ok);
    const auto pixels = PixelsOf(image);
    const auto at = [&](std::size_t x, std::size_t y) { return pixels[y * 100 + x]; };
    EXPECT_EQ(at(42, 20), MakeColor(255, 255, 0));
    EXPECT_EQ(at(80, 34), MakeColor(0, 255, 0));
    EXPECT_EQ(at(28, 55), MakeColor(255, 0, 0));
    EXPECT_EQ(at(65, 70), MakeColor(0, 0, 0));
    EXPECT_EQ(at(10, 10), 0u);
    EXPECT_EQ(at(95, 80), 0u);
}

TEST_F(FlatDrawing, ParallelogramNeedsThreePoints) {
    GpImage* const image = NewBitmap(5, 5);
    GpGraphics* const graphics = NewGraphics(image);
    EXPECT_EQ(DrawImagePoints(graphics, image, {{0, 0}, {1, 0}}), Status::InvalidParameter);
    EXPECT_EQ(DrawImagePoints(graphics, image, {{0, 0}, {1, 0}, {0, 1}, {1, 1}}), Status::NotImplemented);
    EXPECT_EQ(CallFlat("GdipDrawImagePointsI", graphics, image, static_cast<const FlatPoint*>(nullptr), 3),
              Status::InvalidParameter);
}

TEST_F(FlatDrawing, TransformsArePrependedOrAppended) {
    GpImage* const dot = ImageOf(*WhitePicture(1, 1));
    const auto whiteAt = [&](std::int32_t order) {
        GpImage* const image = NewBitmap(50, 50);
        GpGraphics* const graphics = NewGraphics(image);
        EXPECT_EQ(Translate(graphics, 20, 30), Status::Ok);
        EXPECT_EQ(Rotate(graphics, 90, order), Status::Ok);
        EXPECT_EQ(Translate(graphics, 10, 0, order), Status::Ok);
        EXPECT_EQ(DrawImage(graphics, dot, 0, 0), Status::Ok);
        const auto pixels = PixelsOf(image);
        return std::find(pixels.begin(), pixels.end(), White) - pixels.begin();
    };
    // Prepended: ten along the turned axis, which points down. The dot's own pixel turns to the left of its corner.
    EXPECT_EQ(whiteAt(0), 40 * 50 + 19);
    // Appended: all is turned about the origin, out of sight, and comes back by ten only.
    EXPECT_EQ(whiteAt(1), 50 * 50);
    GpGraphics* const graphics = NewGraphics(NewBitmap(5, 5));
    EXPECT_EQ(Translate(graphics, 1, 1, 2), Status::InvalidParameter);
    EXPECT_EQ(Rotate(graphics, 1, -1), Status::InvalidParameter);
}

TEST_F(FlatDrawing, OpaquePictureOverItselfStaysAndIsNotEvenDecoded) {
    const auto path = folder_ / "cut.bmp";
    ASSERT_EQ(WritePicture(Codecs()[0], *MakePicture(PixelFormat::Rgb24, 40, 40), path), Status::Ok);
    std::filesystem::resize_file(path, std::filesystem::file_size(path) - 100);
    GpImage* const image = Load(path);
    GpGraphics* const graphics = NewGraphics(image);
    EXPECT_EQ(DrawImage(graphics, image, 0, 0), Status::Ok);
    EXPECT_EQ(DrawImage(graphics, image, 1, 0), UndecodableContent);
}

TEST_F(FlatDrawing, TranslucentPictureOverItselfGrowsDenser) {
    GpImage* const image = ImageOf(*MakePictureOf(1, 1, [](auto, auto) { return MakeColor(10, 20, 30, 128); }));
    EXPECT_EQ(DrawImage(NewGraphics(image), image, 0, 0), Status::Ok);
    EXPECT_EQ(PixelsOf(image)[0], MakeColor(10, 20, 30, 192));
}

TEST_F(FlatDrawing, PictureDrawnBesideItselfIsTheOldOne) {
    GpImage* const image = NewBitmap(3, 1);
    GpGraphics* const graphics = NewGraphics(image);
    DrawImage(graphics, ImageOf(*WhitePicture(1, 1)), 0, 0);
    EXPECT_EQ(DrawImage(graphics, image, 1, 0), Status::Ok);
    EXPECT_EQ(PixelsOf(image), (std::vector<Color>{White, White, 0}));
}

TEST_F(FlatDrawing, DrawingOnACloneLeavesTheOriginal) {
    GpImage* const image = ImageOf(*MakePicture(PixelFormat::Rgb24, 8, 8));
    const auto before = PixelsOf(image);
    GpImage* clone = nullptr;
    ASSERT_EQ(GdipCloneImage(image, &clone), Status::Ok);
    DrawImage(NewGraphics(clone), ImageOf(*WhitePicture(8, 8)), 0, 0);
    EXPECT_EQ(PixelsOf(clone)[0], White);
    EXPECT_EQ(PixelsOf(image), before);
    GpImage* second = nullptr;
    ASSERT_EQ(GdipCloneImage(clone, &second), Status::Ok);
    DrawImage(NewGraphics(clone), image, 0, 0);
    EXPECT_EQ(PixelsOf(second)[0], White);
}

TEST_F(FlatDrawing, ImageThatWasDrawnOnStillHoldsItsFile) {
    const auto path = folder_ / "own.png";
    ASSERT_EQ(WritePicture(Codecs()[4], *WhitePicture(5, 5), path), Status::Ok);
    GpImage* const image = Load(path);
    EXPECT_EQ(DrawImage(NewGraphics(image), NewBitmap(2, 2, PixelFormat::Rgb24), 1, 1), Status::Ok);
    EXPECT_EQ(GdipSaveImageToFile(image, path.u16string().c_str(), &Codecs()[4].classId), Status::GenericError);
    EXPECT_EQ(GdipDisposeImage(image), Status::Ok);
}

TEST_F(FlatDrawing, SurfaceDoesNotKeepItsImage) {
    const auto path = folder_ / "own.png";
    ASSERT_EQ(WritePicture(Codecs()[4], *WhitePicture(5, 5), path), Status::Ok);
    GpImage* const image = Load(path);
    GpGraphics* const graphics = NewGraphics(image);
    GpImage* const dot = ImageOf(*WhitePicture(1, 1));
    EXPECT_EQ(GdipDisposeImage(image), Status::Ok);
    EXPECT_EQ(DrawImage(graphics, dot, 0, 0), Status::InvalidParameter);
    // The file is free again.
    EXPECT_EQ(GdipSaveImageToFile(dot, path.u16string().c_str(), &Codecs()[4].classId), Status::Ok);
    EXPECT_EQ(CallFlat("GdipDeleteGraphics", graphics), Status::Ok);
}

TEST_F(FlatDrawing, LastShutdownEndsWhatWasLeftBehind) {
    const auto path = folder_ / "own.png";
    ASSERT_EQ(WritePicture(Codecs()[4], *WhitePicture(5, 5), path), Status::Ok);
    GpImage* const image = Load(path);
    GdiplusShutdown(token_);
    SetUp();
    std::uint32_t width = 0;
    EXPECT_EQ(GdipGetImageWidth(image, &width), Status::InvalidParameter);
    EXPECT_EQ(GdipSaveImageToFile(NewBitmap(1, 1), path.u16string().c_str(), &Codecs()[4].classId), Status::Ok);
}

TEST_F(FlatDrawing, EllipseNeedsAPen) {
    GpGraphics* const graphics = NewGraphics(NewBitmap(5, 5));
    EXPECT_EQ(CallFlat("GdipDrawEllipse", graphics, static_cast<GpPen*>(nullptr), 0.0f, 0.0f, 3.0f, 3.0f),
              Status::InvalidParameter);
}

TEST_F(FlatDrawing, EllipseTouchesBothEndsOfItsRectangle) {
    GpPen* pen = nullptr;
    ASSERT_EQ(CallFlat("GdipCreatePen1", Color{White}, 1.0f, std::int32_t{2}, &pen), Status::Ok);
    for (const std::int32_t smoothing : {3, AntiAlias}) {
        GpImage* const image = NewBitmap(50, 40);
        GpGraphics* const graphics = NewGraphics(image);
        CallFlat("GdipSetSmoothingMode", graphics, smoothing);
        EXPECT_EQ(CallFlat("GdipDrawEllipse", graphics, pen, 10.0f, 10.0f, 20.0f, 10.0f), Status::Ok);
        const auto pixels = PixelsOf(image);
        bool hasPartial = false;
        PixelRect box{50, 40, 0, 0};
        for (std::int64_t i = 0; i < 50 * 40; ++i) {
            const int alpha = AlphaOf(pixels[static_cast<std::size_t>(i)]);
            hasPartial = hasPartial || (alpha > 0 && alpha < 255);
            if (alpha > 128) {
                box = {std::min(box.left, i % 50), std::min(box.top, i / 50), std::max(box.right, i % 50),
                       std::max(box.bottom, i / 50)};
            }
        }
        EXPECT_EQ(box.left, 10);
        EXPECT_EQ(box.right, 30);
        EXPECT_EQ(box.top, 10);
        EXPECT_EQ(box.bottom, 20);
        EXPECT_EQ(hasPartial, smoothing == AntiAlias);
        EXPECT_EQ(pixels[15 * 50 + 20], 0u);
    }
    EXPECT_EQ(CallFlat("GdipDeletePen", pen), Status::Ok);
}

// 6 wide, about pixels that lie half a pixel below and to the right of the coordinates.
TEST_F(FlatDrawing, PenLiesHalfInsideTheEllipseAndHalfOutside) {
    GpPen* pen = nullptr;
    ASSERT_EQ(CallFlat("GdipCreatePen1", Color{White}, 6.0f, std::int32_t{2}, &pen), Status::Ok);
    GpImage* const image = NewBitmap(80, 80);
    GpGraphics* const graphics = NewGraphics(image);
    CallFlat("GdipSetSmoothingMode", graphics, AntiAlias);
    EXPECT_EQ(CallFlat("GdipDrawEllipse", graphics, pen, 20.0f, 30.0f, 40.0f, 24.0f), Status::Ok);
    EXPECT_EQ(CallFlat("GdipDeletePen", pen), Status::Ok);
    const auto pixels = PixelsOf(image);
    const auto expect = [&](const char* what, auto alphaAt, const std::vector<int>& inked) {
        for (int i = 0; i < 80; ++i) {
            const bool isInked = (i >= inked[0] && i <= inked[1]) || (i >= inked[2] && i <= inked[3]);
            const bool isEdge = i == inked[0] - 1 || i == inked[1] + 1 || i == inked[2] - 1 || i == inked[3] + 1;
            EXPECT_NEAR(alphaAt(i), isInked ? 255 : (isEdge ? 127 : 0), isEdge ? 12 : 3) << what << i;
        }
    };
    expect("column ", [&](int i) { return AlphaOf(pixels[static_cast<std::size_t>(42 * 80 + i)]); }, {18, 22, 58, 62});
    expect("row ", [&](int i) { return AlphaOf(pixels[static_cast<std::size_t>(i * 80 + 40)]); }, {28, 32, 52, 56});
}

// A pen as wide as the ellipse is high, or as it is wide, leaves no hole in it; a narrower one does.
TEST_F(FlatDrawing, PenFillsAnEllipseThatIsNoLargerThanItself) {
    const auto middleOf = [&](float width, float height, float penWidth) {
        GpPen* pen = nullptr;
        EXPECT_EQ(CallFlat("GdipCreatePen1", Color{White}, penWidth, std::int32_t{2}, &pen), Status::Ok);
        GpImage* const image = NewBitmap(101, 101);
        GpGraphics* const graphics = NewGraphics(image);
        EXPECT_EQ(CallFlat("GdipDrawEllipse", graphics, pen, 50 - width / 2, 50 - height / 2, width, height),
                  Status::Ok);
        EXPECT_EQ(CallFlat("GdipDeletePen", pen), Status::Ok);
        return PixelsOf(image)[50 * 101 + 50];
    };
    EXPECT_EQ(middleOf(80, 8, 8), White);
    EXPECT_EQ(middleOf(8, 80, 8), White);
    EXPECT_EQ(middleOf(80, 4, 8), White);
    EXPECT_EQ(middleOf(4, 80, 8), White);
    EXPECT_EQ(middleOf(80, 12, 8), 0u);
    EXPECT_EQ(middleOf(12, 80, 8), 0u);
}

TEST_F(FlatDrawing, EllipseWithoutSizeIsNoFailure) {
    GpPen* pen = nullptr;
    ASSERT_EQ(CallFlat("GdipCreatePen1", Color{White}, 3.0f, std::int32_t{2}, &pen), Status::Ok);
    GpGraphics* const graphics = NewGraphics(NewBitmap(9, 9));
    EXPECT_EQ(CallFlat("GdipDrawEllipse", graphics, pen, 4.0f, 4.0f, -3.0f, 3.0f), Status::Ok);
    EXPECT_EQ(CallFlat("GdipDrawEllipse", graphics, pen, 4.0f, 4.0f, 0.0f, 0.0f), Status::Ok);
}

} // namespace
