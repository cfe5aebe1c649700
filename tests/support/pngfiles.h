// PNG files of every kind, made for tests by libpng itself.
#pragma once

#include "imaginglibrary/core/pixelformat.h"

#include <png.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tests {

struct PngFile {
    unsigned width = 33;
    unsigned height = 9;
    int depth = 8;
    int type = PNG_COLOR_TYPE_RGB;
    bool isInterlaced = false;
    std::vector<imaginglibrary::Color> palette = {};
    bool hasAlphas = false;                           // the palette's, as tRNS
    std::optional<png_color_16> transparent = {};     // the one clear colour of grey and RGB
    std::function<void(png_structp, png_infop)> more; // sets other chunks
};

// The raw sample of a channel, as many bits as the file has.
using PngSamples = std::function<unsigned(unsigned x, unsigned y, unsigned channel)>;

std::string MakePng(const PngFile& file, const PngSamples& samples);

// A chunk with its length and its checksum.
std::string PngChunk(const std::string& type, const std::string& data);

// Where a chunk's length field stands in a file; npos if there is no such chunk.
std::size_t FindChunk(const std::string& png, const std::string& type);

// The data of the first chunk of this type; nothing where there is none.
std::optional<std::string> ChunkData(const std::string& png, const std::string& type);

// The zlib stream of the file's image data, out of all their chunks.
std::string ImageData(const std::string& png);

// The file with other image data, a chunk for each part, and nothing behind them but the end.
std::string WithImageData(const std::string& png, const std::vector<std::string>& parts);

// The file with image data that claim the largest window, as those of large pictures do; libpng makes it as small as
// the picture.
std::string WithLargestWindow(const std::string& png);

// The same file with other sides in its header.
std::string WithClaimedSides(const std::string& png, std::uint32_t width, std::uint32_t height);

} // namespace tests
