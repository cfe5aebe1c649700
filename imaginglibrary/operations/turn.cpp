// Turns by right angles, and mirrors.
#include "imaginglibrary/operations/turn.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace imaginglibrary {

namespace {

// Rows that are turned together, so that what they write lies side by side.
constexpr std::uint32_t BandRows = 32;

// Packed rows of 1 or 4 bits spread out to a byte per pixel, and back; rows of whole bytes stay as they are.
class Packing {
  public:
    explicit Packing(unsigned bits) : bits_(bits) {}

    std::size_t UnpackedBytes() const { return bits_ < 8 ? 1 : bits_ / 8; }

    void Unpack(const std::uint8_t* from, std::uint8_t* to, std::uint32_t width) const {
        if (bits_ >= 8) {
            std::memcpy(to, from, UnpackedBytes() * width);
            return;
        }
        for (std::size_t x = 0; x < width; ++x) {
            to[x] = static_cast<std::uint8_t>((from[x * bits_ / 8] >> Shift(x)) & ((1u << bits_) - 1));
        }
    }

    // `to` holds zeros where there are less than 8 bits.
    void Put(std::uint8_t* to, std::size_t x, const std::uint8_t* pixel) const {
        if (bits_ >= 8) {
            std::memcpy(to + x * UnpackedBytes(), pixel, UnpackedBytes());
        } else {
            to[x * bits_ / 8] = static_cast<std::uint8_t>(to[x * bits_ / 8] | *pixel << Shift(x));
        }
    }

  private:
    unsigned Shift(std::size_t x) const { return 8 - bits_ - static_cast<unsigned>(x * bits_ % 8); }

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

// Writes a band of unpacked rows, the first of which is row `top`, into the turned picture.
void PlaceBand(const std::vector<std::uint8_t>& band, std::uint32_t top, std::uint32_t count, const PictureInfo& info,
               const Move& move, const Packing& packing, Bitmap& turned) {
    const std::size_t pixelBytes = packing.UnpackedBytes();
    const auto pixel = [&](std::uint32_t x, std::uint32_t row) {
        return band.data() + (std::size_t{row} * info.width + x) * pixelBytes;
    };
    const auto newX = [&](std::uint32_t x) { return move.isFlippedX ? info.width - 1 - x : x; };
    const auto newY = [&](std::uint32_t y) { return move.isFlippedY ? info.height - 1 - y : y; };
    if (move.isTransposed) {
        for (std::uint32_t x = 0; x < info.width; ++x) {
            std::uint8_t* to = turned.Row(newX(x));
            for (std::uint32_t row = 0; row < count; ++row) {
                packing.Put(to, newY(top + row), pixel(x, row));
            }
        }
        return;
    }
    for (std::uint32_t row = 0; row < count; ++row) {
        std::uint8_t* to = turned.Row(newY(top + row));
        for (std::uint32_t x = 0; x < info.width; ++x) {
            packing.Put(to, newX(x), pixel(x, row));
        }
    }
}

} // namespace

Result<std::shared_ptr<Bitmap>> Turned(const PixelSource& picture, unsigned code) {
    const PictureInfo& info = picture.Info();
    const Move move = MoveOf(code);
    PictureInfo turnedInfo = info;
    if (move.isTransposed) {
        std::swap(turnedInfo.width, turnedInfo.height);
        std::swap(turnedInfo.resolution.horizontal, turnedInfo.resolution.vertical);
    }
    auto turned = Bitmap::Create(turnedInfo);
    if (!turned.Ok()) {
        return turned.GetStatus();
    }
    auto rows = picture.OpenRows();
    if (!rows.Ok()) {
        return rows.GetStatus();
    }
    const Packing packing(BitsPerPixel(info.format));
    const std::size_t unpackedRow = packing.UnpackedBytes() * info.width;
    std::vector<std::uint8_t> stored(BytesPerRow(info.format, info.width));
    std::vector<std::uint8_t> band(unpackedRow * BandRows);
    for (std::uint32_t top = 0; top < info.height; top += BandRows) {
        const std::uint32_t count = std::min(BandRows, info.height - top);
        for (std::uint32_t row = 0; row < count; ++row) {
            if (const Status status = (*rows)->ReadRow(stored.data()); status != Status::Ok) {
                return status;
            }
            packing.Unpack(stored.data(), band.data() + unpackedRow * row, info.width);
        }
        PlaceBand(band, top, count, info, move, packing, **turned);
    }
    return turned;
}

} // namespace imaginglibrary
