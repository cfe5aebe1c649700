// Finds the palette entry that is nearest to a colour, exactly and fast.
#pragma once

#include "imaginglibrary/core/pixelformat.h"

#include <array>
#include <cstdint>
#include <vector>

namespace imaginglibrary {

// For each small cube of colours, the few entries that can be nearest to something in it are listed when the cube is
// first met, and only they are compared (the way of S. Thomas, "Efficient Inverse Color Map Computation", Graphics
// Gems II, 1991, taken per cube). Belongs to one thread at a time.
class NearestColor {
  public:
    // 1 to 256 colours, whose alpha does not matter.
    explicit NearestColor(const Palette& colors);

    // The entry with the least squared distance to a colour (0 to 255 each); of several, the first.
    std::uint8_t Find(int red, int green, int blue) {
        Cube& cube = cubes_[static_cast<std::size_t>(((red >> 3) << 10) | ((green >> 3) << 5) | (blue >> 3))];
        if (cube.count == 0) {
            ListCandidates(cube, red & ~7, green & ~7, blue & ~7);
        }
        const Entry* candidate = candidates_.data() + cube.first;
        const Entry* const end = candidate + cube.count;
        int least = SquaredDistance(*candidate, red, green, blue);
        std::uint8_t index = candidate->index;
        while (++candidate != end) {
            const int distance = SquaredDistance(*candidate, red, green, blue);
            if (distance < least) {
                least = distance;
                index = candidate->index;
            }
        }
        return index;
    }

  private:
    struct Entry {
        std::uint8_t red, green, blue, index;
    };

    struct Cube {
        std::uint32_t first = 0;
        std::uint32_t count = 0; // 0: not listed yet
    };

    static int SquaredDistance(const Entry& entry, int red, int green, int blue) {
        const int r = entry.red - red;
        const int g = entry.green - green;
        const int b = entry.blue - blue;
        return r * r + g * g + b * b;
    }

    void ListCandidates(Cube& cube, int red, int green, int blue);

    std::vector<Entry> entries_;
    std::vector<Cube> cubes_;
    std::vector<Entry> candidates_;
};

} // namespace imaginglibrary
