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

template <class Result, class... Arguments> Result Call(const char* name, Arguments... arguments) {
    return reinterpret_cast<Result(FLAT_CALL*)(Arguments...)>(FlatFunction(name))(arguments...);
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
    return Call<Status>("GdiplusStartup", token, input, output);
}

void GdiplusShutdown(std::uintptr_t token) { Call<void>("GdiplusShutdown", token); }

Status GdipLoadImageFromFile(const char16_t* path, GpImage** image) {
    return Call<Status>("GdipLoadImageFromFile", path, image);
}

Status GdipDisposeImage(GpImage* image) { return Call<Status>("GdipDisposeImage", image); }

Status GdipCloneImage(GpImage* image, GpImage** clone) { return Call<Status>("GdipCloneImage", image, clone); }

Status GdipGetImageWidth(GpImage* image, std::uint32_t* width) {
    return Call<Status>("GdipGetImageWidth", image, width);
}

Status GdipGetImageHeight(GpImage* image, std::uint32_t* height) {
    return Call<Status>("GdipGetImageHeight", image, height);
}

Status GdipGetImagePixelFormat(GpImage* image, imaginglibrary::PixelFormat* format) {
    return Call<Status>("GdipGetImagePixelFormat", image, format);
}

Status GdipGetImageThumbnail(GpImage* image, std::uint32_t width, std::uint32_t height, GpImage** thumbnail) {
    return Call<Status>("GdipGetImageThumbnail", image, width, height, thumbnail, static_cast<void*>(nullptr),
                        static_cast<void*>(nullptr));
}

Status GdipGetImageEncodersSize(std::uint32_t* count, std::uint32_t* bytes) {
    return Call<Status>("GdipGetImageEncodersSize", count, bytes);
}

Status GdipGetImageEncoders(std::uint32_t count, std::uint32_t bytes, imaginglibrary::ImageCodecInfo* list) {
    return Call<Status>("GdipGetImageEncoders", count, bytes, list);
}

Status GdipSaveImageToFile(GpImage* image, const char16_t* path, const imaginglibrary::Guid* encoder) {
    return Call<Status>("GdipSaveImageToFile", image, path, encoder,
                        static_cast<const imaginglibrary::EncoderParameters*>(nullptr));
}

} // namespace flat

} // namespace tests
