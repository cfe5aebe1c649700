// Makes a Windows icon, of several sizes, of an image file.
#include "imaging/icon.h"

#include "imaging/blank.h"
#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/iconfile.h"
#include "imaging/memorystream.h"
#include "imaging/surface.h"
#include "platform/errors.h"
#include "platform/filefacts.h"
#include "platform/replacefile.h"

#include <algorithm>
#include <set>

namespace lumbrix {

namespace {

// Larger ones are PNG files within the icon.
constexpr std::int32_t LargestBitmap = 64;

constexpr std::int32_t HighQualityBicubic = 7;

bool AreAcceptable(const std::vector<std::int32_t>& sizes) {
    const std::set<std::int32_t> different(sizes.begin(), sizes.end());
    return !sizes.empty() && different.size() == sizes.size() && *different.begin() >= 1 &&
           *different.rbegin() <= LargestIcon;
}

// A transparent bitmap with an image drawn into its middle.
bool DrawInto(Course& course, OwnedImage& bitmap, PixelSize bitmapSize, ImageHandle image, PixelSize drawnSize) {
    OwnedSurface surface;
    if (!course.Take(Step::Make, GdipCreateBitmapFromScan0(bitmapSize.width, bitmapSize.height, 0, TrueColorFormat,
                                                           nullptr, bitmap.Place())) ||
        !course.Take(Step::Surface, surface.Open(bitmap.Get()))) {
        return false;
    }
    GdipSetInterpolationMode(surface.Get(), HighQualityBicubic);
    return course.Take(Step::Draw, GdipDrawImageRectI(surface.Get(), image, (bitmapSize.width - drawnSize.width) / 2,
                                                      (bitmapSize.height - drawnSize.height) / 2, drawnSize.width,
                                                      drawnSize.height));
}

FlatStatus ReadPixels(ImageHandle bitmap, std::int32_t side, std::vector<std::uint8_t>& pixels) {
    const std::int32_t stride = 4 * side;
    pixels.resize(static_cast<std::size_t>(stride) * static_cast<std::size_t>(side));
    const auto length = static_cast<std::uint32_t>(side);
    const IntegerRectangle whole{0, 0, side, side};
    LockedPixels data{length, length, stride, TrueColorFormat, pixels.data(), 0};
    const FlatStatus status = GdipBitmapLockBits(bitmap, &whole, LockToReadIntoOwnMemory, TrueColorFormat, &data);
    return status != Done ? status : GdipBitmapUnlockBits(bitmap, &data);
}

bool EncodePicture(Course& course, ImageHandle bitmap, const Clsid& pngEncoder, IconPicture& picture) {
    if (picture.side <= LargestBitmap) {
        std::vector<std::uint8_t> pixels;
        const bool isRead = course.Take(Step::Draw, ReadPixels(bitmap, picture.side, pixels));
        picture.bytes = isRead ? BitmapOfIcon(picture.side, pixels) : std::string();
        return isRead;
    }
    const auto memory = std::make_shared<GrowingMemory>();
    const FlatStatus status = SaveImageStream(bitmap, WritingStream(memory).get(), pngEncoder);
    picture.bytes.assign(reinterpret_cast<const char*>(memory->Data()), memory->Size());
    return course.Take(Step::Save, status);
}

// The source decoded once: as it is, or where it is much larger than the largest icon, at twice that icon's size.
bool DecodeOnce(Course& course, const OwnedImage& image, std::int32_t largest, OwnedImage& copy, PixelSize& size) {
    const PixelSize source = course.Result().source;
    course.Watch(image.Get(), static_cast<std::uint32_t>(source.height));
    size = std::max(source.width, source.height) > 2 * largest ? FittedInto(source, 2 * largest) : source;
    const bool isDrawn = DrawInto(course, copy, size, image.Get(), size);
    course.LookForDamage(image.Get());
    return isDrawn;
}

// As other saves: a file that could not be replaced stays, and so does one that is the source.
StatusValue WriteIcon(const IconOrder& order, const Wishes& wishes, const std::string& bytes) {
    constexpr StatusValue GenericError = 1;
    if (wishes.output) {
        GrowingMemory memory;
        if (!memory.Resize(bytes.size())) {
            return OutOfMemory;
        }
        std::copy(bytes.begin(), bytes.end(), memory.Data());
        return wishes.output(memory) ? Done : Win32Error;
    }
    const TextEncoding names = wishes.names;
    const FileKind kind = KindOfFile(order.destination, names);
    const bool isClosed = kind == FileKind::Regular && !CanWriteFile(order.destination, names);
    if ((kind != FileKind::Missing && kind != FileKind::Regular) || isClosed ||
        (!wishes.input && IsSameFile(order.source, order.destination, names)) ||
        !CanMakeFileIn(FullFolderOf(order.destination, names), names)) {
        return GenericError;
    }
    return trap([&] { ReplaceWholeFile(order.destination, bytes, names); }) ? Win32Error : Done;
}

} // namespace

PixelSize FittedInto(PixelSize picture, std::int32_t side) {
    const std::int64_t longer = std::max(picture.width, picture.height);
    const auto fitted = [&](std::int64_t length) {
        return static_cast<std::int32_t>(std::max<std::int64_t>((2 * length * side + longer) / (2 * longer), 1));
    };
    return {fitted(picture.width), fitted(picture.height)};
}

Outcome MakeIcon(const IconOrder& order, const Wishes& wishes) {
    Course course(wishes);
    Outcome& outcome = course.Result();
    if (IsBlank(order.source) || IsBlank(order.destination)) {
        course.Fail(Step::Names, BadName);
        return outcome;
    }
    if (!AreAcceptable(order.sizes)) {
        course.Fail(Step::Names, InvalidParameter);
        return outcome;
    }
    const std::int32_t largest = *std::max_element(order.sizes.begin(), order.sizes.end());
    outcome.result = {largest, largest};
    Clsid pngEncoder;
    OwnedImage image;
    OwnedImage copy;
    PixelSize size;
    if (!course.Begin(order.destination) || !course.FindEncoder("image/png", pngEncoder) ||
        !course.Load(order.source, image) || !course.Measure(image.Get()) ||
        !DecodeOnce(course, image, largest, copy, size)) {
        return outcome;
    }
    std::vector<IconPicture> pictures;
    for (const std::int32_t side : order.sizes) {
        OwnedImage square;
        pictures.push_back({side, {}});
        if (!DrawInto(course, square, {side, side}, copy.Get(), FittedInto(size, side)) ||
            !EncodePicture(course, square.Get(), pngEncoder, pictures.back())) {
            return outcome;
        }
    }
    outcome.isWritten = course.Take(Step::Save, WriteIcon(order, wishes, IconFile(pictures)));
    return outcome;
}

} // namespace lumbrix
