// Picture files of any format made and looked into by way of the engine, which must be loaded.
#pragma once

#include "imaging/exports/lumbrix.h"
#include "tests/support/bmpfiles.h"
#include "tests/support/temporaryfolder.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tests {

// A picture of one colour in PNG.
inline void WritePlainPng(const std::string& path, int width, int height, Rgb color) {
    const std::string plain = path + ".plain.bmp";
    WriteBytes(plain, MakeBmp(width, height, [&](int, int) { return color; }));
    ConvertImageToPng(plain.c_str(), path.c_str());
    std::filesystem::remove(plain);
}

inline BmpView ReadPicture(const std::string& path) {
    const std::string look = path + ".look.bmp";
    ConvertImageToBmp(path.c_str(), look.c_str());
    BmpView picture(ReadBytes(look));
    std::filesystem::remove(look);
    return picture;
}

inline std::pair<int, int> SizeOf(const std::string& path) {
    int32_t width = 0;
    int32_t height = 0;
    GetImageDimensions(path.c_str(), &width, &height);
    return {width, height};
}

// What is not white lies within these edges; right and bottom are not part of it. All zero where all is white.
struct InkBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool operator==(const InkBox&) const = default;
};

// Pixels count from this difference on, so that what JPEG adds around an edge does not.
inline constexpr int InkDifference = 100;

inline InkBox InkIn(const std::string& path) {
    const BmpView picture = ReadPicture(path);
    InkBox box{picture.Width(), picture.Height(), 0, 0};
    for (int y = 0; y < picture.Height(); ++y) {
        for (int x = 0; x < picture.Width(); ++x) {
            const Rgb color = picture.At(x, y);
            if (std::min({color.red, color.green, color.blue}) < 255 - InkDifference) {
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                       std::max(box.bottom, y + 1)};
            }
        }
    }
    return box.right == 0 ? InkBox{} : box;
}

} // namespace tests
