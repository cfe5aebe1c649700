// BMP files made and looked into.
#include "tests/support/bmpfiles.h"

#include <cstring>
#include <stdexcept>

namespace tests {

namespace {

constexpr std::size_t HeaderBytes = 54;

std::size_t RowBytes(int width, int bits) { return (static_cast<std::size_t>(width) * bits + 31) / 32 * 4; }

void Put(std::string& file, std::size_t offset, std::size_t number, std::size_t bytes = 4) {
    for (std::size_t i = 0; i < bytes; ++i) {
        file[offset + i] = static_cast<char>(number >> (8 * i));
    }
}

std::string Header(int width, int height, int bits, std::size_t paletteBytes) {
    std::string file(HeaderBytes + paletteBytes, '\0');
    const std::size_t start = file.size();
    file[0] = 'B';
    file[1] = 'M';
    Put(file, 2, start + RowBytes(width, bits) * static_cast<std::size_t>(height));
    Put(file, 10, start);
    Put(file, 14, 40);
    Put(file, 18, static_cast<std::size_t>(width));
    Put(file, 22, static_cast<std::size_t>(height));
    Put(file, 26, 1, 2);
    Put(file, 28, static_cast<std::size_t>(bits), 2);
    return file;
}

void PutColor(std::string& file, std::size_t offset, Rgb color) {
    file[offset] = static_cast<char>(color.blue);
    file[offset + 1] = static_cast<char>(color.green);
    file[offset + 2] = static_cast<char>(color.red);
}

} // namespace

std::string MakeBmp(int width, int height, const RgbAt& colorAt) {
    std::string file = Header(width, height, 24, 0);
    for (int y = height - 1; y >= 0; --y) {
        const std::size_t row = file.size();
        file.append(RowBytes(width, 24), '\0');
        for (int x = 0; x < width; ++x) {
            PutColor(file, row + static_cast<std::size_t>(x) * 3, colorAt(x, y));
        }
    }
    return file;
}

std::string MakePaletteBmp(int width, int height, Rgb color) {
    std::string file = Header(width, height, 8, 256 * 4);
    PutColor(file, HeaderBytes, color);
    file.append(RowBytes(width, 8) * static_cast<std::size_t>(height), '\0');
    return file;
}

std::int32_t BmpView::Number(std::size_t offset) const {
    std::int32_t number = 0;
    if (bytes_.size() < HeaderBytes) {
        throw std::runtime_error("this is no BMP file");
    }
    std::memcpy(&number, bytes_.data() + offset, sizeof number);
    return number;
}

Rgb BmpView::At(int x, int y) const {
    const int bits = Number(28) & 0xFFFF;
    const int row = Number(22) < 0 ? y : Height() - 1 - y;
    const std::size_t offset = static_cast<std::size_t>(Number(10)) +
                               RowBytes(Width(), bits) * static_cast<std::size_t>(row) +
                               static_cast<std::size_t>(x) * static_cast<std::size_t>(bits / 8);
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes_.at(offset + i)); };
    return {byte(2), byte(1), byte(0)};
}

int BmpView::CountOthers(Rgb color) const {
    int count = 0;
    for (int y = 0; y < Height(); ++y) {
        for (int x = 0; x < Width(); ++x) {
            count += At(x, y) == color ? 0 : 1;
        }
    }
    return count;
}

} // namespace tests
