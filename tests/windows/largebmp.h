// A BMP of 24 megapixels.
#pragma once

#include "tests/support/bmpfiles.h"

#include <cstring>
#include <functional>
#include <string>

namespace tests {

inline constexpr int LargeWidth = 6000;
inline constexpr int LargeHeight = 4000;

// Made a row at a time; `fillRow` changes the row, which is the one before then, white at first.
inline std::string MakeLargeBmp(const std::function<void(int y, std::string& row)>& fillRow) {
    std::string file = MakeBmp(1, 1, [](int, int) { return White; }).substr(0, 54);
    const std::int32_t numbers[] = {LargeWidth, LargeHeight};
    std::memcpy(&file[18], numbers, sizeof numbers);
    const std::int32_t bytes = 54 + LargeWidth * LargeHeight * 3;
    std::memcpy(&file[2], &bytes, sizeof bytes);
    file.reserve(static_cast<std::size_t>(bytes));
    std::string row(LargeWidth * 3, '\xFF');
    for (int y = LargeHeight - 1; y >= 0; --y) {
        fillRow(y, row);
        file += row;
    }
    return file;
}

} // namespace tests
