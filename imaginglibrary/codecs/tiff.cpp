// The registry's row for TIFF.
#include "imaginglibrary/codecs/rows.h"
#include "imaginglibrary/codecs/tiffreader.h"
#include "imaginglibrary/codecs/tiffwriter.h"

namespace imaginglibrary {

const Codec& TiffCodec() {
    static constexpr Signature Signatures[] = {{0, "II"}, {0, "MM"}};
    static const Codec Row{
        .name = u"Built-in TIFF Codec",
        .mimeType = u"image/tiff",
        .extensions = u"*.TIF;*.TIFF",
        .formatName = u"TIFF",
        .classId = {0x557CF405, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}},
        .formatId = {0xB96B3CB1, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}},
        .signatures = Signatures,
        .open = &OpenTiff,
        .write = &WriteTiff,
    };
    return Row;
}

} // namespace imaginglibrary
