// What a job may want of any picture besides the operation: that it is upright, that it is opaque, that nothing is told
// of it.
#include "imaging/adjusting.h"

#include "imaging/gdiplus/bindings.h"
#include "imaging/gdiplus/extensions.h"
#include "imaging/upright.h"

namespace lumbrix {

std::optional<std::int32_t> WantedTurn(const Course& course, ImageHandle image) {
    return course.Wanted().turnsUpright ? UprightTurn(image) : std::nullopt;
}

bool TurnUpright(Course& course, ImageHandle image, std::optional<std::int32_t> turn) {
    if (!turn) {
        return true;
    }
    if (*turn != 0) {
        if (!course.Take(Step::Turn, GdipImageRotateFlip(image, *turn))) {
            return false;
        }
        course.FitMetadataTo(image);
    }
    ClearOrientation(image);
    return true;
}

bool LayOverBackground(Course& course, ImageHandle image) {
    const auto& color = course.Wanted().background;
    return !color || course.Take(Step::LayOver, LayOverColor(image, *color));
}

bool Adjust(Course& course, ImageHandle source) {
    return TurnUpright(course, source, WantedTurn(course, source)) && LayOverBackground(course, source);
}

void StripAsWanted(const Course& course, ImageHandle image) {
    if (course.Wanted().stripsMetadata) {
        StripMetadata(image, course.Wanted().keepsProfile ? ColorProfile::Kept : ColorProfile::Removed);
    }
}

} // namespace lumbrix
