// Writes TIFF files.
#include "imaginglibrary/codecs/tiff/tiffwriter.h"

#include "imaginglibrary/codecs/tiff/tiffclient.h"
#include "imaginglibrary/codecs/tiff/tiffproperties.h"
#include "imaginglibrary/codecs/tiff/tiffstrips.h"
#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/core/rowpipe.h"

#include <algorithm>
#include <bit>
#include <optional>
#include <utility>
#include <vector>

namespace imaginglibrary {

namespace {

// Every strip begins with an empty table of strings, which costs room where strips are small.
constexpr std::size_t StripBytes = 1 << 19;

// How a picture is laid down in the file.
struct TiffForm {
    int photometric;
    int bits;    // per sample
    int samples; // per pixel
    int compression = COMPRESSION_LZW;
    int predictor = PREDICTOR_NONE;
    PixelFormat convertTo = PixelFormat::Undefined; // rows go through it first, unless they are taken as they are
};

Palette FullPalette(const PictureInfo& info) {
    Palette palette = info.palette;
    palette.resize(std::size_t{1} << BitsPerPixel(info.format), MakeColor(0, 0, 0));
    return palette;
}

TiffForm IndexedForm(const PictureInfo& info) {
    const int bits = static_cast<int>(BitsPerPixel(info.format));
    const Palette palette = FullPalette(info);
    const Palette greys = GreyPalette(1u << bits);
    if (bits == 1 && palette == greys) {
        return {PHOTOMETRIC_MINISBLACK, bits, 1, COMPRESSION_CCITTFAX4};
    }
    if (bits == 1 && palette == Palette{greys[1], greys[0]}) {
        return {PHOTOMETRIC_MINISWHITE, bits, 1, COMPRESSION_CCITTFAX4};
    }
    if (palette == greys) {
        // libtiff takes no differences of 4-bit samples.
        return {PHOTOMETRIC_MINISBLACK, bits, 1, COMPRESSION_LZW, bits == 8 ? PREDICTOR_HORIZONTAL : PREDICTOR_NONE};
    }
    return {PHOTOMETRIC_PALETTE, bits, 1};
}

TiffForm UsualForm(const PictureInfo& info) {
    if (MayBeTransparent(info)) {
        return {PHOTOMETRIC_RGB, 8, 4, COMPRESSION_LZW, PREDICTOR_HORIZONTAL, PixelFormat::Argb32};
    }
    if (IsIndexed(info.format)) {
        return IndexedForm(info);
    }
    return {PHOTOMETRIC_RGB, 8, 3, COMPRESSION_LZW, PREDICTOR_HORIZONTAL, PixelFormat::Rgb24};
}

// Which pictures JPEG is for: colours without alpha, and grey.
bool SuitsJpeg(const TiffForm& form) {
    const bool isGrey = form.photometric == PHOTOMETRIC_MINISBLACK && form.samples == 1;
    return form.bits == 8 && (isGrey || form.samples == 3);
}

// Nothing for a compression that the picture does not suit.
std::optional<TiffForm> FormOf(const PictureInfo& info, Compression compression) {
    TiffForm form = UsualForm(info);
    switch (compression) {
    case Compression::None:
        form.compression = COMPRESSION_NONE;
        form.predictor = PREDICTOR_NONE;
        return form;
    case Compression::Lzw:
        form.compression = COMPRESSION_LZW;
        return form;
    case Compression::Deflate:
        form.compression = COMPRESSION_ADOBE_DEFLATE;
        return form;
    case Compression::Fax:
        return form.compression == COMPRESSION_CCITTFAX4 ? std::optional(form) : std::nullopt;
    case Compression::Jpeg:
        if (!SuitsJpeg(form)) {
            return std::nullopt;
        }
        form.compression = COMPRESSION_JPEG;
        form.predictor = PREDICTOR_NONE;
        form.photometric = form.samples == 3 ? PHOTOMETRIC_YCBCR : form.photometric;
        return form;
    default:
        return form;
    }
}

std::size_t FileRowBytes(const PictureInfo& info, const TiffForm& form) {
    return (std::size_t{info.width} * static_cast<std::size_t>(form.bits * form.samples) + 7) / 8;
}

std::uint32_t RowsPerStrip(const PictureInfo& info, const TiffForm& form, std::size_t rowBytes) {
    constexpr std::size_t JpegBlock = 16;
    const std::size_t rows = std::clamp<std::size_t>(StripBytes / rowBytes, 1, info.height);
    return static_cast<std::uint32_t>(
        form.compression == COMPRESSION_JPEG ? (rows + JpegBlock - 1) / JpegBlock * JpegBlock : rows);
}

// libtiff does not say that it had no memory for a list, and falls over the missing list when it writes the directory.
bool HoldsColorMap(TIFF* tiff) {
    const std::uint16_t* colors[3] = {};
    return TIFFGetField(tiff, TIFFTAG_COLORMAP, &colors[0], &colors[1], &colors[2]) == 1 && colors[0] != nullptr &&
           colors[1] != nullptr && colors[2] != nullptr;
}

bool HoldsExtraSamples(TIFF* tiff) {
    std::uint16_t count = 0;
    const std::uint16_t* kinds = nullptr;
    return TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &count, &kinds) == 1 && kinds != nullptr;
}

bool SetColorMap(TIFF* tiff, const PictureInfo& info) {
    std::vector<std::uint16_t> red;
    std::vector<std::uint16_t> green;
    std::vector<std::uint16_t> blue;
    for (const Color color : FullPalette(info)) {
        red.push_back(static_cast<std::uint16_t>(RedOf(color) * 257));
        green.push_back(static_cast<std::uint16_t>(GreenOf(color) * 257));
        blue.push_back(static_cast<std::uint16_t>(BlueOf(color) * 257));
    }
    return TIFFSetField(tiff, TIFFTAG_COLORMAP, red.data(), green.data(), blue.data()) == 1 && HoldsColorMap(tiff);
}

bool SetResolution(TIFF* tiff, const Resolution& resolution) {
    return TIFFSetField(tiff, TIFFTAG_XRESOLUTION, DotsPerInchOrAssumed(resolution.horizontal)) == 1 &&
           TIFFSetField(tiff, TIFFTAG_YRESOLUTION, DotsPerInchOrAssumed(resolution.vertical)) == 1 &&
           TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH) == 1;
}

bool SetFields(TIFF* tiff, const PictureInfo& info, const TiffForm& form, int quality, std::uint32_t rowsPerStrip) {
    bool isSet = true;
    const auto set = [&](std::uint32_t tag, auto value) { isSet = isSet && TIFFSetField(tiff, tag, value) == 1; };
    set(TIFFTAG_IMAGEWIDTH, info.width);
    set(TIFFTAG_IMAGELENGTH, info.height);
    set(TIFFTAG_BITSPERSAMPLE, form.bits);
    set(TIFFTAG_SAMPLESPERPIXEL, form.samples);
    set(TIFFTAG_PHOTOMETRIC, form.photometric);
    set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    set(TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    set(TIFFTAG_COMPRESSION, form.compression);
    set(TIFFTAG_ROWSPERSTRIP, rowsPerStrip);
    if (form.predictor != PREDICTOR_NONE) {
        set(TIFFTAG_PREDICTOR, form.predictor);
    }
    if (form.compression == COMPRESSION_JPEG) {
        set(TIFFTAG_JPEGQUALITY, quality);
        set(TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB); // what libtiff is given
    }
    if (form.samples == 4) {
        std::uint16_t kind = EXTRASAMPLE_UNASSALPHA;
        isSet = isSet && TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &kind) == 1 && HoldsExtraSamples(tiff);
    }
    if (form.photometric == PHOTOMETRIC_PALETTE) {
        isSet = isSet && SetColorMap(tiff, info);
    }
    return isSet && SetResolution(tiff, info.resolution);
}

// From our order of colours, blue first, to that of the file.
void PutRedFirst(std::uint8_t* row, std::size_t bytes, std::size_t samples) {
    for (std::size_t i = 0; i < bytes; i += samples) {
        std::swap(row[i], row[i + 2]);
    }
}

Result<std::unique_ptr<RowReader>> OpenRowsFor(const TiffForm& form, const PixelSource& picture) {
    return form.convertTo == PixelFormat::Undefined ? picture.OpenRows() : OpenRowsAs(picture, form.convertTo);
}

// Strips that libtiff compresses.
Status WriteOtherStrips(const PixelSource& picture, const TiffForm& form, std::size_t rowBytes, TiffOutput& output) {
    const PictureInfo& info = picture.Info();
    const std::uint32_t rowsPerStrip = RowsPerStrip(info, form, rowBytes);
    std::vector<std::uint8_t> strip(rowBytes * rowsPerStrip);
    const auto writeFullStrip = [&](std::uint32_t y, const std::uint8_t* from) {
        std::uint8_t* const row = strip.data() + rowBytes * (y % rowsPerStrip);
        std::copy_n(from, rowBytes, row);
        if (form.convertTo != PixelFormat::Undefined) {
            PutRedFirst(row, rowBytes, static_cast<std::size_t>(form.samples));
        }
        const std::uint32_t count = y % rowsPerStrip + 1;
        if (count < rowsPerStrip && y + 1 < info.height) {
            return Status::Ok;
        }
        const auto bytes = static_cast<tmsize_t>(rowBytes * count);
        const bool isWritten = TIFFWriteEncodedStrip(output.Get(), y / rowsPerStrip, strip.data(), bytes) == bytes;
        return isWritten ? Status::Ok : output.Failure();
    };
    return PipeRows(OpenRowsFor(form, picture), rowBytes, info.height, writeFullStrip);
}

Status WriteLzwStrips(const PixelSource& picture, const TiffForm& form, std::size_t rowBytes, TiffOutput& output) {
    const PictureInfo& info = picture.Info();
    TiffStrips strips({.rowBytes = rowBytes,
                       .rowsPerStrip = RowsPerStrip(info, form, rowBytes),
                       .samples = static_cast<std::size_t>(form.samples),
                       .isBlueFirst = form.convertTo != PixelFormat::Undefined,
                       .hasDifferences = form.predictor == PREDICTOR_HORIZONTAL},
                      info.height, output);
    return PipeRows(OpenRowsFor(form, picture), rowBytes, info.height,
                    [&](std::uint32_t, const std::uint8_t* row) { return strips.AddRow(row); });
}

} // namespace

Status WriteTiff(const PixelSource& picture, const PropertyList& properties, const WriteOptions& options,
                 OutputFile& file) {
    const PictureInfo& info = picture.Info();
    const auto form = FormOf(info, options.compression);
    if (!form) {
        return Status::InvalidParameter;
    }
    const std::size_t rowBytes = FileRowBytes(info, *form);
    const auto exif = ExifOfSource(properties);
    auto output = TiffOutput::Create(file, exif ? exif->Order() : std::endian::little);
    if (!output.Ok()) {
        return output.GetStatus();
    }
    if (exif) {
        if (const Status status = AddExifOfSource(*exif, file); status != Status::Ok) {
            return status;
        }
    }
    if (!SetFields((*output)->Get(), info, *form, options.quality, RowsPerStrip(info, *form, rowBytes))) {
        return (*output)->Failure();
    }
    const auto writeStrips = form->compression == COMPRESSION_LZW ? WriteLzwStrips : WriteOtherStrips;
    Status status = writeStrips(picture, *form, rowBytes, **output);
    if (status == Status::Ok) {
        status = (*output)->Finish();
    }
    return status == Status::Ok ? AddTiffProperties(properties, exif ? &*exif : nullptr, file) : status;
}

} // namespace imaginglibrary
