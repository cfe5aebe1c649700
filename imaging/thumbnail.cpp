// Makes a small copy of an image file.
#include "imaging/thumbnail.h"

#include "base/numbers.h"
#include "imaging/blank.h"
#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/session.h"
#include "imaging/source.h"

namespace lumbrix {

namespace {

// Makes and saves the thumbnail of a loaded image. Done also where there is nothing to make.
FlatStatus SaveThumbnail(ImageHandle image, std::int32_t height, const std::string& destination, const Clsid& encoder,
                         ImageHandle* thumbnail, bool* madeThumbnail) {
    std::uint32_t sourceWidth = 0;
    std::uint32_t sourceHeight = 0;
    GdipGetImageWidth(image, &sourceWidth);
    GdipGetImageHeight(image, &sourceHeight);
    const auto signedWidth = static_cast<std::int32_t>(sourceWidth);
    const auto signedHeight = static_cast<std::int32_t>(sourceHeight);
    if (signedWidth <= 0 || signedHeight <= 0) {
        return Done;
    }
    const std::int32_t width = ThumbnailWidth(signedWidth, signedHeight, height);
    const FlatStatus status =
        GdipGetImageThumbnail(image, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height), thumbnail);
    *madeThumbnail = status == 0;
    if (status != 0 || *thumbnail == nullptr) {
        return status;
    }
    return SaveImageFile(*thumbnail, destination, encoder);
}

} // namespace

std::int32_t ThumbnailWidth(std::int32_t sourceWidth, std::int32_t sourceHeight, std::int32_t height) {
    const long double product = static_cast<long double>(sourceWidth) * height;
    return RoundToEven(product / sourceHeight);
}

StatusValue ConvertImageFileToThumb(const std::string& source, std::int32_t height, const std::string& destination,
                                    const std::string& mimeWord) {
    if (IsBlank(source) || IsBlank(destination) || height == 0) {
        return Done;
    }
    OpenedSource opened;
    if (const StatusValue status = OpenSource(source, mimeWord, &opened); status != Done) {
        return status;
    }
    ImageHandle thumbnail = nullptr;
    if (opened.image != nullptr) {
        bool madeThumbnail = true;
        const FlatStatus status =
            SaveThumbnail(opened.image, height, destination, opened.encoder, &thumbnail, &madeThumbnail);
        if (status != 0) {
            // A refused thumbnail leaves the image behind on purpose; a refused save does not.
            if (madeThumbnail) {
                DisposeImageHandle(opened.image);
                DisposeImageHandle(thumbnail);
            }
            return status;
        }
    }
    DisposeImageHandle(opened.image);
    DisposeImageHandle(thumbnail);
    GdiplusShutdown(opened.token);
    return Done;
}

} // namespace lumbrix
