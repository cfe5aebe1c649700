// Makes a copy of an image file at another height.
#include "imaging/resize.h"

#include "base/numbers.h"
#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/properties.h"
#include "imaging/session.h"

namespace lumbrix {

namespace {

constexpr std::int32_t NoMode = 2; // what the modes read as where there is no surface to ask

float Proportions(std::int32_t width, std::int32_t height) {
    return static_cast<float>(static_cast<double>(width) / height);
}

// Draws the whole of an image over the whole of a new bitmap, at the default modes. No status is looked at.
void DrawInto(ImageHandle image, std::int32_t sourceWidth, std::int32_t sourceHeight, ImageHandle bitmap,
              std::int32_t width, std::int32_t height, GraphicsHandle* graphics) {
    GdipGetImageGraphicsContext(bitmap, graphics);
    std::int32_t mode = NoMode;
    GdipGetInterpolationMode(*graphics, &mode);
    mode = NoMode;
    GdipGetSmoothingMode(*graphics, &mode);
    GdipDrawImageRectRectI(*graphics, image, 0, 0, width, height, 0, 0, sourceWidth, sourceHeight, UnitPixel);
}

} // namespace

std::int32_t ResizedWidth(std::int32_t sourceWidth, std::int32_t sourceHeight, std::int32_t height) {
    return RoundToEven(static_cast<long double>(Proportions(sourceWidth, sourceHeight)) * height);
}

StatusValue ResizeImage(const std::string& source, const std::string& destination, std::int32_t height) {
    const std::string mimeWord = MimeWordForOutput(source, destination);
    if (mimeWord.empty()) {
        return Refused;
    }
    const StatusValue token = StartImagingSession();
    ImageHandle image = nullptr;
    LoadImageFile(source, &image);
    if (image == nullptr) {
        return Refused;
    }
    std::uint32_t reportedHeight = 0;
    std::uint32_t reportedWidth = 0;
    GdipGetImageHeight(image, &reportedHeight);
    GdipGetImageWidth(image, &reportedWidth);
    const auto sourceWidth = static_cast<std::int32_t>(reportedWidth);
    const auto sourceHeight = static_cast<std::int32_t>(reportedHeight);
    if (sourceWidth <= 0 || sourceHeight <= 0) {
        return Refused;
    }
    const std::int32_t width = ResizedWidth(sourceWidth, sourceHeight, height);
    if (height == 0) { // a rule for a call by width alone, which nobody can make
        height = RoundToEven(width / static_cast<long double>(Proportions(sourceWidth, sourceHeight)));
    }
    std::int32_t format = 0;
    GdipGetImagePixelFormat(image, &format);
    ImageHandle bitmap = nullptr;
    GdipCreateBitmapFromScan0(width, height, 0, format, nullptr, &bitmap);
    GraphicsHandle graphics = nullptr;
    DrawInto(image, sourceWidth, sourceHeight, bitmap, width, height, &graphics);
    CopyImageProperties(image, bitmap);
    SaveImageFileAs(bitmap, destination, mimeWord);
    DisposeImageHandle(bitmap);
    GdipDeleteGraphics(graphics);
    DisposeImageHandle(image);
    EndImagingSession(token);
    return Done;
}

} // namespace lumbrix
