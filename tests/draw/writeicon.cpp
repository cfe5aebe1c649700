// Writes an icon file for other programs to read: writeicon FILE
#include "draw/iconfile.h"

#include <fstream>

// Column x and row y, from the top left, are the colour (8x, 8y, 16 where x is smaller than y, else 200). Transparent,
// and black, are the pixels of the first row from the fourth on, and the lower left corner.
int main(int count, char** words) {
    using namespace lumbrix;
    if (count != 2) {
        return 2;
    }
    IconImage image{};
    IconMask mask{};
    for (std::size_t y = 0; y < IconSide; ++y) {
        for (std::size_t x = 0; x < IconSide; ++x) {
            const std::size_t row = IconSide - 1 - y;
            if ((y == 0 && x >= 3) || (y == IconSide - 1 && x == 0)) {
                mask[row * 4 + x / 8] |= static_cast<std::uint8_t>(0x80 >> (x % 8));
                continue;
            }
            std::uint8_t* pixel = &image[(row * IconSide + x) * 3];
            pixel[0] = x < y ? 16 : 200;
            pixel[1] = static_cast<std::uint8_t>(8 * y);
            pixel[2] = static_cast<std::uint8_t>(8 * x);
        }
    }
    const std::string file = IconFile(IconHeadFor(IconBits), image, mask);
    std::ofstream(words[1], std::ios::binary) << file;
    return 0;
}
