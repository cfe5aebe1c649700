// Drawing surfaces on images, and images that can be drawn on.
#include "imaging/surface.h"

#include "imaging/gdiplus/bindings.h"
#include "imaging/properties.h"

namespace lumbrix {

OwnedSurface::~OwnedSurface() {
    if (isOwner_) {
        GdipDeleteGraphics(handle_);
    }
}

FlatStatus OwnedSurface::Open(ImageHandle image) {
    isOwner_ = true;
    return GdipGetImageGraphicsContext(image, &handle_);
}

bool IsIndexedFormat(std::int32_t pixelFormat) {
    constexpr std::int32_t IndexedFlag = 0x00010000;
    return (pixelFormat & IndexedFlag) != 0;
}

bool TakeDrawn(Course& course, Step step, const OwnedSurface& surface, FlatStatus status) {
    if (!surface || status != OutOfMemory) {
        return course.Take(step, status);
    }
    course.LeaveSessionOpen();
    return course.Fail(step, status);
}

bool MakeDrawable(Course& course, const OwnedImage& image, OwnedImage& copy) {
    std::int32_t format = 0;
    if (!course.Take(Step::Load, GdipGetImagePixelFormat(image.Get(), &format)) || !course.Measure(image.Get())) {
        return false;
    }
    if (!IsIndexedFormat(format)) {
        return true;
    }
    const PixelSize size = course.Result().source;
    OwnedSurface surface;
    const bool isDrawn =
        course.Take(Step::Make,
                    GdipCreateBitmapFromScan0(size.width, size.height, 0, TrueColorFormat, nullptr, copy.Place())) &&
        course.Take(Step::Surface, surface.Open(copy.Get())) &&
        course.Take(Step::Draw, GdipDrawImageRectI(surface.Get(), image.Get(), 0, 0, size.width, size.height));
    course.LookForDamage(image.Get());
    if (isDrawn) {
        CopyImageProperties(image.Get(), copy.Get());
    }
    return isDrawn;
}

} // namespace lumbrix
