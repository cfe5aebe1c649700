// What the file picker tells the platform's dialog, and where its preview stands.
#pragma once

#include <cstdint>
#include <string>

namespace lumbrix {

// The initial file name: the dialog lists what fits it.
inline constexpr const char* PickerWildcards = "*.bmp;*.gif;*.tiff;*.jpg;*.png;*.ico;*.emf;*.wmf";

// Descriptions and patterns with bars between them, cut to 254 characters.
std::string PickerFilter();

// What of the filter reaches the dialog: bars become zeros, and the text ends at the first of them.
std::string FilterInDialog(const std::string& filter);

struct PreviewPlace {
    std::int32_t x;
    std::int32_t y;
    std::int32_t width;
    std::int32_t height;
};

// Where a picture goes in a pane of this size: as large as its proportions allow, enlarged too, with ten pixels left at
// both ends of its longer side, a square one's height being the longer.
PreviewPlace PlacePreview(std::int32_t paneWidth, std::int32_t paneHeight, std::int32_t pictureWidth,
                          std::int32_t pictureHeight);

} // namespace lumbrix
