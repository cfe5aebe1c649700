// From the samples of PNG files to the pixels that the platform shows such a picture in.
#pragma once

#include "imaginglibrary/codecs/png/pngfilter.h"
#include "imaginglibrary/core/pixelformat.h"

#include <array>
#include <cstdint>
#include <optional>

namespace imaginglibrary {

// What a file's header says of its pixels, in libpng's terms.
struct PngLayout {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    int colorType = 0;
    int depth = 8;
    Palette palette = {}; // with the alphas of its transparency chunk
    // The samples of the one clear colour: grey, or red, green and blue.
    std::optional<std::array<std::uint16_t, 3>> clear = {};
    PixelFormat format = PixelFormat::Undefined; // what becomes of them
};

// Converts single rows.
class PngPixels {
  public:
    explicit PngPixels(PngLayout layout);

    // The file's rows.
    PngRowForm RowForm() const;

    // From a row of the file, unfiltered, to BytesPerRow(layout.format, layout.width) bytes.
    void Convert(const std::uint8_t* from, std::uint8_t* to) const { convert_(*this, from, to); }

  private:
    using Conversion = void (*)(const PngPixels&, const std::uint8_t* from, std::uint8_t* to);

    static void Keep(const PngPixels& pixels, const std::uint8_t* from, std::uint8_t* to);
    static void SwapThree(const PngPixels& pixels, const std::uint8_t* from, std::uint8_t* to);
    static void SwapFour(const PngPixels& pixels, const std::uint8_t* from, std::uint8_t* to);
    static void LookUp(const PngPixels& pixels, const std::uint8_t* from, std::uint8_t* to);
    template <class Sample, std::size_t Channels>
    static void Narrow(const PngPixels& pixels, const std::uint8_t* from, std::uint8_t* to);
    Conversion ConversionOf() const;
    void MakeColors();

    PngLayout layout_;
    std::array<Color, 256> colors_{}; // of the samples where a pixel has one of 8 bits at most
    Conversion convert_;
};

} // namespace imaginglibrary
