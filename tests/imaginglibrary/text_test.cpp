// Fonts and the layout of text.
#include "imaginglibrary/text/textlayout.h"

#include "imaginglibrary/operations/coverage.h"
#include "imaginglibrary/operations/fill.h"
#include "tests/support/pictures.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

// Liberation Sans, under its own name or as what stands in for Arial, is 2048 units to the em.
constexpr double Em = 2048;

std::shared_ptr<const FontFace> Face(const std::u16string& family = u"Arial", bool isBold = false,
                                     bool isItalic = false) {
    auto face = OpenFontFace(family, isBold, isItalic);
    EXPECT_TRUE(face.Ok());
    return face.Ok() ? *face : nullptr;
}

PixelRect BoxOf(std::u16string_view text, TextStyle style = {.size = 60}, Point corner = {10, 20}) {
    return BoundsOf(TextOutline(*Face(), text, style, corner, {}));
}

double AreaOf(const std::vector<Edge>& outline) {
    double area = 0;
    ForEachCoveredRow(outline, {0, 0, 500, 500}, [&](auto, auto, const std::uint8_t* coverage, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            area += coverage[i] / 255.0;
        }
    });
    return area;
}

TEST(FontFamily, InstalledOnesAreKnownInAnyLetterCase) {
    EXPECT_TRUE(HasFontFamily(u"Liberation Sans"));
    EXPECT_TRUE(HasFontFamily(u"liberation SANS"));
}

TEST(FontFamily, FontOfTheSameMeasuresCountsAsTheFamily) { EXPECT_TRUE(HasFontFamily(u"Arial")); }

TEST(FontFamily, AbsentOnesAreNotReplaced) {
    EXPECT_FALSE(HasFontFamily(u"Nonesuch"));
    EXPECT_FALSE(HasFontFamily(u""));
    EXPECT_FALSE(HasFontFamily(u"Arial2"));
}

TEST(FontFace, FontsOfOneFamilyAndStyleShareIt) {
    const auto face = Face();
    EXPECT_EQ(Face(), face);
    EXPECT_NE(Face(u"Arial", true), face);
    EXPECT_NE(Face(u"Arial", false, true), face);
    EXPECT_NE(Face(u"Liberation Serif"), face);
}

TEST(FontFace, SharedOneGoesWithItsLastFont) {
    std::weak_ptr<const FontFace> face;
    {
        const auto first = Face();
        const auto second = Face();
        face = second;
    }
    EXPECT_TRUE(face.expired());
    EXPECT_NE(Face(), nullptr) << "and is opened again";
}

TEST(FontFace, MeasuresAreThoseOfTheFont) {
    const FontMeasures measures = Face()->Measures();
    EXPECT_NEAR(measures.ascent, 1854 / Em, 1e-3);
    EXPECT_NEAR(measures.descent, 434 / Em, 1e-3);
    EXPECT_NEAR(measures.lineSpacing, 2355 / Em, 2e-3);
    EXPECT_GT(measures.underlineTop, 0);
    EXPECT_LT(measures.strikeoutTop, 0);
    EXPECT_GT(measures.underlineThickness, 0.02);
}

TEST(FontFace, AdvancesAreThoseOfTheDesign) {
    EXPECT_NEAR(Face()->GlyphOf(U'I').advance, 569 / Em, 1e-3);
    EXPECT_NEAR(Face()->GlyphOf(U'W').advance, 1933 / Em, 1e-3);
    EXPECT_TRUE(Face()->GlyphOf(U' ').outline.IsEmpty());
}

TEST(FontFace, MissingCharacterHasASign) { EXPECT_GT(Face()->GlyphOf(0x10FFFD).advance, 0); }

TEST(FontFace, BoldCoversMore) {
    const TextStyle style{.size = 60};
    EXPECT_GT(AreaOf(TextOutline(*Face(u"Arial", true), u"Hill", style, {10, 10}, {})),
              1.25 * AreaOf(TextOutline(*Face(), u"Hill", style, {10, 10}, {})));
}

TEST(FontFace, ItalicLeans) {
    const auto leaning = BoundsOf(TextOutline(*Face(u"Arial", false, true), u"l", {.size = 60}, {10, 20}, {}));
    EXPECT_GT(leaning.Width(), BoxOf(u"l").Width() + 5);
}

TEST(Text, StartsASixthOfAnEmFromTheCorner) {
    // The stem of I begins 191 of 2048 units behind the pen.
    const PixelRect box = BoxOf(u"I");
    EXPECT_NEAR(static_cast<double>(box.left), 10 + 60 / 6.0 + 60 * 191 / Em, 1);
}

TEST(Text, BaselineLiesOneAscentBelowTheCorner) {
    const PixelRect box = BoxOf(u"H");
    EXPECT_NEAR(static_cast<double>(box.bottom), 20 + 60 * 0.905, 1);
    EXPECT_NEAR(static_cast<double>(box.Height()), 60 * 1409 / Em, 1.5);
}

TEST(Text, HeightFollowsTheSizeAlone) {
    EXPECT_NEAR(static_cast<double>(BoxOf(u"H", {.size = 10}).Height()), 7, 1);
    EXPECT_NEAR(static_cast<double>(BoxOf(u"H", {.size = 200}).Height()), 137.6, 1.5);
}

TEST(Text, LinesFollowInTheFontsSpacing) {
    const std::int64_t one = BoxOf(u"H").bottom;
    EXPECT_NEAR(static_cast<double>(BoxOf(u"H\nH").bottom - one), 60 * 2355 / Em, 1);
    EXPECT_EQ(BoxOf(u"H\r\nH").bottom, BoxOf(u"H\nH").bottom);
    EXPECT_EQ(BoxOf(u"H\rH").bottom, one);
}

TEST(Text, EveryLineStartsAtTheSamePlace) { EXPECT_EQ(BoxOf(u"H\nH").left, BoxOf(u"H").left); }

// A and V are the pair that kerning would bring closest together: by 152 units.
TEST(Text, CharactersFollowEachOtherByTheirAdvancesWithoutKerning) {
    EXPECT_NEAR(static_cast<double>(BoxOf(u"AV").right - BoxOf(u"V").right), 60 * 1366 / Em, 1);
}

TEST(Text, TabGoesOnToTheNextStop) {
    const double step = 60 * 8 * 569 / Em;
    EXPECT_NEAR(static_cast<double>(BoxOf(u"\tH").left - BoxOf(u"H").left), step, 1);
    EXPECT_NEAR(static_cast<double>(BoxOf(u"ii\tH").right - BoxOf(u"\tH").right), 0, 1);
    EXPECT_NEAR(static_cast<double>(BoxOf(u"\t\tH").left - BoxOf(u"H").left), 2 * step, 1);
}

TEST(Text, BlanksAreAsWideAsTheyAre) {
    EXPECT_NEAR(static_cast<double>(BoxOf(u"   H").left - BoxOf(u"H").left), 3 * 60 * 569 / Em, 1);
}

TEST(Text, UnderlineRunsBelowTheBaselineAndStrikeoutThroughTheMiddle) {
    const PixelRect plain = BoxOf(u"HH");
    const PixelRect underlined = BoxOf(u"HH", {.size = 60, .isUnderlined = true});
    EXPECT_GT(underlined.bottom, plain.bottom + 2);
    EXPECT_LT(underlined.left, plain.left);
    const auto struck = TextOutline(*Face(), u"H H", {.size = 60, .isStruckOut = true}, {10, 20}, {});
    EXPECT_EQ(BoundsOf(struck).bottom, plain.bottom);
    EXPECT_GT(AreaOf(struck), AreaOf(TextOutline(*Face(), u"H H", {.size = 60}, {10, 20}, {})) + 20);
}

TEST(Text, NothingIsDrawnForNothing) {
    EXPECT_TRUE(TextOutline(*Face(), u"", {.size = 60, .isUnderlined = true}, {}, {}).empty());
    EXPECT_TRUE(TextOutline(*Face(), u"\r\n\n", {.size = 60, .isUnderlined = true}, {}, {}).empty());
}

TEST(Text, HalvesOfPairsAreOneSignEach) {
    const std::u16string half{char16_t(0xD800), u'H'};
    EXPECT_GT(BoxOf(half).Width(), BoxOf(u"H").Width());
}

TEST(Text, IsSmooth) {
    auto bitmap = *Bitmap::Create({.width = 200, .height = 100, .format = PixelFormat::Argb32});
    Canvas canvas{*bitmap};
    Fill(canvas, TextOutline(*Face(), u"So", {.size = 60}, {10, 10}, {}), MakeColor(0, 0, 0), Edges::Smooth);
    int partial = 0;
    for (const Color color : ColorsOf(*bitmap)) {
        partial += AlphaOf(color) > 0 && AlphaOf(color) < 255;
    }
    EXPECT_GT(partial, 100);
}

} // namespace
