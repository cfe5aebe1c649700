// Counts the colours of a picture in memory that does not grow with the picture.
#pragma once

#include "imaginglibrary/core/pixelformat.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace imaginglibrary {

// Pixels that were counted together, with the sums of their channels. Pixels counted together are of one colour, or of
// neighbouring colours once the picture proved to have too many.
struct ColorCell {
    std::uint32_t pixels = 0;
    std::uint64_t red = 0;
    std::uint64_t green = 0;
    std::uint64_t blue = 0;

    // The mean of the cell's colours, opaque, rounded to the nearest.
    Color Mean() const;
};

// Keeps at most 65536 cells. Every colour has a cell of its own until there are more colours than that; then colours
// that agree in their upper 7, 6 or 5 bits per channel are merged, as far as is necessary. So a picture in few hues
// keeps its finest shades apart, and a photograph is still counted in a few megabytes. For at most 2^32 - 1 pixels.
class ColorHistogram {
  public:
    ColorHistogram();

    // Counts one pixel, or as many as it stands for; its alpha does not matter.
    void Add(Color color, std::uint32_t pixels = 1) {
        const std::uint32_t key = color & mask_;
        if (key != lastKey_) {
            last_ = FindOrInsert(key);
            lastKey_ = key;
        }
        ColorCell& cell = slots_[last_].cell;
        cell.pixels += pixels;
        cell.red += std::uint64_t{RedOf(color)} * pixels;
        cell.green += std::uint64_t{GreenOf(color)} * pixels;
        cell.blue += std::uint64_t{BlueOf(color)} * pixels;
    }

    std::size_t Size() const { return used_; }

    // Whether each cell stands for one single colour.
    bool IsExact() const { return mask_ == 0xFFFFFF; }

    // All cells with at least one pixel, in an order that depends on the picture only.
    std::vector<ColorCell> Cells() const;

  private:
    struct Slot {
        std::uint32_t key;
        ColorCell cell;
    };

    std::size_t FindOrInsert(std::uint32_t key);
    std::size_t Probe(std::uint32_t key) const;
    void Coarsen();

    std::vector<Slot> slots_;
    std::size_t used_ = 0;
    std::uint32_t mask_ = 0xFFFFFF;
    std::uint32_t lastKey_;
    std::size_t last_ = 0;
};

} // namespace imaginglibrary
