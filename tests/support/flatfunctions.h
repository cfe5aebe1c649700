// The flat interface of the imaging library as its callers meet it: looked up by name in the built module.
#pragma once

#include "imaginglibrary/core/pixelformat.h"
#include "imaginglibrary/flat/flattypes.h"

#include <cstdint>

namespace tests {

// The address of a name in the module under test (LUMBRIX_IMAGING_LIBRARY names its file); aborts where it is missing.
void* FlatFunction(const char* name);

// Calls a function that answers with a status; the arguments must have the very types of its own.
template <class... Arguments> imaginglibrary::Status CallFlat(const char* name, Arguments... arguments) {
    using Function = imaginglibrary::Status(FLAT_CALL*)(Arguments...);
    return reinterpret_cast<Function>(FlatFunction(name))(arguments...);
}

// One wrapper per function, with the arguments of the flat interface.
namespace flat {

using imaginglibrary::GpImage;
using imaginglibrary::Status;

Status GdiplusStartup(std::uintptr_t* token, const imaginglibrary::GdiplusStartupInput* input,
                      imaginglibrary::GdiplusStartupOutput* output);
void GdiplusShutdown(std::uintptr_t token);
Status GdipLoadImageFromFile(const char16_t* path, GpImage** image);
Status GdipDisposeImage(GpImage* image);
Status GdipCloneImage(GpImage* image, GpImage** clone);
Status GdipGetImageWidth(GpImage* image, std::uint32_t* width);
Status GdipGetImageHeight(GpImage* image, std::uint32_t* height);
Status GdipGetImagePixelFormat(GpImage* image, imaginglibrary::PixelFormat* format);
Status GdipGetImageThumbnail(GpImage* image, std::uint32_t width, std::uint32_t height, GpImage** thumbnail);
Status GdipGetImageEncodersSize(std::uint32_t* count, std::uint32_t* bytes);
Status GdipGetImageEncoders(std::uint32_t count, std::uint32_t bytes, imaginglibrary::ImageCodecInfo* list);
Status GdipSaveImageToFile(GpImage* image, const char16_t* path, const imaginglibrary::Guid* encoder,
                           const imaginglibrary::EncoderParameters* parameters = nullptr);

} // namespace flat

} // namespace tests
