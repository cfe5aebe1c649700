// The layout of IStream, by which the imaging library reads and writes what is no file. The same on every system.
#pragma once

#include "imaging/gdiplus/flattypes.h"

namespace lumbrix {

struct FlatStream;

// What functions of a stream answer; negative for a failure.
using StreamResult = std::int32_t;

inline constexpr StreamResult StreamOk = 0;
inline constexpr StreamResult StreamEnded = 1; // fewer bytes were read than asked for
inline constexpr auto StreamNotImplemented = static_cast<StreamResult>(0x80004001);
inline constexpr auto StreamNoInterface = static_cast<StreamResult>(0x80004002);
inline constexpr auto StreamOutOfMemory = static_cast<StreamResult>(0x8007000E);
inline constexpr auto StreamBadPosition = static_cast<StreamResult>(0x80030001);
inline constexpr auto StreamAccessDenied = static_cast<StreamResult>(0x80030005);
inline constexpr auto StreamBadPointer = static_cast<StreamResult>(0x80030009);

// From where a position is counted.
inline constexpr std::uint32_t FromStart = 0;
inline constexpr std::uint32_t FromCurrent = 1;
inline constexpr std::uint32_t FromEnd = 2;

// What a stream tells of itself.
struct StreamFacts {
    char16_t* name;
    std::uint32_t type;
    alignas(8) std::uint64_t size;
    std::uint32_t times[6];
    std::uint32_t mode;
    std::uint32_t locks;
    Clsid clsid;
    std::uint32_t state;
    std::uint32_t reserved;
};
static_assert(sizeof(StreamFacts) == (sizeof(void*) == 4 ? 72 : 80));

struct FlatStreamFunctions {
    StreamResult(LUMBRIX_FLAT_CALL* queryInterface)(FlatStream*, const Clsid* id, void** object);
    std::uint32_t(LUMBRIX_FLAT_CALL* addReference)(FlatStream*);
    std::uint32_t(LUMBRIX_FLAT_CALL* release)(FlatStream*);
    StreamResult(LUMBRIX_FLAT_CALL* read)(FlatStream*, void* buffer, std::uint32_t count, std::uint32_t* read);
    StreamResult(LUMBRIX_FLAT_CALL* write)(FlatStream*, const void* bytes, std::uint32_t count, std::uint32_t* written);
    StreamResult(LUMBRIX_FLAT_CALL* seek)(FlatStream*, std::int64_t move, std::uint32_t origin,
                                          std::uint64_t* position);
    StreamResult(LUMBRIX_FLAT_CALL* setSize)(FlatStream*, std::uint64_t size);
    StreamResult(LUMBRIX_FLAT_CALL* copyTo)(FlatStream*, FlatStream* target, std::uint64_t count, std::uint64_t* read,
                                            std::uint64_t* written);
    StreamResult(LUMBRIX_FLAT_CALL* commit)(FlatStream*, std::uint32_t flags);
    StreamResult(LUMBRIX_FLAT_CALL* revert)(FlatStream*);
    StreamResult(LUMBRIX_FLAT_CALL* lockRegion)(FlatStream*, std::uint64_t offset, std::uint64_t count,
                                                std::uint32_t kind);
    StreamResult(LUMBRIX_FLAT_CALL* unlockRegion)(FlatStream*, std::uint64_t offset, std::uint64_t count,
                                                  std::uint32_t kind);
    StreamResult(LUMBRIX_FLAT_CALL* stat)(FlatStream*, StreamFacts* facts, std::uint32_t flags);
    StreamResult(LUMBRIX_FLAT_CALL* clone)(FlatStream*, FlatStream** clone);
};

struct FlatStream {
    const FlatStreamFunctions* functions;
};

// {0000000C-0000-0000-C000-000000000046}, and the two that a stream is besides.
inline constexpr Clsid StreamInterface{0x0000000C, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr Clsid SequentialStreamInterface{
    0x0C733A30, 0x2A1C, 0x11CE, {0xAD, 0xE5, 0x00, 0xAA, 0x00, 0x44, 0x77, 0x3D}};
inline constexpr Clsid UnknownInterface{0x00000000, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

} // namespace lumbrix
