// The colour profile among the property items.
#include "imaginglibrary/codecs/metadata/colorprofile.h"

#include "imaginglibrary/codecs/metadata/exiftags.h"
#include "imaginglibrary/core/limits.h"

#include <cstring>

namespace imaginglibrary {

namespace {

// `colorSpace` is the name that profiles of these colours have in their header.
std::span<const std::uint8_t> ProfileOf(const PropertyList& properties, const char* colorSpace) {
    constexpr std::size_t HeaderBytes = 128;
    constexpr std::size_t ColorSpaceAt = 16;
    const Property* item = properties.Find(ColorProfileTag);
    if (item == nullptr || (item->type != PropertyType::Byte && item->type != PropertyType::Undefined) ||
        item->value.size() < HeaderBytes || item->value.size() > MaximumMetadataBytes ||
        std::memcmp(&item->value[ColorSpaceAt], colorSpace, 4) != 0) {
        return {};
    }
    return item->value;
}

} // namespace

std::span<const std::uint8_t> RgbProfileOf(const PropertyList& properties) { return ProfileOf(properties, "RGB "); }

std::span<const std::uint8_t> GreyProfileOf(const PropertyList& properties) { return ProfileOf(properties, "GRAY"); }

} // namespace imaginglibrary
