// The PNG format's row of the registry.
#include "imaginglibrary/codecs/pngreader.h"
#include "imaginglibrary/codecs/pngwriter.h"
#include "imaginglibrary/codecs/rows.h"

namespace imaginglibrary {

namespace {

constexpr Signature Signatures[] = {{0, "\x89PNG\r\n\x1a\n"}};

} // namespace

const Codec& PngCodec() {
    static const Codec codec{
        .name = u"Built-in PNG Codec",
        .mimeType = u"image/png",
        .extensions = u"*.PNG",
        .formatName = u"PNG",
        .classId = {0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}},
        .formatId = {0xb96b3caf, 0x0728, 0x11d3, {0x9d, 0x7b, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}},
        .signatures = Signatures,
        .open = OpenPng,
        .write = WritePng,
    };
    return codec;
}

} // namespace imaginglibrary
