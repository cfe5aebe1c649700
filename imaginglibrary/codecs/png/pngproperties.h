// The property items of PNG files as they are written.
#pragma once

#include "imaginglibrary/core/properties.h"

#include <cstdint>
#include <string>
#include <vector>

namespace imaginglibrary {

inline constexpr std::uint32_t PngGammaTag = 0x0301;
inline constexpr std::uint32_t PngRenderingIntentTag = 0x0303;

inline constexpr char PngXmpKeyword[] = "XML:com.adobe.xmp";

struct PngText {
    const char* keyword;
    std::string text;
    bool isUtf8; // else it has one byte for a character
};

struct PngMetadata {
    std::vector<PngText> texts;
    std::vector<std::uint8_t> exif; // empty where texts say it all
};

// What carries the items in a file. Colours are the writer's own business.
PngMetadata MakePngMetadata(const PropertyList& properties);

} // namespace imaginglibrary
