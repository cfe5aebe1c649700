// Finds the palette entry that is nearest to a colour, exactly and fast.
#include "imaginglibrary/operations/nearestcolor.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

namespace imaginglibrary {

namespace {

constexpr std::size_t AllColors = std::size_t{1} << 24;

// The side of the cubes that are filled at once, and of the larger ones whose candidates are kept.
constexpr int Side = 4;
constexpr int LargeSide = 16;
constexpr std::size_t LargeCubes = 16 * 16 * 16;

// The least colour of a cube in each channel, and the number of levels along each.
struct Cube {
    int red, green, blue;
    int side;
};

Cube CubeAround(int red, int green, int blue, int side) { return {red & -side, green & -side, blue & -side, side}; }

// Squared distance to the cube's centre, in half levels.
template <class Entry> int DistanceToCentre(const Entry& entry, const Cube& cube) {
    const auto along = [&](int channel, int start) {
        const int difference = 2 * (channel - start) - (cube.side - 1);
        return difference * difference;
    };
    return along(entry.red, cube.red) + along(entry.green, cube.green) + along(entry.blue, cube.blue);
}

template <class Entry> int StepsBetween(const Entry& a, const Entry& b) {
    return std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue);
}

// Copies those of `count` entries, in their order, that can be nearest to something in the cube; how many they are.
//
// What an entry is farther from the centre than another, in squared distance, it makes good towards one of the corners:
// there by (side - 1) times their difference in each channel. Where even that leaves it behind the entry that is
// nearest to the centre, it can never win.
template <class Entry>
std::size_t CopyCandidates(const Entry* entries, std::size_t count, const Cube& cube, Entry* to) {
    std::array<int, 256> distances;
    std::size_t nearest = 0;
    for (std::size_t i = 0; i < count; ++i) {
        distances[i] = DistanceToCentre(entries[i], cube);
        nearest = distances[i] < distances[nearest] ? i : nearest;
    }
    std::size_t copied = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const int madeGood = 4 * (cube.side - 1) * StepsBetween(entries[i], entries[nearest]);
        if (distances[i] - distances[nearest] <= madeGood) {
            to[copied++] = entries[i];
        }
    }
    return copied;
}

// The index of the nearest of `count` entries for each colour of a small cube, blue changing fastest.
template <class Entry>
void FindNearestInCube(const Entry* entries, std::size_t count, const Cube& cube, std::uint8_t* indices) {
    // Squared distances but for a summand that all entries share, with the index below them, which settles ties.
    std::array<int, Side * Side * Side> least;
    least.fill(std::numeric_limits<int>::max());
    for (std::size_t i = 0; i < count; ++i) {
        const Entry& entry = entries[i];
        const int red = entry.red - cube.red;
        const int green = entry.green - cube.green;
        const int blue = entry.blue - cube.blue;
        const int first = (red * red + green * green + blue * blue) * 256 + entry.index;
        int* value = least.data();
        for (int r = 0; r < Side; ++r) {
            for (int g = 0; g < Side; ++g) {
                const int line = first - (r * red + g * green) * 512;
                for (int b = 0; b < Side; ++b, ++value) {
                    *value = std::min(*value, line - b * blue * 512);
                }
            }
        }
    }
    std::transform(least.begin(), least.end(), indices, [](int value) { return static_cast<std::uint8_t>(value); });
}

} // namespace

// The table is left as it comes: memory that is never touched costs nothing.
NearestColor::NearestColor(const Palette& colors)
    : lists_(LargeCubes), isFilled_(AllColors / ColorsOfACube / 32),
      table_(std::make_unique_for_overwrite<std::uint8_t[]>(AllColors)) {
    for (std::size_t i = 0; i < colors.size(); ++i) {
        entries_.push_back({RedOf(colors[i]), GreenOf(colors[i]), BlueOf(colors[i]), static_cast<std::uint8_t>(i)});
    }
}

void NearestColor::Fill(std::uint32_t cube, int red, int green, int blue) {
    const List list = ListAround(red, green, blue);
    const Cube small = CubeAround(red, green, blue, Side);
    std::array<Entry, 256> candidates;
    const std::size_t count = CopyCandidates(candidates_.data() + list.first, list.count, small, candidates.data());
    std::uint8_t* const indices = table_.get() + std::size_t{cube} * ColorsOfACube;
    if (count == 1) {
        std::fill_n(indices, ColorsOfACube, candidates[0].index);
    } else {
        FindNearestInCube(candidates.data(), count, small, indices);
    }
    isFilled_[cube / 32] |= 1u << (cube % 32);
}

NearestColor::List NearestColor::ListAround(int red, int green, int blue) {
    List& list = lists_[static_cast<std::size_t>((red >> 4) << 8 | (green >> 4) << 4 | blue >> 4)];
    if (list.count == 0) {
        std::array<Entry, 256> candidates;
        const Cube large = CubeAround(red, green, blue, LargeSide);
        list.first = candidates_.size();
        list.count = CopyCandidates(entries_.data(), entries_.size(), large, candidates.data());
        candidates_.insert(candidates_.end(), candidates.begin(),
                           candidates.begin() + static_cast<std::ptrdiff_t>(list.count));
    }
    return list;
}

} // namespace imaginglibrary
