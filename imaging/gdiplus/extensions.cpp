// What our own imaging library offers beyond the flat functions that all have.
#include "imaging/gdiplus/extensions.h"

#include "imaging/gdiplus/bindings.h"

namespace lumbrix {

namespace {

// The address of a function with these arguments; null where there is no library, or none of that name in it.
template <class... Arguments> auto Find(const char* name) {
    using Function = FlatStatus(LUMBRIX_FLAT_CALL*)(Arguments...);
    return ImagingLibraryHandle == nullptr ? nullptr
                                           : reinterpret_cast<Function>(FindProcedure(ImagingLibraryHandle, name));
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

} // namespace lumbrix
