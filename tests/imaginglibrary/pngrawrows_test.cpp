// The rows of PNG files without libpng: all of those that are sound, and nothing else.
#include "imaginglibrary/codecs/png/pngrawrows.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pngfiles.h"

#include <gtest/gtest.h>

#include <zlib.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

constexpr PngRowForm ThreeBytes{.rowBytes = 3000, .pixelBytes = 3};
constexpr std::size_t RowsInABand = (1 << 18) / 3001;

// Rows of one filter, each behind its number.
std::string FilteredRows(const PngRowForm& form, std::size_t count, int filter = 2) {
    std::string bytes;
    for (std::size_t y = 0; y < count; ++y) {
        bytes += static_cast<char>(filter);
        for (std::size_t i = 0; i < form.rowBytes; ++i) {
            bytes += static_cast<char>((y + 1) * (i + 3) % 7);
        }
    }
    return bytes;
}

std::string Zlib(const std::string& bytes) {
    std::string deflated(compressBound(static_cast<uLong>(bytes.size())), '\0');
    auto size = static_cast<uLongf>(deflated.size());
    compress(reinterpret_cast<Bytef*>(deflated.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
             static_cast<uLong>(bytes.size()));
    deflated.resize(size);
    return deflated;
}

// How many rows come from a file of these chunks until there is none or all are there.
std::size_t RowsOf(const std::string& chunks, const PngRowForm& form, std::uint32_t count) {
    PngRawRows rows(std::make_shared<MemoryInput>(chunks), 0, form, count);
    std::size_t read = 0;
    while (read < count && rows.Next() != nullptr) {
        ++read;
    }
    return read;
}

TEST(PngRawRowsOf, SoundFileComeBackUnfiltered) {
    for (const auto& [form, count] : {std::pair{PngRowForm{.rowBytes = 5, .pixelBytes = 1}, std::size_t{1}},
                                      {ThreeBytes, RowsInABand},
                                      {ThreeBytes, RowsInABand + 1},
                                      {ThreeBytes, 3 * RowsInABand + 2},
                                      {PngRowForm{.rowBytes = 400000, .pixelBytes = 8}, 3}}) {
        const std::string filtered = FilteredRows(form, count);
        PngRawRows rows(std::make_shared<MemoryInput>("what is before" + PngChunk("IDAT", Zlib(filtered))), 14, form,
                        static_cast<std::uint32_t>(count));
        std::vector<std::uint8_t> expected(form.rowBytes);
        for (std::size_t y = 0; y < count; ++y) {
            const std::uint8_t* const row = rows.Next();
            ASSERT_NE(row, nullptr) << y;
            for (std::size_t i = 0; i < form.rowBytes; ++i) { // each is added to the one above
                expected[i] = static_cast<std::uint8_t>(expected[i] + filtered[y * (1 + form.rowBytes) + 1 + i]);
            }
            ASSERT_TRUE(std::equal(expected.begin(), expected.end(), row)) << y;
        }
    }
}

TEST(PngRawRowsOf, SoundFileComeHoweverItIsCutIntoChunks) {
    const std::string stream = Zlib(FilteredRows(ThreeBytes, 10));
    for (const std::size_t size : {1u, 2u, 5u, 100u}) {
        std::string chunks;
        for (std::size_t at = 0; at < stream.size(); at += size) {
            chunks += PngChunk("IDAT", stream.substr(at, size)) + PngChunk("IDAT", "");
        }
        EXPECT_EQ(RowsOf(chunks, ThreeBytes, 10), 10u);
    }
}

TEST(PngRawRowsOf, SoundFileMayHaveSomethingBehindTheStream) {
    const std::string stream = Zlib(FilteredRows(ThreeBytes, 10));
    EXPECT_EQ(RowsOf(PngChunk("IDAT", stream + "more"), ThreeBytes, 10), 10u);
    EXPECT_EQ(RowsOf(PngChunk("IDAT", stream) + "no chunk", ThreeBytes, 10), 10u);
}

// Of a band that is not sound nothing comes, of earlier ones all.
TEST(PngRawRowsOf, BrokenFileComeUpToTheBand) {
    constexpr std::uint32_t Count = 3 * RowsInABand;
    const std::string bytes = FilteredRows(ThreeBytes, Count);
    z_stream state{};
    deflateInit2(&state, 0, Z_DEFLATED, 15, 8, Z_DEFAULT_STRATEGY); // as long as the rows
    std::string stream(bytes.size() + 10000, '\0');
    state.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    state.avail_in = static_cast<uInt>(bytes.size());
    state.next_out = reinterpret_cast<Bytef*>(stream.data());
    state.avail_out = static_cast<uInt>(stream.size());
    ASSERT_EQ(deflate(&state, Z_FINISH), Z_STREAM_END);
    stream.resize(state.total_out);
    deflateEnd(&state);
    const auto rowsOfSixths = [&](std::size_t sixths) {
        return RowsOf(PngChunk("IDAT", stream.substr(0, stream.size() / 6 * sixths)), ThreeBytes, Count);
    };
    EXPECT_EQ(rowsOfSixths(1), 0u);
    EXPECT_EQ(rowsOfSixths(3), RowsInABand);
    EXPECT_EQ(rowsOfSixths(5), 2 * RowsInABand);
    EXPECT_EQ(RowsOf(PngChunk("IDAT", stream), ThreeBytes, Count), Count);
}

TEST(PngRawRowsOf, FileWithAWrongFilterComeUpToThatRow) {
    std::string bytes = FilteredRows(ThreeBytes, 10, 4);
    EXPECT_EQ(RowsOf(PngChunk("IDAT", Zlib(bytes)), ThreeBytes, 10), 10u);
    for (const int filter : {5, 255}) {
        bytes[7 * 3001] = static_cast<char>(filter);
        EXPECT_EQ(RowsOf(PngChunk("IDAT", Zlib(bytes)), ThreeBytes, 10), 7u);
    }
}

TEST(PngRawRowsOf, DataOfAnotherLengthDoNotCome) {
    const std::string bytes = FilteredRows(ThreeBytes, 10);
    EXPECT_EQ(RowsOf(PngChunk("IDAT", Zlib(bytes + '\0')), ThreeBytes, 10), 0u);
    EXPECT_EQ(RowsOf(PngChunk("IDAT", Zlib(bytes.substr(1))), ThreeBytes, 10), 0u);
    EXPECT_EQ(RowsOf(PngChunk("IDAT", Zlib(bytes)), ThreeBytes, 10), 10u);
}

TEST(PngRawRowsOf, UnsoundEndDoNotCome) {
    std::string stream = Zlib(FilteredRows(ThreeBytes, 10));
    std::string chunk = PngChunk("IDAT", stream);
    EXPECT_EQ(RowsOf(chunk.substr(0, chunk.size() - 1), ThreeBytes, 10), 0u);
    chunk.back() = static_cast<char>(chunk.back() ^ 1);
    EXPECT_EQ(RowsOf(chunk, ThreeBytes, 10), 0u);
    EXPECT_EQ(RowsOf(PngChunk("IDAT", stream.substr(0, stream.size() - 1)), ThreeBytes, 10), 0u);
    stream.back() = static_cast<char>(stream.back() ^ 1);
    EXPECT_EQ(RowsOf(PngChunk("IDAT", stream), ThreeBytes, 10), 0u);
}

TEST(PngRawRowsOf, UnusualStreamsAreLeftToOthers) {
    const std::string stream = Zlib(FilteredRows(ThreeBytes, 10)).substr(2);
    const auto rowsBehind = [&](std::string header) {
        return RowsOf(PngChunk("IDAT", header + stream), ThreeBytes, 10);
    };
    EXPECT_EQ(rowsBehind("\x78\x9C"), 10u);
    EXPECT_EQ(rowsBehind("\x78\xDA"), 10u);
    EXPECT_EQ(rowsBehind("\x68\x81"), 0u);                 // a smaller window
    EXPECT_EQ(rowsBehind("\x78\x9D"), 0u);                 // a wrong sum
    EXPECT_EQ(rowsBehind(std::string("\x78\xBB", 2)), 0u); // with a dictionary
    EXPECT_EQ(RowsOf(PngChunk("IDAT", "x"), ThreeBytes, 10), 0u);
    EXPECT_EQ(RowsOf("", ThreeBytes, 10), 0u);
}

} // namespace
