// What our library offers beside the platform's functions: damage of image files, word of how far a reading is,
// metadata as a whole, and a colour below a picture.
#include "imaginglibrary/flat/extensions.h"

#include "imaginglibrary/codecs/metadata/truemetadata.h"
#include "imaginglibrary/flat/guard.h"
#include "imaginglibrary/flat/images.h"
#include "imaginglibrary/operations/layover.h"

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

FLAT_EXPORT Status FLAT_CALL ImagingCarryMetadata(GpImage* source, GpImage* target) {
    return Guarded([&] {
        const auto from = FindImage(source);
        const auto to = FindImage(target);
        if (from == nullptr || to == nullptr) {
            return Status::InvalidParameter;
        }
        to->ChangeProperties(
            [block = from->Properties()->SourceExif()](PropertyList& properties) { properties.SetSourceExif(block); });
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL ImagingFitMetadata(GpImage* handle) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr) {
            return Status::InvalidParameter;
        }
        const auto picture = image->Picture();
        image->ChangeProperties(
            [&](PropertyList& properties) { FitToPicture(properties, picture->Info().width, picture->Info().height); });
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL ImagingClearOrientation(GpImage* handle) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr) {
            return Status::InvalidParameter;
        }
        image->ChangeProperties(RemoveOrientation);
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL ImagingStripMetadata(GpImage* handle, std::int32_t keepsProfile) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr) {
            return Status::InvalidParameter;
        }
        const ProfileFate profile = keepsProfile != 0 ? ProfileFate::Kept : ProfileFate::Removed;
        image->ChangeProperties([=](PropertyList& properties) { RemoveMetadata(properties, profile); });
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL ImagingLayOverColor(GpImage* handle, std::uint32_t color) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr) {
            return Status::InvalidParameter;
        }
        const auto picture = image->Picture();
        if (auto opaque = LaidOver(picture, color); opaque != picture) {
            image->ReplacePicture(std::move(opaque));
        }
        return Status::Ok;
    });
}

} // namespace imaginglibrary
