// The beginning that conversions have in common.
#include "imaging/source.h"

#include "imaging/blank.h"
#include "imaging/formats.h"

namespace lumbrix {

bool IsComplete(const ConvertOrder& order, Conduct conduct) {
    const bool hasFormat = conduct == Conduct::Established || !order.mimeWord.empty();
    return hasFormat && !IsBlank(order.source) && !IsBlank(order.destination);
}

bool OpenSource(Course& course, const ConvertOrder& order, Clsid& encoder, OwnedImage& image) {
    if (!course.BeginChecked(order.destination)) {
        return false;
    }
    const std::string encoderText = FindEncoderClsid(order.mimeWord);
    if (encoderText.empty()) {
        course.LeaveSessionOpen();
        return course.Fail(Step::Encoder, NoEncoder);
    }
    encoder = ClsidFromText(encoderText);
    return course.LoadChecked(order.source, image);
}

} // namespace lumbrix
