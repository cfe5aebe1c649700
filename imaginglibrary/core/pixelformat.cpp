// Palettes that several codecs share.
#include "imaginglibrary/core/pixelformat.h"

#include <algorithm>

namespace imaginglibrary {

Palette GreyPalette(unsigned count) {
    Palette palette(count);
    for (unsigned i = 0; i < count; ++i) {
        const auto grey = static_cast<std::uint8_t>(i * 255 / (count - 1));
        palette[i] = MakeColor(grey, grey, grey);
    }
    return palette;
}

bool HasTransparency(const Palette& palette) {
    return std::any_of(palette.begin(), palette.end(), [](Color color) { return AlphaOf(color) != 255; });
}

} // namespace imaginglibrary
