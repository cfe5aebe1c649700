// What the codec libraries take by themselves, in one loop on one thread: the limit of a conversion.
//
// limit_bench SOURCE TARGET [half | turn] [quality=N] [level=N] [plain]
//   half       libjpeg delivers the picture at half its size
//   turn       the picture is turned by 90 degrees clockwise in memory
//   quality=N  of a JPEG, 75 unless told
//   level=N    of zlib in a PNG, the library's own unless told
//   plain      a TIFF without compression
//
// A GIF is made of a PNG with a palette only.
#include "bench/barecodecs/rows.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>
#include <vector>

namespace barecodecs {

void Require(bool isSo, const char* what) {
    if (!isSo) {
        std::fprintf(stderr, "limit_bench: %s\n", what);
        std::exit(1);
    }
}

namespace {

enum class Way { Whole, Half, Turned };

struct Work {
    std::string source;
    std::string target;
    Way way = Way::Whole;
    Settings settings;
};

Work WorkFrom(int count, char** arguments) {
    Require(count >= 3, "usage: limit_bench SOURCE TARGET [half | turn] [quality=N] [level=N] [plain]");
    Work work{.source = arguments[1], .target = arguments[2]};
    for (int i = 3; i < count; ++i) {
        const std::string_view word = arguments[i];
        if (word == "half") {
            work.way = Way::Half;
        } else if (word == "turn") {
            work.way = Way::Turned;
        } else if (word == "plain") {
            work.settings.isPacked = false;
        } else if (word.starts_with("quality=")) {
            work.settings.quality = std::atoi(arguments[i] + 8);
        } else if (word.starts_with("level=")) {
            work.settings.level = std::atoi(arguments[i] + 6);
        } else {
            Require(false, arguments[i]);
        }
    }
    return work;
}

std::unique_ptr<Reader> OpenReader(const Work& work, Order order) {
    const std::string& path = work.source;
    Require(path.ends_with(".jpg") || work.way != Way::Half, "libjpeg alone delivers half the size");
    if (path.ends_with(".jpg")) {
        return ReadJpeg(path, order, work.way == Way::Half ? 4 : 8);
    }
    if (path.ends_with(".png")) {
        return ReadPng(path, order);
    }
    Require(path.ends_with(".bmp") || path.ends_with(".ppm"), "the source is jpg, png, bmp or ppm");
    return path.ends_with(".bmp") ? ReadBmp(path, order) : ReadPpm(path, order);
}

std::unique_ptr<Writer> OpenWriter(const Work& work, Size size, Order order) {
    const std::string& path = work.target;
    if (path.ends_with(".jpg")) {
        return WriteJpeg(path, size, order, work.settings);
    }
    if (path.ends_with(".png")) {
        return WritePng(path, size, order, work.settings);
    }
    Require(path.ends_with(".tif") || path.ends_with(".bmp"), "the target is jpg, png, tif or bmp");
    return path.ends_with(".tif") ? WriteTiff(path, size, order, work.settings) : WriteBmp(path, size, order);
}

void PassRows(Reader& reader, Writer& writer) {
    std::vector<std::uint8_t> row(reader.GetSize().RowBytes());
    for (std::uint32_t y = 0; y < reader.GetSize().height; ++y) {
        reader.ReadRow(row.data());
        writer.WriteRow(row.data());
    }
}

// Turns by 90 degrees clockwise: the left column becomes the top row, read from below. Columns are taken several at
// once, for a line of the processor's cache holds the pixels of more than one.
std::vector<std::uint8_t> Turned(const std::vector<std::uint8_t>& pixels, Size size) {
    constexpr std::uint32_t Block = 32;
    std::vector<std::uint8_t> turned(pixels.size());
    for (std::uint32_t left = 0; left < size.width; left += Block) {
        const std::uint32_t right = std::min(left + Block, size.width);
        for (std::uint32_t y = 0; y < size.height; ++y) {
            const std::uint8_t* from = pixels.data() + size.RowBytes() * y + std::size_t{3} * left;
            for (std::uint32_t x = left; x < right; ++x, from += 3) {
                std::copy_n(from, 3, turned.data() + 3 * (std::size_t{size.height} * x + (size.height - 1 - y)));
            }
        }
    }
    return turned;
}

void PassTurned(Reader& reader, Writer& writer) {
    const Size size = reader.GetSize();
    std::vector<std::uint8_t> pixels(size.RowBytes() * size.height);
    for (std::uint32_t y = 0; y < size.height; ++y) {
        reader.ReadRow(pixels.data() + size.RowBytes() * y);
    }
    pixels = Turned(pixels, size);
    for (std::uint32_t y = 0; y < size.width; ++y) {
        writer.WriteRow(pixels.data() + std::size_t{3} * size.height * y);
    }
}

void Convert(const Work& work) {
    const bool isBmp = work.source.ends_with(".bmp") || work.target.ends_with(".bmp");
    const Order order = isBmp ? Order::BlueFirst : Order::RedFirst;
    const auto reader = OpenReader(work, order);
    Size size = reader->GetSize();
    if (work.way == Way::Turned) {
        std::swap(size.width, size.height);
    }
    const auto writer = OpenWriter(work, size, order);
    (work.way == Way::Turned ? PassTurned : PassRows)(*reader, *writer);
    writer->Finish();
}

} // namespace

} // namespace barecodecs

int main(int count, char** arguments) {
    const barecodecs::Work work = barecodecs::WorkFrom(count, arguments);
    if (work.source.ends_with(".png") && work.target.ends_with(".gif")) {
        barecodecs::ConvertPalettePngToGif(work.source, work.target);
    } else {
        barecodecs::Convert(work);
    }
    return 0;
}
