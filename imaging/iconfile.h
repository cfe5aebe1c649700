// The bytes of a Windows icon file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace lumbrix {

// One picture of an icon, ready to be written.
struct IconPicture {
    std::int32_t side; // pixels, 1 to 256
    std::string bytes; // a PNG file, or what BitmapOfIcon gives
};

// A device-independent bitmap with a mask behind it, of `side` rows of 32-bit pixels from the top: blue, green, red,
// alpha, not premultiplied. The mask hides what is less than half opaque, where nobody looks at alpha.
std::string BitmapOfIcon(std::int32_t side, const std::vector<std::uint8_t>& pixels);

// The file, its pictures in the order given.
std::string IconFile(const std::vector<IconPicture>& pictures);

} // namespace lumbrix
