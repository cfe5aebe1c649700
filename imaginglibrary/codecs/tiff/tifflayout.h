// What a TIFF directory says about its picture, checked, and which pixels we make of it.
#pragma once

#include "imaginglibrary/codecs/tiff/tiffclient.h"
#include "imaginglibrary/core/picture.h"

namespace imaginglibrary {

// What the samples of a pixel are.
enum class TiffColors {
    Grey,     // 1 sample, black is 0 after inversion where the file counts from white
    Index,    // 1 sample into the palette
    Rgb,      // 3 samples
    Cmyk,     // 4 samples, 0 is no ink
    Lab,      // CIE L*a*b* of 8 or 16 bits: 3 samples
    Converted // made to 8-bit RGB by libtiff: YCbCr that is not JPEG, LogLuv
};

struct TiffLayout {
    PictureInfo info;
    TiffColors colors = TiffColors::Grey;
    bool isInverted = false; // grey that counts from white
    bool isIccLab = false;   // L*a*b* as ICC profiles encode it, without signs
    bool hasAlpha = false;   // one more sample than the colours have
    bool isPlanar = false;   // each sample has rows of its own
    bool isTiled = false;
    unsigned bits = 0;          // per sample, 1 to 16
    unsigned samples = 0;       // per pixel in the file, those of no use to us too
    std::size_t rowBytes = 0;   // of one plane, decoded
    std::uint32_t bandRows = 0; // rows in a row of tiles; rows to convert at a time where libtiff does it

    // How many samples are looked at; they are the first.
    unsigned UsedSamples() const {
        const bool hasThree = colors == TiffColors::Rgb || colors == TiffColors::Lab;
        const unsigned ofColor = hasThree ? 3 : colors == TiffColors::Cmyk ? 4 : 1;
        return ofColor + (hasAlpha ? 1 : 0);
    }

    // Whether rows of the one fit where those of the other are to go.
    bool IsMeasuredLike(const TiffLayout& other) const {
        return info.width == other.info.width && info.height == other.info.height && info.format == other.info.format &&
               colors == other.colors && hasAlpha == other.hasAlpha && isPlanar == other.isPlanar &&
               isTiled == other.isTiled && bits == other.bits && samples == other.samples &&
               rowBytes == other.rowBytes && bandRows == other.bandRows;
    }
};

// To be called once for every handle that is opened, before any row: has JPEG data turned to RGB.
void PrepareTiff(TIFF* tiff);

// Reads and checks the directory of a prepared handle. Grey of 1, 2, 4 and 8 bits becomes Indexed1, Indexed4, Indexed4
// and Indexed8 with a grey palette; any other depth of grey Indexed8. Palettes of 1, 2, 4 and 8 bits become Indexed1,
// Indexed4, Indexed4 and Indexed8. RGB of 16 bits without alpha becomes Rgb48, all other colours Rgb24. A fourth sample
// (second, for grey) makes Argb32, or Pargb32 where it is said to be associated alpha, which L*a*b* cannot be; grey
// with several more samples has alpha only where the file says so. InvalidParameter for a size beyond the limits,
// UndecodableContent for what cannot be read, OutOfMemory for tiles beyond the limits.
Result<TiffLayout> ReadTiffLayout(TIFF* tiff);

} // namespace imaginglibrary
