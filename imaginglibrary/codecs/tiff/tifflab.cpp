// Makes screen colours from CIE L*a*b*.
#include "imaginglibrary/codecs/tiff/tifflab.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace imaginglibrary {

namespace {

constexpr std::array<double, 3> WhiteD50 = {0.96422, 1, 0.82521};

// From XYZ under D50, adapted by Bradford's method to D65, to linear sRGB.
constexpr double ToLinearRgb[3][3] = {
    {3.1338561, -1.6168667, -0.4906146}, {-0.9787684, 1.9161415, 0.0334540}, {0.0719453, -0.2289914, 1.4052427}};

// So fine that it is off by a fifth of a level where the curve is steepest.
constexpr int CurveSteps = 16384;

double Encoded(double linear) {
    return linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
}

std::uint8_t Level(double linear) {
    static const auto curve = [] {
        std::array<std::uint8_t, CurveSteps + 1> levels{};
        for (int i = 0; i <= CurveSteps; ++i) {
            levels[static_cast<std::size_t>(i)] =
                static_cast<std::uint8_t>(std::lround(255 * Encoded(static_cast<double>(i) / CurveSteps)));
        }
        return levels;
    }();
    return curve[static_cast<std::size_t>(std::clamp(linear, 0.0, 1.0) * CurveSteps + 0.5)];
}

double Uncompressed(double value) {
    constexpr double Bend = 6.0 / 29;
    return value > Bend ? value * value * value : 3 * Bend * Bend * (value - 4.0 / 29);
}

} // namespace

Color ColorFromLab(double lightness, double a, double b) {
    const double middle = (lightness + 16) / 116;
    const std::array<double, 3> xyz = {WhiteD50[0] * Uncompressed(middle + a / 500), WhiteD50[1] * Uncompressed(middle),
                                       WhiteD50[2] * Uncompressed(middle - b / 200)};
    const auto channel = [&](const double(&row)[3]) {
        return Level(row[0] * xyz[0] + row[1] * xyz[1] + row[2] * xyz[2]);
    };
    return MakeColor(channel(ToLinearRgb[0]), channel(ToLinearRgb[1]), channel(ToLinearRgb[2]));
}

} // namespace imaginglibrary
