// Which bitmap files become icons, under what name, and what is said of those that do not.
#include "draw/iconrules.h"

#include <algorithm>
#include <cstdint>

namespace lumbrix {

namespace {

constexpr std::size_t HeaderBytesPlace = 14;
constexpr std::size_t WidthPlace = 18;
constexpr std::size_t HeightPlace = 22;

std::int32_t NumberAt(std::string_view bytes, std::size_t place) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < sizeof number && place + i < bytes.size(); ++i) {
        number |= static_cast<std::uint32_t>(static_cast<std::uint8_t>(bytes[place + i])) << (8 * i);
    }
    return static_cast<std::int32_t>(number);
}

} // namespace

PixelSize SizeInBitmapFile(std::string_view start) {
    return {NumberAt(start, WidthPlace), NumberAt(start, HeightPlace)};
}

bool IsBitmapFile(std::string_view start) {
    constexpr std::int32_t LeastHeaderBytes = 40; // older headers have smaller sizes, in other places
    return start.starts_with("BM") && NumberAt(start, HeaderBytesPlace) >= LeastHeaderBytes;
}

std::string IconPath(const std::string& bitmapPath) {
    constexpr std::size_t ExtensionLength = 3;
    return bitmapPath.substr(0, bitmapPath.size() - std::min(ExtensionLength, bitmapPath.size())) + "ico";
}

std::string NotSquareText(PixelSize size) {
    return "The image (" + std::to_string(size.width) + " x " + std::to_string(size.height) +
           ") is not a square and cannot be sized to 32 x 32";
}

} // namespace lumbrix
