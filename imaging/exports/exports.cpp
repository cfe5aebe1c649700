// The exported doors: each fixes a format, turns C texts into ours, and lets no exception out.
#include "imaging/convert.h"
#include "imaging/deployment.h"
#include "imaging/dimensions.h"
#include "imaging/exports/internal.h"
#include "imaging/exports/lumbrix.h"
#include "imaging/session.h"
#include "imaging/thumbnail.h"

#include <cstdlib>
#include <string>

namespace {

constexpr int32_t InternalError = -1;

std::string Text(const char* text) { return text == nullptr ? std::string() : std::string(text); }

template <class Body> int32_t Door(Body body) noexcept {
    try {
        return body();
    } catch (...) {
        return InternalError;
    }
}

int32_t Convert(const char* source, const char* destination, const char* mimeWord) {
    return Door([&] { return lumbrix::ConvertImageFile(Text(source), Text(destination), mimeWord); });
}

int32_t ConvertToThumb(const char* source, int32_t height, const char* destination, const char* mimeWord) {
    return Door([&] { return lumbrix::ConvertImageFileToThumb(Text(source), height, Text(destination), mimeWord); });
}

} // namespace

void LUMBRIX_CALL LoadImagingLibrary() {
    Door([] {
        lumbrix::LoadImagingLibrary();
        return 0;
    });
}

void LUMBRIX_CALL UnloadImagingLibrary() {
    Door([] {
        lumbrix::UnloadImagingLibrary();
        return 0;
    });
}

int32_t LUMBRIX_CALL DeployImagingLibrary() {
    return Door([] { return lumbrix::DeployImagingLibrary(); });
}

void LUMBRIX_CALL lumbrix_free(void* text) { std::free(text); }

const char* LUMBRIX_CALL lumbrix_version() { return LUMBRIX_VERSION; }

int32_t LUMBRIX_CALL ConvertImageToBmp(const char* source, const char* destination) {
    return Convert(source, destination, "image/bmp");
}

int32_t LUMBRIX_CALL ConvertImageToGif(const char* source, const char* destination) {
    return Convert(source, destination, "image/gif");
}

int32_t LUMBRIX_CALL ConvertImageToJpeg(const char* source, const char* destination) {
    return Convert(source, destination, "image/jpeg");
}

int32_t LUMBRIX_CALL ConvertImageToPng(const char* source, const char* destination) {
    return Convert(source, destination, "image/png");
}

int32_t LUMBRIX_CALL ConvertImageToSgl(const char* source, const char* destination) {
    return Convert(source, destination, "image/sgl");
}

int32_t LUMBRIX_CALL ConvertImageToTiff(const char* source, const char* destination) {
    return Convert(source, destination, "image/tiff");
}

int32_t LUMBRIX_CALL ConvertImageToThumbBmp(const char* source, int32_t height, const char* destination) {
    return ConvertToThumb(source, height, destination, "image/bmp");
}

int32_t LUMBRIX_CALL ConvertImageToThumbGif(const char* source, int32_t height, const char* destination) {
    return ConvertToThumb(source, height, destination, "image/gif");
}

int32_t LUMBRIX_CALL ConvertImageToThumbJpeg(const char* source, int32_t height, const char* destination) {
    return ConvertToThumb(source, height, destination, "image/jpeg");
}

int32_t LUMBRIX_CALL ConvertImageToThumbPng(const char* source, int32_t height, const char* destination) {
    return ConvertToThumb(source, height, destination, "image/png");
}

int32_t LUMBRIX_CALL ConvertImageToThumbTiff(const char* source, int32_t height, const char* destination) {
    return ConvertToThumb(source, height, destination, "image/tiff");
}

int32_t LUMBRIX_CALL GetImageDimensions(const char* file, int32_t* width, int32_t* height) {
    return Door([&] { return lumbrix::GetImageFileDimensions(Text(file), width, height); });
}
