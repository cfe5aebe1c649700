// A photograph to draw, made up.
#include "bench/photograph.h"

#include <cstdio>
#include <vector>

#include <jpeglib.h>

namespace bench {

bool WritePhotograph(const std::string& path, std::uint32_t width, std::uint32_t height) {
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        return false;
    }
    jpeg_compress_struct compression{};
    jpeg_error_mgr errors{};
    compression.err = jpeg_std_error(&errors);
    jpeg_create_compress(&compression);
    jpeg_stdio_dest(&compression, file);
    compression.image_width = width;
    compression.image_height = height;
    compression.input_components = 3;
    compression.in_color_space = JCS_RGB;
    jpeg_set_defaults(&compression);
    jpeg_set_quality(&compression, 85, TRUE);
    jpeg_start_compress(&compression, TRUE);
    std::vector<JSAMPLE> row(std::size_t{width} * 3);
    std::uint32_t noise = 1;
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            noise = noise * 1664525 + 1013904223;
            row[x * 3] = static_cast<JSAMPLE>(x * 200 / width + (noise >> 27));
            row[x * 3 + 1] = static_cast<JSAMPLE>(y * 200 / height + ((x / 40 + y / 40) % 2) * 40);
            row[x * 3 + 2] = static_cast<JSAMPLE>((x + y) / 8);
        }
        JSAMPROW rows[] = {row.data()};
        jpeg_write_scanlines(&compression, rows, 1);
    }
    jpeg_finish_compress(&compression);
    jpeg_destroy_compress(&compression);
    return std::fclose(file) == 0;
}

} // namespace bench
