// PNG files of every kind, made for tests by libpng itself.
#include "tests/support/pngfiles.h"

#include <zlib.h>

#include <array>

namespace tests {

using namespace imaginglibrary;

namespace {

std::string BigEndian(std::uint32_t value) {
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
            static_cast<char>(value)};
}

unsigned Channels(int type) {
    return type == PNG_COLOR_TYPE_RGB          ? 3
           : type == PNG_COLOR_TYPE_RGB_ALPHA  ? 4
           : type == PNG_COLOR_TYPE_GRAY_ALPHA ? 2
                                               : 1;
}

void SetPalette(png_structp png, png_infop info, const PngFile& file) {
    std::array<png_color, 256> colors{};
    std::array<png_byte, 256> alphas{};
    int count = 0;
    for (const Color color : file.palette) {
        colors[static_cast<std::size_t>(count)] = {RedOf(color), GreenOf(color), BlueOf(color)};
        alphas[static_cast<std::size_t>(count)] = AlphaOf(color);
        ++count;
    }
    if (count != 0) {
        png_set_PLTE(png, info, colors.data(), count);
    }
    if (file.hasAlphas) {
        png_set_tRNS(png, info, alphas.data(), count, nullptr);
    }
}

std::vector<png_byte> PackedRow(const PngFile& file, const PngSamples& samples, unsigned y) {
    const unsigned channels = Channels(file.type);
    const auto depth = static_cast<unsigned>(file.depth);
    std::vector<png_byte> row((std::size_t{file.width} * channels * depth + 7) / 8);
    for (unsigned i = 0; i < file.width * channels; ++i) {
        const unsigned sample = samples(i / channels, y, i % channels);
        if (depth == 16) {
            row[2 * i] = static_cast<png_byte>(sample >> 8);
            row[2 * i + 1] = static_cast<png_byte>(sample);
        } else {
            row[i * depth / 8] |= static_cast<png_byte>(sample << (8 - depth - i * depth % 8));
        }
    }
    return row;
}

} // namespace

std::string MakePng(const PngFile& file, const PngSamples& samples) {
    std::string made;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(
        png, &made,
        [](png_structp writer, png_bytep bytes, std::size_t count) {
            static_cast<std::string*>(png_get_io_ptr(writer))->append(reinterpret_cast<const char*>(bytes), count);
        },
        [](png_structp) {});
    png_set_IHDR(png, info, file.width, file.height, file.depth, file.type,
                 file.isInterlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    SetPalette(png, info, file);
    if (file.transparent) {
        png_set_tRNS(png, info, nullptr, 0, &*file.transparent);
    }
    if (file.more) {
        file.more(png, info);
    }
    png_write_info(png, info);
    const int passes = png_set_interlace_handling(png);
    for (int pass = 0; pass < passes; ++pass) {
        for (unsigned y = 0; y < file.height; ++y) {
            png_write_row(png, PackedRow(file, samples, y).data());
        }
    }
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return made;
}

std::string PngChunk(const std::string& type, const std::string& data) {
    const std::string checked = type + data;
    const auto* bytes = reinterpret_cast<const Bytef*>(checked.data());
    return BigEndian(static_cast<std::uint32_t>(data.size())) + checked +
           BigEndian(static_cast<std::uint32_t>(crc32(0, bytes, static_cast<uInt>(checked.size()))));
}

std::size_t FindChunk(const std::string& png, const std::string& type) {
    constexpr std::size_t LengthBytes = 4;
    const std::size_t at = png.find(type);
    return at == std::string::npos ? at : at - LengthBytes;
}

std::optional<std::string> ChunkData(const std::string& png, const std::string& type) {
    const std::size_t at = FindChunk(png, type);
    if (at == std::string::npos) {
        return std::nullopt;
    }
    std::uint32_t size = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        size = size << 8 | static_cast<unsigned char>(png[at + i]);
    }
    return png.substr(at + 8, size);
}

std::string ImageData(const std::string& png) {
    std::string stream;
    std::size_t at = FindChunk(png, "IDAT");
    while (png.compare(at + 4, 4, "IDAT") == 0) {
        const std::string data = *ChunkData(png.substr(at), "IDAT");
        stream += data;
        at += 12 + data.size();
    }
    return stream;
}

std::string WithImageData(const std::string& png, const std::vector<std::string>& parts) {
    std::string made = png.substr(0, FindChunk(png, "IDAT"));
    for (const std::string& part : parts) {
        made += PngChunk("IDAT", part);
    }
    return made + PngChunk("IEND", "");
}

std::string WithLargestWindow(const std::string& png) {
    return WithImageData(png, {"\x78\x9C" + ImageData(png).substr(2)});
}

std::string WithClaimedSides(const std::string& png, std::uint32_t width, std::uint32_t height) {
    const std::size_t at = FindChunk(png, "IHDR");
    const std::string header = BigEndian(width) + BigEndian(height) + ChunkData(png, "IHDR")->substr(8);
    const std::string chunk = PngChunk("IHDR", header);
    return png.substr(0, at) + chunk + png.substr(at + chunk.size());
}

} // namespace tests
