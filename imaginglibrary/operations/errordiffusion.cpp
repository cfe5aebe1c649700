// Replaces colours by palette entries and spreads the error that this makes over the neighbouring pixels.
#include "imaginglibrary/operations/errordiffusion.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace imaginglibrary {

namespace {

// What all neighbours together can give to a pixel.
constexpr int GreatestError = 255 * 16;

// Errors pile up where the palette has no colour strong enough, and would break out as bright specks at the next edge.
// So small errors are passed on whole, larger ones by half, and none beyond 32 levels.
constexpr int Softened(int sixteenths) {
    constexpr int Whole = 16;
    constexpr int Half = 48;
    const int levels = (sixteenths + (sixteenths >= 0 ? 8 : -8)) / 16;
    const int size = levels >= 0 ? levels : -levels;
    if (size <= Whole) {
        return levels;
    }
    const int softened = Whole + (std::min(size, Half) - Whole) / 2;
    return levels > 0 ? softened : -softened;
}

// Every pixel waits for the one before it, so it is the time until the result that counts.
constexpr auto SoftenedErrors = [] {
    std::array<std::int8_t, 2 * GreatestError + 1> softened{};
    for (int sixteenths = -GreatestError; sixteenths <= GreatestError; ++sixteenths) {
        softened[static_cast<std::size_t>(sixteenths + GreatestError)] = static_cast<std::int8_t>(Softened(sixteenths));
    }
    return softened;
}();

int Adjusted(int channel, int sixteenths) {
    return channel + SoftenedErrors[static_cast<std::size_t>(sixteenths + GreatestError)];
}

} // namespace

ErrorDiffusion::ErrorDiffusion(const Palette& colors, std::uint32_t width)
    : nearest_(colors), width_(width), errors_(std::size_t{width} + 2) {
    for (const Color color : colors) {
        colors_.push_back({RedOf(color), GreenOf(color), BlueOf(color)});
    }
}

void ErrorDiffusion::MapRow(const std::uint8_t* row, std::uint8_t* indices, std::uint8_t hole) {
    if (isFromRight_) {
        MapRowForward<-1>(row, indices, hole);
    } else {
        MapRowForward<1>(row, indices, hole);
    }
    isFromRight_ = !isFromRight_;
}

// A pixel gives 7 sixteenths of its error to the one ahead, and to the next row 3 behind it, 5 below it and 1 ahead. So
// once it is done, the pixel of the next row behind it has all that it gets, and takes the place of the one above.
template <int Forward>
void ErrorDiffusion::MapRowForward(const std::uint8_t* row, std::uint8_t* indices, std::uint8_t hole) {
    std::ptrdiff_t x = Forward > 0 ? 0 : std::ptrdiff_t{width_} - 1;
    Sixteenths* place = errors_.data() + x + 1;
    Levels last;
    Levels behind; // what the next row's pixel behind has got so far
    const auto store = [&](const Levels& error) {
        place[-Forward] = {static_cast<std::int16_t>(behind.red + 3 * error.red),
                           static_cast<std::int16_t>(behind.green + 3 * error.green),
                           static_cast<std::int16_t>(behind.blue + 3 * error.blue)};
    };
    for (std::uint32_t count = 0; count < width_; ++count, x += Forward, place += Forward) {
        Levels error;
        if (row[4 * x + 3] == 0) {
            indices[x] = hole;
        } else {
            const Levels given{place->red + 7 * last.red, place->green + 7 * last.green, place->blue + 7 * last.blue};
            error = MapPixel(row + 4 * x, given, indices[x]);
        }
        store(error);
        behind = {5 * error.red + last.red, 5 * error.green + last.green, 5 * error.blue + last.blue};
        last = error;
    }
    store({});
}

// The error that is left.
inline ErrorDiffusion::Levels ErrorDiffusion::MapPixel(const std::uint8_t* pixel, const Levels& sixteenths,
                                                       std::uint8_t& index) {
    int blue = Adjusted(pixel[0], sixteenths.blue);
    int green = Adjusted(pixel[1], sixteenths.green);
    int red = Adjusted(pixel[2], sixteenths.red);
    if (((red | green | blue) & ~255) != 0) { // seldom, so it is faster to ask
        blue = std::clamp(blue, 0, 255);
        green = std::clamp(green, 0, 255);
        red = std::clamp(red, 0, 255);
    }
    index = nearest_.Find(red, green, blue);
    const Levels& color = colors_[index];
    return {red - color.red, green - color.green, blue - color.blue};
}

} // namespace imaginglibrary
