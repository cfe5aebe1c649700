// A PNG with a palette becomes a GIF with the same one: libpng and giflib, with nothing to choose in between.
#include "bench/barecodecs/file.h"

#include <gif_lib.h>
#include <png.h>
#include <vector>

namespace barecodecs {

namespace {

constexpr int Colors = 256;

struct PngFile {
    explicit PngFile(const std::string& path) : file(path, "rb") {
        png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        info = png_create_info_struct(png);
        png_init_io(png, file.Get());
        png_read_info(png, info);
        Require(png_get_color_type(png, info) == PNG_COLOR_TYPE_PALETTE, "a PNG without a palette");
        png_set_packing(png); // one byte a pixel, whatever the depth
        png_read_update_info(png, info);
    }
    ~PngFile() { png_destroy_read_struct(&png, &info, nullptr); }
    PngFile(const PngFile&) = delete;
    PngFile& operator=(const PngFile&) = delete;

    File file;
    png_structp png = nullptr;
    png_infop info = nullptr;
};

// To be freed by the caller.
ColorMapObject* PaletteOf(const PngFile& source) {
    png_colorp colors = nullptr;
    int count = 0;
    png_get_PLTE(source.png, source.info, &colors, &count);
    std::vector<GifColorType> palette(Colors);
    for (int i = 0; i < count; ++i) {
        palette[i] = {colors[i].red, colors[i].green, colors[i].blue};
    }
    return GifMakeMapObject(Colors, palette.data());
}

} // namespace

void ConvertPalettePngToGif(const std::string& source, const std::string& target) {
    const PngFile png(source);
    const auto width = static_cast<int>(png_get_image_width(png.png, png.info));
    const auto height = static_cast<int>(png_get_image_height(png.png, png.info));
    ColorMapObject* const palette = PaletteOf(png);
    GifFileType* const gif = EGifOpenFileName(target.c_str(), false, nullptr);
    Require(gif != nullptr && EGifPutScreenDesc(gif, width, height, 8, 0, palette) == GIF_OK &&
                EGifPutImageDesc(gif, 0, 0, width, height, false, nullptr) == GIF_OK,
            target.c_str());
    std::vector<std::uint8_t> row(width);
    for (int y = 0; y < height; ++y) {
        png_read_row(png.png, row.data(), nullptr);
        Require(EGifPutLine(gif, row.data(), width) == GIF_OK, "a line");
    }
    Require(EGifCloseFile(gif, nullptr) == GIF_OK, "closing");
    GifFreeMapObject(palette);
}

} // namespace barecodecs
