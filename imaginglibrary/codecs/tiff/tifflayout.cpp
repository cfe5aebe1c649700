// What a TIFF directory says about its picture, checked, and which pixels we make of it.
#include "imaginglibrary/codecs/tiff/tifflayout.h"

#include "imaginglibrary/core/limits.h"

#include <algorithm>
#include <array>
#include <span>

namespace imaginglibrary {

namespace {

constexpr double CentimetresPerInch = 2.54;

// Beyond it a resolution is a mistake, and no format could carry it on.
constexpr float MaximumDots = 1e6F;

std::uint16_t Short(TIFF* tiff, std::uint32_t tag, std::uint16_t otherwise) {
    std::uint16_t value = 0;
    return TIFFGetFieldDefaulted(tiff, tag, &value) == 1 ? value : otherwise;
}

std::uint32_t Long(TIFF* tiff, std::uint32_t tag) {
    std::uint32_t value = 0;
    return TIFFGetFieldDefaulted(tiff, tag, &value) == 1 ? value : 0;
}

// Files without this tag exist; they mean what their other tags allow.
std::uint16_t PhotometricOf(TIFF* tiff, unsigned samples) {
    const std::uint16_t compression = Short(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    const bool isFax = compression == COMPRESSION_CCITTRLE || compression == COMPRESSION_CCITTRLEW ||
                       compression == COMPRESSION_CCITTFAX3 || compression == COMPRESSION_CCITTFAX4;
    const std::uint16_t grey = isFax ? PHOTOMETRIC_MINISWHITE : PHOTOMETRIC_MINISBLACK;
    std::uint16_t value = 0;
    if (TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &value) == 1) {
        return value;
    }
    return samples >= 3 ? std::uint16_t{PHOTOMETRIC_RGB} : grey;
}

double DotsPerInch(TIFF* tiff, std::uint32_t tag, std::uint16_t unit) {
    float value = 0;
    if (unit == RESUNIT_NONE || TIFFGetField(tiff, tag, &value) != 1 || !(value > 0) || value > MaximumDots) {
        return 0;
    }
    return unit == RESUNIT_CENTIMETER ? value * CentimetresPerInch : value;
}

Resolution ResolutionOf(TIFF* tiff) {
    const std::uint16_t unit = Short(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    return {DotsPerInch(tiff, TIFFTAG_XRESOLUTION, unit), DotsPerInch(tiff, TIFFTAG_YRESOLUTION, unit)};
}

// Channels have 16 bits; some writers fill only the lower eight.
Palette PaletteOf(TIFF* tiff, unsigned bits) {
    std::array<std::uint16_t*, 3> map{};
    if (TIFFGetField(tiff, TIFFTAG_COLORMAP, &map[0], &map[1], &map[2]) != 1) {
        return {};
    }
    const std::size_t count = std::size_t{1} << bits;
    const bool isWide = std::any_of(map.begin(), map.end(), [&](const std::uint16_t* channel) {
        return std::any_of(channel, channel + count, [](std::uint16_t value) { return value > 255; });
    });
    const auto narrow = [&](std::uint16_t value) { return static_cast<std::uint8_t>(isWide ? value >> 8 : value); };
    Palette palette;
    for (std::size_t i = 0; i < count; ++i) {
        palette.push_back(MakeColor(narrow(map[0][i]), narrow(map[1][i]), narrow(map[2][i])));
    }
    return palette;
}

PixelFormat IndexedFormat(unsigned bits) {
    switch (bits) {
    case 1:
        return PixelFormat::Indexed1;
    case 2:
    case 4:
        return PixelFormat::Indexed4;
    default:
        return PixelFormat::Indexed8;
    }
}

// What the file says of the first sample behind the colours. libtiff itself does not tell one of which nothing is said
// from one that is said to be nothing in particular.
std::uint16_t ExtraSampleOf(TIFF* tiff) {
    std::uint16_t count = 0;
    std::uint16_t* kinds = nullptr;
    const bool isKnown = TIFFGetFieldDefaulted(tiff, TIFFTAG_EXTRASAMPLES, &count, &kinds) == 1 && count > 0;
    return isKnown ? kinds[0] : std::uint16_t{EXTRASAMPLE_UNSPECIFIED};
}

// The format of pixels with alpha, or Undefined where the samples behind the colours are no alpha.
PixelFormat AlphaFormat(TIFF* tiff, unsigned ofColor, unsigned samples) {
    if (samples <= ofColor) {
        return PixelFormat::Undefined;
    }
    // Grey with several more samples is the many bands of a sensor.
    const bool areBands = ofColor == 1 && samples > 2;
    switch (ExtraSampleOf(tiff)) {
    case EXTRASAMPLE_ASSOCALPHA:
        return PixelFormat::Pargb32;
    case EXTRASAMPLE_UNASSALPHA:
        return PixelFormat::Argb32;
    default:
        return areBands ? PixelFormat::Undefined : PixelFormat::Argb32;
    }
}

void ChooseGrey(TIFF* tiff, TiffLayout& layout) {
    layout.colors = TiffColors::Grey;
    const PixelFormat withAlpha = AlphaFormat(tiff, 1, layout.samples);
    if (withAlpha != PixelFormat::Undefined) {
        layout.hasAlpha = true;
        layout.info.format = withAlpha;
        return;
    }
    layout.info.format = IndexedFormat(layout.bits);
    layout.info.palette = GreyPalette(1u << (layout.info.format == PixelFormat::Indexed8 ? 8 : layout.bits));
}

bool ChooseIndex(TIFF* tiff, TiffLayout& layout) {
    if (layout.bits > 8) {
        return false;
    }
    layout.colors = TiffColors::Index;
    layout.info.format = IndexedFormat(layout.bits);
    layout.info.palette = PaletteOf(tiff, layout.bits);
    return !layout.info.palette.empty();
}

void ChooseRgb(TIFF* tiff, TiffLayout& layout) {
    layout.colors = TiffColors::Rgb;
    const PixelFormat withAlpha = AlphaFormat(tiff, 3, layout.samples);
    layout.hasAlpha = withAlpha != PixelFormat::Undefined;
    const PixelFormat opaque = layout.bits == 16 ? PixelFormat::Rgb48 : PixelFormat::Rgb24;
    layout.info.format = layout.hasAlpha ? withAlpha : opaque;
}

bool ChooseLab(TIFF* tiff, TiffLayout& layout) {
    layout.colors = TiffColors::Lab;
    layout.hasAlpha = AlphaFormat(tiff, 3, layout.samples) == PixelFormat::Argb32;
    layout.info.format = layout.hasAlpha ? PixelFormat::Argb32 : PixelFormat::Rgb24;
    return layout.bits == 8 || layout.bits == 16;
}

bool ChooseConverted(TIFF* tiff, TiffLayout& layout) {
    std::array<char, 1024> message;
    layout.colors = TiffColors::Converted;
    layout.info.format = PixelFormat::Rgb24;
    return TIFFRGBAImageOK(tiff, message.data()) == 1;
}

// Which pixels the samples become. False where we do not know how.
bool ChooseColors(TIFF* tiff, TiffLayout& layout) {
    const std::uint16_t compression = Short(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    if (compression == COMPRESSION_OJPEG) {
        return ChooseConverted(tiff, layout);
    }
    const unsigned samples = layout.samples;
    switch (PhotometricOf(tiff, samples)) {
    case PHOTOMETRIC_MINISWHITE:
        layout.isInverted = true;
        [[fallthrough]];
    case PHOTOMETRIC_MINISBLACK:
        ChooseGrey(tiff, layout);
        return true;
    case PHOTOMETRIC_PALETTE:
        return ChooseIndex(tiff, layout);
    case PHOTOMETRIC_RGB:
        ChooseRgb(tiff, layout);
        return samples >= 3;
    case PHOTOMETRIC_SEPARATED:
        layout.colors = TiffColors::Cmyk;
        layout.info.format = PixelFormat::Rgb24;
        return samples >= 4 && Short(tiff, TIFFTAG_INKSET, INKSET_CMYK) == INKSET_CMYK;
    case PHOTOMETRIC_YCBCR:
        if (compression == COMPRESSION_JPEG && !layout.isPlanar && samples == 3) {
            ChooseRgb(tiff, layout); // see PrepareTiff
            return true;
        }
        return ChooseConverted(tiff, layout);
    case PHOTOMETRIC_ICCLAB:
        layout.isIccLab = true;
        [[fallthrough]];
    case PHOTOMETRIC_CIELAB:
        return ChooseLab(tiff, layout);
    default:
        return ChooseConverted(tiff, layout);
    }
}

bool HasReadableSamples(TIFF* tiff, const TiffLayout& layout) {
    const std::uint16_t format = Short(tiff, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    const bool isWhole = format == SAMPLEFORMAT_UINT || format == SAMPLEFORMAT_INT || format == SAMPLEFORMAT_VOID;
    return isWhole && layout.bits >= 1 && layout.bits <= 16 && layout.samples >= layout.UsedSamples();
}

// Our own arithmetic, in 64 bits, must agree with libtiff's, so that no buffer can be too short.
Status MeasureRows(TIFF* tiff, TiffLayout& layout) {
    const std::uint64_t bitsPerPixel = std::uint64_t{layout.bits} * (layout.isPlanar ? 1 : layout.samples);
    const std::uint64_t rowBytes = (layout.info.width * bitsPerPixel + 7) / 8;
    if (rowBytes > MaximumTileBytes) {
        return Status::OutOfMemory;
    }
    layout.rowBytes = static_cast<std::size_t>(rowBytes);
    if (!layout.isTiled) {
        return TIFFScanlineSize64(tiff) == rowBytes ? Status::Ok : UndecodableContent;
    }
    const std::uint32_t tileWidth = Long(tiff, TIFFTAG_TILEWIDTH);
    const std::uint32_t tileLength = Long(tiff, TIFFTAG_TILELENGTH);
    if (tileWidth == 0 || tileLength == 0 || tileWidth * bitsPerPixel % 8 != 0 ||
        TIFFTileRowSize64(tiff) != tileWidth * bitsPerPixel / 8) {
        return UndecodableContent;
    }
    layout.bandRows = std::min(tileLength, layout.info.height);
    const bool isTileTooLarge = TIFFTileSize64(tiff) > MaximumTileBytes;
    const bool isBandTooLarge = rowBytes * layout.bandRows * layout.UsedSamples() > MaximumPictureBytes;
    return isTileTooLarge || isBandTooLarge ? Status::OutOfMemory : Status::Ok;
}

Status MeasureConverted(TIFF* tiff, TiffLayout& layout) {
    const std::uint32_t rows = Long(tiff, layout.isTiled ? TIFFTAG_TILELENGTH : TIFFTAG_ROWSPERSTRIP);
    layout.bandRows = std::min(rows, layout.info.height);
    if (rows == 0) {
        return UndecodableContent;
    }
    const std::uint64_t partBytes = layout.isTiled ? TIFFTileSize64(tiff) : TIFFStripSize64(tiff);
    const bool isTooLarge =
        partBytes > MaximumTileBytes || std::uint64_t{layout.info.width} * layout.bandRows * 4 > MaximumPictureBytes;
    return isTooLarge ? Status::OutOfMemory : Status::Ok;
}

} // namespace

void PrepareTiff(TIFF* tiff) {
    if (Short(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE) == COMPRESSION_JPEG &&
        Short(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == PLANARCONFIG_CONTIG &&
        Short(tiff, TIFFTAG_PHOTOMETRIC, 0) == PHOTOMETRIC_YCBCR) {
        TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
    }
}

Result<TiffLayout> ReadTiffLayout(TIFF* tiff) {
    TiffLayout layout;
    layout.info.width = Long(tiff, TIFFTAG_IMAGEWIDTH);
    layout.info.height = Long(tiff, TIFFTAG_IMAGELENGTH);
    if (layout.info.width == 0 || layout.info.height == 0) {
        return UndecodableContent;
    }
    if (!IsAcceptableSize(layout.info.width, layout.info.height)) {
        return Status::InvalidParameter;
    }
    layout.info.resolution = ResolutionOf(tiff);
    layout.bits = Short(tiff, TIFFTAG_BITSPERSAMPLE, 1);
    layout.samples = Short(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    layout.isPlanar =
        layout.samples > 1 && Short(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == PLANARCONFIG_SEPARATE;
    layout.isTiled = TIFFIsTiled(tiff) != 0;
    if (TIFFIsCODECConfigured(Short(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE)) == 0 || !ChooseColors(tiff, layout)) {
        return UndecodableContent;
    }
    const bool isConverted = layout.colors == TiffColors::Converted;
    if (!isConverted && !HasReadableSamples(tiff, layout)) {
        return UndecodableContent;
    }
    const Status status = isConverted ? MeasureConverted(tiff, layout) : MeasureRows(tiff, layout);
    if (status != Status::Ok) {
        return status;
    }
    return layout;
}

} // namespace imaginglibrary
