// Turns one image file into another of a named format, at the same size.
#include "imaging/convert.h"

#include "imaging/blank.h"
#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/session.h"

namespace lumbrix {

StatusValue ConvertImageFile(const std::string& source, const std::string& destination, const std::string& mimeWord) {
    if (IsBlank(source) || IsBlank(destination)) {
        return Done;
    }
    SessionToken token = 0;
    if (OpenImagingSession(&token) != 0) {
        return NoSession;
    }
    const std::string encoder = FindEncoderClsid(mimeWord);
    if (encoder.empty()) {
        return NoEncoder;
    }
    ImageHandle image = nullptr;
    if (const FlatStatus status = LoadImageFile(source, &image); status != 0) {
        return status;
    }
    if (image != nullptr) {
        if (const FlatStatus status = SaveImageFile(image, destination, ClsidFromText(encoder)); status != 0) {
            DisposeImageHandle(image);
            return status;
        }
    }
    DisposeImageHandle(image);
    GdiplusShutdown(token);
    return Done;
}

} // namespace lumbrix
