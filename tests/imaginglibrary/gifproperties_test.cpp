// The property items of GIF files.
#include "imaginglibrary/core/limits.h"
#include "tests/support/codecs.h"
#include "tests/support/properties.h"

namespace {

using namespace imaginglibrary;
using namespace tests;

using namespace std::string_literals;

// A screen of one pixel with background 1 and a palette of two colours.
const std::string Screen = "GIF89a\1\0\1\0\x80\1\0"s + "\1\2\3\4\5\6";
const std::string ScreenWithoutPalette = "GIF89a\1\0\1\0\0\1\0"s;

const std::string Image = ",\0\0\0\0\1\0\1\0\0"s + "\2\2\x44\1\0"s;
const std::string ImageWithPalette = ",\0\0\0\0\1\0\1\0\x80"s + "\7\7\7\7\7\7" + "\2\2\x44\1\0"s;
const std::string End = ";";

std::string SubBlocks(const std::string& content) {
    std::string blocks;
    for (std::size_t at = 0; at < content.size(); at += 255) {
        const std::string block = content.substr(at, 255);
        blocks += static_cast<char>(block.size()) + block;
    }
    return blocks + '\0';
}

std::string GifComment(const std::string& text) { return "!\xFE" + SubBlocks(text); }

std::string Control(const std::string& delay, bool isTransparent = false) {
    return "!\xF9\4"s + (isTransparent ? '\1' : '\0') + delay + "\1\0"s;
}

std::string LoopCount(const std::string& name, const std::string& count) {
    return "!\xFF\x0B" + name + "\3\1" + count + '\0';
}

PropertyList ItemsIn(const std::string& bytes) { return PropertiesIn(GifCodec(), bytes); }

const Property PaletteItem = BytesProperty(0x5102, PropertyType::Byte, "\1\2\3\4\5\6");
const Property BackgroundItem = BytesProperty(0x5103, PropertyType::Byte, "\1");

TEST(GifProperties, OneImageHasThePaletteAndTheBackground) {
    EXPECT_EQ(ItemsIn(Screen + Control("\5\0"s) + Image + End).Items(),
              (std::vector<Property>{PaletteItem, BackgroundItem}));
}

TEST(GifProperties, ScreenWithoutPaletteHasNoBackgroundEither) {
    EXPECT_TRUE(ItemsIn(ScreenWithoutPalette + ImageWithPalette + End).Items().empty());
}

TEST(GifProperties, AllItemsComeInTheOrderOfTheirTags) {
    const auto bytes = Screen + LoopCount("NETSCAPE2.0", "\7\1") + GifComment("remark") + Control("\5\1", true) +
                       Image + ImageWithPalette + Control("\3\0"s) + Image + End;
    EXPECT_EQ(
        ItemsIn(bytes).Items(),
        (std::vector<Property>{NumbersProperty<std::uint32_t>(0x5100, PropertyType::Long, {0x0105, 0, 3}),
                               ShortProperty(0x5101, 0x0107), PaletteItem, BackgroundItem,
                               BytesProperty(0x5104, PropertyType::Byte, "\1"), AsciiProperty(0x9286, "remark")}));
}

TEST(GifProperties, SeveralImagesAreShownOnceWhereNothingIsSaid) {
    EXPECT_EQ(*ItemsIn(Screen + Image + Image + End).Find(0x5101), ShortProperty(0x5101, 1));
    EXPECT_EQ(*ItemsIn(Screen + LoopCount("SOMETHING11", "\7\1") + Image + Image + End).Find(0x5101),
              ShortProperty(0x5101, 1));
}

TEST(GifProperties, TransparencyOfALaterImageIsNotTheFirsts) {
    EXPECT_EQ(ItemsIn(Screen + Image + Control("\0\0"s, true) + Image + End).Find(0x5104), nullptr);
}

TEST(GifProperties, FirstCommentCountsWhereverItStands) {
    const std::string text(1000, 'x');
    const auto properties = ItemsIn(Screen + Image + GifComment("") + GifComment(text) + GifComment("later") + End);
    EXPECT_EQ(*properties.Find(0x9286), AsciiProperty(0x9286, text));
}

TEST(GifProperties, OverlongCommentIsCut) {
    const auto properties = ItemsIn(Screen + GifComment(std::string(MaximumCommentBytes + 1, 'x')) + Image + End);
    EXPECT_EQ(*properties.Find(0x9286), AsciiProperty(0x9286, std::string(MaximumCommentBytes, 'x')));
}

TEST(GifProperties, ImagesBeyondTheLimitAreNotCounted) {
    std::string bytes = Screen;
    for (std::size_t i = 0; i <= MaximumGifFrames; ++i) {
        bytes += Image;
    }
    EXPECT_EQ(ItemsIn(bytes).Find(0x5100)->value.size(), 4 * MaximumGifFrames);
}

TEST(GifProperties, CutFileGivesWhatIsThere) {
    const auto start = Screen + Control("\5\0"s) + Image;
    const auto rest = Control("\3\0"s) + Image + GifComment("remark");
    for (std::size_t size = 0; size < rest.size(); ++size) {
        const auto properties = ItemsIn(start + rest.substr(0, size));
        EXPECT_EQ(*properties.Find(0x5102), PaletteItem);
        const Property* comment = properties.Find(0x9286);
        const std::string text =
            comment == nullptr ? "" : std::string(comment->value.begin(), comment->value.end() - 1);
        EXPECT_TRUE(std::string("remark").starts_with(text)) << size;
    }
}

TEST(GifProperties, CommentIsWritten) {
    for (const std::string& text : {"remark"s, std::string(600, 'x')}) {
        const std::string bytes = WrittenWith(GifCodec(), ListOf({AsciiProperty(0x9286, text)}), PixelFormat::Indexed4);
        EXPECT_EQ(bytes.substr(0, 6), "GIF89a");
        EXPECT_NE(bytes.find(GifComment(text)), std::string::npos);
        EXPECT_EQ(*ItemsIn(bytes).Find(0x9286), AsciiProperty(0x9286, text));
        EXPECT_EQ(ColorsOf(**OpenBytes(GifCodec(), bytes)), ColorsOf(*MakePicture(PixelFormat::Indexed4, 5, 3)));
    }
}

TEST(GifProperties, NothingElseIsWritten) {
    const std::string plain = WrittenWith(GifCodec(), {}, PixelFormat::Indexed4);
    EXPECT_EQ(plain.substr(0, 6), "GIF87a");
    for (const Property& item :
         {AsciiProperty(0x010F, "maker"), BytesProperty(0x9286, PropertyType::Undefined, "remark"),
          AsciiProperty(0x9286, ""), ShortProperty(0x5101, 7)}) {
        EXPECT_EQ(WrittenWith(GifCodec(), ListOf({item}), PixelFormat::Indexed4), plain) << std::hex << item.tag;
    }
}

} // namespace
