// What our own imaging library offers beyond the flat functions that all have.
#include "imaging/gdiplus/extensions.h"

#include "imaging/gdiplus/bindings.h"

#include <vector>

namespace lumbrix {

namespace {

// The address of a function with these arguments; null where there is no library, or none of that name in it.
template <class... Arguments> auto Find(const char* name) {
    using Function = FlatStatus(LUMBRIX_FLAT_CALL*)(Arguments...);
    return ImagingLibraryHandle == nullptr ? nullptr
                                           : reinterpret_cast<Function>(FindProcedure(ImagingLibraryHandle, name));
}

constexpr std::uint32_t OrientationTag = 0x0112;
constexpr std::uint32_t ColorProfileTag = 0x8773;

// By a function that the platform has and our own library has not.
void RemoveItem(ImageHandle image, std::uint32_t tag) {
    if (const auto function = Find<ImageHandle, std::uint32_t>("GdipRemovePropertyItem")) {
        function(image, tag);
    }
}

} // namespace

bool IsImageDamaged(ImageHandle image) {
    std::int32_t isDamaged = 0;
    const auto function = Find<ImageHandle, std::int32_t*>("ImagingGetImageDamage");
    return function != nullptr && function(image, &isDamaged) == 0 && isDamaged != 0;
}

void RefuseImageDamage(ImageHandle image) {
    if (const auto function = Find<ImageHandle>("ImagingRefuseImageDamage")) {
        function(image);
    }
}

void WatchImage(ImageHandle image, RowWatcher watcher, void* context) {
    if (const auto function = Find<ImageHandle, RowWatcher, void*>("ImagingWatchImage")) {
        function(image, watcher, context);
    }
}

void CarryMetadata(ImageHandle source, ImageHandle target) {
    if (const auto function = Find<ImageHandle, ImageHandle>("ImagingCarryMetadata")) {
        function(source, target);
    }
}

void FitMetadata(ImageHandle image) {
    if (const auto function = Find<ImageHandle>("ImagingFitMetadata")) {
        function(image);
    }
}

void ClearOrientation(ImageHandle image) {
    if (const auto function = Find<ImageHandle>("ImagingClearOrientation")) {
        function(image);
    } else {
        RemoveItem(image, OrientationTag);
    }
}

void StripMetadata(ImageHandle image, ColorProfile profile) {
    if (const auto function = Find<ImageHandle, std::int32_t>("ImagingStripMetadata")) {
        function(image, profile == ColorProfile::Kept ? 1 : 0);
        return;
    }
    std::uint32_t count = 0;
    GdipGetPropertyCount(image, &count);
    std::vector<std::uint32_t> tags(count);
    GdipGetPropertyIdList(image, count, tags.data());
    for (const std::uint32_t tag : tags) {
        if (tag != ColorProfileTag || profile == ColorProfile::Removed) {
            RemoveItem(image, tag);
        }
    }
}

FlatStatus LayOverColor(ImageHandle image, std::uint32_t color) {
    constexpr FlatStatus NotImplemented = 6;
    const auto function = Find<ImageHandle, std::uint32_t>("ImagingLayOverColor");
    return function != nullptr ? function(image, color) : NotImplemented;
}

} // namespace lumbrix
