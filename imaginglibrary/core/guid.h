// The 16-byte identifiers of codecs and formats, in the platform's memory layout.
#pragma once

#include <array>
#include <cstdint>

namespace imaginglibrary {

struct Guid {
    std::uint32_t data1;
    std::uint16_t data2;
    std::uint16_t data3;
    std::array<std::uint8_t, 8> data4;

    friend bool operator==(const Guid&, const Guid&) = default;
};
static_assert(sizeof(Guid) == 16);

} // namespace imaginglibrary
