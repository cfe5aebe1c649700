// BMP files: read in every historic form, written with the 40-byte header, bottom row first, never compressed.
#include "imaginglibrary/codecs/dib/bmp.h"

#include "imaginglibrary/codecs/dib/dib.h"
#include "imaginglibrary/core/bytes.h"
#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/core/rowpump.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr std::uint32_t FileHeaderBytes = 14;
constexpr std::uint32_t InfoHeaderBytes = 40;
constexpr double InchesPerMetre = 1 / 0.0254;

// What a picture's rows become in a file. A format without alpha shows what was clear as white.
struct Layout {
    PixelFormat format;
    unsigned bitsPerPixel;
    std::uint64_t stride;
    std::uint32_t paletteEntries;
    std::uint64_t pixels;
    std::uint64_t fileBytes;
};

Layout LayoutFor(const PictureInfo& info) {
    Layout layout{};
    layout.format = IsIndexed(info.format)                                                   ? info.format
                    : info.format == PixelFormat::Rgb24 || info.format == PixelFormat::Rgb48 ? PixelFormat::Rgb24
                                                                                             : PixelFormat::Rgb32;
    layout.bitsPerPixel = BitsPerPixel(layout.format);
    layout.stride = DibStride(info.width, layout.bitsPerPixel);
    layout.paletteEntries = IsIndexed(layout.format) ? 1u << layout.bitsPerPixel : 0;
    layout.pixels = FileHeaderBytes + InfoHeaderBytes + 4u * layout.paletteEntries;
    layout.fileBytes = layout.pixels + layout.stride * info.height;
    return layout;
}

std::uint32_t DotsPerMetre(double dotsPerInch) {
    constexpr double Most = 0x7FFFFFFF;
    return static_cast<std::uint32_t>(std::min(std::round(DotsPerInchOrAssumed(dotsPerInch) * InchesPerMetre), Most));
}

Status WriteHeader(const PictureInfo& info, const Layout& layout, OutputFile& file) {
    std::array<std::uint8_t, FileHeaderBytes + InfoHeaderBytes> header{'B', 'M'};
    PutLittleEndian32(&header[2], static_cast<std::uint32_t>(layout.fileBytes));
    PutLittleEndian32(&header[10], static_cast<std::uint32_t>(layout.pixels));
    PutLittleEndian32(&header[14], InfoHeaderBytes);
    PutLittleEndian32(&header[18], info.width);
    PutLittleEndian32(&header[22], info.height);
    PutLittleEndian16(&header[26], 1);
    PutLittleEndian16(&header[28], static_cast<std::uint16_t>(layout.bitsPerPixel));
    PutLittleEndian32(&header[34], static_cast<std::uint32_t>(layout.stride * info.height));
    PutLittleEndian32(&header[38], DotsPerMetre(info.resolution.horizontal));
    PutLittleEndian32(&header[42], DotsPerMetre(info.resolution.vertical));
    PutLittleEndian32(&header[46], layout.paletteEntries);
    return file.Append(header.data(), header.size());
}

Status WritePalette(const PictureInfo& info, const Layout& layout, OutputFile& file) {
    if (layout.paletteEntries == 0) {
        return Status::Ok;
    }
    // The palette is laid over white by treating it as a one-row picture.
    Palette palette = info.palette;
    palette.resize(layout.paletteEntries, MakeColor(0, 0, 0));
    const RowConverter overWhite({.width = layout.paletteEntries, .height = 1, .format = PixelFormat::Argb32},
                                 PixelFormat::Rgb32);
    std::vector<std::uint8_t> entries(4 * palette.size());
    std::vector<std::uint8_t> colors(4 * palette.size());
    for (std::size_t i = 0; i < palette.size(); ++i) {
        PutLittleEndian32(&colors[4 * i], palette[i]);
    }
    overWhite.Convert(colors.data(), entries.data());
    for (std::size_t i = 0; i < palette.size(); ++i) {
        entries[4 * i + 3] = 0;
    }
    return file.Append(entries.data(), entries.size());
}

// Gathers rows from the top into strips that lie bottom row first, from the end of the file forward.
Status WriteRows(const PixelSource& picture, const Layout& layout, OutputFile& file) {
    constexpr std::uint64_t StripBytes = 262144;
    const PictureInfo& info = picture.Info();
    const auto stride = static_cast<std::size_t>(layout.stride);
    const auto stripRows = static_cast<std::uint32_t>(std::clamp<std::uint64_t>(StripBytes / stride, 1, info.height));
    std::vector<std::uint8_t> strip(stride * stripRows);
    const auto endOfStrip = [&](std::uint32_t y) { return std::min(y - y % stripRows + stripRows, info.height); };
    const auto place = [&](std::uint32_t y) { return strip.data() + stride * (endOfStrip(y) - 1 - y); };
    const auto writeFullStrip = [&](std::uint32_t y, const std::uint8_t*) {
        const std::uint32_t end = endOfStrip(y);
        if (y + 1 < end) {
            return Status::Ok;
        }
        const std::uint64_t offset = layout.pixels + layout.stride * (info.height - end);
        return file.WriteAt(offset, strip.data(), stride * (y % stripRows + 1));
    };
    const bool isIndexed = layout.paletteEntries != 0;
    return PumpRows(isIndexed ? picture.OpenRows() : OpenRowsAs(picture, layout.format), info.height, place,
                    writeFullStrip);
}

} // namespace

Result<std::unique_ptr<Decoder>> OpenBmp(std::shared_ptr<const InputFile> file) {
    std::array<std::uint8_t, FileHeaderBytes> header;
    if (const Status status = file->ReadExactlyAt(0, header.data(), header.size()); status != Status::Ok) {
        return status;
    }
    const std::uint32_t claimed = LittleEndian32(&header[10]);
    const bool isPlausible = claimed > FileHeaderBytes && claimed < file->Size();
    auto dib = ReadDibHeader(*file, FileHeaderBytes);
    if (!dib.Ok()) {
        return dib.GetStatus();
    }
    const std::uint64_t pixels = isPlausible ? claimed : dib->endOfPalette;
    return OpenDib(std::move(file), std::move(*dib), pixels);
}

Status WriteBmp(const PixelSource& picture, const PropertyList& /*properties*/, const WriteOptions& /*options*/,
                OutputFile& file) {
    const Layout layout = LayoutFor(picture.Info());
    if (layout.fileBytes > std::numeric_limits<std::uint32_t>::max()) {
        return Status::ValueOverflow;
    }
    if (const Status status = WriteHeader(picture.Info(), layout, file); status != Status::Ok) {
        return status;
    }
    if (const Status status = WritePalette(picture.Info(), layout, file); status != Status::Ok) {
        return status;
    }
    return WriteRows(picture, layout, file);
}

} // namespace imaginglibrary
