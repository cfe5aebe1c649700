// Which bitmap files become icons, under what name, and what is said of those that do not.
#include "draw/iconrules.h"

#include <algorithm>
#include <cstdlib>

namespace lumbrix {

namespace {

constexpr std::size_t PixelsPlace = 10;
constexpr std::size_t HeaderBytesPlace = 14;
constexpr std::size_t WidthPlace = 18;
constexpr std::size_t HeightPlace = 22;
constexpr std::size_t DepthPlace = 28;
constexpr std::size_t CompressionPlace = 30;

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

bool HasAllPixels(std::string_view start, std::uint64_t fileBytes) {
    constexpr std::int32_t Uncompressed = 0;
    constexpr std::int32_t UncompressedWithMasks = 3;
    const std::uint64_t pixels = static_cast<std::uint32_t>(NumberAt(start, PixelsPlace));
    if (pixels >= fileBytes) {
        return false;
    }
    const std::int32_t compression = NumberAt(start, CompressionPlace);
    if (compression != Uncompressed && compression != UncompressedWithMasks) {
        return true;
    }
    const PixelSize size = SizeInBitmapFile(start);
    const std::uint64_t depth = static_cast<std::uint16_t>(NumberAt(start, DepthPlace));
    const std::int64_t rows = std::abs(std::int64_t{size.height}); // negative where the top row comes first
    if (size.width <= 0 || rows == 0 || depth == 0) {
        return false;
    }
    const std::uint64_t rowBytes = (static_cast<std::uint64_t>(size.width) * depth + 31) / 32 * 4;
    return static_cast<std::uint64_t>(rows) <= (fileBytes - pixels) / rowBytes; // a product may be too large
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
