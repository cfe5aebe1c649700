// The beginning that all operations from file to file have in common.
#include "imaging/source.h"

#include "imaging/formats.h"
#include "imaging/session.h"

namespace lumbrix {

StatusValue OpenSource(const std::string& source, const std::string& mimeWord, OpenedSource* opened) {
    if (OpenImagingSession(&opened->token) != 0) {
        return NoSession;
    }
    const std::string encoder = FindEncoderClsid(mimeWord);
    if (encoder.empty()) {
        return NoEncoder;
    }
    opened->encoder = ClsidFromText(encoder);
    return LoadImageFile(source, &opened->image);
}

} // namespace lumbrix
