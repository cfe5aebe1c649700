// The resolution that EXIF tells of.
#include "imaginglibrary/codecs/metadata/exifresolution.h"

#include <cstring>

namespace imaginglibrary {

namespace {

constexpr std::uint32_t HorizontalTag = 0x011A;
constexpr std::uint32_t VerticalTag = 0x011B;
constexpr std::uint32_t UnitTag = 0x0128;

constexpr std::uint16_t PerInch = 2;
constexpr std::uint16_t PerCentimetre = 3;
constexpr double CentimetresPerInch = 2.54;
constexpr double MaximumDots = 1e6; // beyond it a resolution is a mistake

// 0 where the items have no such fraction, or one that is no resolution.
double FractionOf(const PropertyList& properties, std::uint32_t tag) {
    const Property* item = properties.Find(tag);
    std::uint32_t fraction[2];
    if (item == nullptr || item->type != PropertyType::Rational || item->value.size() != sizeof fraction) {
        return 0;
    }
    std::memcpy(fraction, item->value.data(), sizeof fraction);
    const double dots = fraction[1] == 0 ? 0 : static_cast<double>(fraction[0]) / fraction[1];
    return dots <= MaximumDots ? dots : 0;
}

// Without the tag it is the inch.
std::uint16_t UnitOf(const PropertyList& properties) {
    const Property* item = properties.Find(UnitTag);
    std::uint16_t unit = PerInch;
    if (item != nullptr && item->type == PropertyType::Short && item->value.size() == sizeof unit) {
        std::memcpy(&unit, item->value.data(), sizeof unit);
    }
    return unit;
}

} // namespace

Resolution ResolutionOr(const Resolution& own, const PropertyList& properties) {
    const std::uint16_t unit = UnitOf(properties);
    if (own.horizontal > 0 || own.vertical > 0 || (unit != PerInch && unit != PerCentimetre)) {
        return own;
    }
    const double factor = unit == PerInch ? 1 : CentimetresPerInch;
    return {FractionOf(properties, HorizontalTag) * factor, FractionOf(properties, VerticalTag) * factor};
}

} // namespace imaginglibrary
