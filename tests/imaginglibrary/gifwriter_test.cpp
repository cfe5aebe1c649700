// What a GIF file keeps of pictures of every format.
#include "imaginglibrary/core/rowconverter.h"
#include "tests/support/codecs.h"
#include "tests/support/memoryfiles.h"
#include "tests/support/pictures.h"
#include "tests/support/properties.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

std::shared_ptr<Bitmap> RowOf(Palette palette, const std::vector<std::uint8_t>& indices) {
    auto bitmap = *Bitmap::Create({.width = static_cast<std::uint32_t>(indices.size()),
                                   .height = 1,
                                   .format = PixelFormat::Indexed8,
                                   .palette = std::move(palette),
                                   .resolution = {}});
    std::copy(indices.begin(), indices.end(), bitmap->Row(0));
    return bitmap;
}

// The pixels as a format with holes but no partial alpha must show them; holes compare equal whatever their colour.
std::vector<Color> WithHoles(const PixelSource& picture) {
    const std::vector<Color> colors = ColorsOf(picture);
    std::vector<Color> expected = ColorsOverWhite(picture);
    for (std::size_t i = 0; i < colors.size(); ++i) {
        if (AlphaOf(colors[i]) < 128) {
            expected[i] = 0;
        }
    }
    return expected;
}

constexpr struct {
    std::uint32_t width, height;
} GifSizes[] = {{1, 1}, {7, 5}, {17, 3}, {65, 33}, {8, 8}, {1, 40}, {300, 1}};

constexpr PixelFormat TrueColors[] = {PixelFormat::Rgb555,  PixelFormat::Rgb565, PixelFormat::Argb1555,
                                      PixelFormat::Rgb24,   PixelFormat::Rgb32,  PixelFormat::Argb32,
                                      PixelFormat::Pargb32, PixelFormat::Rgb48};

TEST(GifWriter, IndexedPicturesKeepPaletteAndPixels) {
    for (const PixelFormat format : {PixelFormat::Indexed1, PixelFormat::Indexed4, PixelFormat::Indexed8}) {
        for (const auto& size : GifSizes) {
            const auto picture = MakePicture(format, size.width, size.height);
            const auto gif = Rewritten(GifCodec(), *picture);
            EXPECT_EQ(gif->Info().palette, picture->Info().palette);
            EXPECT_EQ(ColorsOf(*gif), ColorsOf(*picture)) << size.width << "x" << size.height;
        }
    }
}

TEST(GifWriter, TrueColorPicturesOfFewColorsAreExact) {
    for (const PixelFormat format : TrueColors) {
        for (const auto& size : GifSizes) {
            if (size.width * size.height > 255) {
                continue; // may have too many colours
            }
            const auto picture = MakePicture(format, size.width, size.height);
            EXPECT_EQ(WithHoles(*Rewritten(GifCodec(), *picture)), WithHoles(*picture))
                << std::hex << static_cast<std::uint32_t>(format) << std::dec << " " << size.width << "x"
                << size.height;
        }
    }
}

TEST(GifWriter, HolesStayWhereTheyAreInAPictureOfManyColors) {
    const auto picture = MakePicture(PixelFormat::Argb32, 65, 33);
    const auto colors = ColorsOf(*picture);
    const auto written = ColorsOf(*Rewritten(GifCodec(), *picture));
    for (std::size_t i = 0; i < colors.size(); ++i) {
        EXPECT_EQ(AlphaOf(written[i]), AlphaOf(colors[i]) < 128 ? 0 : 255) << i;
    }
}

TEST(GifWriter, TableIsTheSmallestThatHoldsThePalette) {
    const Palette palette{0xFF000001, 0xFF000002, 0xFF000003, 0xFF000004, 0xFF000005};
    const auto gif = Rewritten(GifCodec(), *RowOf(palette, {0, 1, 2, 3, 4}));
    EXPECT_EQ(gif->Info().palette.size(), 8u);
    EXPECT_EQ(ColorsOf(*gif), palette);
}

TEST(GifWriter, IndexBeyondThePaletteStaysBlack) {
    const auto gif = Rewritten(GifCodec(), *RowOf({0xFFFF0000, 0xFF00FF00}, {0, 200, 1}));
    EXPECT_EQ(ColorsOf(*gif), (Palette{0xFFFF0000, 0xFF000000, 0xFF00FF00}));
}

TEST(GifWriter, IndexedPictureWithoutAnyPaletteIsBlack) {
    EXPECT_EQ(ColorsOf(*Rewritten(GifCodec(), *RowOf({}, {0, 1}))), (Palette{0xFF000000, 0xFF000000}));
}

TEST(GifWriter, TransparentEntryKeepsItsColor) {
    const Palette palette{0xFFFF0000, 0x0012F056, 0xFF0000FF, 0xFF000000};
    const auto gif = Rewritten(GifCodec(), *RowOf(palette, {0, 1, 2, 3}));
    EXPECT_EQ(gif->Info().palette, palette);
    EXPECT_EQ(ColorsOf(*gif), palette);
}

TEST(GifWriter, SeveralTransparentEntriesBecomeOne) {
    const auto gif = Rewritten(GifCodec(), *RowOf({0xFFFF0000, 0x00000011, 0x00000022, 0xFF000000}, {0, 1, 2, 3}));
    EXPECT_EQ(ColorsOf(*gif), (Palette{0xFFFF0000, 0x00000011, 0x00000011, 0xFF000000}));
}

TEST(GifWriter, HalfTransparentEntriesGoOverWhite) {
    const auto gif = Rewritten(GifCodec(), *RowOf({0xFFFF0000, 0x80000000, 0x40000000}, {0, 1, 2}));
    EXPECT_EQ(ColorsOf(*gif), (Palette{0xFFFF0000, 0xFF7F7F7F, 0x00000000}));
}

TEST(GifWriter, HolesOfOneColorComeThroughUnchanged) {
    const auto picture = MakePictureOf(3, 1, [](auto x, auto) { return x == 1 ? 0x00123456u : 0xFF00FF00u; });
    EXPECT_EQ(ColorsOf(*Rewritten(GifCodec(), *picture)), (Palette{0xFF00FF00, 0x00123456, 0xFF00FF00}));
}

TEST(GifWriter, PictureOfHolesAloneIsWritten) {
    const auto picture = MakePictureOf(5, 4, [](auto, auto) { return 0u; });
    EXPECT_EQ(ColorsOf(*Rewritten(GifCodec(), *picture)), std::vector<Color>(20, 0u));
}

TEST(GifWriter, EveryByteOfASmallFileIsAsTheFormatHasIt) {
    using namespace std::string_literals;
    MemoryOutput file;
    const auto picture = RowOf({0xFFFF0000, 0x00123456}, {0, 1});
    ASSERT_EQ(GifCodec().write(*picture, ListOf({AsciiProperty(0x9286, "hi")}), {}, file), Status::Ok);
    ASSERT_EQ(file.Commit(), Status::Ok);
    EXPECT_EQ(file.Bytes(), "GIF89a\2\0\1\0\xF0\0\0"s + "\xFF\0\0\x12\x34\x56"s // screen and table
                                + "!\xFE\2hi\0"s                                // comment
                                + "!\xF9\4\1\0\0\1\0"s                          // the transparent index
                                + ",\0\0\0\0\2\0\1\0\0"s                        // image
                                + "\2\2\x44\x0A\0;"s);                          // clear, 0, 1, end
}

TEST(GifWriter, TransparentEntriesBehindThePaletteOfAnIndexAreNone) {
    // 256 entries, of which the last is clear, and an index of every one.
    Palette palette = GreyPalette(256);
    palette[255] = 0x00ABCDEF;
    std::vector<std::uint8_t> indices(256);
    for (std::size_t i = 0; i < indices.size(); ++i) {
        indices[i] = static_cast<std::uint8_t>(i);
    }
    EXPECT_EQ(ColorsOf(*Rewritten(GifCodec(), *RowOf(palette, indices))), palette);
}

TEST(GifWriter, TableHasNoMoreEntriesThanItsPowerOfTwo) {
    for (const std::size_t entries : {1u, 2u, 3u, 4u, 5u, 16u, 17u, 128u, 129u, 256u}) {
        Palette palette = GreyPalette(256);
        palette.resize(entries);
        const std::string gif = BytesWritten(GifCodec(), *RowOf(palette, {0}));
        std::size_t length = 2;
        while (length < entries) {
            length *= 2;
        }
        EXPECT_EQ(std::size_t{2} << (gif.at(10) & 7), length) << entries;
        EXPECT_EQ(gif.at(13 + 3 * length), ',') << entries;
    }
}

TEST(GifWriter, OpaquePictureNeedsNoExtension) {
    EXPECT_EQ(BytesWritten(GifCodec(), *MakePicture(PixelFormat::Rgb24, 7, 5)).substr(0, 6), "GIF87a");
}

TEST(GifWriter, TransparentPictureIsOfTheNewerVersion) {
    EXPECT_EQ(BytesWritten(GifCodec(), *RowOf({0xFFFF0000, 0}, {0, 1})).substr(0, 6), "GIF89a");
}

// A picture whose rows end too soon.
class BreakingPicture : public PixelSource {
  public:
    explicit BreakingPicture(PixelFormat format)
        : info_{.width = 4, .height = 4, .format = format, .palette = {}, .resolution = {}} {}

    const PictureInfo& Info() const override { return info_; }
    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        return std::unique_ptr<RowReader>(std::make_unique<Rows>());
    }

  private:
    class Rows : public RowReader {
      public:
        Status ReadRow(std::uint8_t* row) override {
            row[0] = 0;
            return next_++ < 2 ? Status::Ok : Status::Win32Error;
        }

      private:
        int next_ = 0;
    };

    PictureInfo info_;
};

TEST(GifWriter, FailureOfThePictureIsGivenBack) {
    for (const PixelFormat format : {PixelFormat::Indexed8, PixelFormat::Rgb24}) {
        MemoryOutput file;
        EXPECT_EQ(GifCodec().write(BreakingPicture(format), {}, {}, file), Status::Win32Error);
    }
}

TEST(GifWriter, FailureOfTheFileIsGivenBack) {
    // Noise that hardly shrinks, in colours that a palette holds.
    const auto noise = MakePictureOf(400, 400, [](auto x, auto y) {
        const auto grey = static_cast<std::uint8_t>(((x * 2654435761u) ^ (y * 40503u * 97u)) >> 8);
        return MakeColor(grey, grey, grey);
    });
    for (const std::size_t limit : {0u, 70000u}) {
        MemoryOutput file(limit);
        EXPECT_EQ(GifCodec().write(*noise, {}, {}, file), Status::AccessDenied) << limit;
    }
}

} // namespace
