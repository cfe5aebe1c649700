// Small copies of images.
#include "imaginglibrary/core/limits.h"
#include "imaginglibrary/flat/guard.h"
#include "imaginglibrary/flat/images.h"
#include "imaginglibrary/operations/resample.h"

namespace imaginglibrary {

namespace {

// The side that stands for "the system's own size".
constexpr std::uint32_t DefaultThumbnailSide = 120;

} // namespace

// A side of 0 becomes 120 pixels; a negative one arrives as a huge number and is refused. A thumbnail that lies in the
// file itself is not used, for it is seldom as good as the picture. The result is premultiplied true colour.
FLAT_EXPORT Status FLAT_CALL GdipGetImageThumbnail(GpImage* handle, std::uint32_t width, std::uint32_t height,
                                                   GpImage** thumbnail, void* /*callback*/, void* /*callbackData*/) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr || thumbnail == nullptr) {
            return Status::InvalidParameter;
        }
        width = width == 0 ? DefaultThumbnailSide : width;
        height = height == 0 ? DefaultThumbnailSide : height;
        if (!IsAcceptableSize(width, height)) {
            return Status::InvalidParameter;
        }
        const auto picture = image->PictureToRead();
        if (!picture.Ok()) {
            return picture.GetStatus();
        }
        auto made = Resample(**picture, width, height);
        if (!made.Ok()) {
            return made.GetStatus();
        }
        const ImageOrigin origin{.damage = image->Origin().damage};
        *thumbnail = AddImage(std::make_shared<Image>(std::move(*made), PropertyList(), origin));
        return Status::Ok;
    });
}

} // namespace imaginglibrary
