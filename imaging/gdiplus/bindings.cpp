// The four steps of every binding, and the bindings.
#include "imaging/gdiplus/bindings.h"

namespace lumbrix {

ModuleHandle ImagingLibraryHandle = nullptr;

namespace {

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

FlatStatus GdipDisposeImage(ImageHandle image) { return Call<FlatStatus>("GdipDisposeImage", image); }

FlatStatus GdipGetImageWidth(ImageHandle image, std::uint32_t* width) {
    return Call<FlatStatus>("GdipGetImageWidth", image, width);
}

FlatStatus GdipGetImageHeight(ImageHandle image, std::uint32_t* height) {
    return Call<FlatStatus>("GdipGetImageHeight", image, height);
}

FlatStatus GdipGetImageThumbnail(ImageHandle image, std::uint32_t width, std::uint32_t height, ImageHandle* thumbnail) {
    void* const none = nullptr;
    return Call<FlatStatus>("GdipGetImageThumbnail", image, width, height, thumbnail, none, none);
}

FlatStatus GdipGetImageEncodersSize(std::uint32_t* count, std::uint32_t* bytes) {
    return Call<FlatStatus>("GdipGetImageEncodersSize", count, bytes);
}

FlatStatus GdipGetImageEncoders(std::uint32_t count, std::uint32_t bytes, void* buffer) {
    return Call<FlatStatus>("GdipGetImageEncoders", count, bytes, buffer);
}

FlatStatus GdipSaveImageToFile(ImageHandle image, const char16_t* name, const Clsid* encoder, const void* /*ignored*/) {
    const std::int32_t flush = EncoderValueFlush;
    const EncoderParameters parameters{1, {{EncoderSaveFlag, 1, EncoderParameterValueTypeLong, &flush}}};
    return Call<FlatStatus>("GdipSaveImageToFile", image, name, encoder, &parameters);
}

} // namespace lumbrix
