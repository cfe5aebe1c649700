// Writes a line of text on a picture, or places another picture on it.
#include "imaging/annotate.h"

#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/session.h"

namespace lumbrix {

namespace {

constexpr std::int32_t Opaque = 255;

// A surface on the image with the image drawn over itself, as every annotation begins.
GraphicsHandle BeginDrawingOn(ImageHandle image) {
    GraphicsHandle graphics = nullptr;
    GdipGetImageGraphicsContext(image, &graphics);
    GdipDrawImage(graphics, image, 0, 0);
    return graphics;
}

void DrawText(GraphicsHandle graphics, const Annotation& annotation, FontHandle font) {
    const LayoutRectangle from{annotation.x, annotation.y, 0, 0};
    const std::int32_t alpha = annotation.alpha <= 0 || annotation.alpha > Opaque ? Opaque : annotation.alpha;
    BrushHandle brush = nullptr;
    GdipCreateSolidFill(MakeArgb(alpha, annotation.red, annotation.green, annotation.blue), &brush);
    GdipDrawString(graphics, annotation.text, font, &from, brush);
}

// The pushed state is never taken back, and the surface is not freed: it ends with its image, or with the session.
void SaveDrawnImage(GraphicsHandle graphics, ImageHandle image, const std::string& destination,
                    const std::string& mimeWord) {
    std::uint32_t state = 0;
    GdipSaveGraphics(graphics, &state);
    SaveImageFileAs(image, destination, mimeWord);
}

} // namespace

std::uint32_t MakeArgb(std::int32_t alpha, std::int32_t red, std::int32_t green, std::int32_t blue) {
    const auto lowByte = [](std::int32_t value) { return static_cast<std::uint32_t>(value) & 0xFF; };
    return lowByte(alpha) << 24 | lowByte(red) << 16 | lowByte(green) << 8 | lowByte(blue);
}

FontHandle MakeFont(const std::string& family, std::int32_t size, std::int32_t bold, std::int32_t italic,
                    std::int32_t underline, std::int32_t strikeout) {
    FontFamilyHandle familyHandle = nullptr;
    GdipCreateFontFamilyFromName(family, &familyHandle);
    const std::int32_t style = (bold != 0 ? FontStyleBold : 0) | (italic != 0 ? FontStyleItalic : 0) |
                               (underline != 0 ? FontStyleUnderline : 0) | (strikeout != 0 ? FontStyleStrikeout : 0);
    FontHandle font = nullptr;
    GdipCreateFont(familyHandle, static_cast<float>(size), style, UnitPixel, &font);
    GdipDeleteFontFamily(familyHandle);
    return font;
}

StatusValue AnnotateImage(const std::string& source, const std::string& destination, const Annotation& annotation) {
    const std::string mimeWord = MimeWordForOutput(source, destination);
    if (mimeWord.empty()) {
        return BadName;
    }
    const StatusValue token = StartImagingSession();
    const FontHandle font = MakeFont(annotation.fontName, annotation.fontSize, annotation.bold, annotation.italic,
                                     annotation.underline, annotation.strikeout);
    ImageHandle image = nullptr;
    LoadImageFile(source, &image);
    if (image == nullptr) {
        return NotLoaded;
    }
    const GraphicsHandle graphics = BeginDrawingOn(image);
    DrawText(graphics, annotation, font);
    if (font != nullptr) {
        GdipDeleteFont(font);
    }
    SaveDrawnImage(graphics, image, destination, mimeWord);
    DisposeImageHandle(image);
    EndImagingSession(token);
    return Done;
}

StatusValue StampImage(const std::string& source, const std::string& destination, float x, float y,
                       const std::string& stamp) {
    const std::string mimeWord = MimeWordForOutput(source, destination);
    if (mimeWord.empty()) {
        return BadName;
    }
    const StatusValue token = StartImagingSession();
    ImageHandle image = nullptr;
    ImageHandle stampImage = nullptr;
    LoadImageFile(source, &image);
    LoadImageFile(stamp, &stampImage);
    if (image == nullptr || stampImage == nullptr) {
        return NotLoaded;
    }
    const GraphicsHandle graphics = BeginDrawingOn(image);
    GdipDrawImage(graphics, stampImage, x, y);
    SaveDrawnImage(graphics, image, destination, mimeWord);
    DisposeImageHandle(image);
    DisposeImageHandle(stampImage);
    EndImagingSession(token);
    return Done;
}

} // namespace lumbrix
