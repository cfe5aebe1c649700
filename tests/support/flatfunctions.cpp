// The flat interface of the imaging library as its callers meet it: looked up by name in the built module.
#include "tests/support/flatfunctions.h"

#include <cstdio>
#include <cstdlib>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace tests {

namespace {

void* OpenModule() {
#ifdef _WIN32
    return reinterpret_cast<void*>(LoadLibraryA(LUMBRIX_IMAGING_LIBRARY));
#else
    return dlopen(LUMBRIX_IMAGING_LIBRARY, RTLD_NOW | RTLD_LOCAL);
#endif
}

void* Find(void* module, const char* name) {
#ifdef _WIN32
    return module != nullptr ? reinterpret_cast<void*>(GetProcAddress(reinterpret_cast<HMODULE>(module), name))
                             : nullptr;
#else
    return module != nullptr ? dlsym(module, name) : nullptr;
#endif
}

} // namespace

void* FlatFunction(const char* name) {
    static void* const module = OpenModule();
    void* function = Find(module, name);
    if (function == nullptr) {
        std::fprintf(stderr, "%s has no %s\n", LUMBRIX_IMAGING_LIBRARY, name);
        std::abort();
    }
    return function;
}

namespace flat {

Status GdiplusStartup(std::uintptr_t* token, const imaginglibrary::GdiplusStartupInput* input,
                      imaginglibrary::GdiplusStartupOutput* output) {
    return CallFlat("GdiplusStartup", token, input, output);
}

void GdiplusShutdown(std::uintptr_t token) {
    reinterpret_cast<void(FLAT_CALL*)(std::uintptr_t)>(FlatFunction("GdiplusShutdown"))(token);
}

Status GdipLoadImageFromFile(const char16_t* path, GpImage** image) {
    return CallFlat("GdipLoadImageFromFile", path, image);
}

Status GdipDisposeImage(GpImage* image) { return CallFlat("GdipDisposeImage", image); }

Status GdipCloneImage(GpImage* image, GpImage** clone) { return CallFlat("GdipCloneImage", image, clone); }

Status GdipGetImageWidth(GpImage* image, std::uint32_t* width) { return CallFlat("GdipGetImageWidth", image, width); }

Status GdipGetImageHeight(GpImage* image, std::uint32_t* height) {
    return CallFlat("GdipGetImageHeight", image, height);
}

Status GdipGetImagePixelFormat(GpImage* image, imaginglibrary::PixelFormat* format) {
    return CallFlat("GdipGetImagePixelFormat", image, format);
}

Status GdipGetImageThumbnail(GpImage* image, std::uint32_t width, std::uint32_t height, GpImage** thumbnail) {
    return CallFlat("GdipGetImageThumbnail", image, width, height, thumbnail, static_cast<void*>(nullptr),
                    static_cast<void*>(nullptr));
}

Status GdipGetImageEncodersSize(std::uint32_t* count, std::uint32_t* bytes) {
    return CallFlat("GdipGetImageEncodersSize", count, bytes);
}

Status GdipGetImageEncoders(std::uint32_t count, std::uint32_t bytes, imaginglibrary::ImageCodecInfo* list) {
    return CallFlat("GdipGetImageEncoders", count, bytes, list);
}

Status GdipSaveImageToFile(GpImage* image, const char16_t* path, const imaginglibrary::Guid* encoder,
                           const imaginglibrary::EncoderParameters* parameters) {
    return CallFlat("GdipSaveImageToFile", image, path, encoder, parameters);
}

} // namespace flat

} // namespace tests
