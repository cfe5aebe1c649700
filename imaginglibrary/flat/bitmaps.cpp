// Bitmaps from nothing and from parts of others, and turning them.
#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/flat/guard.h"
#include "imaginglibrary/flat/images.h"
#include "imaginglibrary/operations/crop.h"
#include "imaginglibrary/operations/turn.h"

#include <algorithm>
#include <array>

namespace imaginglibrary {

namespace {

constexpr std::array CreatableFormats{
    PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Indexed8, PixelFormat::Rgb555,
    PixelFormat::Rgb565,   PixelFormat::Argb1555, PixelFormat::Rgb24,    PixelFormat::Rgb32,
    PixelFormat::Argb32,   PixelFormat::Pargb32,  PixelFormat::Rgb48,
};

// What a bitmap's pixels can be converted to while a part of it is copied.
constexpr std::array ConvertibleFormats{PixelFormat::Rgb24, PixelFormat::Rgb32, PixelFormat::Argb32,
                                        PixelFormat::Pargb32};

template <std::size_t Count> bool Contains(const std::array<PixelFormat, Count>& formats, PixelFormat format) {
    return std::find(formats.begin(), formats.end(), format) != formats.end();
}

constexpr Color SystemColors[] = {
    0xFF000000, 0xFF800000, 0xFF008000, 0xFF808000, 0xFF000080, 0xFF800080, 0xFF008080, 0xFF808080,
    0xFFC0C0C0, 0xFFFF0000, 0xFF00FF00, 0xFFFFFF00, 0xFF0000FF, 0xFFFF00FF, 0xFF00FFFF, 0xFFFFFFFF,
};

// Black and white; the sixteen colours of the system; or those, a gap, and a cube of six steps in each channel.
Palette DefaultPalette(PixelFormat format) {
    if (format == PixelFormat::Indexed1) {
        return GreyPalette(2);
    }
    Palette palette(std::begin(SystemColors), std::end(SystemColors));
    if (format == PixelFormat::Indexed4) {
        return palette;
    }
    constexpr std::size_t CubeStart = 40;
    constexpr unsigned Steps = 6;
    constexpr unsigned Step = 0x33;
    palette.resize(CubeStart);
    for (unsigned i = 0; i < Steps * Steps * Steps; ++i) {
        const auto channel = [](unsigned step) { return static_cast<std::uint8_t>(step % Steps * Step); };
        palette.push_back(MakeColor(channel(i / (Steps * Steps)), channel(i / Steps), channel(i)));
    }
    return palette;
}

} // namespace

// All bytes zero, 96 dots per inch. Pixels of the caller's own are not taken: `pixels` must be null, and the stride is
// then passed over.
FLAT_EXPORT Status FLAT_CALL GdipCreateBitmapFromScan0(std::int32_t width, std::int32_t height, std::int32_t /*stride*/,
                                                       PixelFormat format, const std::uint8_t* pixels,
                                                       GpImage** bitmap) {
    return Guarded([&] {
        if (bitmap == nullptr || width <= 0 || height <= 0 || !Contains(CreatableFormats, format)) {
            return Status::InvalidParameter;
        }
        if (pixels != nullptr) {
            return Status::NotImplemented;
        }
        auto made = Bitmap::Create({.width = static_cast<std::uint32_t>(width),
                                    .height = static_cast<std::uint32_t>(height),
                                    .format = format,
                                    .palette = IsIndexed(format) ? DefaultPalette(format) : Palette(),
                                    .resolution = {AssumedDotsPerInch, AssumedDotsPerInch}});
        if (!made.Ok()) {
            return made.GetStatus();
        }
        *bitmap = AddImage(std::make_shared<Image>(std::move(*made)));
        return Status::Ok;
    });
}

// A rectangle that runs over an edge gives OutOfMemory, as the platform has it. The clone keeps resolution and
// properties; its pixels are taken from the source when they are needed, so a source file stays open with it. `format`
// is the source's own, 0 for that too, or a true-colour one of 8 bits a channel.
FLAT_EXPORT Status FLAT_CALL GdipCloneBitmapAreaI(std::int32_t x, std::int32_t y, std::int32_t width,
                                                  std::int32_t height, PixelFormat format, GpImage* handle,
                                                  GpImage** clone) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr || clone == nullptr || width <= 0 || height <= 0) {
            return Status::InvalidParameter;
        }
        if (image->IsMetafile()) {
            return Status::OutOfMemory;
        }
        auto picture = image->Picture();
        const PictureInfo& info = picture->Info();
        const PixelRect area{x, y, std::int64_t{x} + width, std::int64_t{y} + height};
        const bool keepsFormat = format == PixelFormat::Undefined || format == info.format;
        if (x < 0 || y < 0 || area.right > std::int64_t{info.width} || area.bottom > std::int64_t{info.height} ||
            (!keepsFormat && !Contains(ConvertibleFormats, format))) {
            return Status::OutOfMemory;
        }
        picture = CroppedTo(std::move(picture), area);
        if (!keepsFormat) {
            picture = ConvertedTo(std::move(picture), format);
        }
        const ImageOrigin origin{.damage = image->Origin().damage};
        *clone = AddImage(std::make_shared<Image>(std::move(picture), *image->Properties(), origin));
        return Status::Ok;
    });
}

// A code that is not 0 to 7 leaves the picture alone. Pixels are turned when they are needed, so damage shows then.
FLAT_EXPORT Status FLAT_CALL GdipImageRotateFlip(GpImage* handle, std::int32_t code) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr || code < 0 || code >= static_cast<std::int32_t>(TurnCodes)) {
            return Status::InvalidParameter;
        }
        if (image->IsMetafile()) {
            return Status::NotImplemented;
        }
        if (code == 0) {
            return Status::Ok;
        }
        auto turned = Turned(image->Picture(), static_cast<unsigned>(code));
        if (!turned.Ok()) {
            return turned.GetStatus();
        }
        image->ReplacePicture(std::move(*turned));
        return Status::Ok;
    });
}

} // namespace imaginglibrary
