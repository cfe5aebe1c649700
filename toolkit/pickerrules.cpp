// What the file picker tells the platform's dialog, and where its preview stands.
#include "toolkit/pickerrules.h"

#include <cmath>

namespace lumbrix {

namespace {

constexpr std::size_t LongestFilter = 254;
constexpr std::int32_t Margins = 20;

std::int32_t InProportion(std::int32_t side, std::int32_t along, std::int32_t across) {
    return static_cast<std::int32_t>(std::nearbyint(static_cast<double>(side) / along * across));
}

} // namespace

std::string PickerFilter() {
    const std::string filter =
        "All Images (*.bmp;*.gif;*tiff;*.jpg;*.png;*.ico;*.emf;*.wmf)|*.bmp;*.gif;*tiff;*.jpg;*.png;*.ico;*.emf;*.wmf|"
        "Bitmap files (*.bmp)|*.bmp|JPEG files (*.jpg)|*.jpg|GIF files (*.gif)|*.gif|TIFF files (*.tiff)|*.tiff|"
        "PNG files (*.png)|*.png"
        "|ICONS (*.ico)|*.ico|EMF files (*.emf)|*.emf|WMF files (*.wmf)|*.wmf";
    return filter.substr(0, LongestFilter);
}

std::string FilterInDialog(const std::string& filter) { return filter.substr(0, filter.find('|')); }

PreviewPlace PlacePreview(std::int32_t paneWidth, std::int32_t paneHeight, std::int32_t pictureWidth,
                          std::int32_t pictureHeight) {
    PreviewPlace place{};
    if (pictureWidth > pictureHeight) {
        place.width = paneWidth - Margins;
        place.height = InProportion(place.width, pictureWidth, pictureHeight);
    } else {
        place.height = paneHeight - Margins;
        place.width = InProportion(place.height, pictureHeight, pictureWidth);
    }
    place.x = (paneWidth - place.width) / 2;
    place.y = (paneHeight - place.height) / 2;
    return place;
}

} // namespace lumbrix
