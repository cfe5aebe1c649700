// Reads the size of an image file.
#include "imaging/dimensions.h"

#include "imaging/blank.h"
#include "imaging/course.h"

namespace lumbrix {

Outcome ReadSize(const std::string& name, const Wishes& wishes) {
    Course course(wishes);
    if (IsBlank(name)) {
        course.Fail(Step::Names, BadName);
        return course.Result();
    }
    OwnedImage image;
    if (course.BeginChecked() && course.LoadChecked(name, image)) {
        course.Measure(image.Get());
    }
    return course.Result();
}

StatusValue GetImageFileDimensions(const std::string& name, std::int32_t* width, std::int32_t* height) {
    const Outcome outcome = ReadSize(name, AsEstablished);
    if (outcome.end.status == Done) {
        *width = outcome.source.width;
        *height = outcome.source.height;
    }
    const bool isPassedOver =
        outcome.end.step == Step::Names || outcome.end.step == Step::Measure || outcome.end.status == NotLoaded;
    return isPassedOver ? Done : outcome.end.status;
}

} // namespace lumbrix
