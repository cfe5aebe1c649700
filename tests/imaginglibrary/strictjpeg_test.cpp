// Every JPEG file that is written, taken apart by its bytes, and decoded by libjpeg without a single warning.
#include "tests/support/codecs.h"
#include "tests/support/properties.h"

#include <jpeglib.h>

#include <set>

namespace {

using namespace imaginglibrary;
using namespace tests;

unsigned Byte8(const std::string& bytes, std::size_t at) { return static_cast<unsigned char>(bytes.at(at)); }
unsigned Big16(const std::string& bytes, std::size_t at) { return Byte8(bytes, at) << 8 | Byte8(bytes, at + 1); }

// One table of codes: all symbols differ, belong to its class, and leave the code of ones alone free.
std::size_t ExpectStrictTable(const std::string& jpeg, std::size_t at) {
    const unsigned place = Byte8(jpeg, at);
    EXPECT_TRUE((place >> 4) <= 1 && (place & 15) <= 1);
    std::size_t symbols = 0;
    unsigned long taken = 0; // of all codes of 16 bits
    for (unsigned length = 1; length <= 16; ++length) {
        symbols += Byte8(jpeg, at + length);
        taken += Byte8(jpeg, at + length) * (1UL << (16 - length));
    }
    EXPECT_GT(symbols, 0u);
    EXPECT_LT(taken, 65536u);
    std::set<unsigned> seen;
    for (std::size_t i = 0; i < symbols; ++i) {
        const unsigned symbol = Byte8(jpeg, at + 17 + i);
        EXPECT_TRUE(seen.insert(symbol).second) << symbol;
        EXPECT_TRUE((place >> 4) == 1 ? (symbol & 15) <= 10 : symbol <= 11) << symbol;
    }
    return 17 + symbols;
}

// Gives back where the scan's data begin.
std::size_t ExpectStrictSegments(const std::string& jpeg, const PictureInfo& info) {
    EXPECT_EQ(jpeg.substr(0, 4), "\xFF\xD8\xFF\xE0");
    std::size_t tables = 0;
    for (std::size_t at = 2; at + 4 <= jpeg.size();) {
        EXPECT_EQ(Byte8(jpeg, at), 0xFFu);
        const unsigned marker = Byte8(jpeg, at + 1);
        const std::size_t length = Big16(jpeg, at + 2);
        const std::size_t end = at + 2 + length;
        if (length < 2 || end > jpeg.size()) {
            ADD_FAILURE() << "segment " << std::hex << marker;
            return jpeg.size();
        }
        std::size_t inside = at + 4;
        if (marker == 0xC0) {
            EXPECT_EQ(length, 17u);
            EXPECT_EQ(Byte8(jpeg, at + 4), 8u);
            EXPECT_EQ(Big16(jpeg, at + 5), info.height);
            EXPECT_EQ(Big16(jpeg, at + 7), info.width);
        }
        while (marker == 0xC4 && inside < end) {
            inside += ExpectStrictTable(jpeg, inside);
            ++tables;
        }
        EXPECT_TRUE(marker != 0xC4 || inside == end);
        if (marker == 0xDA) {
            EXPECT_EQ(length, 12u);
            EXPECT_EQ(jpeg.substr(end - 3, 3), (std::string{'\0', '\x3F', '\0'}));
            EXPECT_EQ(tables, 4u);
            return end;
        }
        at = end;
    }
    ADD_FAILURE() << "no scan";
    return jpeg.size();
}

// In the scan every byte of ones is followed by one of zeros; the end marker stands behind it, and nothing behind that.
void ExpectStrictScan(const std::string& jpeg, std::size_t start) {
    ASSERT_GE(jpeg.size(), start + 3);
    ASSERT_EQ(jpeg.substr(jpeg.size() - 2), "\xFF\xD9");
    for (std::size_t at = start; at < jpeg.size() - 2; ++at) {
        if (Byte8(jpeg, at) == 0xFF) {
            ++at;
            ASSERT_TRUE(at < jpeg.size() - 2 && Byte8(jpeg, at) == 0) << at;
        }
    }
}

// How often libjpeg has something to say about the file, and how many rows it delivers.
void ExpectNoWarning(const std::string& jpeg, std::uint32_t rows) {
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    errors.emit_message = [](j_common_ptr common, int level) {
        if (level < 0) {
            ++common->err->num_warnings;
        }
    };
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(jpeg.data()), static_cast<unsigned long>(jpeg.size()));
    ASSERT_EQ(jpeg_read_header(&info, TRUE), JPEG_HEADER_OK);
    jpeg_start_decompress(&info);
    std::vector<JSAMPLE> row(std::size_t{info.output_width} * 3);
    JSAMPROW target = row.data();
    while (info.output_scanline < info.output_height) {
        jpeg_read_scanlines(&info, &target, 1);
    }
    jpeg_finish_decompress(&info);
    EXPECT_EQ(info.output_height, rows);
    EXPECT_EQ(errors.num_warnings, 0);
    jpeg_destroy_decompress(&info);
}

void ExpectStrictJpeg(const PixelSource& picture, const PropertyList& items, int quality) {
    MemoryOutput file;
    ASSERT_EQ(JpegCodec().write(picture, items, {.quality = quality}, file), Status::Ok);
    ASSERT_EQ(file.Commit(), Status::Ok);
    ExpectStrictScan(file.Bytes(), ExpectStrictSegments(file.Bytes(), picture.Info()));
    ExpectNoWarning(file.Bytes(), picture.Info().height);
}

TEST(StrictJpeg, EveryFormatAndSizeIsAsTheStandardHasIt) {
    for (const PixelFormat format :
         {PixelFormat::Indexed1, PixelFormat::Indexed8, PixelFormat::Rgb24, PixelFormat::Argb32, PixelFormat::Rgb48}) {
        for (const auto& [width, height] : {std::pair{1u, 1u}, {16u, 16u}, {17u, 15u}, {300u, 200u}}) {
            ExpectStrictJpeg(*MakePicture(format, width, height), {}, 75);
        }
    }
}

TEST(StrictJpeg, MetadataOfEveryKindAreSegmentsOfTheirLength) {
    const auto items =
        ListOf({AsciiProperty(0x010F, "maker"), AsciiProperty(0x9286, std::string(70001, 'c')),
                BytesProperty(0x927C, PropertyType::Undefined, std::string(60001, 'n')),
                BytesProperty(0x02BC, PropertyType::Byte, "<rdf:RDF>" + std::string(140000, 'x') + "</rdf:RDF>"),
                BytesProperty(0x83BB, PropertyType::Undefined, std::string(70000, 'i'))});
    ExpectStrictJpeg(*MakePicture(PixelFormat::Rgb24, 20, 10), items, 75);
}

// Noise at the best quality has every symbol there is, and long codes; at the worst nearly all blocks are empty.
TEST(StrictJpeg, ExtremesOfQualityAndContentAreDecoded) {
    const auto noise = MakePictureOf(500, 400, [](auto x, auto y) {
        return 0xFF000000u | (((x * 2654435761u) ^ (y * 2246822519u)) * 3266489917u) >> 8;
    });
    for (const int quality : {0, 1, 50, 95, 100}) {
        ExpectStrictJpeg(*noise, {}, quality);
        ExpectStrictJpeg(*WhitePicture(100, 50), {}, quality);
    }
}

} // namespace
