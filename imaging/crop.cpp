// Cuts a rectangle out of an image file.
#include "imaging/crop.h"

#include "imaging/adjusting.h"
#include "imaging/course.h"
#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/properties.h"

namespace lumbrix {

namespace {

// As established only the size is compared, and a place that runs over an edge is left to the imaging library.
bool FitsInto(PixelSize picture, const CropOrder& order, Conduct conduct) {
    if (picture.width < order.width || picture.height < order.height) {
        return false;
    }
    return conduct == Conduct::Established || (order.x >= 0 && order.y >= 0 && order.x <= picture.width - order.width &&
                                               order.y <= picture.height - order.height);
}

} // namespace

FlatStatus CloneImageArea(ImageHandle image, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                          ImageHandle* clone) {
    std::int32_t format = 0;
    if (const FlatStatus status = GdipGetImagePixelFormat(image, &format); status != 0) {
        return status;
    }
    return GdipCloneBitmapAreaI(x, y, width, height, format, image, clone);
}

Outcome Crop(const CropOrder& order, const Wishes& wishes) {
    Course course(wishes);
    Outcome& outcome = course.Result();
    if (!course.TakeFormat(order.mimeWord)) {
        return outcome;
    }
    if (order.width <= 0 || order.height <= 0) {
        course.Fail(Step::Names, InvalidParameter);
        return outcome;
    }
    outcome.result = {order.width, order.height};
    if (!course.Begin(order.destination)) {
        return outcome;
    }
    OwnedImage image;
    if (!course.Load(order.source, image) || !Adjust(course, image.Get())) {
        return outcome;
    }
    course.Measure(image.Get(), MeasuredFirst::Height);
    OwnedImage clone;
    ImageHandle* const place = clone.Place(); // disposed of from now on, also where there is none
    if (!FitsInto(outcome.source, order, wishes.conduct)) {
        course.Fail(Step::Cut, Refused);
        return outcome;
    }
    const FlatStatus status = CloneImageArea(image.Get(), order.x, order.y, order.width, order.height, place);
    if (status != Done) {
        course.Fail(Step::Cut, status);
        return outcome;
    }
    CopyImageProperties(image.Get(), clone.Get());
    course.FitMetadataTo(clone.Get());
    StripAsWanted(course, clone.Get());
    course.Watch(clone.Get(), static_cast<std::uint32_t>(order.height));
    if (course.Save(clone.Get(), order.destination, order.mimeWord) == OutOfMemory && IsUndecodable(clone.Get())) {
        course.Fail(Step::Draw, OutOfMemory); // a part may be decoded as late as this
    }
    course.LookForDamage(clone.Get());
    return outcome;
}

StatusValue CropImage(const std::string& source, const std::string& destination, std::int32_t x, std::int32_t y,
                      std::int32_t width, std::int32_t height) {
    const std::string mimeWord = MimeWordForOutput(source, destination);
    const Failure end = Crop({source, destination, mimeWord, x, y, width, height}, AsEstablished).end;
    return end.step == Step::Cut || end.step == Step::None ? end.status : Refused;
}

} // namespace lumbrix
