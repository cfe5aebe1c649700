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
inline constexpr std::uint32_t EncoderParameterValueTypeLong = 4;
inline constexpr std::int32_t EncoderValueFlush = 20;

} // namespace lumbrix
