// The table of formats, typed a second time as the platform's programmers know it.
#include "imaginglibrary/codecs/codec.h"
#include "tests/support/codecs.h"
#include "tests/support/memoryfiles.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace {

using namespace imaginglibrary;
using namespace tests;

using namespace std::string_literals;

// "{557CF400-1A04-11D3-9A73-0000F81EF32E}", as the documents write it.
std::string TextOf(const Guid& id) {
    char text[40];
    std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", id.data1, id.data2, id.data3,
                  id.data4[0], id.data4[1], id.data4[2], id.data4[3], id.data4[4], id.data4[5], id.data4[6],
                  id.data4[7]);
    return text;
}

struct KnownCodec {
    const char16_t* formatName;
    const char16_t* name;
    const char16_t* mimeType;
    const char16_t* extensions;
    const char* classId;
    const char* formatId;
    bool isWritten;
};

constexpr KnownCodec KnownCodecs[] = {
    {u"BMP", u"Built-in BMP Codec", u"image/bmp", u"*.BMP;*.DIB;*.RLE", "{557CF400-1A04-11D3-9A73-0000F81EF32E}",
     "{B96B3CAB-0728-11D3-9D7B-0000F81EF32E}", true},
    {u"JPEG", u"Built-in JPEG Codec", u"image/jpeg", u"*.JPG;*.JPEG;*.JPE;*.JFIF",
     "{557CF401-1A04-11D3-9A73-0000F81EF32E}", "{B96B3CAE-0728-11D3-9D7B-0000F81EF32E}", true},
    {u"GIF", u"Built-in GIF Codec", u"image/gif", u"*.GIF", "{557CF402-1A04-11D3-9A73-0000F81EF32E}",
     "{B96B3CB0-0728-11D3-9D7B-0000F81EF32E}", true},
    {u"TIFF", u"Built-in TIFF Codec", u"image/tiff", u"*.TIF;*.TIFF", "{557CF405-1A04-11D3-9A73-0000F81EF32E}",
     "{B96B3CB1-0728-11D3-9D7B-0000F81EF32E}", true},
    {u"PNG", u"Built-in PNG Codec", u"image/png", u"*.PNG", "{557CF406-1A04-11D3-9A73-0000F81EF32E}",
     "{B96B3CAF-0728-11D3-9D7B-0000F81EF32E}", true},
    {u"ICO", u"Built-in ICO Codec", u"image/x-icon", u"*.ICO", "{557CF407-1A04-11D3-9A73-0000F81EF32E}",
     "{B96B3CB5-0728-11D3-9D7B-0000F81EF32E}", false},
#ifdef _WIN32
    {u"EMF", u"Built-in EMF Codec", u"image/x-emf", u"*.EMF", "{557CF403-1A04-11D3-9A73-0000F81EF32E}",
     "{B96B3CAC-0728-11D3-9D7B-0000F81EF32E}", false},
    {u"WMF", u"Built-in WMF Codec", u"image/x-wmf", u"*.WMF", "{557CF404-1A04-11D3-9A73-0000F81EF32E}",
     "{B96B3CAD-0728-11D3-9D7B-0000F81EF32E}", false},
#endif
};

TEST(Codecs, AreThePlatformsUnderItsNamesAndIds) {
    ASSERT_EQ(Codecs().size(), std::size(KnownCodecs));
    for (std::size_t i = 0; i < std::size(KnownCodecs); ++i) {
        const Codec& codec = Codecs()[i];
        const KnownCodec& known = KnownCodecs[i];
        EXPECT_EQ(codec.formatName, std::u16string(known.formatName));
        EXPECT_EQ(codec.name, std::u16string(known.name));
        EXPECT_EQ(codec.mimeType, std::u16string(known.mimeType));
        EXPECT_EQ(codec.extensions, std::u16string(known.extensions));
        EXPECT_EQ(TextOf(codec.classId), known.classId);
        EXPECT_EQ(TextOf(codec.formatId), known.formatId);
        EXPECT_EQ(codec.write != nullptr, known.isWritten);
        EXPECT_EQ(FindEncoder(codec.classId), known.isWritten ? &codec : nullptr);
        EXPECT_EQ(FindEncoder(codec.formatId), nullptr);
    }
}

const Codec* CodecFor(const std::string& bytes) { return FindCodecFor(MemoryInput(bytes)); }

TEST(Codecs, AreKnownByTheirFirstBytesAlone) {
    const std::pair<std::string, const Codec*> starts[] = {
        {"BM", &BmpCodec()},        {"\xFF\xD8", &JpegCodec()},
        {"GIF89a", &GifCodec()},    {"GIF87a", &GifCodec()},
        {"II", &TiffCodec()},       {"MM", &TiffCodec()},
        {"\0\0\1\0"s, &IcoCodec()}, {"\x89PNG\r\n\x1a\n", &PngCodec()}};
    for (const auto& [start, codec] : starts) {
        EXPECT_EQ(CodecFor(start), codec) << start;
        EXPECT_EQ(CodecFor(start + "and more"), codec) << start;
        EXPECT_EQ(CodecFor(start.substr(0, start.size() - 1)), nullptr) << start;
        EXPECT_EQ(CodecFor(" " + start), nullptr) << start;
        for (std::size_t at = 0; at < start.size(); ++at) {
            std::string other = start;
            other[at] = '?';
            EXPECT_EQ(CodecFor(other), nullptr) << start;
        }
    }
    EXPECT_EQ(CodecFor(""), nullptr);
}

} // namespace
