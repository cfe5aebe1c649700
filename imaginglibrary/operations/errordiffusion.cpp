// Replaces colours by palette entries and spreads the error that this makes over the neighbouring pixels.
#include "imaginglibrary/operations/errordiffusion.h"

#include <algorithm>
#include <cstdlib>

namespace imaginglibrary {

namespace {

// Errors pile up where the palette has no colour strong enough, and would break out as bright specks at the next edge.
// So small errors are passed on whole, larger ones by half, and none beyond 32 levels.
int Softened(int sixteenths) {
    constexpr int Whole = 16;
    constexpr int Half = 48;
    const int levels = (sixteenths + (sixteenths >= 0 ? 8 : -8)) / 16;
    const int size = std::abs(levels);
    if (size <= Whole) {
        return levels;
    }
    const int softened = Whole + (std::min(size, Half) - Whole) / 2;
    return levels > 0 ? softened : -softened;
}

int Adjusted(int channel, int error) { return std::clamp(channel + Softened(error), 0, 255); }

} // namespace

ErrorDiffusion::ErrorDiffusion(const Palette& colors, std::uint32_t width)
    : colors_(colors), nearest_(colors), width_(width), current_(std::size_t{width} + 2),
      next_(std::size_t{width} + 2) {}

void ErrorDiffusion::MapRow(const std::uint8_t* row, std::uint8_t* indices, std::uint8_t hole) {
    const std::ptrdiff_t forward = fromRight_ ? -1 : 1;
    std::size_t x = fromRight_ ? width_ - 1 : 0;
    for (std::uint32_t count = 0; count < width_; ++count, x += static_cast<std::size_t>(forward)) {
        if (row[4 * x + 3] == 0) {
            indices[x] = hole;
        } else {
            MapPixel(row + 4 * x, indices + x, x + 1, forward);
        }
    }
    std::swap(current_, next_);
    std::fill(next_.begin(), next_.end(), Error{});
    fromRight_ = !fromRight_;
}

void ErrorDiffusion::MapPixel(const std::uint8_t* pixel, std::uint8_t* index, std::size_t at, std::ptrdiff_t forward) {
    const Error& taken = current_[at];
    const int blue = Adjusted(pixel[0], taken.blue);
    const int green = Adjusted(pixel[1], taken.green);
    const int red = Adjusted(pixel[2], taken.red);
    *index = nearest_.Find(red, green, blue);

    const Color color = colors_[*index];
    const Error error{red - RedOf(color), green - GreenOf(color), blue - BlueOf(color)};
    const auto give = [&](Error& to, int sixteenths) {
        to.red += error.red * sixteenths;
        to.green += error.green * sixteenths;
        to.blue += error.blue * sixteenths;
    };
    const std::size_t ahead = at + static_cast<std::size_t>(forward);
    const std::size_t behind = at - static_cast<std::size_t>(forward);
    give(current_[ahead], 7);
    give(next_[behind], 3);
    give(next_[at], 5);
    give(next_[ahead], 1);
}

} // namespace imaginglibrary
