// The four steps of every binding, and the bindings.
#include "imaging/gdiplus/bindings.h"

namespace lumbrix {

ModuleHandle ImagingLibraryHandle = nullptr;

namespace {

constexpr EncoderParameters UsualParameters{1,
                                            {{EncoderSaveFlag, 1, EncoderParameterValueTypeLong, &EncoderValueFlush}}};

template <class Result, class... Arguments> Result Call(const char* name, Arguments... arguments) {
    if (ImagingLibraryHandle == nullptr) {
        return Result();
    }
    using Function = Result(LUMBRIX_FLAT_CALL*)(Arguments...);
    const auto function = reinterpret_cast<Function>(FindProcedure(ImagingLibraryHandle, name));
    return function(arguments...);
}

} // namespace

FlatStatus GdiplusStartup(SessionToken* token, const GdiplusStartupInput* input, void* output) {
    return Call<FlatStatus>("GdiplusStartup", token, input, output);
}

void GdiplusShutdown(SessionToken token) { Call<void>("GdiplusShutdown", token); }

FlatStatus GdipLoadImageFromFile(const char16_t* name, ImageHandle* image) {
    return Call<FlatStatus>("GdipLoadImageFromFile", name, image);
}

FlatStatus GdipLoadImageFromStream(FlatStream* stream, ImageHandle* image) {
    return Call<FlatStatus>("GdipLoadImageFromStream", stream, image);
}

FlatStatus GdipDisposeImage(ImageHandle image) { return Call<FlatStatus>("GdipDisposeImage", image); }

FlatStatus GdipCloneImage(ImageHandle image, ImageHandle* clone) {
    return Call<FlatStatus>("GdipCloneImage", image, clone);
}

FlatStatus GdipGetImageWidth(ImageHandle image, std::uint32_t* width) {
    return Call<FlatStatus>("GdipGetImageWidth", image, width);
}

FlatStatus GdipGetImageHeight(ImageHandle image, std::uint32_t* height) {
    return Call<FlatStatus>("GdipGetImageHeight", image, height);
}

FlatStatus GdipGetImagePixelFormat(ImageHandle image, std::int32_t* format) {
    return Call<FlatStatus>("GdipGetImagePixelFormat", image, format);
}

FlatStatus GdipGetImageThumbnail(ImageHandle image, std::uint32_t width, std::uint32_t height, ImageHandle* thumbnail) {
    void* const none = nullptr;
    return Call<FlatStatus>("GdipGetImageThumbnail", image, width, height, thumbnail, none, none);
}

FlatStatus GdipCreateBitmapFromScan0(std::int32_t width, std::int32_t height, std::int32_t stride, std::int32_t format,
                                     void* pixels, ImageHandle* bitmap) {
    return Call<FlatStatus>("GdipCreateBitmapFromScan0", width, height, stride, format, pixels, bitmap);
}

FlatStatus GdipCloneBitmapAreaI(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                                std::int32_t format, ImageHandle bitmap, ImageHandle* clone) {
    return Call<FlatStatus>("GdipCloneBitmapAreaI", x, y, width, height, format, bitmap, clone);
}

FlatStatus GdipBitmapLockBits(ImageHandle bitmap, const IntegerRectangle* rectangle, std::uint32_t flags,
                              std::int32_t format, LockedPixels* pixels) {
    return Call<FlatStatus>("GdipBitmapLockBits", bitmap, rectangle, flags, format, pixels);
}

FlatStatus GdipBitmapUnlockBits(ImageHandle bitmap, LockedPixels* pixels) {
    return Call<FlatStatus>("GdipBitmapUnlockBits", bitmap, pixels);
}

FlatStatus GdipImageRotateFlip(ImageHandle image, std::int32_t code) {
    return Call<FlatStatus>("GdipImageRotateFlip", image, code);
}

FlatStatus GdipGetImageGraphicsContext(ImageHandle image, GraphicsHandle* graphics) {
    return Call<FlatStatus>("GdipGetImageGraphicsContext", image, graphics);
}

FlatStatus GdipCreateFromHDC(DeviceContextHandle context, GraphicsHandle* graphics) {
    return Call<FlatStatus>("GdipCreateFromHDC", context, graphics);
}

FlatStatus GdipDeleteGraphics(GraphicsHandle graphics) { return Call<FlatStatus>("GdipDeleteGraphics", graphics); }

FlatStatus GdipSaveGraphics(GraphicsHandle graphics, std::uint32_t* state) {
    return Call<FlatStatus>("GdipSaveGraphics", graphics, state);
}

FlatStatus GdipGetInterpolationMode(GraphicsHandle graphics, std::int32_t* mode) {
    return Call<FlatStatus>("GdipGetInterpolationMode", graphics, mode);
}

FlatStatus GdipSetInterpolationMode(GraphicsHandle graphics, std::int32_t mode) {
    return Call<FlatStatus>("GdipSetInterpolationMode", graphics, mode);
}

FlatStatus GdipGetSmoothingMode(GraphicsHandle graphics, std::int32_t* mode) {
    return Call<FlatStatus>("GdipGetSmoothingMode", graphics, mode);
}

FlatStatus GdipSetSmoothingMode(GraphicsHandle graphics, std::int32_t mode) {
    return Call<FlatStatus>("GdipSetSmoothingMode", graphics, mode);
}

FlatStatus GdipTranslateWorldTransform(GraphicsHandle graphics, float dx, float dy, std::int32_t order) {
    return Call<FlatStatus>("GdipTranslateWorldTransform", graphics, dx, dy, order);
}

FlatStatus GdipRotateWorldTransform(GraphicsHandle graphics, float degrees, std::int32_t order) {
    return Call<FlatStatus>("GdipRotateWorldTransform", graphics, degrees, order);
}

FlatStatus GdipDrawImage(GraphicsHandle graphics, ImageHandle image, float x, float y) {
    return Call<FlatStatus>("GdipDrawImage", graphics, image, x, y);
}

FlatStatus GdipDrawImageRectI(GraphicsHandle graphics, ImageHandle image, std::int32_t x, std::int32_t y,
                              std::int32_t width, std::int32_t height) {
    return Call<FlatStatus>("GdipDrawImageRectI", graphics, image, x, y, width, height);
}

FlatStatus GdipDrawImageRectRectI(GraphicsHandle graphics, ImageHandle image, std::int32_t x, std::int32_t y,
                                  std::int32_t width, std::int32_t height, std::int32_t sourceX, std::int32_t sourceY,
                                  std::int32_t sourceWidth, std::int32_t sourceHeight, std::int32_t unit) {
    const void* const none = nullptr;
    return Call<FlatStatus>("GdipDrawImageRectRectI", graphics, image, x, y, width, height, sourceX, sourceY,
                            sourceWidth, sourceHeight, unit, none, none, none);
}

FlatStatus GdipDrawImagePointsI(GraphicsHandle graphics, ImageHandle image, const IntegerPoint* points,
                                std::int32_t count) {
    const char* const name = "GdipDrawImagePointsI";
    if (ImagingLibraryHandle == nullptr || graphics == nullptr ||
        FindProcedure(ImagingLibraryHandle, name) == nullptr) {
        return 0;
    }
    return Call<FlatStatus>(name, graphics, image, points, count);
}

FlatStatus GdipDrawEllipse(GraphicsHandle graphics, PenHandle pen, float x, float y, float width, float height) {
    return Call<FlatStatus>("GdipDrawEllipse", graphics, pen, x, y, width, height);
}

FlatStatus GdipDrawString(GraphicsHandle graphics, const std::string& text, FontHandle font,
                          const LayoutRectangle* rectangle, BrushHandle brush, TextEncoding encoding) {
    std::u16string wide = ToWide(text, encoding);
    if (wide.size() < text.size() && encoding == TextEncoding::CodePage) {
        wide.resize(text.size()); // characters of several bytes: the count must not lead behind the buffer
    }
    const void* const noFormat = nullptr;
    return Call<FlatStatus>("GdipDrawString", graphics, wide.c_str(), static_cast<std::int32_t>(wide.size()), font,
                            rectangle, noFormat, brush);
}

FlatStatus GdipCreateFontFamilyFromName(const std::string& name, FontFamilyHandle* family, TextEncoding encoding) {
    void* const installedFonts = nullptr;
    const std::u16string wide = ToWide(name, encoding);
    return Call<FlatStatus>("GdipCreateFontFamilyFromName", wide.c_str(), installedFonts, family);
}

FlatStatus GdipDeleteFontFamily(FontFamilyHandle family) { return Call<FlatStatus>("GdipDeleteFontFamily", family); }

FlatStatus GdipCreateFont(FontFamilyHandle family, float size, std::int32_t style, std::int32_t unit,
                          FontHandle* font) {
    return Call<FlatStatus>("GdipCreateFont", family, size, style, unit, font);
}

FlatStatus GdipDeleteFont(FontHandle font) { return Call<FlatStatus>("GdipDeleteFont", font); }

FlatStatus GdipCreateSolidFill(std::uint32_t color, BrushHandle* brush) {
    return Call<FlatStatus>("GdipCreateSolidFill", color, brush);
}

FlatStatus GdipGetPropertySize(ImageHandle image, std::uint32_t* bytes, std::uint32_t* count) {
    return Call<FlatStatus>("GdipGetPropertySize", image, bytes, count);
}

FlatStatus GdipGetAllPropertyItems(ImageHandle image, std::uint32_t bytes, std::uint32_t count, void* block) {
    return Call<FlatStatus>("GdipGetAllPropertyItems", image, bytes, count, block);
}

FlatStatus GdipGetPropertyItemSize(ImageHandle image, std::uint32_t tag, std::uint32_t* bytes) {
    return Call<FlatStatus>("GdipGetPropertyItemSize", image, tag, bytes);
}

FlatStatus GdipGetPropertyItem(ImageHandle image, std::uint32_t tag, std::uint32_t bytes, void* block) {
    return Call<FlatStatus>("GdipGetPropertyItem", image, tag, bytes, block);
}

FlatStatus GdipSetPropertyItem(ImageHandle image, const PropertyItem* item) {
    return Call<FlatStatus>("GdipSetPropertyItem", image, item);
}

FlatStatus GdipGetPropertyCount(ImageHandle image, std::uint32_t* count) {
    return Call<FlatStatus>("GdipGetPropertyCount", image, count);
}

FlatStatus GdipGetPropertyIdList(ImageHandle image, std::uint32_t count, std::uint32_t* tags) {
    return Call<FlatStatus>("GdipGetPropertyIdList", image, count, tags);
}

FlatStatus GdipGetImageEncodersSize(std::uint32_t* count, std::uint32_t* bytes) {
    return Call<FlatStatus>("GdipGetImageEncodersSize", count, bytes);
}

FlatStatus GdipGetImageEncoders(std::uint32_t count, std::uint32_t bytes, void* buffer) {
    return Call<FlatStatus>("GdipGetImageEncoders", count, bytes, buffer);
}

FlatStatus GdipSaveImageToFile(ImageHandle image, const char16_t* name, const Clsid* encoder, const void* /*ignored*/) {
    return SaveImageWithParameters(image, name, encoder, &UsualParameters);
}

FlatStatus SaveImageWithParameters(ImageHandle image, const char16_t* name, const Clsid* encoder,
                                   const EncoderParameters* parameters) {
    return Call<FlatStatus>("GdipSaveImageToFile", image, name, encoder, parameters);
}

FlatStatus GdipSaveImageToStream(ImageHandle image, FlatStream* stream, const Clsid* encoder, const void* /*ignored*/) {
    return SaveImageToStreamWithParameters(image, stream, encoder, &UsualParameters);
}

FlatStatus SaveImageToStreamWithParameters(ImageHandle image, FlatStream* stream, const Clsid* encoder,
                                           const EncoderParameters* parameters) {
    return Call<FlatStatus>("GdipSaveImageToStream", image, stream, encoder, parameters);
}

} // namespace lumbrix
