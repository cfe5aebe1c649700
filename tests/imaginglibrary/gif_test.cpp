// GIF files as they come: what the first image and its screen look like, and what broken files do.
#include "tests/support/codecs.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"

#include <gif_lib.h>
#include <gtest/gtest.h>

#include <array>

namespace {

using namespace imaginglibrary;
using namespace tests;

struct Image {
    int left = 0;
    int top = 0;
    int width = 4;
    int height = 3;
    std::vector<GifPixelType> indices = {}; // row by row from the top; empty: 0, 1, 2, 3, 0 …
    Palette palette = {};                   // local
    int transparent = NO_TRANSPARENT_COLOR;
    bool isInterlaced = false;
};

struct GifSpec {
    int width = 4;
    int height = 3;
    Palette palette = {Red, Green, Blue, White};
    std::vector<Image> images = {Image{}};
};

ColorMapObject* MapOf(const Palette& palette) {
    if (palette.empty()) {
        return nullptr;
    }
    ColorMapObject* map = GifMakeMapObject(static_cast<int>(palette.size()), nullptr);
    for (std::size_t i = 0; i < palette.size(); ++i) {
        map->Colors[i] = {RedOf(palette[i]), GreenOf(palette[i]), BlueOf(palette[i])};
    }
    return map;
}

int AppendBytes(GifFileType* gif, const GifByteType* bytes, int count) {
    static_cast<std::string*>(gif->UserData)
        ->append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count));
    return count;
}

std::vector<int> LineOrder(const Image& image) {
    std::vector<int> order;
    if (!image.isInterlaced) {
        for (int y = 0; y < image.height; ++y) {
            order.push_back(y);
        }
        return order;
    }
    for (const auto& [first, step] : {std::pair{0, 8}, {4, 8}, {2, 4}, {1, 2}}) {
        for (int y = first; y < image.height; y += step) {
            order.push_back(y);
        }
    }
    return order;
}

void PutImage(GifFileType* gif, const Image& image) {
    if (image.transparent != NO_TRANSPARENT_COLOR) {
        const GraphicsControlBlock control{0, false, 0, image.transparent};
        std::array<GifByteType, 4> bytes;
        EGifGCBToExtension(&control, bytes.data());
        ASSERT_EQ(EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, 4, bytes.data()), GIF_OK);
    }
    ColorMapObject* map = MapOf(image.palette);
    ASSERT_EQ(EGifPutImageDesc(gif, image.left, image.top, image.width, image.height, image.isInterlaced, map), GIF_OK);
    GifFreeMapObject(map);
    for (const int y : LineOrder(image)) {
        std::vector<GifPixelType> line(static_cast<std::size_t>(image.width));
        for (std::size_t x = 0; x < line.size(); ++x) {
            const std::size_t at = static_cast<std::size_t>(y) * line.size() + x;
            line[x] = image.indices.empty() ? static_cast<GifPixelType>(at % 4) : image.indices[at];
        }
        ASSERT_EQ(EGifPutLine(gif, line.data(), image.width), GIF_OK);
    }
}

std::string MakeGif(const GifSpec& spec) {
    std::string bytes;
    GifFileType* gif = EGifOpen(&bytes, &AppendBytes, nullptr);
    EGifSetGifVersion(gif, true);
    ColorMapObject* map = MapOf(spec.palette);
    EXPECT_EQ(EGifPutScreenDesc(gif, spec.width, spec.height, 8, 0, map), GIF_OK);
    GifFreeMapObject(map);
    for (const Image& image : spec.images) {
        PutImage(gif, image);
    }
    EXPECT_EQ(EGifCloseFile(gif, nullptr), GIF_OK);
    return bytes;
}

std::unique_ptr<Decoder> OpenedGif(const GifSpec& spec) { return Opened(GifCodec(), MakeGif(spec)); }

TEST(GifReader, OneImageIsIndexedWithThePaletteOfTheFile) {
    const auto gif = OpenedGif({});
    EXPECT_EQ(gif->Info().format, PixelFormat::Indexed8);
    EXPECT_EQ(gif->Info().palette, (Palette{Red, Green, Blue, White}));
    EXPECT_EQ(ColorsOf(*gif), (Palette{Red, Green, Blue, White, Red, Green, Blue, White, Red, Green, Blue, White}));
}

TEST(GifReader, FileHasNoResolution) {
    const auto gif = OpenedGif({});
    EXPECT_EQ(gif->Info().resolution.horizontal, 0);
    EXPECT_EQ(gif->Info().resolution.vertical, 0);
}

TEST(GifReader, LocalPaletteWinsOverTheGlobalOne) {
    const auto gif = OpenedGif({.images = {{.palette = {Blue, Red}, .transparent = NO_TRANSPARENT_COLOR}}});
    EXPECT_EQ(gif->Info().palette, (Palette{Blue, Red}));
}

TEST(GifReader, MissingPaletteReadsAsGrey) {
    std::string bytes = MakeGif({});
    bytes[10] = static_cast<char>(bytes[10] & 0x7F);
    bytes.erase(13, 4 * 3);
    auto gif = OpenBytes(GifCodec(), bytes);
    ASSERT_TRUE(gif.Ok());
    EXPECT_EQ((*gif)->Info().palette, GreyPalette(256));
    EXPECT_EQ(ColorsOf(**gif)[3], 0xFF030303);
}

TEST(GifReader, TransparentEntryKeepsItsColorWithAlphaZero) {
    const auto gif = OpenedGif({.images = {{.transparent = 2}}});
    EXPECT_EQ(gif->Info().palette, (Palette{Red, Green, 0x000000FF, White}));
}

TEST(GifReader, TransparentIndexBeyondThePaletteLengthensIt) {
    const auto gif = OpenedGif({.images = {{.transparent = 5}}});
    EXPECT_EQ(gif->Info().palette, (Palette{Red, Green, Blue, White, Black, 0x00000000}));
}

TEST(GifReader, SeveralImagesAreShownAsTheFirstInTrueColor) {
    const auto gif = OpenedGif({.images = {{.transparent = 1}, {.palette = {White, White}}}});
    EXPECT_EQ(gif->Info().format, PixelFormat::Argb32);
    EXPECT_TRUE(gif->Info().palette.empty());
    EXPECT_EQ(ColorsOf(*gif)[0], Red);
    EXPECT_EQ(ColorsOf(*gif)[1], 0x0000FF00u);
}

TEST(GifReader, TransparencyOfALaterImageDoesNotTouchTheFirst) {
    const auto gif = OpenedGif({.images = {{}, {.transparent = 0}}});
    EXPECT_EQ(ColorsOf(*gif)[0], Red);
}

TEST(GifReader, SecondImageCountsThoughItsPixelsAreMissing) {
    const std::string one = MakeGif({});
    const std::string two = MakeGif({.images = {{}, {}}});
    const auto gif = OpenBytes(GifCodec(), two.substr(0, one.size() - 1 + 10));
    ASSERT_TRUE(gif.Ok());
    EXPECT_EQ((*gif)->Info().format, PixelFormat::Argb32);
    EXPECT_EQ(ReadAllRows(**gif), Status::Ok);
}

TEST(GifReader, LastControlBeforeTheImageCounts) {
    const auto control = [](char flags, char index) { return std::string{'!', '\xF9', 4, flags, 0, 0, index, 0}; };
    const auto paletteWith = [](const std::string& controls) {
        std::string bytes = MakeGif({});
        bytes.insert(13 + 4 * 3, controls);
        return OpenBytes(GifCodec(), bytes).Ok() ? (*OpenBytes(GifCodec(), bytes))->Info().palette : Palette{};
    };
    EXPECT_EQ(paletteWith(control(1, 2)), (Palette{Red, Green, 0x000000FF, White}));
    EXPECT_EQ(paletteWith(control(1, 2) + control(1, 0)), (Palette{0x00FF0000, Green, Blue, White}));
    EXPECT_EQ(paletteWith(control(1, 2) + control(0, 2)), (Palette{Red, Green, Blue, White}));
}

TEST(GifReader, SmallerImageShowsTheTransparentEntryAroundIt) {
    const auto gif = OpenedGif({.images = {{.left = 1, .top = 1, .width = 2, .height = 1, .transparent = 3}}});
    const Color clear = 0x00FFFFFF;
    EXPECT_EQ(gif->Info().palette.size(), 4u);
    EXPECT_EQ(ColorsOf(*gif),
              (Palette{clear, clear, clear, clear, clear, Red, Green, clear, clear, clear, clear, clear}));
}

TEST(GifReader, SmallerImageWithoutTransparencyGetsAnEntryMore) {
    const auto gif = OpenedGif({.images = {{.left = 2, .top = 0, .width = 2, .height = 3}}});
    EXPECT_EQ(gif->Info().format, PixelFormat::Indexed8);
    EXPECT_EQ(gif->Info().palette, (Palette{Red, Green, Blue, White, 0x00000000}));
    EXPECT_EQ(ColorsOf(*gif), (Palette{0, 0, Red, Green, 0, 0, Blue, White, 0, 0, Red, Green}));
}

TEST(GifReader, SmallerImageWithAFullPaletteIsTrueColor) {
    const auto gif = OpenedGif({.palette = GreyPalette(256), .images = {{.width = 1, .height = 1, .indices = {200}}}});
    EXPECT_EQ(gif->Info().format, PixelFormat::Argb32);
    EXPECT_EQ(ColorsOf(*gif)[0], 0xFFC8C8C8);
    EXPECT_EQ(ColorsOf(*gif)[1], 0u);
}

TEST(GifReader, ImageBeyondTheScreenIsClipped) {
    const auto gif = OpenedGif({.width = 3, .height = 2, .images = {{.left = 1, .top = 1, .width = 4, .height = 3}}});
    EXPECT_EQ(ColorsOf(*gif), (Palette{0, 0, 0, 0, Red, Green}));
}

TEST(GifReader, ImageOutsideTheScreenIsNotSeen) {
    const auto gif = OpenedGif({.width = 2, .height = 1, .images = {{.left = 5, .top = 0}}});
    EXPECT_EQ(ColorsOf(*gif), (Palette{0, 0}));
}

TEST(GifReader, ScreenWithoutSizeTakesTheImages) {
    const auto gif = OpenedGif({.width = 0, .height = 0});
    EXPECT_EQ(gif->Info().width, 4u);
    EXPECT_EQ(gif->Info().height, 3u);
    EXPECT_EQ(ColorsOf(*gif)[1], Green);
}

// Some bytes must not cost an hour: a screen may be large, but not around next to nothing.
TEST(GifReader, HugeScreenAroundASmallImageIsRefused) {
    std::string bytes = MakeGif({.width = 65000, .height = 65000});
    EXPECT_EQ(OpenBytes(GifCodec(), bytes).GetStatus(), Status::InvalidParameter);
    bytes = MakeGif({.width = 9000, .height = 9000});
    EXPECT_EQ(OpenBytes(GifCodec(), bytes).GetStatus(), Status::InvalidParameter);
    bytes = MakeGif({.width = 8000, .height = 8000});
    EXPECT_TRUE(OpenBytes(GifCodec(), bytes).Ok());
}

// The file with another size in the descriptor of its first image, which stands behind a table of four colours.
std::string WithImageSize(std::string bytes, unsigned width, unsigned height) {
    constexpr std::size_t SizeAt = 13 + 4 * 3 + 5;
    const auto low = [](unsigned number) { return static_cast<char>(number & 0xFF); };
    return bytes.replace(SizeAt, 4, {low(width), low(width >> 8), low(height), low(height >> 8)});
}

TEST(GifReader, ScreenMayBeFourTimesAsLargeAsItsImageOr64Megapixels) {
    const auto statusOf = [](int width, int height, unsigned imageWidth, unsigned imageHeight) {
        const std::string bytes = MakeGif({.width = width, .height = height});
        return OpenBytes(GifCodec(), WithImageSize(bytes, imageWidth, imageHeight)).GetStatus();
    };
    EXPECT_EQ(statusOf(8192, 8192, 4, 3), Status::Ok);
    EXPECT_EQ(statusOf(8193, 8192, 4, 3), Status::InvalidParameter);
    EXPECT_EQ(statusOf(10000, 10000, 5000, 5000), Status::Ok);
    EXPECT_EQ(statusOf(10001, 10000, 5000, 5000), Status::InvalidParameter);
    EXPECT_EQ(statusOf(65535, 1, 4, 1), Status::Ok);
}

TEST(GifReader, ImageOfOneSideIsRefused) {
    for (const auto& [width, height] : {std::pair(0u, 3u), std::pair(4u, 0u)}) {
        EXPECT_EQ(OpenBytes(GifCodec(), WithImageSize(MakeGif({}), width, height)).GetStatus(), UndecodableContent);
    }
}

TEST(GifReader, InterlacedLinesComeInOrder) {
    for (int height = 1; height <= 20; ++height) {
        Image image{.width = 1, .height = height, .isInterlaced = true};
        Palette expected;
        const Palette greys = GreyPalette(256);
        for (int y = 0; y < height; ++y) {
            image.indices.push_back(static_cast<GifPixelType>(y * 3));
            expected.push_back(greys[static_cast<std::size_t>(y) * 3]);
        }
        const auto gif = OpenedGif({.width = 1, .height = height, .palette = greys, .images = {image}});
        EXPECT_EQ(ColorsOf(*gif), expected) << height;
    }
}

TEST(GifReader, TwoReadersOfOneFileDoNotDisturbEachOther) {
    for (const bool isInterlaced : {false, true}) {
        const auto gif =
            OpenedGif({.images = {{.indices = {0, 1, 2, 3, 1, 1, 2, 2, 3, 3, 0, 0}, .isInterlaced = isInterlaced}}});
        auto first = std::move(*gif->OpenRows());
        auto second = std::move(*gif->OpenRows());
        std::array<std::uint8_t, 4> a;
        std::array<std::uint8_t, 4> b;
        ASSERT_EQ(first->ReadRow(a.data()), Status::Ok);
        ASSERT_EQ(first->ReadRow(a.data()), Status::Ok);
        ASSERT_EQ(second->ReadRow(b.data()), Status::Ok);
        EXPECT_EQ(b, (std::array<std::uint8_t, 4>{0, 1, 2, 3}));
        ASSERT_EQ(first->ReadRow(a.data()), Status::Ok);
        EXPECT_EQ(a, (std::array<std::uint8_t, 4>{3, 3, 0, 0}));
        ASSERT_EQ(second->ReadRow(b.data()), Status::Ok);
        EXPECT_EQ(b, (std::array<std::uint8_t, 4>{1, 1, 2, 2}));
    }
}

TEST(GifReader, ReaderOutlivesItsDecoder) {
    auto gif = OpenedGif({});
    auto rows = std::move(*gif->OpenRows());
    gif.reset();
    std::array<std::uint8_t, 4> row;
    EXPECT_EQ(rows->ReadRow(row.data()), Status::Ok);
}

TEST(GifReader, FileWithoutAnImageIsRefused) {
    EXPECT_EQ(OpenBytes(GifCodec(), MakeGif({.images = {}})).GetStatus(), UndecodableContent);
}

TEST(GifReader, EmptyImageIsRefused) {
    EXPECT_EQ(OpenBytes(GifCodec(), MakeGif({.images = {{.width = 0, .height = 0}}})).GetStatus(), UndecodableContent);
}

// A GIF whose codes are a byte each, so that every pixel has a byte of its own: a clear code, 12 pixels and the end
// code in blocks of these lengths, then the end of data and of the file.
std::string GifOfBytes(const std::vector<std::size_t>& blockLengths) {
    const std::string whole = MakeGif({});
    std::string bytes = whole.substr(0, whole.find(',') + 10) + '\7';
    const std::string codes("\x80\0\1\2\3\0\1\2\3\0\1\2\3\x81", 14);
    std::size_t at = 0;
    for (const std::size_t length : blockLengths) {
        bytes += static_cast<char>(length) + codes.substr(at, length);
        at += length;
    }
    EXPECT_EQ(at, codes.size());
    return bytes + std::string("\0;", 2);
}

struct CutGif {
    std::vector<std::size_t> blockLengths;
    std::size_t dispensable; // bytes behind the last pixel
};

TEST(GifReader, FileMayEndAnywhereBehindItsLastPixel) {
    const CutGif cuts[] = {{{14}, 3}, {{13, 1}, 4}, {{12, 2}, 3}, {std::vector<std::size_t>(14, 1), 4}};
    for (const auto& [blockLengths, dispensable] : cuts) {
        const std::string whole = GifOfBytes(blockLengths);
        const std::vector<Color> colors = ColorsOf(GifCodec(), whole);
        ASSERT_EQ(colors.size(), 12u);
        EXPECT_EQ(colors[11], White);
        for (std::size_t missing = 0; missing <= dispensable; ++missing) {
            EXPECT_EQ(ColorsOf(GifCodec(), whole.substr(0, whole.size() - missing)), colors) << missing;
        }
        for (std::size_t size = 0; size < whole.size() - dispensable; ++size) {
            EXPECT_EQ(ReadAllRows(GifCodec(), whole.substr(0, size)), UndecodableContent) << size;
        }
    }
}

TEST(GifReader, BlockThatIsShorterThanItSaysIsTakenForTheLast) {
    std::string bytes = GifOfBytes({14});
    bytes.resize(bytes.size() - 2);
    bytes[bytes.find(',') + 11] = '\xFF';
    EXPECT_EQ(ReadAllRows(GifCodec(), bytes), Status::Ok);
    EXPECT_EQ(ReadAllRows(GifCodec(), bytes.substr(0, bytes.size() - 2)), UndecodableContent);
}

TEST(GifReader, FileThatEndsSoonerIsUndecodable) {
    for (const bool isInterlaced : {false, true}) {
        const std::string whole = MakeGif({.images = {{.transparent = 1, .isInterlaced = isInterlaced}}});
        for (std::size_t size = 0; size < whole.size() - 3; ++size) {
            EXPECT_EQ(ReadAllRows(GifCodec(), whole.substr(0, size)), UndecodableContent) << size;
        }
    }
}

TEST(GifReader, SpoiledBytesNeverCrash) {
    const std::string whole = MakeGif({.images = {{.transparent = 1}, {.left = 1, .isInterlaced = true}}});
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const int flip : {0x01, 0x40, 0x80, 0xFF}) {
            std::string spoiled = whole;
            spoiled[at] = static_cast<char>(spoiled[at] ^ flip);
            ReadAllRows(GifCodec(), spoiled);
        }
    }
}

TEST(GifReader, LargePromiseInASmallFileIsUndecodable) {
    std::string bytes = MakeGif({.width = 0, .height = 0, .images = {{.isInterlaced = true}}});
    const std::size_t descriptor = 13 + 4 * 3;
    ASSERT_EQ(bytes[descriptor], ',');
    bytes.replace(descriptor + 5, 4, "\xFF\x7F\xFF\x7F");
    EXPECT_EQ(ReadAllRows(GifCodec(), bytes), UndecodableContent);
}

} // namespace
