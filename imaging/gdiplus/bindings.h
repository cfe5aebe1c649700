// One procedure per function of the imaging library in use, under the function's own name.
//
// Each does the same four things: while no imaging library is loaded it returns 0 at once and touches nothing;
// otherwise it looks the name up afresh, calls through the address, and returns the function's status. Nothing here
// locks, tests arguments, or keeps an address. Out-arguments are pointers to the caller's variable. A function that the
// loaded library does not have is called all the same, through the null address.
#pragma once

#include "imaging/gdiplus/flattypes.h"
#include "platform/modules.h"

namespace lumbrix {

// The loaded imaging library, zero while there is none. Written by LoadImagingLibrary and UnloadImagingLibrary only.
extern ModuleHandle ImagingLibraryHandle;

FlatStatus GdiplusStartup(SessionToken* token, const GdiplusStartupInput* input, void* output);
void GdiplusShutdown(SessionToken token);

// `name` is wide text; the caller has converted it.
FlatStatus GdipLoadImageFromFile(const char16_t* name, ImageHandle* image);
FlatStatus GdipDisposeImage(ImageHandle image);
FlatStatus GdipGetImageWidth(ImageHandle image, std::uint32_t* width);
FlatStatus GdipGetImageHeight(ImageHandle image, std::uint32_t* height);
FlatStatus GdipGetImageThumbnail(ImageHandle image, std::uint32_t width, std::uint32_t height, ImageHandle* thumbnail);

FlatStatus GdipGetImageEncodersSize(std::uint32_t* count, std::uint32_t* bytes);
FlatStatus GdipGetImageEncoders(std::uint32_t count, std::uint32_t bytes, void* buffer);

// `name` is wide text; the caller has converted it. The last argument is passed over: every save passes the same
// parameter block, a save flag with the value "flush".
FlatStatus GdipSaveImageToFile(ImageHandle image, const char16_t* name, const Clsid* encoder, const void* ignored);

} // namespace lumbrix
