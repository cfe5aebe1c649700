// The beginning that conversions have in common.
#include "imaging/source.h"

#include "imaging/blank.h"

namespace lumbrix {

bool IsComplete(const ConvertOrder& order, Conduct conduct) {
    const bool hasFormat = conduct == Conduct::Established || !order.mimeWord.empty();
    return hasFormat && !IsBlank(order.source) && !IsBlank(order.destination);
}

bool OpenSource(Course& course, const ConvertOrder& order, Clsid& encoder, OwnedImage& image) {
    return course.BeginChecked(order.destination) && course.FindEncoderChecked(order.mimeWord, encoder) &&
           course.LoadChecked(order.source, image);
}

} // namespace lumbrix
