// TIFF files with any kind of samples in any layout, made by libtiff, and what their samples mean.
#pragma once

#include "tests/support/codecs.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>
#include <tiffio.h>

#include <array>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tests {

using namespace imaginglibrary;

using SampleAt = std::function<unsigned(std::uint32_t x, std::uint32_t y, unsigned sample)>;

// What libtiff is told to write.
struct TiffSpec {
    std::uint32_t width = 37;
    std::uint32_t height = 19;
    int bits = 8;
    int samples = 1;
    int photometric = PHOTOMETRIC_MINISBLACK;
    int compression = COMPRESSION_NONE;
    int planar = PLANARCONFIG_CONTIG;
    std::uint32_t rowsPerStrip = 5;
    std::uint32_t tileSide = 0; // 0: strips
    const char* mode = "wl";
    std::vector<std::uint16_t> extraSamples = {};
    std::vector<std::uint16_t> colorMap = {}; // all reds, then greens, then blues
    int predictor = 0;
    int fillOrder = FILLORDER_MSB2LSB;
    int orientation = ORIENTATION_TOPLEFT;
    double resolution = 0;
    int resolutionUnit = RESUNIT_INCH;
    int sampleFormat = SAMPLEFORMAT_UINT;
};

inline void SetFields(TIFF* tiff, const TiffSpec& spec) {
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, spec.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, spec.height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, spec.bits);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, spec.samples);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, spec.photometric);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, spec.compression);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, spec.planar);
    TIFFSetField(tiff, TIFFTAG_FILLORDER, spec.fillOrder);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, spec.orientation);
    TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, spec.sampleFormat);
    if (spec.tileSide != 0) {
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, spec.tileSide);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, spec.tileSide);
    } else {
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, spec.rowsPerStrip);
    }
    if (!spec.extraSamples.empty()) {
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, static_cast<int>(spec.extraSamples.size()), spec.extraSamples.data());
    }
    if (!spec.colorMap.empty()) {
        const std::size_t entries = spec.colorMap.size() / 3;
        TIFFSetField(tiff, TIFFTAG_COLORMAP, spec.colorMap.data(), spec.colorMap.data() + entries,
                     spec.colorMap.data() + 2 * entries);
    }
    if (spec.predictor != 0) {
        TIFFSetField(tiff, TIFFTAG_PREDICTOR, spec.predictor);
    }
    if (spec.photometric == PHOTOMETRIC_YCBCR) {
        TIFFSetField(tiff, TIFFTAG_YCBCRSUBSAMPLING, 1, 1);
        if (spec.compression == COMPRESSION_JPEG) {
            TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
        }
    }
    if (spec.resolution > 0) {
        TIFFSetField(tiff, TIFFTAG_XRESOLUTION, spec.resolution);
        TIFFSetField(tiff, TIFFTAG_YRESOLUTION, spec.resolution * 2);
        TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, spec.resolutionUnit);
    }
}

// Packs samples one after the other, most significant bit first; those of 16 bits in the machine's order.
class SamplePacker {
  public:
    SamplePacker(std::size_t count, int bits) : bits_(bits), bytes_((count * static_cast<std::size_t>(bits) + 7) / 8) {}

    void Put(unsigned value) {
        if (bits_ == 16) {
            const auto stored = static_cast<std::uint16_t>(value);
            std::memcpy(&bytes_[at_ / 8], &stored, 2);
            at_ += 16;
            return;
        }
        for (int bit = bits_ - 1; bit >= 0; --bit, ++at_) {
            bytes_[at_ / 8] |= static_cast<std::uint8_t>(((value >> bit) & 1) << (7 - at_ % 8));
        }
    }

    std::vector<std::uint8_t>& Bytes() { return bytes_; }

  private:
    int bits_;
    std::size_t at_ = 0;
    std::vector<std::uint8_t> bytes_;
};

// One row's samples from `left` on: all of each pixel, or only those of one plane.
inline std::vector<std::uint8_t> PackRow(const TiffSpec& spec, const SampleAt& sampleAt, std::uint32_t left,
                                         std::uint32_t width, std::uint32_t y, unsigned plane) {
    const bool isPlanar = spec.planar == PLANARCONFIG_SEPARATE;
    const unsigned count = isPlanar ? 1 : static_cast<unsigned>(spec.samples);
    SamplePacker packer(std::size_t{width} * count, spec.bits);
    for (std::uint32_t x = left; x < left + width; ++x) {
        for (unsigned sample = 0; sample < count; ++sample) {
            packer.Put(sampleAt(x, y, isPlanar ? plane : sample));
        }
    }
    return std::move(packer.Bytes());
}

inline void PutTiles(TIFF* tiff, const TiffSpec& spec, const SampleAt& sampleAt, unsigned plane) {
    for (std::uint32_t top = 0; top < spec.height; top += spec.tileSide) {
        for (std::uint32_t left = 0; left < spec.width; left += spec.tileSide) {
            std::vector<std::uint8_t> tile;
            for (std::uint32_t y = top; y < top + spec.tileSide; ++y) {
                const auto row = PackRow(spec, sampleAt, left, spec.tileSide, y, plane);
                tile.insert(tile.end(), row.begin(), row.end());
            }
            ASSERT_GT(TIFFWriteTile(tiff, tile.data(), left, top, 0, static_cast<std::uint16_t>(plane)), 0);
        }
    }
}

inline std::string MakeTiff(const TiffSpec& spec, const SampleAt& sampleAt) {
    TemporaryFolder folder;
    const auto path = folder / "made.tif";
    TIFFSetWarningHandler(nullptr); // the older code of deflate is written on purpose
    TIFF* tiff = TIFFOpen(path.string().c_str(), spec.mode);
    SetFields(tiff, spec);
    const int planes = spec.planar == PLANARCONFIG_SEPARATE ? spec.samples : 1;
    for (int number = 0; number < planes; ++number) {
        const auto plane = static_cast<unsigned>(number);
        if (spec.tileSide != 0) {
            PutTiles(tiff, spec, sampleAt, plane);
            continue;
        }
        for (std::uint32_t y = 0; y < spec.height; ++y) {
            auto row = PackRow(spec, sampleAt, 0, spec.width, y, plane);
            EXPECT_EQ(TIFFWriteScanline(tiff, row.data(), y, static_cast<std::uint16_t>(plane)), 1);
        }
    }
    TIFFClose(tiff);
    return ReadBytes(path);
}

// Samples with nothing regular in them, but hold for any depth.
inline unsigned Mixed(std::uint32_t x, std::uint32_t y, unsigned sample, int bits) {
    const std::uint32_t hash = (x * 2654435761u) ^ (y * 2246822519u) ^ (sample * 3266489917u);
    return (hash >> 8) & ((1u << bits) - 1);
}

inline std::uint8_t Scaled(unsigned value, int bits) {
    const unsigned greatest = (1u << bits) - 1;
    return static_cast<std::uint8_t>((value * 255 + greatest / 2) / greatest);
}

// What a pixel of these samples must look like.
using Samples = std::array<unsigned, 5>;

inline Color GreyFrom(const Samples& s, int bits) {
    const std::uint8_t grey = Scaled(s[0], bits);
    return MakeColor(grey, grey, grey);
}

inline Color InvertedGreyFrom(const Samples& s, int bits) { return GreyFrom({(1u << bits) - 1 - s[0]}, bits); }

inline Color RgbFrom(const Samples& s, int bits) {
    return MakeColor(Scaled(s[0], bits), Scaled(s[1], bits), Scaled(s[2], bits));
}

} // namespace tests
