// The binary shapes of the flat interface: calling convention, opaque handles, records.
#pragma once

#include "imaginglibrary/core/guid.h"
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

// Never dereferenced: a pointer to it is a checked handle (see handles.h).
struct GpImage;

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
