// The registry's row for GIF.
#include "imaginglibrary/codecs/gifreader.h"
#include "imaginglibrary/codecs/gifwriter.h"
#include "imaginglibrary/codecs/rows.h"

namespace imaginglibrary {

const Codec& GifCodec() {
    static constexpr Signature Signatures[] = {{0, "GIF89a"}, {0, "GIF87a"}};
    static const Codec Row{
        .name = u"Built-in GIF Codec",
        .mimeType = u"image/gif",
        .extensions = u"*.GIF",
        .formatName = u"GIF",
        .classId = {0x557CF402, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}},
        .formatId = {0xB96B3CB0, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}},
        .signatures = Signatures,
        .open = &OpenGif,
        .write = &WriteGif,
    };
    return Row;
}

} // namespace imaginglibrary
