// Turns of a picture as a whole.
#include "imaginglibrary/operations/turninmemory.h"

#include "imaginglibrary/core/packing.h"
#include "imaginglibrary/core/rowpump.h"
#include "imaginglibrary/operations/turn.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace imaginglibrary {

namespace {

// Rows that are turned together, so that what they write lies side by side.
constexpr std::uint32_t BandRows = 32;

// Pixels in units of whole bytes: those of less than one spread out to a byte each.
class Units {
  public:
    explicit Units(unsigned bits) : bits_(bits) {}

    std::size_t Bytes() const { return bits_ < 8 ? 1 : bits_ / 8; }

    void Spread(const std::uint8_t* row, std::uint8_t* to, std::uint32_t width) const {
        if (bits_ < 8) {
            UnpackPixels(row, 0, bits_, to, width);
        } else {
            std::memcpy(to, row, Bytes() * width);
        }
    }

    void Put(std::uint8_t* row, std::size_t x, const std::uint8_t* unit) const {
        if (bits_ < 8) {
            PutPacked(row, x, bits_, *unit);
        } else {
            std::memcpy(row + x * Bytes(), unit, Bytes());
        }
    }

  private:
    unsigned bits_;
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
void PlaceBand(const std::vector<std::uint8_t>& band, std::uint32_t top, std::uint32_t count, const PictureInfo& info,
               const Move& move, const Units& units, Bitmap& turned) {
    const std::size_t pixelBytes = units.Bytes();
    const auto pixel = [&](std::uint32_t x, std::uint32_t row) {
        return band.data() + (std::size_t{row} * info.width + x) * pixelBytes;
    };
    const auto newX = [&](std::uint32_t x) { return move.isFlippedX ? info.width - 1 - x : x; };
    const auto newY = [&](std::uint32_t y) { return move.isFlippedY ? info.height - 1 - y : y; };
    if (move.isTransposed) {
        for (std::uint32_t x = 0; x < info.width; ++x) {
            std::uint8_t* to = turned.Row(newX(x));
            for (std::uint32_t row = 0; row < count; ++row) {
                units.Put(to, newY(top + row), pixel(x, row));
            }
        }
        return;
    }
    for (std::uint32_t row = 0; row < count; ++row) {
        std::uint8_t* to = turned.Row(newY(top + row));
        for (std::uint32_t x = 0; x < info.width; ++x) {
            units.Put(to, newX(x), pixel(x, row));
        }
    }
}

} // namespace

Result<std::shared_ptr<Bitmap>> TurnInMemory(const PixelSource& picture, unsigned code, const PictureInfo& turned) {
    auto bitmap = Bitmap::Create(turned);
    if (!bitmap.Ok()) {
        return bitmap.GetStatus();
    }
    const PictureInfo& info = picture.Info();
    const Move move = MoveOf(code);
    const Units units(BitsPerPixel(info.format));
    const std::size_t bandRowBytes = units.Bytes() * info.width;
    std::vector<std::uint8_t> band(bandRowBytes * BandRows);
    const auto gather = [&](std::uint32_t y, const std::uint8_t* row) {
        const std::uint32_t inBand = y % BandRows;
        units.Spread(row, band.data() + bandRowBytes * inBand, info.width);
        if (inBand + 1 == BandRows || y + 1 == info.height) {
            PlaceBand(band, y - inBand, inBand + 1, info, move, units, **bitmap);
        }
        return Status::Ok;
    };
    const Status status = ForEachRow(picture.OpenRows(), BytesPerRow(info.format, info.width), info.height, gather);
    if (status != Status::Ok) {
        return status;
    }
    return bitmap;
}

} // namespace imaginglibrary
