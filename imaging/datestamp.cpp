// The date that a file holds about its picture, read and written. Nothing is drawn.
#include "imaging/datestamp.h"

#include "imaging/blank.h"
#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/paths.h"
#include "imaging/properties.h"
#include "imaging/session.h"

#include <cstring>
#include <vector>

namespace lumbrix {

namespace {

constexpr std::uint32_t DateTimeTag = 306;

std::string ReadDate(ImageHandle image) {
    std::uint32_t bytes = 0;
    GdipGetPropertyItemSize(image, DateTimeTag, &bytes);
    std::vector<std::uint8_t> block(bytes < sizeof(PropertyItem) ? sizeof(PropertyItem) : bytes);
    if (GdipGetPropertyItem(image, DateTimeTag, bytes, block.data()) != 0) {
        return {};
    }
    PropertyItem item;
    std::memcpy(&item, block.data(), sizeof item);
    return PropertyText(item);
}

} // namespace

std::string GetImageDateTime(const std::string& name) {
    SessionToken token = 0;
    if (IsBlank(name) || ImagingLibraryHandle == nullptr || OpenImagingSession(&token) != 0) {
        return {};
    }
    ImageHandle image = nullptr;
    if (LoadImageFile(name, &image) != 0) {
        return {};
    }
    std::string date = ReadDate(image);
    DisposeImageHandle(image);
    GdiplusShutdown(token);
    return date;
}

std::string StampedName(const std::string& name) {
    return AddBackslash(FolderPart(name)) + BaseNamePart(name) + "_stamped" + ".jpg";
}

StatusValue DateStampImage(const std::string& name, const std::string& date) {
    if (IsBlank(name) || ImagingLibraryHandle == nullptr) {
        return Done;
    }
    SessionToken token = 0;
    if (OpenImagingSession(&token) != 0) {
        return Refused;
    }
    ImageHandle image = nullptr;
    if (LoadImageFile(name, &image) != 0) {
        return Refused;
    }
    ImageHandle clone = nullptr;
    GdipCloneImage(image, &clone);
    CopyImageProperties(image, clone);
    const PropertyItem item{DateTimeTag, static_cast<std::uint32_t>(date.size() + 1), PropertyTypeAscii, date.c_str()};
    const FlatStatus status = GdipSetPropertyItem(clone, &item);
    if (status == 0) {
        SaveImageFileAs(clone, StampedName(name), "image/jpeg");
    }
    DisposeImageHandle(image);
    DisposeImageHandle(clone);
    GdiplusShutdown(token);
    return status;
}

} // namespace lumbrix
