// The orientation that a file stores about its picture, and the turn that it asks for.
#include "imaging/upright.h"

#include "imaging/properties.h"

#include <cstring>
#include <iterator>

namespace lumbrix {

namespace {

constexpr std::uint32_t OrientationTag = 0x0112;

// By orientation from 1 on: as it is, mirrored, upside down, flipped, mirrored along its diagonal, lying on its left
// side, mirrored along its other diagonal, lying on its right side.
constexpr std::int32_t Turns[] = {0, 4, 2, 6, 5, 1, 7, 3};

// 0 for a value that is no whole number.
std::uint32_t NumberIn(const PropertyItem& item) {
    std::uint16_t word = 0;
    std::uint32_t number = 0;
    if (item.type == PropertyTypeShort && item.length >= sizeof word) {
        std::memcpy(&word, item.value, sizeof word);
        return word;
    }
    if (item.type == PropertyTypeLong && item.length >= sizeof number) {
        std::memcpy(&number, item.value, sizeof number);
    }
    return number;
}

} // namespace

std::optional<std::int32_t> UprightTurn(ImageHandle image) {
    const PropertyValue orientation(image, OrientationTag);
    const std::uint32_t number = orientation.Status() == 0 ? NumberIn(orientation.Item()) : 0;
    return number >= 1 && number <= std::size(Turns) ? std::optional(Turns[number - 1]) : std::nullopt;
}

PixelSize TurnedSize(PixelSize size, std::int32_t turn) {
    const bool isOnItsSide = turn % 2 != 0;
    return isOnItsSide ? PixelSize{size.height, size.width} : size;
}

} // namespace lumbrix
