// The resolution of files that tell it in EXIF alone.
#include "tests/support/codecs.h"
#include "tests/support/exifmaker.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/pngfiles.h"
#include "tests/support/properties.h"

namespace {

using namespace imaginglibrary;
using namespace tests;

using namespace std::string_literals;

std::string Fraction(unsigned above, unsigned below) { return tests::NumbersBytes(false, {above, below}, 4); }

struct ExifDots {
    std::string horizontal = Fraction(300, 1);
    std::string vertical = Fraction(301, 2);
    int unit = 2; // negative for none
};

std::string ExifWith(const ExifDots& dots) {
    std::vector<ExifField> main = {{0x011A, 5, 1, dots.horizontal}, {0x011B, 5, 1, dots.vertical}};
    if (dots.unit >= 0) {
        main.push_back({0x0128, 3, 1, tests::NumberBytes(false, static_cast<unsigned>(dots.unit), 2)});
    }
    return MakeExif({.main = main});
}

Resolution JpegResolution(const ExifDots& dots, const JpegFile& file = {}) {
    return Opened(JpegCodec(), MakeJpeg(file).insert(2, ExifMarker(ExifWith(dots))))->Info().resolution;
}

void ExpectResolution(const Resolution& resolution, double horizontal, double vertical) {
    EXPECT_DOUBLE_EQ(resolution.horizontal, horizontal);
    EXPECT_DOUBLE_EQ(resolution.vertical, vertical);
}

TEST(ExifResolution, CountsWhereJfifSaysNothing) {
    ExpectResolution(JpegResolution({}), 300, 150.5);
    ExpectResolution(JpegResolution({.unit = -1}), 300, 150.5);
    ExpectResolution(JpegResolution({.unit = 3}), 762, 382.27);
}

TEST(ExifResolution, GivesWayToJfif) {
    ExpectResolution(JpegResolution({}, {.densityUnit = 1, .horizontalDensity = 72, .verticalDensity = 71}), 72, 71);
}

TEST(ExifResolution, OfNoUnitOrNoSenseIsNone) {
    ExpectResolution(JpegResolution({.unit = 1}), 0, 0);
    ExpectResolution(JpegResolution({.horizontal = Fraction(300, 0), .vertical = Fraction(0, 1)}), 0, 0);
    ExpectResolution(JpegResolution({.horizontal = Fraction(1000000, 1), .vertical = Fraction(1000001, 1)}), 1e6, 0);
}

TEST(ExifResolution, OfPngCountsWithoutDotsOfItsOwn) {
    const std::string chunk = PngChunk("eXIf", ExifWith({}));
    std::string png = MakePng({}, [](auto, auto, auto) { return 9u; });
    png.insert(FindChunk(png, "IDAT"), chunk);
    ExpectResolution(Opened(PngCodec(), png)->Info().resolution, 300, 150.5);
    png.insert(FindChunk(png, "IDAT"), PngChunk("pHYs", "\0\0\x27\x10\0\0\x27\x10\1"s));
    ExpectResolution(Opened(PngCodec(), png)->Info().resolution, 254, 254);
}

TEST(ExifResolution, IsWrittenInEveryFormat) {
    const auto source =
        Opened(JpegCodec(), MakeJpeg({}).insert(2, ExifMarker(ExifWith({.vertical = Fraction(300, 1)}))));
    for (const Codec* codec : {&JpegCodec(), &PngCodec(), &BmpCodec(), &TiffCodec()}) {
        EXPECT_NEAR(Rewritten(*codec, *source)->Info().resolution.horizontal, 300, 0.02);
    }
}

} // namespace
