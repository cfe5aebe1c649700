// An icon file of 32 by 32 pixels looked into.
#pragma once

#include "tests/support/bmpfiles.h"

#include <string>

namespace tests {

class IconView {
  public:
    explicit IconView(std::string bytes) : bytes_(std::move(bytes)) {}

    std::size_t Bytes() const { return bytes_.size(); }

    Rgb At(int x, int y) const {
        const std::size_t place = 66 + RowFromBottom(y) * 96 + static_cast<std::size_t>(x) * 3;
        const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes_.at(place + i)); };
        return {byte(2), byte(1), byte(0)};
    }

    bool IsTransparent(int x, int y) const {
        const char byte = bytes_.at(3138 + RowFromBottom(y) * 4 + static_cast<std::size_t>(x) / 8);
        return (byte >> (7 - x % 8) & 1) != 0;
    }

    int CountTransparent() const {
        int count = 0;
        for (int y = 0; y < 32; ++y) {
            for (int x = 0; x < 32; ++x) {
                count += IsTransparent(x, y) ? 1 : 0;
            }
        }
        return count;
    }

  private:
    static std::size_t RowFromBottom(int y) { return static_cast<std::size_t>(31 - y); }

    std::string bytes_;
};

} // namespace tests
