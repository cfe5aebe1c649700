// Makes the pictures that the benchmarks work on: pictures KIND MEGAPIXELS FILE.ppm
// KIND is photograph (soft shapes with fine detail and noise) or screenshot (flat colours and small text-like marks).
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

using Row = std::vector<std::uint8_t>;

std::uint32_t Hash(std::uint32_t x, std::uint32_t y) {
    std::uint32_t h = x * 374761393u + y * 668265263u;
    h = (h ^ (h >> 13)) * 1274126177u;
    return h ^ (h >> 16);
}

// Noise whose features are as large as its cells, between 0 and 1.
class SoftNoise {
  public:
    SoftNoise(std::uint32_t cell, std::uint32_t seed) : cell_(cell), seed_(seed) {}

    double At(std::uint32_t x, std::uint32_t y) const {
        const std::uint32_t column = x / cell_, line = y / cell_;
        const double across = Eased(x % cell_), down = Eased(y % cell_);
        const double upper = Mixed(Corner(column, line), Corner(column + 1, line), across);
        const double lower = Mixed(Corner(column, line + 1), Corner(column + 1, line + 1), across);
        return Mixed(upper, lower, down);
    }

  private:
    double Eased(std::uint32_t place) const {
        const double t = static_cast<double>(place) / cell_;
        return t * t * (3 - 2 * t);
    }
    static double Mixed(double one, double other, double share) { return one + (other - one) * share; }
    double Corner(std::uint32_t x, std::uint32_t y) const { return (Hash(x + seed_, y) & 0xFFFF) / 65535.0; }

    std::uint32_t cell_;
    std::uint32_t seed_;
};

void FillPhotographRow(std::uint32_t y, std::uint32_t width, Row& row) {
    static const std::array<SoftNoise, 4> octaves{SoftNoise(700, 1), SoftNoise(160, 2), SoftNoise(35, 3),
                                                  SoftNoise(9, 4)};
    for (std::uint32_t x = 0; x < width; ++x) {
        const double shape = 0.5 * octaves[0].At(x, y) + 0.28 * octaves[1].At(x, y) + 0.14 * octaves[2].At(x, y) +
                             0.08 * octaves[3].At(x, y);
        const double grain = (Hash(x, y) & 7) - 3.5;
        const double tint = octaves[0].At(x + 5000, y);
        row[3 * x] = static_cast<std::uint8_t>(std::clamp(30 + 200 * shape + 20 * tint + grain, 0.0, 255.0));
        row[3 * x + 1] = static_cast<std::uint8_t>(std::clamp(25 + 200 * shape + grain, 0.0, 255.0));
        row[3 * x + 2] = static_cast<std::uint8_t>(std::clamp(50 + 170 * shape - 25 * tint + grain, 0.0, 255.0));
    }
}

// Panels of one colour, with lines of marks 5 by 7 pixels large.
void FillScreenshotRow(std::uint32_t y, std::uint32_t width, Row& row) {
    constexpr std::uint32_t Panel = 480, Line = 16, Mark = 8;
    for (std::uint32_t x = 0; x < width; ++x) {
        const std::uint32_t panel = Hash(x / Panel, y / Panel);
        std::uint32_t color = (panel & 3) == 0 ? 0x3465A4 : (panel & 3) == 1 ? 0xF2F2F2 : 0xFFFFFF;
        const std::uint32_t letter = Hash(x / Mark + 77, y / Line) % 40;
        const bool isText = (panel & 3) != 0 && letter < 30 && x % Mark < 5 && y % Line < 7;
        if (isText && (Hash(letter, (x % Mark) + 5 * (y % Line)) & 1) != 0) {
            color = 0x202020;
        }
        if (x % Panel < 2 || y % Panel < 2) {
            color = 0xA0A0A0;
        }
        row[3 * x] = static_cast<std::uint8_t>(color >> 16);
        row[3 * x + 1] = static_cast<std::uint8_t>(color >> 8);
        row[3 * x + 2] = static_cast<std::uint8_t>(color);
    }
}

} // namespace

int main(int count, char** arguments) {
    const double megapixels = count == 4 ? std::atof(arguments[2]) : 0;
    const bool isPhotograph = count == 4 && std::strcmp(arguments[1], "photograph") == 0;
    if (megapixels <= 0 || (!isPhotograph && std::strcmp(arguments[1], "screenshot") != 0)) {
        std::fprintf(stderr, "usage: pictures photograph|screenshot MEGAPIXELS FILE.ppm\n");
        return 2;
    }
    const auto height = static_cast<std::uint32_t>(std::lround(std::sqrt(megapixels * 1e6 / 1.5)));
    const std::uint32_t width = height * 3 / 2;
    std::FILE* const file = std::fopen(arguments[3], "wb");
    if (file == nullptr) {
        std::perror(arguments[3]);
        return 1;
    }
    std::fprintf(file, "P6\n%u %u\n255\n", width, height);
    Row row(std::size_t{width} * 3);
    for (std::uint32_t y = 0; y < height; ++y) {
        (isPhotograph ? FillPhotographRow : FillScreenshotRow)(y, width, row);
        std::fwrite(row.data(), 1, row.size(), file);
    }
    return std::fclose(file) == 0 ? 0 : 1;
}
