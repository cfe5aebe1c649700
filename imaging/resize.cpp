// Makes a copy of an image file in another size.
#include "imaging/resize.h"

#include "imaging/adjusting.h"
#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/properties.h"
#include "imaging/surface.h"
#include "imaging/upright.h"

namespace lumbrix {

namespace {

constexpr std::int32_t NoMode = 2; // what the modes read as where there is no surface to ask

// Makes the bitmap. As established it has the source's pixel format, also where that cannot be drawn on.
bool MakeBitmap(Course& course, const OwnedImage& image, PixelSize size, OwnedImage& bitmap) {
    std::int32_t format = 0;
    if (!course.Take(Step::Load, GdipGetImagePixelFormat(image.Get(), &format))) {
        return false;
    }
    if (!course.IsEstablished() && IsIndexedFormat(format)) {
        format = TrueColorFormat;
    }
    return course.Take(Step::Make,
                       GdipCreateBitmapFromScan0(size.width, size.height, 0, format, nullptr, bitmap.Place()));
}

// Draws the whole of an image over the whole of a bitmap of size `to`, at the default modes. False where the bitmap
// must not be written, for there is a surface and the image is not on it.
bool DrawWhole(Course& course, const OwnedImage& image, PixelSize to, const OwnedImage& bitmap, OwnedSurface& surface) {
    if (!course.Take(Step::Surface, surface.Open(bitmap.Get()))) {
        return false;
    }
    std::int32_t mode = NoMode;
    GdipGetInterpolationMode(surface.Get(), &mode);
    mode = NoMode;
    GdipGetSmoothingMode(surface.Get(), &mode);
    const PixelSize from = course.Result().source;
    const FlatStatus status = GdipDrawImageRectRectI(surface.Get(), image.Get(), 0, 0, to.width, to.height, 0, 0,
                                                     from.width, from.height, UnitPixel);
    course.LookForDamage(image.Get());
    return TakeDrawn(course, Step::Draw, surface, status);
}

// Writes the picture in the size that it has.
void WriteInItsSize(Course& course, const ResizeOrder& order, const OwnedImage& image,
                    std::optional<std::int32_t> turn) {
    if (TurnUpright(course, image.Get(), turn) && LayOverBackground(course, image.Get())) {
        StripAsWanted(course, image.Get());
        course.Watch(image.Get(), static_cast<std::uint32_t>(course.Result().result.height));
        course.Save(image.Get(), order.destination, order.mimeWord);
    }
    course.LookForDamage(image.Get());
}

// Draws the picture in its new size as it lies, and turns what it became: that is little, where the picture may be
// large.
void WriteResized(Course& course, const ResizeOrder& order, const OwnedImage& image, std::optional<std::int32_t> turn) {
    const Outcome& outcome = course.Result();
    const PixelSize drawn = TurnedSize(outcome.result, turn.value_or(0));
    const auto sourceRows = static_cast<std::uint32_t>(outcome.source.height);
    const std::uint32_t rows = sourceRows + static_cast<std::uint32_t>(outcome.result.height);
    course.Watch(image.Get(), rows);
    OwnedSurface surface;
    OwnedImage bitmap; // goes first, before its surface
    if (!MakeBitmap(course, image, drawn, bitmap) || !DrawWhole(course, image, drawn, bitmap, surface)) {
        return;
    }
    CopyImageProperties(image.Get(), bitmap.Get());
    if (!TurnUpright(course, bitmap.Get(), turn) || !LayOverBackground(course, bitmap.Get())) {
        return;
    }
    course.FitMetadataTo(bitmap.Get());
    StripAsWanted(course, bitmap.Get());
    course.Watch(bitmap.Get(), rows, sourceRows);
    course.Save(bitmap.Get(), order.destination, order.mimeWord);
}

} // namespace

Outcome Resize(const ResizeOrder& order, const Wishes& wishes) {
    Course course(wishes);
    Outcome& outcome = course.Result();
    if (!course.TakeFormat(order.mimeWord)) {
        return outcome;
    }
    if (!course.IsEstablished() && !IsMeaningful(order.fitting)) {
        course.Fail(Step::Names, InvalidParameter);
        return outcome;
    }
    if (!course.Begin(order.destination)) {
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
    const auto turn = WantedTurn(course, image.Get());
    const PixelSize upright = TurnedSize(outcome.source, turn.value_or(0));
    if (wishes.onlyShrinks && IsSmallEnough(upright, order.fitting)) {
        outcome.result = upright;
        WriteInItsSize(course, order, image, turn);
        return outcome;
    }
    const std::int32_t height = order.fitting.height;
    outcome.result = course.IsEstablished() ? PixelSize{ResizedWidth(upright.width, upright.height, height), height}
                                            : FittedSize(upright, order.fitting);
    WriteResized(course, order, image, turn);
    return outcome;
}

StatusValue ResizeImage(const std::string& source, const std::string& destination, std::int32_t height) {
    const std::string mimeWord = MimeWordForOutput(source, destination);
    const ResizeOrder order{source, destination, mimeWord, {.height = height}};
    return Resize(order, AsEstablished).end.step == Step::None ? Done : Refused;
}

} // namespace lumbrix
