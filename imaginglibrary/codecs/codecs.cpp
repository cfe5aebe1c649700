// The table of all formats, and how a file's format is known.
#include "imaginglibrary/codecs/codec.h"
#include "imaginglibrary/codecs/dib/bmp.h"
#include "imaginglibrary/codecs/dib/ico.h"
#include "imaginglibrary/codecs/gif/gifreader.h"
#include "imaginglibrary/codecs/gif/gifwriter.h"
#include "imaginglibrary/codecs/jpeg/jpegreader.h"
#include "imaginglibrary/codecs/jpeg/jpegwriter.h"
#include "imaginglibrary/codecs/png/pngreader.h"
#include "imaginglibrary/codecs/png/pngwriter.h"
#include "imaginglibrary/codecs/tiff/tiffreader.h"
#include "imaginglibrary/codecs/tiff/tiffwriter.h"
#ifdef _WIN32
#include "imaginglibrary/codecs/metafile/metafile_windows.h"
#endif

#include <algorithm>
#include <array>

namespace imaginglibrary {

namespace {

using namespace std::string_view_literals;

constexpr Signature BmpStarts[] = {{0, "BM"}};
constexpr Signature JpegStarts[] = {{0, "\xFF\xD8"}};
constexpr Signature GifStarts[] = {{0, "GIF89a"}, {0, "GIF87a"}};
constexpr Signature TiffStarts[] = {{0, "II"}, {0, "MM"}};
constexpr Signature PngStarts[] = {{0, "\x89PNG\r\n\x1a\n"}};
constexpr Signature IcoStarts[] = {{0, "\0\0\1\0"sv}};
#ifdef _WIN32
constexpr Signature EmfStarts[] = {{40, " EMF"}};
constexpr Signature WmfStarts[] = {{0, "\xD7\xCD\xC6\x9A"}};
#endif

// The platform's ids differ in their first number only.
constexpr Guid ClassId(std::uint32_t number) {
    return {number, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
}

constexpr Guid FormatId(std::uint32_t number) {
    return {number, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
}

// clang-format off
constexpr Codec Table[] = {
    {u"Built-in BMP Codec", u"image/bmp", u"*.BMP;*.DIB;*.RLE", u"BMP",
     ClassId(0x557CF400), FormatId(0xB96B3CAB), BmpStarts, OpenBmp, WriteBmp},
    {u"Built-in JPEG Codec", u"image/jpeg", u"*.JPG;*.JPEG;*.JPE;*.JFIF", u"JPEG",
     ClassId(0x557CF401), FormatId(0xB96B3CAE), JpegStarts, OpenJpeg, WriteJpeg},
    {u"Built-in GIF Codec", u"image/gif", u"*.GIF", u"GIF",
     ClassId(0x557CF402), FormatId(0xB96B3CB0), GifStarts, OpenGif, WriteGif},
    {u"Built-in TIFF Codec", u"image/tiff", u"*.TIF;*.TIFF", u"TIFF",
     ClassId(0x557CF405), FormatId(0xB96B3CB1), TiffStarts, OpenTiff, WriteTiff},
    {u"Built-in PNG Codec", u"image/png", u"*.PNG", u"PNG",
     ClassId(0x557CF406), FormatId(0xB96B3CAF), PngStarts, OpenPng, WritePng},
    {u"Built-in ICO Codec", u"image/x-icon", u"*.ICO", u"ICO",
     ClassId(0x557CF407), FormatId(0xB96B3CB5), IcoStarts, OpenIco, nullptr},
#ifdef _WIN32
    {u"Built-in EMF Codec", u"image/x-emf", u"*.EMF", u"EMF",
     ClassId(0x557CF403), FormatId(0xB96B3CAC), EmfStarts, OpenEnhancedMetafile, nullptr},
    {u"Built-in WMF Codec", u"image/x-wmf", u"*.WMF", u"WMF",
     ClassId(0x557CF404), FormatId(0xB96B3CAD), WmfStarts, OpenPlaceableMetafile, nullptr},
#endif
};
// clang-format on

bool Matches(const Signature& signature, std::string_view start) {
    return start.size() >= signature.offset + signature.bytes.size() &&
           start.substr(signature.offset, signature.bytes.size()) == signature.bytes;
}

} // namespace

std::span<const Codec> Codecs() { return Table; }

const Codec* FindCodecFor(const InputFile& file) {
    std::array<char, 64> bytes;
    const auto read = file.ReadAt(0, bytes.data(), bytes.size());
    const std::string_view start(bytes.data(), read.Ok() ? *read : 0);
    for (const Codec& codec : Table) {
        if (std::any_of(codec.signatures.begin(), codec.signatures.end(),
                        [&](const Signature& signature) { return Matches(signature, start); })) {
            return &codec;
        }
    }
    return nullptr;
}

const Codec* FindEncoder(const Guid& classId) {
    const auto* const found = std::find_if(std::begin(Table), std::end(Table), [&](const Codec& codec) {
        return codec.write != nullptr && codec.classId == classId;
    });
    return found == std::end(Table) ? nullptr : found;
}

} // namespace imaginglibrary
