// Replaces colours by palette entries and spreads the error that this makes over the neighbouring pixels.
#pragma once

#include "imaginglibrary/operations/nearestcolor.h"

#include <cstdint>
#include <vector>

namespace imaginglibrary {

// Floyd and Steinberg's error diffusion, every second row from right to left, over rows in order from the top. Holds
// the errors of two rows. Belongs to one thread at a time.
class ErrorDiffusion {
  public:
    // `colors` are 1 to 256 opaque colours.
    ErrorDiffusion(const Palette& colors, std::uint32_t width);

    // `row` holds pixels of Argb32. A pixel with alpha 0 becomes `hole`, and neither takes nor makes an error; any
    // other becomes the index of a colour.
    void MapRow(const std::uint8_t* row, std::uint8_t* indices, std::uint8_t hole);

  private:
    // Sixteenths of a level per channel.
    struct Error {
        int red = 0;
        int green = 0;
        int blue = 0;
    };

    void MapPixel(const std::uint8_t* pixel, std::uint8_t* index, std::size_t at, std::ptrdiff_t forward);

    Palette colors_;
    NearestColor nearest_;
    std::uint32_t width_;
    std::vector<Error> current_; // one more at each end than the row has pixels
    std::vector<Error> next_;
    bool fromRight_ = false;
};

} // namespace imaginglibrary
