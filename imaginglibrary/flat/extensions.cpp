// What our library offers beside the platform's functions: damage of image files, and word of how far a reading is.
#include "imaginglibrary/flat/extensions.h"

#include "imaginglibrary/flat/guard.h"
#include "imaginglibrary/flat/images.h"

namespace imaginglibrary {

FLAT_EXPORT Status FLAT_CALL ImagingGetImageDamage(GpImage* handle, std::int32_t* isDamaged) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr || isDamaged == nullptr) {
            return Status::InvalidParameter;
        }
        const auto& damage = image->Origin().damage;
        *isDamaged = damage != nullptr && damage->IsMet() ? 1 : 0;
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL ImagingRefuseImageDamage(GpImage* handle) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr) {
            return Status::InvalidParameter;
        }
        if (const auto& damage = image->Origin().damage) {
            damage->Refuse();
        }
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL ImagingWatchImage(GpImage* handle, ImageWatcher watcher, void* context) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr) {
            return Status::InvalidParameter;
        }
        image->WatchWith(watcher, context);
        return Status::Ok;
    });
}

} // namespace imaginglibrary
