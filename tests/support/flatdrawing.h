// The flat functions that draw, make bitmaps, and read and set properties; and a session and pictures to try them on.
#pragma once

#include "tests/support/flatfunctions.h"
#include "tests/support/pictures.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <vector>

namespace tests::flat {

using imaginglibrary::Color;
using imaginglibrary::FlatPoint;
using imaginglibrary::FlatRectangle;
using imaginglibrary::GpBrush;
using imaginglibrary::GpFont;
using imaginglibrary::GpFontFamily;
using imaginglibrary::GpGraphics;
using imaginglibrary::GpPen;
using imaginglibrary::PixelFormat;
using imaginglibrary::PropertyItem;

inline Status CreateBitmap(std::int32_t width, std::int32_t height, PixelFormat format, GpImage** bitmap) {
    const std::int32_t anyStride = 17;
    return CallFlat("GdipCreateBitmapFromScan0", width, height, anyStride, format, static_cast<const void*>(nullptr),
                    bitmap);
}

inline Status CloneArea(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, PixelFormat format,
                        GpImage* image, GpImage** clone) {
    return CallFlat("GdipCloneBitmapAreaI", x, y, width, height, format, image, clone);
}

inline Status RotateFlip(GpImage* image, std::int32_t code) { return CallFlat("GdipImageRotateFlip", image, code); }

inline Status GraphicsOf(GpImage* image, GpGraphics** graphics) {
    return CallFlat("GdipGetImageGraphicsContext", image, graphics);
}

inline Status DrawImage(GpGraphics* graphics, GpImage* image, float x, float y) {
    return CallFlat("GdipDrawImage", graphics, image, x, y);
}

inline Status DrawImageRect(GpGraphics* graphics, GpImage* image, std::int32_t x, std::int32_t y, std::int32_t width,
                            std::int32_t height) {
    return CallFlat("GdipDrawImageRectI", graphics, image, x, y, width, height);
}

struct IntegerRect {
    std::int32_t x, y, width, height;
};

inline Status DrawImageRectRect(GpGraphics* graphics, GpImage* image, const IntegerRect& to, const IntegerRect& from,
                                std::int32_t unit = 2) {
    const void* const none = nullptr;
    return CallFlat("GdipDrawImageRectRectI", graphics, image, to.x, to.y, to.width, to.height, from.x, from.y,
                    from.width, from.height, unit, none, none, none);
}

inline Status DrawImagePoints(GpGraphics* graphics, GpImage* image, const std::vector<FlatPoint>& points) {
    return CallFlat("GdipDrawImagePointsI", graphics, image, points.data(), static_cast<std::int32_t>(points.size()));
}

inline Status SetInterpolation(GpGraphics* graphics, std::int32_t mode) {
    return CallFlat("GdipSetInterpolationMode", graphics, mode);
}

inline Status Translate(GpGraphics* graphics, float dx, float dy, std::int32_t order = 0) {
    return CallFlat("GdipTranslateWorldTransform", graphics, dx, dy, order);
}

inline Status Rotate(GpGraphics* graphics, float degrees, std::int32_t order = 0) {
    return CallFlat("GdipRotateWorldTransform", graphics, degrees, order);
}

inline Status SetProperty(GpImage* image, const imaginglibrary::Property& property) {
    const PropertyItem item{property.tag, static_cast<std::uint32_t>(property.value.size()),
                            static_cast<std::uint16_t>(property.type), property.value.data()};
    return CallFlat("GdipSetPropertyItem", image, static_cast<const PropertyItem*>(&item));
}

// A test with a session, and shorthands for images in it.
class FlatTest : public testing::Test {
  protected:
    void SetUp() override {
        const imaginglibrary::GdiplusStartupInput versionOne{1, nullptr, 0, 0};
        ASSERT_EQ(GdiplusStartup(&token_, &versionOne, nullptr), Status::Ok);
    }

    void TearDown() override { GdiplusShutdown(token_); }

    GpImage* NewBitmap(std::int32_t width, std::int32_t height, PixelFormat format = PixelFormat::Argb32) {
        GpImage* bitmap = nullptr;
        EXPECT_EQ(CreateBitmap(width, height, format, &bitmap), Status::Ok);
        return bitmap;
    }

    GpGraphics* NewGraphics(GpImage* image) {
        GpGraphics* graphics = nullptr;
        EXPECT_EQ(GraphicsOf(image, &graphics), Status::Ok);
        return graphics;
    }

    // Loads a picture by way of a file, of a format that keeps its pixels.
    GpImage* ImageOf(const imaginglibrary::PixelSource& picture,
                     const imaginglibrary::Codec& codec = imaginglibrary::Codecs()[4]) {
        const auto path = folder_ / ("picture" + std::to_string(files_++));
        EXPECT_EQ(WritePicture(codec, picture, path), Status::Ok);
        return Load(path);
    }

    GpImage* Load(const std::filesystem::path& path) {
        GpImage* image = nullptr;
        EXPECT_EQ(GdipLoadImageFromFile(path.u16string().c_str(), &image), Status::Ok);
        return image;
    }

    // The pixels of an image, by way of a file.
    std::vector<Color> PixelsOf(GpImage* image) {
        const auto path = folder_ / ("pixels" + std::to_string(files_++));
        EXPECT_EQ(GdipSaveImageToFile(image, path.u16string().c_str(), &imaginglibrary::Codecs()[4].classId),
                  Status::Ok);
        const auto picture = OpenPicture(path);
        EXPECT_TRUE(picture.Ok());
        return picture.Ok() ? ColorsOf(**picture) : std::vector<Color>();
    }

    TemporaryFolder folder_;
    std::uintptr_t token_ = 0;
    std::atomic<int> files_ = 0; // threads may ask for pixels at once
};

} // namespace tests::flat
