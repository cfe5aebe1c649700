// The registry's row for JPEG.
#include "imaginglibrary/codecs/jpegreader.h"
#include "imaginglibrary/codecs/jpegwriter.h"
#include "imaginglibrary/codecs/rows.h"

namespace imaginglibrary {

const Codec& JpegCodec() {
    static constexpr Signature Signatures[] = {{0, "\xFF\xD8"}};
    static const Codec Row{
        .name = u"Built-in JPEG Codec",
        .mimeType = u"image/jpeg",
        .extensions = u"*.JPG;*.JPEG;*.JPE;*.JFIF",
        .formatName = u"JPEG",
        .classId = {0x557CF401, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}},
        .formatId = {0xB96B3CAE, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}},
        .signatures = Signatures,
        .open = &OpenJpeg,
        .write = &WriteJpeg,
    };
    return Row;
}

} // namespace imaginglibrary
