// Finds the palette entry that is nearest to a colour, exactly and fast.
#pragma once

#include "imaginglibrary/core/pixelformat.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace imaginglibrary {

// A table with a byte for each of the 2^24 colours, filled by small cubes of 64 colours when a colour of one is first
// asked for. So it takes the memory of the colours that occur, 16 MiB at most. In a cube only the few entries are
// compared that can be nearest to something in it (after S. Thomas, "Efficient Inverse Color Map Computation", Graphics
// Gems II, 1991, taken per cube). Belongs to one thread at a time.
class NearestColor {
  public:
    // 1 to 256 colours, whose alpha does not matter.
    explicit NearestColor(const Palette& colors);

    // The entry with the least squared distance to a colour (0 to 255 each); of several, the first.
    std::uint8_t Find(int red, int green, int blue) {
        const std::uint32_t place = PlaceOf(red, green, blue);
        const std::uint32_t cube = place / ColorsOfACube;
        if ((isFilled_[cube / 32] >> (cube % 32) & 1) == 0) {
            Fill(cube, red, green, blue);
        }
        return table_[place];
    }

  private:
    static constexpr std::uint32_t ColorsOfACube = 64;

    struct Entry {
        std::uint8_t red, green, blue, index;
    };

    // Which entries can be nearest to something in a larger cube: some of `candidates_`.
    struct List {
        std::size_t first = 0;
        std::size_t count = 0; // 0: not made yet
    };

    // Where colours with a value in one channel have their bytes. The upper six bits of each channel tell the cube, and
    // stand above the lower two.
    static constexpr std::array<std::uint32_t, 256> PlacesOf(unsigned shiftOfCube, unsigned shiftInCube) {
        std::array<std::uint32_t, 256> places{};
        for (std::uint32_t value = 0; value < places.size(); ++value) {
            places[value] = (value >> 2) << (6 + shiftOfCube) | (value & 3) << shiftInCube;
        }
        return places;
    }

    static std::uint32_t PlaceOf(int red, int green, int blue) {
        static constexpr std::array<std::uint32_t, 256> Reds = PlacesOf(12, 4);
        static constexpr std::array<std::uint32_t, 256> Greens = PlacesOf(6, 2);
        static constexpr std::array<std::uint32_t, 256> Blues = PlacesOf(0, 0);
        return Reds[static_cast<std::size_t>(red)] | Greens[static_cast<std::size_t>(green)] |
               Blues[static_cast<std::size_t>(blue)];
    }

    void Fill(std::uint32_t cube, int red, int green, int blue);
    List ListAround(int red, int green, int blue);

    std::vector<Entry> entries_;
    std::vector<List> lists_;
    std::vector<Entry> candidates_;
    std::vector<std::uint32_t> isFilled_; // a bit for each small cube
    std::unique_ptr<std::uint8_t[]> table_;
};

} // namespace imaginglibrary
