// The records and handles of the imaging library as its flat interface has them.
#pragma once

#include <array>
#include <cstdint>

#ifdef _WIN32
#define LUMBRIX_FLAT_CALL __stdcall
#else
#define LUMBRIX_FLAT_CALL
#endif

namespace lumbrix {

// What a function of the imaging library answers: 0 for success, else one of the library's own positive numbers.
using FlatStatus = std::int32_t;

// Opaque; zero means none.
using ImageHandle = void*;
using GraphicsHandle = void*;
using FontFamilyHandle = void*;
using FontHandle = void*;
using BrushHandle = void*;
using PenHandle = void*;

// Of the system; there are none on Linux.
using DeviceContextHandle = void*;

using SessionToken = std::uintptr_t;

struct Clsid {
    std::uint32_t data1;
    std::uint16_t data2;
    std::uint16_t data3;
    std::array<std::uint8_t, 8> data4;

    friend bool operator==(const Clsid&, const Clsid&) = default;
};

struct GdiplusStartupInput {
    std::uint32_t gdiplusVersion;
    void* debugEventCallback;
    std::int32_t suppressBackgroundThread;
    std::int32_t suppressExternalCodecs;
};

struct ImageCodecInfo {
    Clsid clsid;
    Clsid formatId;
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

// One property of an image. The value lies wherever the block that holds the record keeps it.
struct PropertyItem {
    std::uint32_t id;
    std::uint32_t length; // of the value, in bytes
    std::uint16_t type;
    const void* value;
};
static_assert(sizeof(PropertyItem) == (sizeof(void*) == 4 ? 16 : 24));

struct LayoutRectangle {
    float x;
    float y;
    float width;
    float height;
};

struct IntegerPoint {
    std::int32_t x;
    std::int32_t y;
};

struct IntegerRectangle {
    std::int32_t x;
    std::int32_t y;
    std::int32_t width;
    std::int32_t height;
};

// Pixels in the caller's own memory.
struct LockedPixels {
    std::uint32_t width;
    std::uint32_t height;
    std::int32_t stride; // bytes from one row to the next
    std::int32_t format;
    void* pixels;
    std::uintptr_t reserved;
};
static_assert(sizeof(LockedPixels) == (sizeof(void*) == 4 ? 24 : 32));

inline constexpr std::uint32_t LockToReadIntoOwnMemory = 1 | 4;

struct EncoderParameter {
    Clsid guid;
    std::uint32_t numberOfValues;
    std::uint32_t type;
    const void* value;
};

struct EncoderParameters {
    std::uint32_t count;
    EncoderParameter parameter[1];
};

// {292266FC-AC40-47BF-8CFC-A85B89A655DE}
inline constexpr Clsid EncoderSaveFlag{0x292266FC, 0xAC40, 0x47BF, {0x8C, 0xFC, 0xA8, 0x5B, 0x89, 0xA6, 0x55, 0xDE}};
// {1D5BE4B5-FA4A-452D-9CDD-5DB35105E7EB}
inline constexpr Clsid EncoderQuality{0x1D5BE4B5, 0xFA4A, 0x452D, {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB}};
// {E09D739D-CCD4-44EE-8EBA-3FBF8BE4FC58}
inline constexpr Clsid EncoderCompression{0xE09D739D, 0xCCD4, 0x44EE, {0x8E, 0xBA, 0x3F, 0xBF, 0x8B, 0xE4, 0xFC, 0x58}};
inline constexpr std::uint32_t EncoderParameterValueTypeLong = 4;
inline constexpr std::int32_t EncoderValueFlush = 20;

// A unit of pixels, of drawing and of font sizes.
inline constexpr std::int32_t UnitPixel = 2;

// Font styles, one bit each.
inline constexpr std::int32_t FontStyleBold = 1;
inline constexpr std::int32_t FontStyleItalic = 2;
inline constexpr std::int32_t FontStyleUnderline = 4;
inline constexpr std::int32_t FontStyleStrikeout = 8;

inline constexpr std::uint16_t PropertyTypeByte = 1;
inline constexpr std::uint16_t PropertyTypeAscii = 2;
inline constexpr std::uint16_t PropertyTypeShort = 3;
inline constexpr std::uint16_t PropertyTypeLong = 4;

} // namespace lumbrix
