// Image resources, the blocks that JPEG and TIFF files hold since Photoshop, and the IPTC data among them.
#pragma once

#include "imaginglibrary/core/properties.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace imaginglibrary {

inline constexpr std::uint16_t IptcTag = 33723;
inline constexpr std::uint16_t ResourcesTag = 34377;

// Adds what the APP13 segments of a JPEG file hold, put together behind their names: the IPTC data, and the other
// resources as they are. What is broken, and all behind it, is passed over.
void AddResources(std::string_view resources, PropertyList& properties);

// What the APP13 segments of a JPEG file shall hold: the resources with the IPTC data among them. Empty where there are
// none.
std::string ResourcesFor(const PropertyList& properties);

// The bytes of the IPTC data among the items, which some writers call numbers of four bytes; empty where there are
// none.
std::vector<std::uint8_t> IptcOf(const PropertyList& properties);

// Takes the small copies of the picture out of the resources.
void RemoveThumbnailResources(PropertyList& properties);

} // namespace imaginglibrary
