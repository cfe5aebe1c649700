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
    constexpr const std::int8_t* OfNoError = &SoftenedErrors[GreatestError];
    return channel + OfNoError[sixteenths];
}

} // namespace

ErrorDiffusion::ErrorDiffusion(const Palette& colors, std::uint32_t width)
    : nearest_(colors), width_(width), errors_(std::size_t{width} + 2) {
    for (const Color color : colors) {
        colors_.push_back({RedOf(color), GreenOf(color), BlueOf(color)});
    }
}

// How far a row has come. A pixel gives 7 sixteenths of its error to the one ahead, and to the row below 3 behind it, 5
// under it and 1 ahead.
class ErrorDiffusion::Line {
  public:
    // What the next pixel gets, with what is given to it from above.
    template <class Errors> Levels Given(const Errors& above) const {
        return {above.red + 7 * last_.red, above.green + 7 * last_.green, above.blue + 7 * last_.blue};
    }

    // Notes the next pixel's error. What the row gives in all to the pixel below and behind.
    Levels Pass(const Levels& error) {
        const Levels complete{below_.red + 3 * error.red, below_.green + 3 * error.green, below_.blue + 3 * error.blue};
        below_ = {last_.red + 5 * error.red, last_.green + 5 * error.green, last_.blue + 5 * error.blue};
        last_ = error;
        return complete;
    }

  private:
    Levels last_;
    Levels below_; // what the pixel below the last has got so far
};

void ErrorDiffusion::MapTwoRows(const std::uint8_t* rows, std::uint8_t* indices, std::uint8_t hole) {
    if (isFromRight_) {
        MapTowards<-1>(rows, indices, hole);
    } else {
        MapTowards<1>(rows, indices, hole);
    }
    isFromRight_ = !isFromRight_;
}

// The lower row is one pixel behind the upper one, where all is known that it is given. What it gives itself takes the
// place of what the upper row has got.
template <int Forward>
void ErrorDiffusion::MapTowards(const std::uint8_t* rows, std::uint8_t* indices, std::uint8_t hole) {
    const auto store = [](Sixteenths& to, const Levels& sixteenths) {
        to = {static_cast<std::int16_t>(sixteenths.red), static_cast<std::int16_t>(sixteenths.green),
              static_cast<std::int16_t>(sixteenths.blue)};
    };
    const auto map = [&](std::ptrdiff_t at, const Levels& given) {
        if (rows[4 * at + 3] == 0) {
            indices[at] = hole;
            return Levels{};
        }
        return MapPixel(rows + 4 * at, given, indices[at]);
    };
    const auto width = static_cast<std::ptrdiff_t>(width_);
    std::ptrdiff_t x = Forward > 0 ? 0 : width - 1;
    Sixteenths* place = errors_.data() + x + 1;
    Line upper;
    Line lower;
    upper.Pass(map(x, upper.Given(*place)));
    for (std::uint32_t count = 1; count < width_; ++count) {
        const std::ptrdiff_t behind = x;
        x += Forward;
        place += Forward;
        const Levels above = upper.Pass(map(x, upper.Given(*place)));
        store(place[-2 * Forward], lower.Pass(map(width + behind, lower.Given(above))));
    }
    const Levels above = upper.Pass({});
    store(place[-Forward], lower.Pass(map(width + x, lower.Given(above))));
    store(place[0], lower.Pass({}));
}

// The error that is left.
[[gnu::always_inline]] inline ErrorDiffusion::Levels
ErrorDiffusion::MapPixel(const std::uint8_t* pixel, const Levels& sixteenths, std::uint8_t& index) {
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
