// Makes a copy of an image file at another height.
#include "imaging/resize.h"

#include "base/numbers.h"
#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/properties.h"
#include "imaging/surface.h"

namespace lumbrix {

namespace {

constexpr std::int32_t NoMode = 2; // what the modes read as where there is no surface to ask

float Proportions(PixelSize size) { return static_cast<float>(static_cast<double>(size.width) / size.height); }

// Makes the bitmap. As established it has the source's pixel format, also where that cannot be drawn on.
bool MakeBitmap(Course& course, const OwnedImage& image, OwnedImage& bitmap) {
    const PixelSize size = course.Result().result;
    std::int32_t format = 0;
    if (!course.Take(Step::Load, GdipGetImagePixelFormat(image.Get(), &format))) {
        return false;
    }
    if (!course.IsEstablished()) {
        if (size.width < 1 || size.height < 1) {
            return course.Fail(Step::Make, InvalidParameter);
        }
        format = IsIndexedFormat(format) ? TrueColorFormat : format;
    }
    return course.Take(Step::Make,
                       GdipCreateBitmapFromScan0(size.width, size.height, 0, format, nullptr, bitmap.Place()));
}

// Draws the whole of an image over the whole of a bitmap, at the default modes. False where the bitmap must not be
// written, for there is a surface and the image is not on it.
bool DrawWhole(Course& course, const OwnedImage& image, const OwnedImage& bitmap, OwnedSurface& surface) {
    if (!course.Take(Step::Surface, surface.Open(bitmap.Get()))) {
        return false;
    }
    std::int32_t mode = NoMode;
    GdipGetInterpolationMode(surface.Get(), &mode);
    mode = NoMode;
    GdipGetSmoothingMode(surface.Get(), &mode);
    const PixelSize from = course.Result().source;
    const PixelSize to = course.Result().result;
    const FlatStatus status = GdipDrawImageRectRectI(surface.Get(), image.Get(), 0, 0, to.width, to.height, 0, 0,
                                                     from.width, from.height, UnitPixel);
    course.LookForDamage(image.Get());
    return TakeDrawn(course, Step::Draw, surface, status);
}

} // namespace

std::int32_t ResizedWidth(std::int32_t sourceWidth, std::int32_t sourceHeight, std::int32_t height) {
    return RoundToEven(static_cast<long double>(Proportions({sourceWidth, sourceHeight})) * height);
}

Outcome Resize(const ResizeOrder& order, const Wishes& wishes) {
    Course course(wishes);
    Outcome& outcome = course.Result();
    if (!course.TakeFormat(order.mimeWord) || !course.Begin(order.destination)) {
        return outcome;
    }
    OwnedImage image;
    if (!course.Load(order.source, image)) {
        course.LeaveSessionOpen();
        return outcome;
    }
    if (!course.Measure(image.Get(), MeasuredFirst::Height)) {
        if (course.IsEstablished()) {
            image.LeaveBehind();
            course.LeaveSessionOpen();
        }
        return outcome;
    }
    if (wishes.onlyShrinks && outcome.source.height <= order.height) {
        outcome.result = outcome.source;
        course.Watch(image.Get(), static_cast<std::uint32_t>(outcome.source.height));
        course.Save(image.Get(), order.destination, order.mimeWord);
        course.LookForDamage(image.Get());
        return outcome;
    }
    outcome.result = {ResizedWidth(outcome.source.width, outcome.source.height, order.height), order.height};
    const auto sourceRows = static_cast<std::uint32_t>(outcome.source.height);
    const std::uint32_t rows = sourceRows + static_cast<std::uint32_t>(outcome.result.height);
    course.Watch(image.Get(), rows);
    OwnedSurface surface;
    OwnedImage bitmap; // goes first, before its surface
    if (MakeBitmap(course, image, bitmap) && DrawWhole(course, image, bitmap, surface)) {
        CopyImageProperties(image.Get(), bitmap.Get());
        course.FitMetadataTo(bitmap.Get());
        course.Watch(bitmap.Get(), rows, sourceRows);
        course.Save(bitmap.Get(), order.destination, order.mimeWord);
    }
    return outcome;
}

StatusValue ResizeImage(const std::string& source, const std::string& destination, std::int32_t height) {
    const std::string mimeWord = MimeWordForOutput(source, destination);
    return Resize({source, destination, mimeWord, height}, AsEstablished).end.step == Step::None ? Done : Refused;
}

} // namespace lumbrix
