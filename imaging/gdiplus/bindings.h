// One procedure per function of the imaging library in use, under the function's own name.
//
// Each does the same four things: while no imaging library is loaded it returns 0 at once and touches nothing;
// otherwise it looks the name up afresh, calls through the address, and returns the function's status. Nothing here
// locks, tests arguments, or keeps an address. Out-arguments are pointers to the caller's variable. A function that the
// loaded library does not have is called all the same, through the null address; only GdipDrawImagePointsI tests its
// address and its surface first, and returns 0 where either is missing.
//
// GdipDrawString and GdipCreateFontFamilyFromName take 8-bit text and convert it; all other names are wide already.
#pragma once

#include "imaging/gdiplus/flatstream.h"
#include "imaging/gdiplus/flattypes.h"
#include "platform/modules.h"
#include "platform/text.h"

#include <string>

namespace lumbrix {

// The loaded imaging library, zero while there is none. Written by LoadImagingLibrary and UnloadImagingLibrary only.
extern ModuleHandle ImagingLibraryHandle;

FlatStatus GdiplusStartup(SessionToken* token, const GdiplusStartupInput* input, void* output);
void GdiplusShutdown(SessionToken token);

// `name` is wide text; the caller has converted it.
FlatStatus GdipLoadImageFromFile(const char16_t* name, ImageHandle* image);
// The picture begins where the stream stands. A reference to it is kept as long as the image lives.
FlatStatus GdipLoadImageFromStream(FlatStream* stream, ImageHandle* image);
FlatStatus GdipDisposeImage(ImageHandle image);
FlatStatus GdipCloneImage(ImageHandle image, ImageHandle* clone);
FlatStatus GdipGetImageWidth(ImageHandle image, std::uint32_t* width);
FlatStatus GdipGetImageHeight(ImageHandle image, std::uint32_t* height);
FlatStatus GdipGetImagePixelFormat(ImageHandle image, std::int32_t* format);
FlatStatus GdipGetImageThumbnail(ImageHandle image, std::uint32_t width, std::uint32_t height, ImageHandle* thumbnail);
FlatStatus GdipCreateBitmapFromScan0(std::int32_t width, std::int32_t height, std::int32_t stride, std::int32_t format,
                                     void* pixels, ImageHandle* bitmap);
FlatStatus GdipCloneBitmapAreaI(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                                std::int32_t format, ImageHandle bitmap, ImageHandle* clone);
FlatStatus GdipBitmapLockBits(ImageHandle bitmap, const IntegerRectangle* rectangle, std::uint32_t flags,
                              std::int32_t format, LockedPixels* pixels);
FlatStatus GdipBitmapUnlockBits(ImageHandle bitmap, LockedPixels* pixels);
FlatStatus GdipImageRotateFlip(ImageHandle image, std::int32_t code);

FlatStatus GdipGetImageGraphicsContext(ImageHandle image, GraphicsHandle* graphics);
FlatStatus GdipCreateFromHDC(DeviceContextHandle context, GraphicsHandle* graphics);
FlatStatus GdipDeleteGraphics(GraphicsHandle graphics);
FlatStatus GdipSaveGraphics(GraphicsHandle graphics, std::uint32_t* state);
FlatStatus GdipGetInterpolationMode(GraphicsHandle graphics, std::int32_t* mode);
FlatStatus GdipSetInterpolationMode(GraphicsHandle graphics, std::int32_t mode);
FlatStatus GdipGetSmoothingMode(GraphicsHandle graphics, std::int32_t* mode);
FlatStatus GdipSetSmoothingMode(GraphicsHandle graphics, std::int32_t mode);
FlatStatus GdipTranslateWorldTransform(GraphicsHandle graphics, float dx, float dy, std::int32_t order);
FlatStatus GdipRotateWorldTransform(GraphicsHandle graphics, float degrees, std::int32_t order);

FlatStatus GdipDrawImage(GraphicsHandle graphics, ImageHandle image, float x, float y);
FlatStatus GdipDrawImageRectI(GraphicsHandle graphics, ImageHandle image, std::int32_t x, std::int32_t y,
                              std::int32_t width, std::int32_t height);
// The last three arguments of the function, attributes and a callback, are always null.
FlatStatus GdipDrawImageRectRectI(GraphicsHandle graphics, ImageHandle image, std::int32_t x, std::int32_t y,
                                  std::int32_t width, std::int32_t height, std::int32_t sourceX, std::int32_t sourceY,
                                  std::int32_t sourceWidth, std::int32_t sourceHeight, std::int32_t unit);
FlatStatus GdipDrawImagePointsI(GraphicsHandle graphics, ImageHandle image, const IntegerPoint* points,
                                std::int32_t count);
FlatStatus GdipDrawEllipse(GraphicsHandle graphics, PenHandle pen, float x, float y, float width, float height);

// The character count that is passed is that of the 8-bit text, unless that is UTF-8, and the string format is always
// null.
FlatStatus GdipDrawString(GraphicsHandle graphics, const std::string& text, FontHandle font,
                          const LayoutRectangle* rectangle, BrushHandle brush,
                          TextEncoding encoding = TextEncoding::CodePage);
// The font collection is always null: the fonts that are installed.
FlatStatus GdipCreateFontFamilyFromName(const std::string& name, FontFamilyHandle* family,
                                        TextEncoding encoding = TextEncoding::CodePage);
FlatStatus GdipDeleteFontFamily(FontFamilyHandle family);
FlatStatus GdipCreateFont(FontFamilyHandle family, float size, std::int32_t style, std::int32_t unit, FontHandle* font);
FlatStatus GdipDeleteFont(FontHandle font);
FlatStatus GdipCreateSolidFill(std::uint32_t color, BrushHandle* brush);

FlatStatus GdipGetPropertySize(ImageHandle image, std::uint32_t* bytes, std::uint32_t* count);
FlatStatus GdipGetAllPropertyItems(ImageHandle image, std::uint32_t bytes, std::uint32_t count, void* block);
FlatStatus GdipGetPropertyItemSize(ImageHandle image, std::uint32_t tag, std::uint32_t* bytes);
FlatStatus GdipGetPropertyItem(ImageHandle image, std::uint32_t tag, std::uint32_t bytes, void* block);
FlatStatus GdipSetPropertyItem(ImageHandle image, const PropertyItem* item);
FlatStatus GdipGetPropertyCount(ImageHandle image, std::uint32_t* count);
FlatStatus GdipGetPropertyIdList(ImageHandle image, std::uint32_t count, std::uint32_t* tags);

FlatStatus GdipGetImageEncodersSize(std::uint32_t* count, std::uint32_t* bytes);
FlatStatus GdipGetImageEncoders(std::uint32_t count, std::uint32_t bytes, void* buffer);

// `name` is wide text; the caller has converted it. The last argument is passed over: every save passes the same
// parameter block, a save flag with the value "flush".
FlatStatus GdipSaveImageToFile(ImageHandle image, const char16_t* name, const Clsid* encoder, const void* ignored);

// The same function with a parameter block of the caller's.
FlatStatus SaveImageWithParameters(ImageHandle image, const char16_t* name, const Clsid* encoder,
                                   const EncoderParameters* parameters);

// The same to a stream, from where it stands on.
FlatStatus GdipSaveImageToStream(ImageHandle image, FlatStream* stream, const Clsid* encoder, const void* ignored);
FlatStatus SaveImageToStreamWithParameters(ImageHandle image, FlatStream* stream, const Clsid* encoder,
                                           const EncoderParameters* parameters);

} // namespace lumbrix
