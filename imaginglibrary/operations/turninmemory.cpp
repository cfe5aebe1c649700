// Turns of a picture as a whole.
#include "imaginglibrary/operations/turninmemory.h"

#include "imaginglibrary/core/packing.h"
#include "imaginglibrary/core/rowpipe.h"
#include "imaginglibrary/operations/turn.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace imaginglibrary {

namespace {

// Rows that are turned together, so that what they write lies side by side.
constexpr std::uint32_t BandRows = 32;

// Pixels of whole bytes, as many as the number says.
template <std::size_t Size> struct WholePixels {
    static constexpr std::size_t Bytes = Size;

    void Spread(const std::uint8_t* row, std::uint8_t* to, std::uint32_t width) const {
        std::memcpy(to, row, Bytes * width);
    }

    void Put(std::uint8_t* row, std::size_t x, const std::uint8_t* pixel) const {
        std::memcpy(row + x * Bytes, pixel, Bytes);
    }
};

// Pixels of less than a byte, spread out to one each on the way.
struct PackedPixels {
    static constexpr std::size_t Bytes = 1;

    void Spread(const std::uint8_t* row, std::uint8_t* to, std::uint32_t width) const {
        UnpackPixels(row, 0, bits, to, width);
    }

    void Put(std::uint8_t* row, std::size_t x, const std::uint8_t* pixel) const { PutPacked(row, x, bits, *pixel); }

    unsigned bits;
};

// Where a pixel goes.
struct Move {
    bool isTransposed;
    bool isFlippedX; // in the source's own axes
    bool isFlippedY;
};

Move MoveOf(unsigned code) {
    const bool isMirrored = (code & Mirror) != 0;
    switch (code & QuarterTurns) {
    case 0:
        return {false, isMirrored, false};
    case 1:
        return {true, false, !isMirrored};
    case 2:
        return {false, !isMirrored, true};
    default:
        return {true, true, isMirrored};
    }
}

// Writes a band of rows, the first of which is row `top`, into the turned picture.
template <class Pixels> void PlaceBand(const std::vector<std::uint8_t>& band, std::uint32_t top, std::uint32_t count,
                                       const PictureInfo& info, const Move& move, const Pixels& pixels,
                                       Bitmap& turned) {
    const auto pixel = [&](std::uint32_t x, std::uint32_t row) {
        return band.data() + (std::size_t{row} * info.width + x) * Pixels::Bytes;
    };
    const auto newX = [&](std::uint32_t x) { return move.isFlippedX ? info.width - 1 - x : x; };
    const auto newY = [&](std::uint32_t y) { return move.isFlippedY ? info.height - 1 - y : y; };
    if (move.isTransposed) {
        for (std::uint32_t x = 0; x < info.width; ++x) {
            std::uint8_t* to = turned.Row(newX(x));
            for (std::uint32_t row = 0; row < count; ++row) {
                pixels.Put(to, newY(top + row), pixel(x, row));
            }
        }
        return;
    }
    for (std::uint32_t row = 0; row < count; ++row) {
        std::uint8_t* to = turned.Row(newY(top + row));
        for (std::uint32_t x = 0; x < info.width; ++x) {
            pixels.Put(to, newX(x), pixel(x, row));
        }
    }
}

template <class Pixels>
Status TurnInto(Bitmap& turned, const PixelSource& picture, unsigned code, const Pixels& pixels) {
    const PictureInfo& info = picture.Info();
    const Move move = MoveOf(code);
    const std::size_t bandRowBytes = Pixels::Bytes * info.width;
    std::vector<std::uint8_t> band(bandRowBytes * BandRows);
    const auto gather = [&](std::uint32_t y, const std::uint8_t* row) {
        const std::uint32_t inBand = y % BandRows;
        pixels.Spread(row, band.data() + bandRowBytes * inBand, info.width);
        if (inBand + 1 == BandRows || y + 1 == info.height) {
            PlaceBand(band, y - inBand, inBand + 1, info, move, pixels, turned);
        }
        return Status::Ok;
    };
    return PipeRows(picture.OpenRows(), BytesPerRow(info.format, info.width), info.height, gather);
}

Status TurnPixelsInto(Bitmap& turned, const PixelSource& picture, unsigned code) {
    const unsigned bits = BitsPerPixel(picture.Info().format);
    switch (bits) {
    case 8:
        return TurnInto(turned, picture, code, WholePixels<1>());
    case 16:
        return TurnInto(turned, picture, code, WholePixels<2>());
    case 24:
        return TurnInto(turned, picture, code, WholePixels<3>());
    case 32:
        return TurnInto(turned, picture, code, WholePixels<4>());
    case 48:
        return TurnInto(turned, picture, code, WholePixels<6>());
    default:
        return TurnInto(turned, picture, code, PackedPixels{bits});
    }
}

} // namespace

Result<std::shared_ptr<Bitmap>> TurnInMemory(const PixelSource& picture, unsigned code, const PictureInfo& turned) {
    auto bitmap = Bitmap::Create(turned);
    if (!bitmap.Ok()) {
        return bitmap.GetStatus();
    }
    const Status status = TurnPixelsInto(**bitmap, picture, code);
    if (status != Status::Ok) {
        return status;
    }
    return bitmap;
}

} // namespace imaginglibrary
