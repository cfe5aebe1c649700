// The formats' rows of the imaging library's table, by name.
#pragma once

#include "imaginglibrary/codecs/codec.h"

#include <stdexcept>

namespace tests {

inline const imaginglibrary::Codec& CodecOf(std::u16string_view formatName) {
    for (const imaginglibrary::Codec& codec : imaginglibrary::Codecs()) {
        if (codec.formatName == formatName) {
            return codec;
        }
    }
    throw std::logic_error("no such format");
}

inline const imaginglibrary::Codec& BmpCodec() { return CodecOf(u"BMP"); }
inline const imaginglibrary::Codec& JpegCodec() { return CodecOf(u"JPEG"); }
inline const imaginglibrary::Codec& GifCodec() { return CodecOf(u"GIF"); }
inline const imaginglibrary::Codec& TiffCodec() { return CodecOf(u"TIFF"); }
inline const imaginglibrary::Codec& PngCodec() { return CodecOf(u"PNG"); }
inline const imaginglibrary::Codec& IcoCodec() { return CodecOf(u"ICO"); }
#ifdef _WIN32
inline const imaginglibrary::Codec& EmfCodec() { return CodecOf(u"EMF"); }
inline const imaginglibrary::Codec& WmfCodec() { return CodecOf(u"WMF"); }
#endif

} // namespace tests
