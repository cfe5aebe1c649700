// Replaces colours by palette entries and spreads the error that this makes over the neighbouring pixels.
#pragma once

#include "imaginglibrary/operations/nearestcolor.h"

#include <cstdint>
#include <vector>

namespace imaginglibrary {

// Floyd and Steinberg's error diffusion over rows in order from the top. They are mapped in pairs, a pair from left to
// right, the next one from right to left: a pixel waits for the one before it, and so two rows take little longer than
// one. Holds the errors of one row. Belongs to one thread at a time.
class ErrorDiffusion {
  public:
    // `colors` are 1 to 256 opaque colours.
    ErrorDiffusion(const Palette& colors, std::uint32_t width);

    // `rows` holds pixels of Argb32, first those of the upper row, and `indices` has a place for each. A pixel with
    // alpha 0 becomes `hole`, and neither takes nor makes an error; any other becomes the index of a colour. Below the
    // last row of an odd number, holes will do.
    void MapTwoRows(const std::uint8_t* rows, std::uint8_t* indices, std::uint8_t hole);

  private:
    // A value per channel: those of a colour, or an error. A shift finds one among many.
    struct alignas(16) Levels {
        int red = 0;
        int green = 0;
        int blue = 0;
    };

    struct Sixteenths {
        std::int16_t red = 0;
        std::int16_t green = 0;
        std::int16_t blue = 0;
    };

    class Line;

    template <int Forward> void MapTowards(const std::uint8_t* rows, std::uint8_t* indices, std::uint8_t hole);
    Levels MapPixel(const std::uint8_t* pixel, const Levels& sixteenths, std::uint8_t& index);

    std::vector<Levels> colors_;
    NearestColor nearest_;
    std::uint32_t width_;
    std::vector<Sixteenths> errors_; // for the upper row to come; one more at each end than it has pixels
    bool isFromRight_ = false;
};

} // namespace imaginglibrary
