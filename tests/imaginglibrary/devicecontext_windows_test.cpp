// Drawing on device contexts through the flat interface.
#include "tests/support/flatdrawing.h"

#include <windows.h>

#include <algorithm>

namespace {

using namespace imaginglibrary;
using namespace tests;
using namespace tests::flat;

// A memory context with a bitmap of 40 by 30 pixels, green all over.
class DeviceContext : public FlatTest {
  protected:
    static constexpr COLORREF Green = RGB(0, 200, 0);

    DeviceContext() {
        const HDC screen = GetDC(nullptr);
        context_ = CreateCompatibleDC(screen);
        bitmap_ = CreateCompatibleBitmap(screen, 40, 30);
        ReleaseDC(nullptr, screen);
        before_ = SelectObject(context_, bitmap_);
        const HBRUSH brush = CreateSolidBrush(Green);
        const RECT all{0, 0, 40, 30};
        FillRect(context_, &all, brush);
        DeleteObject(brush);
    }

    ~DeviceContext() override {
        SelectObject(context_, before_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }

    static Status Create(HDC context, GpGraphics** graphics) {
        return CallFlat("GdipCreateFromHDC", context, graphics);
    }

    GpGraphics* NewSurface() {
        GpGraphics* graphics = nullptr;
        EXPECT_EQ(Create(context_, &graphics), Status::Ok);
        return graphics;
    }

    GpImage* RedImage(std::uint8_t alpha = 255) {
        return ImageOf(*MakePictureOf(10, 8, [&](auto, auto) { return MakeColor(255, 0, 0, alpha); }));
    }

    HDC context_;
    HBITMAP bitmap_;
    HGDIOBJ before_;
};

TEST_F(DeviceContext, WhatIsNoneIsRefused) {
    GpGraphics* graphics = nullptr;
    EXPECT_EQ(Create(nullptr, &graphics), Status::OutOfMemory);
    EXPECT_EQ(Create(reinterpret_cast<HDC>(0x123), &graphics), Status::OutOfMemory);
    EXPECT_EQ(Create(context_, nullptr), Status::InvalidParameter);
    EXPECT_EQ(graphics, nullptr);
}

TEST_F(DeviceContext, PicturesAreDrawnAtTheirPlace) {
    EXPECT_EQ(DrawImage(NewSurface(), RedImage(), 5, 6), Status::Ok);
    EXPECT_EQ(GetPixel(context_, 5, 6), RGB(255, 0, 0));
    EXPECT_EQ(GetPixel(context_, 14, 13), RGB(255, 0, 0));
    EXPECT_EQ(GetPixel(context_, 4, 6), Green);
    EXPECT_EQ(GetPixel(context_, 15, 13), Green);
    EXPECT_EQ(GetPixel(context_, 14, 14), Green);
}

TEST_F(DeviceContext, WhatIsThereShowsThrough) {
    EXPECT_EQ(DrawImage(NewSurface(), RedImage(128), 0, 0), Status::Ok);
    const COLORREF mixed = GetPixel(context_, 3, 3);
    EXPECT_NEAR(GetRValue(mixed), 128, 1);
    EXPECT_NEAR(GetGValue(mixed), 100, 1);
}

TEST_F(DeviceContext, ClippingIsKept) {
    IntersectClipRect(context_, 0, 0, 8, 30);
    EXPECT_EQ(DrawImageRect(NewSurface(), RedImage(), -5, -5, 100, 100), Status::Ok);
    SelectClipRgn(context_, nullptr);
    EXPECT_EQ(GetPixel(context_, 7, 20), RGB(255, 0, 0));
    EXPECT_EQ(GetPixel(context_, 8, 20), Green);
}

TEST_F(DeviceContext, ParallelogramsAndDrawingsOutsideWork) {
    GpGraphics* const graphics = NewSurface();
    GpImage* const image = RedImage();
    EXPECT_EQ(DrawImagePoints(graphics, image, {{20, 5}, {35, 15}, {10, 20}}), Status::Ok);
    EXPECT_EQ(GetPixel(context_, 22, 17), RGB(255, 0, 0));
    EXPECT_EQ(GetPixel(context_, 2, 2), Green);
    EXPECT_EQ(DrawImage(graphics, image, 500, 500), Status::Ok);
    EXPECT_EQ(CallFlat("GdipDeleteGraphics", graphics), Status::Ok);
}

// A memory context with a section of 32 bits a pixel, 21 by 16 pixels, green all over.
class SectionContext : public FlatTest {
  protected:
    static constexpr int Width = 21;
    static constexpr int Height = 16;
    static constexpr std::uint32_t GreenPixel = 0x0000C800;

    SectionContext() : context_(CreateCompatibleDC(nullptr)), before_(GetCurrentObject(context_, OBJ_BITMAP)) {}

    ~SectionContext() override {
        SelectObject(context_, before_);
        DeleteObject(section_);
        DeleteDC(context_);
    }

    // A negative height has the rows from the top.
    void SelectSection(int height) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, Width, height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        section_ = CreateDIBSection(context_, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&pixels_), nullptr, 0);
        ASSERT_NE(section_, nullptr);
        SelectObject(context_, section_);
        std::fill_n(pixels_, Width * Height, GreenPixel);
    }

    GpGraphics* NewSurface() {
        GpGraphics* graphics = nullptr;
        EXPECT_EQ(CallFlat("GdipCreateFromHDC", context_, &graphics), Status::Ok);
        return graphics;
    }

    // Red in its left column, blue elsewhere, 4 by 3 pixels.
    GpImage* Flag() {
        return ImageOf(*MakePictureOf(4, 3, [](auto x, auto) { return x == 0 ? Red : Blue; }));
    }

    GpImage* BlueImage() {
        return ImageOf(*MakePictureOf(4, 3, [](auto, auto) { return Blue; }));
    }

    // Where the flag lies at (5, 6), and green elsewhere; the rows of the memory stand in the order told.
    void ExpectFlag(bool isBottomUp) {
        GdiFlush();
        for (int y = 0; y < Height; ++y) {
            for (int x = 0; x < Width; ++x) {
                const bool isInside = x >= 5 && x < 9 && y >= 6 && y < 9;
                const Color expected = !isInside ? GreenPixel : x == 5 ? Red : Blue;
                const int row = isBottomUp ? Height - 1 - y : y;
                EXPECT_EQ(pixels_[row * Width + x] & 0xFFFFFF, expected & 0xFFFFFF) << x << "," << y;
            }
        }
    }

    HDC context_;
    HGDIOBJ before_;
    HBITMAP section_ = nullptr;
    std::uint32_t* pixels_ = nullptr;
};

TEST_F(SectionContext, RowsFromTheTopAreDrawnOn) {
    SelectSection(-Height);
    EXPECT_EQ(DrawImage(NewSurface(), Flag(), 5, 6), Status::Ok);
    ExpectFlag(false);
}

TEST_F(SectionContext, RowsFromTheBottomAreDrawnOn) {
    SelectSection(Height);
    EXPECT_EQ(DrawImage(NewSurface(), Flag(), 5, 6), Status::Ok);
    ExpectFlag(true);
}

TEST_F(SectionContext, PixelsThatTheDrawingLeavesOutAreNotTouched) {
    // The unused byte tells: a copy that is put back would lose it.
    for (const int height : {-Height, Height}) {
        SelectSection(height);
        std::fill_n(pixels_, Width * Height, 0x5A00C800u);
        EXPECT_EQ(DrawImagePoints(NewSurface(), Flag(), {{2, 2}, {18, 6}, {2, 14}}), Status::Ok);
        GdiFlush();
        EXPECT_EQ(pixels_[0], 0x5A00C800u);
        EXPECT_EQ(pixels_[Width * Height - 1], 0x5A00C800u);
        const int topRight = (height < 0 ? 2 : Height - 1 - 2) * Width + 17; // within the bounds, beside the slant
        EXPECT_EQ(pixels_[topRight], 0x5A00C800u);
        SelectObject(context_, before_);
        DeleteObject(section_);
    }
}

TEST_F(SectionContext, ClippingToARectangleIsKept) {
    for (const int height : {-Height, Height}) {
        SelectSection(height);
        IntersectClipRect(context_, 3, 4, 8, 10);
        EXPECT_EQ(DrawImageRect(NewSurface(), BlueImage(), -50, -50, 200, 200), Status::Ok);
        SelectClipRgn(context_, nullptr);
        EXPECT_EQ(GetPixel(context_, 3, 4), RGB(0, 0, 255));
        EXPECT_EQ(GetPixel(context_, 7, 9), RGB(0, 0, 255));
        EXPECT_EQ(GetPixel(context_, 2, 4), RGB(0, 200, 0));
        EXPECT_EQ(GetPixel(context_, 3, 3), RGB(0, 200, 0));
        EXPECT_EQ(GetPixel(context_, 8, 9), RGB(0, 200, 0));
        EXPECT_EQ(GetPixel(context_, 7, 10), RGB(0, 200, 0));
        SelectObject(context_, before_);
        DeleteObject(section_);
    }
}

TEST_F(SectionContext, ClippingToMoreThanARectangleIsKept) {
    SelectSection(-Height);
    ExcludeClipRect(context_, 6, 0, 8, 30);
    EXPECT_EQ(DrawImageRect(NewSurface(), BlueImage(), -50, -50, 200, 200), Status::Ok);
    SelectClipRgn(context_, nullptr);
    EXPECT_EQ(GetPixel(context_, 5, 5), RGB(0, 0, 255));
    EXPECT_EQ(GetPixel(context_, 6, 5), RGB(0, 200, 0));
    EXPECT_EQ(GetPixel(context_, 7, 5), RGB(0, 200, 0));
    EXPECT_EQ(GetPixel(context_, 8, 5), RGB(0, 0, 255));
}

TEST_F(SectionContext, MovedOriginIsKept) {
    SelectSection(-Height);
    SetViewportOrgEx(context_, 3, 2, nullptr);
    EXPECT_EQ(DrawImage(NewSurface(), Flag(), 2, 4), Status::Ok);
    ExpectFlag(false);
}

TEST_F(SectionContext, WhatWasDrawnBeforeShowsThrough) {
    SelectSection(-Height);
    const HBRUSH white = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    const RECT all{0, 0, Width, Height};
    FillRect(context_, &all, white);
    GpImage* const veil = ImageOf(*MakePictureOf(4, 3, [](auto, auto) { return MakeColor(255, 0, 0, 128); }));
    EXPECT_EQ(DrawImage(NewSurface(), veil, 0, 0), Status::Ok);
    EXPECT_EQ(GetPixel(context_, 1, 1), RGB(255, 127, 127));
}

TEST_F(SectionContext, SectionOfFewerBitsIsDrawnOnAllTheSame) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, Width, -Height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    section_ = CreateDIBSection(context_, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&pixels_), nullptr, 0);
    SelectObject(context_, section_);
    EXPECT_EQ(DrawImage(NewSurface(), Flag(), 5, 6), Status::Ok);
    EXPECT_EQ(GetPixel(context_, 5, 6), RGB(255, 0, 0));
    EXPECT_EQ(GetPixel(context_, 8, 8), RGB(0, 0, 255));
    EXPECT_EQ(GetPixel(context_, 9, 8), RGB(0, 0, 0));
}

} // namespace
