// Turns one image file into another of a named format, at the same size.
#include "imaging/convert.h"

#include "imaging/blank.h"
#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/session.h"
#include "imaging/source.h"

namespace lumbrix {

StatusValue ConvertImageFile(const std::string& source, const std::string& destination, const std::string& mimeWord) {
    if (IsBlank(source) || IsBlank(destination)) {
        return Done;
    }
    OpenedSource opened;
    if (const StatusValue status = OpenSource(source, mimeWord, &opened); status != Done) {
        return status;
    }
    if (opened.image != nullptr) {
        if (const FlatStatus status = SaveImageFile(opened.image, destination, opened.encoder); status != 0) {
            DisposeImageHandle(opened.image);
            return status;
        }
    }
    DisposeImageHandle(opened.image);
    GdiplusShutdown(opened.token);
    return Done;
}

} // namespace lumbrix
