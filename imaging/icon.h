// Makes a Windows icon, of several sizes, of an image file.
#pragma once

#include "imaging/outcome.h"

#include <cstdint>
#include <string>
#include <vector>

namespace lumbrix {

inline constexpr std::int32_t LargestIcon = 256;

struct IconOrder {
    std::string source;
    std::string destination;
    std::vector<std::int32_t> sizes; // sides of the squares, in pixels: 1 to LargestIcon, each once
};

// How large a picture becomes so that its longer side is `side`; no side is below 1.
PixelSize FittedInto(PixelSize picture, std::int32_t side);

// Each square holds the whole picture, centred, in its proportions, the rest transparent. Truthful only.
Outcome MakeIcon(const IconOrder& order, const Wishes& wishes);

} // namespace lumbrix
