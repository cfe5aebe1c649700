// The colour profile among the property items.
#pragma once

#include "imaginglibrary/core/properties.h"

#include <span>

namespace imaginglibrary {

// The ICC profile to embed in a file of red, green and blue, or of grey; empty where there is none, or one for other
// colours.
std::span<const std::uint8_t> RgbProfileOf(const PropertyList& properties);
std::span<const std::uint8_t> GreyProfileOf(const PropertyList& properties);

} // namespace imaginglibrary
