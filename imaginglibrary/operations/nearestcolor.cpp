// Finds the palette entry that is nearest to a colour, exactly and fast.
#include "imaginglibrary/operations/nearestcolor.h"

#include <algorithm>

namespace imaginglibrary {

namespace {

constexpr int CubeSide = 8;
constexpr std::size_t CubesPerAxis = 256 / CubeSide;

struct Distances {
    int least;
    int greatest;
};

int Square(int value) { return value * value; }

// Squared, along one axis, from a value to the nearest and the farthest end of a cube that begins at `start`.
Distances AlongAxis(int value, int start) {
    const int below = start - value;
    const int above = value - (start + CubeSide - 1);
    return {Square(std::max({below, above, 0})), Square(std::max(-below, -above))};
}

} // namespace

NearestColor::NearestColor(const Palette& colors) : cubes_(CubesPerAxis * CubesPerAxis * CubesPerAxis) {
    for (std::size_t i = 0; i < colors.size(); ++i) {
        entries_.push_back({RedOf(colors[i]), GreenOf(colors[i]), BlueOf(colors[i]), static_cast<std::uint8_t>(i)});
    }
}

// An entry whose nearest point of the cube is farther away than another entry's farthest can never win there.
void NearestColor::ListCandidates(Cube& cube, int red, int green, int blue) {
    std::array<int, 256> least;
    int bound = Square(256) * 3;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const Distances r = AlongAxis(entries_[i].red, red);
        const Distances g = AlongAxis(entries_[i].green, green);
        const Distances b = AlongAxis(entries_[i].blue, blue);
        least[i] = r.least + g.least + b.least;
        bound = std::min(bound, r.greatest + g.greatest + b.greatest);
    }
    cube.first = static_cast<std::uint32_t>(candidates_.size());
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (least[i] <= bound) {
            candidates_.push_back(entries_[i]);
        }
    }
    cube.count = static_cast<std::uint32_t>(candidates_.size()) - cube.first;
}

} // namespace imaginglibrary
