// Drawing on device contexts through the flat interface.
#include "tests/support/flatdrawing.h"

#include <windows.h>

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

} // namespace
