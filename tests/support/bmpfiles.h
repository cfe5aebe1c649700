// BMP files made and looked into.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace tests {

struct Rgb {
    std::uint8_t red;
    std::uint8_t green;
    std::uint8_t blue;

    bool operator==(const Rgb&) const = default;
};

inline constexpr Rgb Black{0, 0, 0};
inline constexpr Rgb White{255, 255, 255};
inline constexpr Rgb Red{255, 0, 0};
inline constexpr Rgb Green{0, 255, 0};
inline constexpr Rgb Blue{0, 0, 255};

using RgbAt = std::function<Rgb(int x, int y)>;

// A picture of 24 bits a pixel.
std::string MakeBmp(int width, int height, const RgbAt& colorAt);

// A picture of 8 bits a pixel, all of one colour.
std::string MakePaletteBmp(int width, int height, Rgb color);

// A picture of 24 or 32 bits a pixel in memory.
class BmpView {
  public:
    explicit BmpView(std::string bytes) : bytes_(std::move(bytes)) {}

    int Width() const { return Number(18); }
    int Height() const { return Number(22) < 0 ? -Number(22) : Number(22); }
    Rgb At(int x, int y) const;

    // How many pixels are of another colour.
    int CountOthers(Rgb color) const;

  private:
    std::int32_t Number(std::size_t offset) const;

    std::string bytes_;
};

} // namespace tests
