// The pixels of an image for a caller who brings the memory for them.
#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/core/rowpump.h"
#include "imaginglibrary/flat/guard.h"
#include "imaginglibrary/flat/images.h"
#include "imaginglibrary/operations/crop.h"

namespace imaginglibrary {

namespace {

// Reading, into memory of the caller's own.
constexpr std::uint32_t ReadIntoCallersMemory = 1 | 4;

bool IsDeliverable(PixelFormat format) {
    return format == PixelFormat::Rgb24 || format == PixelFormat::Rgb32 || format == PixelFormat::Argb32 ||
           format == PixelFormat::Pargb32;
}

} // namespace

// The memory is described by `data`: `pixels`, and `stride` bytes from one row to the next, which may be negative.
// Delivered are true-colour formats of 8 bits a channel. Other ways of locking are not offered (NotImplemented):
// neither writing, nor memory of the library's own. Null for `rectangle` means the whole; OutOfMemory where it runs
// over an edge.
FLAT_EXPORT Status FLAT_CALL GdipBitmapLockBits(GpImage* handle, const FlatRect* rectangle, std::uint32_t flags,
                                                PixelFormat format, BitmapData* data) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr || data == nullptr || data->pixels == nullptr) {
            return Status::InvalidParameter;
        }
        if (flags != ReadIntoCallersMemory || !IsDeliverable(format)) {
            return Status::NotImplemented;
        }
        auto found = image->PictureToRead();
        if (!found.Ok()) {
            return found.GetStatus();
        }
        std::shared_ptr<const PixelSource> picture = *found;
        if (rectangle != nullptr) {
            const PixelRect area{rectangle->x, rectangle->y, std::int64_t{rectangle->x} + rectangle->width,
                                 std::int64_t{rectangle->y} + rectangle->height};
            if (area.IsEmpty()) {
                return Status::InvalidParameter;
            }
            if (area.left < 0 || area.top < 0 || area.right > picture->Info().width ||
                area.bottom > picture->Info().height) {
                return Status::OutOfMemory;
            }
            picture = CroppedTo(std::move(picture), area);
        }
        const PictureInfo& info = picture->Info();
        const std::int64_t rowBytes = static_cast<std::int64_t>(BytesPerRow(format, info.width));
        if (data->stride < rowBytes && data->stride > -rowBytes) {
            return Status::InvalidParameter;
        }
        data->width = info.width;
        data->height = info.height;
        data->format = format;
        return ReadRowsInto(OpenRowsAs(*picture, format), info.height, [&](std::uint32_t y) {
            return static_cast<std::uint8_t*>(data->pixels) + std::ptrdiff_t{data->stride} * y;
        });
    });
}

// Nothing is kept for a caller who brought the memory.
FLAT_EXPORT Status FLAT_CALL GdipBitmapUnlockBits(GpImage* handle, BitmapData* data) {
    return Guarded(
        [&] { return FindImage(handle) == nullptr || data == nullptr ? Status::InvalidParameter : Status::Ok; });
}

} // namespace imaginglibrary
