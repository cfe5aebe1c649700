// The binary shapes of the flat interface: calling convention, opaque handles, records.
#pragma once

#include "imaginglibrary/core/guid.h"
#include "imaginglibrary/core/pixelformat.h"
#include "imaginglibrary/core/status.h"

#include <cstdint>

#ifdef _WIN32
#define FLAT_CALL __stdcall
#define FLAT_EXPORT extern "C" __declspec(dllexport)
#else
#define FLAT_CALL
#define FLAT_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace imaginglibrary {

// Never dereferenced: a pointer to one of these is a checked handle (see handles.h).
struct GpImage;
struct GpGraphics;
struct GpFontFamily;
struct GpFont;
struct GpBrush;
struct GpPen;

struct GdiplusStartupInput {
    std::uint32_t gdiplusVersion;
    void* debugEventCallback;
    std::int32_t suppressBackgroundThread;
    std::int32_t suppressExternalCodecs;
};

struct GdiplusStartupOutput {
    void* notificationHook;
    void* notificationUnhook;
};

struct ImageCodecInfo {
    Guid clsid;
    Guid formatId;
    const char16_t* codecName;
    const char16_t* dllName;
    const char16_t* formatDescription;
    const char16_t* filenameExtension;
    const char16_t* mimeType;
    std::uint32_t flags;
    std::uint32_t version;
    std::uint32_t signatureCount;
    std::uint32_t signatureSize;
    const std::uint8_t* signaturePattern;
    const std::uint8_t* signatureMask;
};
static_assert(sizeof(ImageCodecInfo) == (sizeof(void*) == 4 ? 76 : 104));

// `value` points to `length` bytes. In a block of several records all values lie behind the last record.
struct PropertyItem {
    std::uint32_t id;
    std::uint32_t length;
    std::uint16_t type;
    const void* value;
};
static_assert(sizeof(PropertyItem) == (sizeof(void*) == 4 ? 16 : 24));

struct FlatRectangle {
    float x;
    float y;
    float width;
    float height;
};

struct FlatPoint {
    std::int32_t x;
    std::int32_t y;
};

struct FlatRect {
    std::int32_t x;
    std::int32_t y;
    std::int32_t width;
    std::int32_t height;
};

// Pixels in memory, and where each row of them begins.
struct BitmapData {
    std::uint32_t width;
    std::uint32_t height;
    std::int32_t stride; // bytes
    PixelFormat format;
    void* pixels;
    std::uintptr_t reserved;
};
static_assert(sizeof(BitmapData) == (sizeof(void*) == 4 ? 24 : 32));

enum class Unit : std::int32_t {
    World = 0,
    Display = 1,
    Pixel = 2,
    Point = 3,
    Inch = 4,
    Document = 5,
    Millimeter = 6,
};

enum class MatrixOrder : std::int32_t {
    Prepend = 0,
    Append = 1,
};

struct EncoderParameter {
    Guid guid;
    std::uint32_t numberOfValues;
    std::uint32_t type;
    void* value;
};

struct EncoderParameters {
    std::uint32_t count;
    EncoderParameter parameter[1];
};

} // namespace imaginglibrary
