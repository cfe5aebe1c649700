// Replaces colours by palette entries and spreads the error that this makes over the neighbouring pixels.
#pragma once

#include "imaginglibrary/operations/nearestcolor.h"

#include <cstdint>
#include <vector>

namespace imaginglibrary {

// Floyd and Steinberg's error diffusion, every second row from right to left, over rows in order from the top. Holds
// the errors of one row. Belongs to one thread at a time.
class ErrorDiffusion {
  public:
    // `colors` are 1 to 256 opaque colours.
    ErrorDiffusion(const Palette& colors, std::uint32_t width);

    // `row` holds pixels of Argb32. A pixel with alpha 0 becomes `hole`, and neither takes nor makes an error; any
    // other becomes the index of a colour.
    void MapRow(const std::uint8_t* row, std::uint8_t* indices, std::uint8_t hole);

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

    template <int Forward> void MapRowForward(const std::uint8_t* row, std::uint8_t* indices, std::uint8_t hole);
    Levels MapPixel(const std::uint8_t* pixel, const Levels& sixteenths, std::uint8_t& index);

    std::vector<Levels> colors_;
    NearestColor nearest_;
    std::uint32_t width_;
    std::vector<Sixteenths> errors_; // for the row to come; one more at each end than it has pixels
    bool isFromRight_ = false;
};

} // namespace imaginglibrary
