// The chunks of a PNG picture's image data, read one behind the other.
#include "imaginglibrary/codecs/png/pngchunks.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pngfiles.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

PngImageChunks ChunksIn(const std::string& file, std::uint64_t offset = 0) {
    return PngImageChunks(std::make_shared<MemoryInput>(file), offset);
}

std::string ReadFrom(PngImageChunks& chunks, std::size_t count) {
    std::string bytes(count, '\0');
    bytes.resize(chunks.Read({reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size()}));
    return bytes;
}

std::string WithWrongChecksum(std::string chunk) {
    chunk.back() = static_cast<char>(chunk.back() ^ 1);
    return chunk;
}

const std::string ThreeChunks =
    PngChunk("IDAT", "abc") + PngChunk("IDAT", "") + PngChunk("IDAT", "defgh") + PngChunk("IEND", "");

TEST(PngImageDataChunks, AreReadAsIfTheyWereOne) {
    for (const std::size_t piece : {1u, 2u, 3u, 4u, 8u, 100u}) {
        PngImageChunks chunks = ChunksIn("before" + ThreeChunks, 6);
        std::string bytes;
        for (std::string more = ReadFrom(chunks, piece); !more.empty(); more = ReadFrom(chunks, piece)) {
            bytes += more;
        }
        EXPECT_EQ(bytes, "abcdefgh") << piece;
        EXPECT_TRUE(chunks.AreSound());
    }
}

TEST(PngImageDataChunks, EndWhereAnotherChunkFollows) {
    PngImageChunks chunks =
        ChunksIn(PngChunk("IDAT", "abc") + PngChunk("tEXt", "") + PngChunk("IDAT", "def") + PngChunk("IEND", ""));
    EXPECT_EQ(ReadFrom(chunks, 10), "abc");
    EXPECT_EQ(ReadFrom(chunks, 10), "");
    EXPECT_EQ(ReadFrom(chunks, 10), "");
    EXPECT_TRUE(chunks.AreSound());
}

TEST(PngImageDataChunks, EndWhereTheFileEndsBetweenThem) {
    for (std::size_t more = 0; more < 8; ++more) {
        PngImageChunks chunks = ChunksIn(PngChunk("IDAT", "abc") + PngChunk("IDAT", "de").substr(0, more));
        EXPECT_EQ(ReadFrom(chunks, 10), "abc");
        EXPECT_TRUE(chunks.AreSound());
    }
}

TEST(PngImageDataChunks, AreUnsoundWhereTheFileEndsWithin) {
    for (std::size_t missing = 1; missing <= 9; ++missing) {
        const std::string whole = PngChunk("IDAT", "abc") + PngChunk("IDAT", "defgh");
        PngImageChunks chunks = ChunksIn(whole.substr(0, whole.size() - missing));
        EXPECT_EQ(ReadFrom(chunks, 4).substr(0, 3), "abc");
        EXPECT_FALSE(chunks.AreSound()) << missing;
        EXPECT_EQ(ReadFrom(chunks, 10), "");
    }
}

TEST(PngImageDataChunks, AreUnsoundWithAWrongChecksum) {
    for (const std::string& first :
         {WithWrongChecksum(PngChunk("IDAT", "")), WithWrongChecksum(PngChunk("IDAT", "abc"))}) {
        PngImageChunks chunks = ChunksIn(first + PngChunk("IDAT", "def"));
        EXPECT_EQ(ReadFrom(chunks, 100).find("def"), std::string::npos);
        EXPECT_FALSE(chunks.AreSound());
    }
}

TEST(PngImageDataChunks, AreReadToTheEndOfTheOneAtHandForItsChecksum) {
    for (const std::size_t length : {10u, 4096u, 4097u, 10000u}) {
        const std::string chunk = PngChunk("IDAT", std::string(length, 'x'));
        PngImageChunks sound = ChunksIn(chunk + WithWrongChecksum(chunk));
        PngImageChunks unsound = ChunksIn(WithWrongChecksum(chunk) + chunk);
        EXPECT_EQ(ReadFrom(sound, 2), "xx");
        EXPECT_EQ(ReadFrom(unsound, 2), "xx");
        EXPECT_TRUE(sound.AreSound());
        EXPECT_FALSE(unsound.AreSound());
    }
}

} // namespace
