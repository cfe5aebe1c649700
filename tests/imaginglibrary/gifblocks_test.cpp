// Passing over the blocks of a GIF file, and over frames and extensions that consist of them.
#include "imaginglibrary/codecs/gif/gifblocks.h"
#include "tests/support/codecs.h"
#include "tests/support/memoryfiles.h"

namespace {

using namespace imaginglibrary;
using namespace tests;
using namespace std::string_literals;

// Where the reader stands behind the blocks; -1 where they do not end.
std::int64_t BehindBlocks(const std::string& bytes) {
    ByteReader reader(std::make_shared<MemoryInput>(bytes));
    return PassOverGifBlocks(reader) ? static_cast<std::int64_t>(reader.Position()) : -1;
}

TEST(GifBlocks, EndBehindTheEmptyOne) {
    EXPECT_EQ(BehindBlocks("\0;"s), 1);
    EXPECT_EQ(BehindBlocks("\2ab\1c\0;"s), 6);
    EXPECT_EQ(BehindBlocks("\xFF" + std::string(255, 'a') + "\0;"s), 257);
}

TEST(GifBlocks, ThatAreCutOffDoNotEnd) {
    EXPECT_EQ(BehindBlocks(""), -1);
    EXPECT_EQ(BehindBlocks("\2ab"), -1);
    EXPECT_EQ(BehindBlocks("\2a"), -1);
}

// A reader of whole buffers of the file looks for the next block beyond the one that it has.
TEST(GifBlocks, GoOnBeyondWhatIsBuffered) {
    std::string bytes;
    for (int i = 0; i < 1000; ++i) {
        bytes += "\xFE" + std::string(254, '\xFF');
    }
    EXPECT_EQ(BehindBlocks(bytes + "\0;"s), 255001);
    EXPECT_EQ(BehindBlocks(bytes), -1);
}

TEST(GifBlocks, PaletteIsAsLongAsTheFlagsSay) {
    EXPECT_EQ(GifPaletteEntries(0x7F), 0u);
    EXPECT_EQ(GifPaletteEntries(0x80), 2u);
    EXPECT_EQ(GifPaletteEntries(0xF7), 256u);
}

// Screen and images of one pixel; each image has a palette of its own of four entries, and codes of `codeBits`.
std::string Frames(int count, char codeBits) {
    std::string file = "GIF89a\1\0\1\0\0\0\0"s;
    for (int i = 0; i < count; ++i) {
        file += ",\0\0\0\0\1\0\1\0\x81"s + std::string(12, '\x33') + codeBits + "\2\x4C\1\0"s;
    }
    return file + ";";
}

TEST(GifBlocks, FramesBehindPalettesAndLongCodesAreCounted) {
    for (const char codeBits : {2, 8, 9, 11}) {
        EXPECT_EQ(Opened(GifCodec(), Frames(1, codeBits))->Info().format, PixelFormat::Indexed8) << int{codeBits};
        const auto several = Opened(GifCodec(), Frames(3, codeBits));
        EXPECT_EQ(several->Info().format, PixelFormat::Argb32) << int{codeBits};
        constexpr std::uint32_t DelaysTag = 0x5100;
        ASSERT_NE(several->Properties().Find(DelaysTag), nullptr);
        EXPECT_EQ(several->Properties().Find(DelaysTag)->value.size(), 3u * 4) << int{codeBits};
    }
}

// Only the first comment is kept; the transparent index of the control block counts for the image behind it.
TEST(GifBlocks, ExtensionsBetweenThemAreRead) {
    const std::string file = "GIF89a\1\0\1\0\x80\0\0"s + std::string(6, '\x11') + "!\xFE\3one\0!\xFE\3two\0"s +
                             "!\xF9\4\1\0\0\1\0"s + ",\0\0\0\0\1\0\1\0\0"s + "\2\2\x4C\1\0;"s;
    const auto picture = Opened(GifCodec(), file);
    ASSERT_NE(picture, nullptr);
    constexpr std::uint32_t CommentTag = 0x9286;
    constexpr std::uint32_t TransparentTag = 0x5104;
    ASSERT_NE(picture->Properties().Find(CommentTag), nullptr);
    const auto& comment = picture->Properties().Find(CommentTag)->value;
    EXPECT_EQ(std::string(comment.begin(), comment.end()), "one\0"s);
    ASSERT_NE(picture->Properties().Find(TransparentTag), nullptr);
    EXPECT_EQ(picture->Properties().Find(TransparentTag)->value, std::vector<std::uint8_t>{1});
}

} // namespace
