// Makes rows of pixels from the decoded samples of a TIFF picture.
#include "imaginglibrary/codecs/tiff/tiffpixels.h"

#include "imaginglibrary/codecs/tiff/tifflab.h"
#include "imaginglibrary/core/packing.h"

#include <algorithm>
#include <cstring>

namespace imaginglibrary {

namespace {

// libtiff has put 16-bit samples into the machine's byte order.
unsigned Load16(const std::uint8_t* bytes) {
    std::uint16_t value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

// `bits` (up to 15) from `position` bits on, most significant first.
unsigned LoadBits(const std::uint8_t* bytes, std::size_t position, unsigned bits) {
    unsigned value = 0;
    for (unsigned done = 0; done < bits;) {
        const unsigned skipped = static_cast<unsigned>((position + done) % 8);
        const unsigned count = std::min(8 - skipped, bits - done);
        const unsigned part = (bytes[(position + done) / 8] >> (8 - skipped - count)) & ((1u << count) - 1);
        value = (value << count) | part;
        done += count;
    }
    return value;
}

std::uint8_t WithoutInk(std::uint8_t ink, std::uint8_t black) {
    return static_cast<std::uint8_t>(((255u - ink) * (255u - black) + 127) / 255);
}

} // namespace

TiffPixels::TiffPixels(const TiffLayout& layout)
    : layout_(layout),
      keepsValues_(IsIndexed(layout.info.format) && (layout.colors == TiffColors::Index || layout.bits == 1 ||
                                                     layout.bits == 2 || layout.bits == 4 || layout.bits == 8)),
      values_(layout.UsedSamples(), std::vector<std::uint8_t>(layout.info.width)) {}

TiffPixels::Lane TiffPixels::LaneOf(const TiffPlanes& planes, unsigned sample) const {
    return layout_.isPlanar ? Lane{planes[sample], 0, 1} : Lane{planes[0], sample, layout_.samples};
}

void TiffPixels::MakeRow(const TiffPlanes& planes, std::uint8_t* row) {
    const PixelFormat format = layout_.info.format;
    if (format == PixelFormat::Rgb48) {
        return MakeRgb48(planes, row);
    }
    if (layout_.colors == TiffColors::Lab) {
        return MakeLab(planes, row);
    }
    const bool isSingle = layout_.isPlanar || layout_.samples == 1;
    if (IsIndexed(format) && isSingle && layout_.bits == BitsPerPixel(format)) {
        return CopyIndices(planes[0], row);
    }
    for (unsigned sample = 0; sample < values_.size(); ++sample) {
        ReadSamples(LaneOf(planes, sample), values_[sample]);
    }
    if (layout_.isInverted) {
        const unsigned greatest = keepsValues_ ? (1u << layout_.bits) - 1 : 255;
        for (std::uint8_t& value : values_[0]) {
            value = static_cast<std::uint8_t>(greatest - value);
        }
    }
    if (IsIndexed(format)) {
        PackIndices(row);
    } else if (layout_.colors == TiffColors::Cmyk) {
        MakeCmyk(row);
    } else {
        MakeColors(row);
    }
}

void TiffPixels::CopyIndices(const std::uint8_t* from, std::uint8_t* row) const {
    const std::size_t bytes = BytesPerRow(layout_.info.format, layout_.info.width);
    const auto mask = static_cast<std::uint8_t>(layout_.isInverted ? 0xFF : 0);
    for (std::size_t i = 0; i < bytes; ++i) {
        row[i] = from[i] ^ mask;
    }
}

void TiffPixels::PackIndices(std::uint8_t* row) const {
    PackPixels(values_[0].data(), BitsPerPixel(layout_.info.format), row, layout_.info.width);
}

void TiffPixels::MakeRgb48(const TiffPlanes& planes, std::uint8_t* row) const {
    for (unsigned sample = 0; sample < 3; ++sample) {
        const Lane lane = LaneOf(planes, sample);
        const std::uint8_t* from = lane.bytes + 2 * lane.first;
        std::uint8_t* to = row + 2 * (2 - sample); // blue lies first
        for (std::uint32_t x = 0; x < layout_.info.width; ++x, from += 2 * lane.step, to += 6) {
            std::memcpy(to, from, 2);
        }
    }
}

// Grey or RGB, with or without alpha.
void TiffPixels::MakeColors(std::uint8_t* row) const {
    const bool isGrey = layout_.colors == TiffColors::Grey;
    const std::uint8_t* red = values_[0].data();
    const std::uint8_t* green = isGrey ? red : values_[1].data();
    const std::uint8_t* blue = isGrey ? red : values_[2].data();
    const std::uint8_t* alpha = layout_.hasAlpha ? values_.back().data() : nullptr;
    const std::size_t step = BitsPerPixel(layout_.info.format) / 8;
    for (std::uint32_t x = 0; x < layout_.info.width; ++x, row += step) {
        row[0] = blue[x];
        row[1] = green[x];
        row[2] = red[x];
        if (alpha != nullptr) {
            row[3] = alpha[x];
        }
    }
}

void TiffPixels::MakeCmyk(std::uint8_t* row) const {
    for (std::uint32_t x = 0; x < layout_.info.width; ++x, row += 3) {
        const std::uint8_t black = values_[3][x];
        row[0] = WithoutInk(values_[2][x], black);
        row[1] = WithoutInk(values_[1][x], black);
        row[2] = WithoutInk(values_[0][x], black);
    }
}

Color TiffPixels::LabColor(const std::array<unsigned, 3>& samples) const {
    const double unit = layout_.bits == 16 ? 256 : 1;
    const double greatest = layout_.bits == 16 ? layout_.isIccLab ? 0xFF00 : 0xFFFF : 0xFF;
    const auto chroma = [&](unsigned sample) {
        constexpr double Middle = 128;
        const double value = sample / unit;
        return layout_.isIccLab ? value - Middle : value < Middle ? value : value - 2 * Middle;
    };
    return ColorFromLab(samples[0] * 100 / greatest, chroma(samples[1]), chroma(samples[2]));
}

void TiffPixels::MakeLab(const TiffPlanes& planes, std::uint8_t* row) {
    if (layout_.hasAlpha) {
        ReadSamples(LaneOf(planes, 3), values_[3]);
    }
    const std::size_t step = BitsPerPixel(layout_.info.format) / 8;
    for (std::uint32_t x = 0; x < layout_.info.width; ++x, row += step) {
        std::array<unsigned, 3> samples;
        for (unsigned sample = 0; sample < samples.size(); ++sample) {
            const Lane lane = LaneOf(planes, sample);
            const std::size_t at = lane.first + x * lane.step;
            samples[sample] = layout_.bits == 16 ? Load16(lane.bytes + 2 * at) : lane.bytes[at];
        }
        const Color color = LabColor(samples);
        row[0] = BlueOf(color);
        row[1] = GreenOf(color);
        row[2] = RedOf(color);
        if (layout_.hasAlpha) {
            row[3] = values_[3][x];
        }
    }
}

void TiffPixels::ReadSamples(const Lane& lane, std::vector<std::uint8_t>& values) const {
    if (layout_.bits == 8) {
        const std::uint8_t* from = lane.bytes + lane.first;
        for (std::uint8_t& value : values) {
            value = *from;
            from += lane.step;
        }
    } else if (layout_.bits == 16) {
        const std::uint8_t* from = lane.bytes + 2 * lane.first;
        for (std::uint8_t& value : values) {
            value = static_cast<std::uint8_t>((Load16(from) * 255 + 32767) / 65535);
            from += 2 * lane.step;
        }
    } else {
        ReadPackedSamples(lane, values);
    }
}

void TiffPixels::ReadPackedSamples(const Lane& lane, std::vector<std::uint8_t>& values) const {
    const unsigned bits = layout_.bits;
    const unsigned greatest = (1u << bits) - 1;
    std::size_t position = lane.first * bits;
    for (std::uint8_t& value : values) {
        const unsigned sample = LoadBits(lane.bytes, position, bits);
        // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): a layout has 1 to 16 bits
        value = static_cast<std::uint8_t>(keepsValues_ ? sample : (sample * 255 + greatest / 2) / greatest);
        position += lane.step * bits;
    }
}

} // namespace imaginglibrary
