// Makes a small copy of an image file.
#include "imaging/thumbnail.h"

#include "base/numbers.h"
#include "imaging/adjusting.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/upright.h"

#include <algorithm>

namespace lumbrix {

namespace {

// Makes the thumbnail of an image whose size is known. The imaging library takes a side of 0 for a wish of its own,
// which only the established procedures let it.
FlatStatus ThumbnailOf(const Course& course, const OwnedImage& image, PixelSize size, ImageHandle* thumbnail) {
    if ((size.width == 0 || size.height == 0) && !course.IsEstablished()) {
        return InvalidParameter;
    }
    return GdipGetImageThumbnail(image.Get(), static_cast<std::uint32_t>(size.width),
                                 static_cast<std::uint32_t>(size.height), thumbnail);
}

} // namespace

std::int32_t ThumbnailWidth(std::int32_t sourceWidth, std::int32_t sourceHeight, std::int32_t height) {
    const long double product = static_cast<long double>(sourceWidth) * height;
    return RoundToEven(product / sourceHeight);
}

Outcome MakeThumbnail(const ConvertOrder& order, std::int32_t height, const Wishes& wishes) {
    Course course(wishes);
    Outcome& outcome = course.Result();
    if (!IsComplete(order, wishes.conduct) || height == 0) {
        course.Fail(Step::Names, BadName);
        return outcome;
    }
    Clsid encoder;
    OwnedImage thumbnail; // disposed of behind its source
    OwnedImage image;
    if (!OpenSource(course, order, encoder, image)) {
        return outcome;
    }
    ImageHandle* const place = thumbnail.Place(); // disposed of from now on, also where there is none
    if (!course.Measure(image.Get())) {
        return outcome;
    }
    // What lies on its side is drawn small as it lies, and turned then.
    const auto turn = WantedTurn(course, image.Get());
    const PixelSize upright = TurnedSize(outcome.source, turn.value_or(0));
    height = wishes.onlyShrinks ? std::min(height, upright.height) : height;
    outcome.result = {ThumbnailWidth(upright.width, upright.height, height), height};
    const auto sourceRows = static_cast<std::uint32_t>(outcome.source.height);
    const std::uint32_t rows = sourceRows + static_cast<std::uint32_t>(height);
    course.Watch(image.Get(), rows);
    const FlatStatus status = ThumbnailOf(course, image, TurnedSize(outcome.result, turn.value_or(0)), place);
    course.LookForDamage(image.Get());
    if (status != Done) {
        course.Fail(status == OutOfMemory ? Step::Draw : Step::Make, status);
        if (course.IsEstablished()) { // which leaves everything as it is
            image.LeaveBehind();
            thumbnail.LeaveBehind();
            course.LeaveSessionOpen();
        }
        return outcome;
    }
    if (!thumbnail) {
        course.Fail(Step::Make, NotLoaded);
        return outcome;
    }
    if (!TurnUpright(course, thumbnail.Get(), turn) || !LayOverBackground(course, thumbnail.Get())) {
        return outcome;
    }
    course.Watch(thumbnail.Get(), rows, sourceRows);
    course.Save(thumbnail.Get(), order.destination, encoder);
    if (!outcome.isWritten) {
        course.LeaveSessionOpen();
    }
    return outcome;
}

StatusValue ConvertImageFileToThumb(const std::string& source, std::int32_t height, const std::string& destination,
                                    const std::string& mimeWord) {
    const Failure first = MakeThumbnail({source, destination, mimeWord}, height, AsEstablished).first;
    const bool isPassedOver = first.step == Step::Names || first.step == Step::Measure || first.status == NotLoaded;
    return isPassedOver ? Done : first.status;
}

} // namespace lumbrix
