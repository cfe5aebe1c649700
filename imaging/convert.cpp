// Turns one image file into another of a named format, at the same size.
#include "imaging/convert.h"

#include "imaging/adjusting.h"

namespace lumbrix {

Outcome Convert(const ConvertOrder& order, const Wishes& wishes) {
    Course course(wishes);
    if (!IsComplete(order, wishes.conduct)) {
        course.Fail(Step::Names, BadName);
        return course.Result();
    }
    Clsid encoder;
    OwnedImage image;
    if (!OpenSource(course, order, encoder, image) || !Adjust(course, image.Get())) {
        return course.Result();
    }
    if (!course.IsEstablished() && course.Measure(image.Get())) {
        course.Result().result = course.Result().source;
        course.Watch(image.Get(), static_cast<std::uint32_t>(course.Result().source.height));
    }
    StripAsWanted(course, image.Get());
    course.Save(image.Get(), order.destination, encoder);
    course.LookForDamage(image.Get());
    if (!course.Result().isWritten) {
        course.LeaveSessionOpen();
    }
    return course.Result();
}

StatusValue ConvertImageFile(const std::string& source, const std::string& destination, const std::string& mimeWord) {
    const Failure first = Convert({source, destination, mimeWord}, AsEstablished).first;
    const bool isPassedOver = first.step == Step::Names || first.status == NotLoaded;
    return isPassedOver ? Done : first.status;
}

} // namespace lumbrix
