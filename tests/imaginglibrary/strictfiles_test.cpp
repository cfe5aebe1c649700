// Every PNG and TIFF file that is written, taken apart by its bytes as the formats' own rules have it.
#include "imaginglibrary/core/bytes.h"
#include "tests/support/codecs.h"
#include "tests/support/properties.h"

#include <zlib.h>

#include <map>
#include <set>

namespace {

using namespace imaginglibrary;
using namespace tests;

using namespace std::string_literals;

constexpr PixelFormat StrictFormats[] = {PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Indexed8,
                                         PixelFormat::Rgb555,   PixelFormat::Rgb565,   PixelFormat::Argb1555,
                                         PixelFormat::Rgb24,    PixelFormat::Rgb32,    PixelFormat::Argb32,
                                         PixelFormat::Pargb32,  PixelFormat::Rgb48};

constexpr std::pair<std::uint32_t, std::uint32_t> StrictSizes[] = {{1, 1}, {9, 5}, {64, 3}, {3, 64}, {700, 500}};

const std::uint8_t* At(const std::string& bytes, std::size_t at) {
    return reinterpret_cast<const std::uint8_t*>(bytes.data()) + at;
}

// What a file has to say beside its pixels.
PropertyList ManyItems() {
    return ListOf({AsciiProperty(0x010F, "maker"), AsciiProperty(0x9286, "remark"), ShortProperty(0x0112, 6),
                   BytesProperty(0x927C, PropertyType::Undefined, "a maker's note"), AsciiProperty(0x0001, "N"),
                   AsciiProperty(0x0320, "a title"), BytesProperty(0x02BC, PropertyType::Byte, "<x:xmpmeta/>")});
}

std::string WrittenStrictly(const Codec& codec, const PixelSource& picture, const PropertyList& items) {
    MemoryOutput file;
    EXPECT_EQ(codec.write(picture, items, {}, file), Status::Ok);
    EXPECT_EQ(file.Commit(), Status::Ok);
    return file.Bytes();
}

struct Chunk {
    std::string name, content;
};

std::vector<Chunk> ChunksOf(const std::string& png) {
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1A\n");
    std::vector<Chunk> chunks;
    std::size_t at = 8;
    while (at + 12 <= png.size()) {
        const std::size_t length = BigEndian32(At(png, at));
        if (length > png.size() - at - 12) {
            break;
        }
        chunks.push_back({png.substr(at + 4, 4), png.substr(at + 8, length)});
        const auto sum = crc32(0, At(png, at + 4), static_cast<uInt>(4 + length));
        EXPECT_EQ(BigEndian32(At(png, at + 8 + length)), sum) << chunks.back().name;
        at += 12 + length;
    }
    EXPECT_EQ(at, png.size()) << "nothing stands behind the last chunk";
    return chunks;
}

std::string InflatedWhole(const std::string& data, std::size_t size) {
    std::string bytes(size + 1, '\0');
    z_stream stream{};
    EXPECT_EQ(inflateInit(&stream), Z_OK);
    stream.next_in = const_cast<Bytef*>(At(data, 0));
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    EXPECT_EQ(stream.avail_in, 0u);
    EXPECT_EQ(stream.avail_out, 1u) << "as many bytes as rows have";
    inflateEnd(&stream);
    return bytes;
}

void ExpectStrictPng(const std::string& png, const PictureInfo& info) {
    const auto chunks = ChunksOf(png);
    ASSERT_GE(chunks.size(), 3u);
    EXPECT_EQ(chunks.front().name, "IHDR");
    EXPECT_EQ(chunks.back().name, "IEND");
    EXPECT_TRUE(chunks.back().content.empty());
    const std::string& header = chunks.front().content;
    ASSERT_EQ(header.size(), 13u);
    EXPECT_EQ(BigEndian32(At(header, 0)), info.width);
    EXPECT_EQ(BigEndian32(At(header, 4)), info.height);
    EXPECT_EQ(header.substr(10), "\0\0\0"s);
    std::string data, order;
    std::size_t entries = 0;
    std::set<std::string> seen;
    for (const auto& [name, content] : chunks) {
        const bool isRepeatable = name == "IDAT" || name == "tEXt" || name == "iTXt";
        EXPECT_TRUE(seen.insert(name).second || isRepeatable) << name;
        order += name == "IDAT" ? 'D' : name == "PLTE" ? 'P' : name == "tRNS" ? 't' : 'o';
        entries = name == "PLTE" ? content.size() / 3 : entries;
        EXPECT_TRUE(name != "tRNS" || (entries != 0 && content.size() <= entries));
        data += name == "IDAT" ? content : "";
    }
    const std::size_t firstData = order.find('D'), lastData = order.rfind('D');
    EXPECT_EQ(order.substr(firstData, lastData - firstData).find_first_not_of('D'), std::string::npos);
    EXPECT_EQ(lastData, order.size() - 2) << "only the end stands behind the pixels";
    EXPECT_TRUE(order.find('P') == std::string::npos || order.find('P') < order.find('t'));
    const unsigned depth = static_cast<unsigned char>(header[8]);
    const bool isIndexed = header[9] == 3;
    const std::size_t rowBytes = (std::size_t{info.width} * (isIndexed ? depth : header[9] == 6 ? 32 : 24) + 7) / 8;
    EXPECT_EQ(isIndexed, entries != 0);
    EXPECT_LE(entries, std::size_t{1} << depth);
    const std::string rows = InflatedWhole(data, info.height * (1 + rowBytes));
    for (std::uint32_t y = 0; y < info.height; ++y) {
        ASSERT_LE(static_cast<unsigned char>(rows[y * (1 + rowBytes)]), 4) << "a filter's number";
    }
}

TEST(StrictPng, EveryFormatAndSizeIsAsTheStandardHasIt) {
    for (const PixelFormat format : StrictFormats) {
        for (const auto& [width, height] : StrictSizes) {
            const auto picture = MakePicture(format, width, height);
            ExpectStrictPng(WrittenStrictly(PngCodec(), *picture, {}), picture->Info());
            ExpectStrictPng(WrittenStrictly(PngCodec(), *picture, ManyItems()), picture->Info());
        }
    }
}

constexpr unsigned BytesOfType[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8};

// A file of little-endian numbers and one directory; its entries' values by their tags.
struct StrictTiff {
    std::map<unsigned, std::vector<std::uint32_t>> numbers;
    std::vector<std::pair<std::size_t, std::size_t>> taken; // from and to

    void Take(std::size_t from, std::size_t bytes) { taken.emplace_back(from, from + bytes); }

    void ReadDirectory(const std::string& tiff, std::size_t at, bool isMain) {
        ASSERT_EQ(at % 2, 0u);
        ASSERT_LE(at + 6, tiff.size());
        const std::size_t count = LittleEndian16(At(tiff, at));
        ASSERT_LE(at + 6 + 12 * count, tiff.size());
        Take(at, 6 + 12 * count);
        unsigned before = 0;
        for (std::size_t entry = at + 2; entry < at + 2 + 12 * count; entry += 12) {
            const unsigned tag = LittleEndian16(At(tiff, entry));
            const unsigned type = LittleEndian16(At(tiff, entry + 2));
            const std::size_t elements = LittleEndian32(At(tiff, entry + 4));
            EXPECT_TRUE(entry == at + 2 || tag > before) << std::hex << tag;
            before = tag;
            ASSERT_TRUE(type >= 1 && type <= 12 && elements > 0) << std::hex << tag;
            const std::size_t bytes = elements * BytesOfType[type];
            std::size_t from = entry + 8;
            if (bytes > 4) {
                from = LittleEndian32(At(tiff, entry + 8));
                EXPECT_EQ(from % 2, 0u) << std::hex << tag;
                ASSERT_LE(from + bytes, tiff.size()) << std::hex << tag;
                Take(from, bytes);
            }
            for (std::size_t i = 0; isMain && i < elements && (type == 3 || type == 4); ++i) {
                numbers[tag].push_back(type == 3 ? LittleEndian16(At(tiff, from + 2 * i))
                                                 : LittleEndian32(At(tiff, from + 4 * i)));
            }
        }
        EXPECT_EQ(LittleEndian32(At(tiff, at + 2 + 12 * count)), 0u) << "no further directory";
    }
};

void ExpectStrictTiff(const std::string& tiff, const PictureInfo& info) {
    ASSERT_EQ(tiff.substr(0, 4), "II*\0"s);
    StrictTiff file;
    file.Take(0, 8);
    file.ReadDirectory(tiff, LittleEndian32(At(tiff, 4)), true);
    for (const unsigned pointer : {0x8769u, 0x8825u}) {
        if (file.numbers.contains(pointer)) {
            file.ReadDirectory(tiff, file.numbers[pointer].at(0), false);
        }
    }
    const auto& numbers = file.numbers;
    EXPECT_EQ(numbers.at(256), std::vector{info.width});
    EXPECT_EQ(numbers.at(257), std::vector{info.height});
    const std::size_t samples = numbers.at(277).at(0);
    EXPECT_EQ(numbers.at(258), std::vector<std::uint32_t>(samples, numbers.at(258).at(0)));
    EXPECT_EQ(numbers.at(262).at(0) == 3, numbers.contains(320));
    if (numbers.contains(320)) {
        EXPECT_EQ(numbers.at(320).size(), std::size_t{3} << numbers.at(258).at(0));
    }
    EXPECT_EQ(samples == 4, numbers.contains(338));
    const std::size_t rows = numbers.at(278).at(0);
    ASSERT_GT(rows, 0u);
    EXPECT_LE(rows, info.height);
    const auto& offsets = numbers.at(273);
    const auto& counts = numbers.at(279);
    EXPECT_EQ(offsets.size(), (info.height + rows - 1) / rows);
    ASSERT_EQ(offsets.size(), counts.size());
    for (std::size_t i = 0; i < offsets.size(); ++i) {
        ASSERT_LE(std::size_t{offsets[i]} + counts[i], tiff.size());
        file.Take(offsets[i], counts[i]);
    }
    std::ranges::sort(file.taken);
    for (std::size_t i = 1; i < file.taken.size(); ++i) {
        EXPECT_LE(file.taken[i - 1].second, file.taken[i].first) << "no two parts share a byte";
    }
}

TEST(StrictTiff, EveryFormatAndSizeIsAsTheStandardHasIt) {
    for (const PixelFormat format : StrictFormats) {
        for (const auto& [width, height] : StrictSizes) {
            const auto picture = MakePicture(format, width, height);
            ExpectStrictTiff(WrittenStrictly(TiffCodec(), *picture, {}), picture->Info());
            ExpectStrictTiff(WrittenStrictly(TiffCodec(), *picture, ManyItems()), picture->Info());
        }
    }
}

} // namespace
