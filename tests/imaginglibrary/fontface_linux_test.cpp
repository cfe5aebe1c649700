// Fonts made for the purpose: what no installed family may be counted on to have, or to lack.
#include "imaginglibrary/text/textlayout.h"
#include "tests/support/environment.h"
#include "tests/support/fontmaker.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>

namespace {

using namespace imaginglibrary;
using namespace tests;

// The corners of a square, which runs clockwise as the characters of such fonts do.
std::vector<FontPoint> Square(int left, int bottom, int side) {
    return {{left, bottom}, {left, bottom + side}, {left + side, bottom + side}, {left + side, bottom}};
}

std::vector<FontPoint> Reversed(std::vector<FontPoint> contour) {
    std::reverse(contour.begin(), contour.end());
    return contour;
}

constexpr char32_t OnlyInBare = 0xF4567;
constexpr char32_t OnlyInRuled = 0xF4568;
constexpr char32_t Nowhere = 0xF4569;

const FontSpec Bare{.family = "Lumbrix Bare",
                    .glyphs = {{0, 300, Square(0, 0, 200)},
                               {U' ', 125},
                               {U'A', 600, Square(100, 0, 500)},
                               {U'B', 650, Reversed(Square(100, 0, 500))},
                               {U'C', 700, {{0, 0}, {0, 400, false}, {400, 400}, {400, 0}}},
                               {0xD7FF, 110},
                               {0xE000, 130},
                               {0xFFFD, 170},
                               {0x10000, 190},
                               {OnlyInBare, 800, Square(50, 50, 300)},
                               {0x10FFFF, 230}}};

const FontSpec Ruled{
    .family = "Lumbrix Ruled",
    .glyphs = {{0, 300, Square(0, 0, 200)}, {U'A', 600, Square(100, 0, 500)}, {OnlyInRuled, 900, Square(0, 0, 100)}},
    .unitsPerEm = 1000,
    .hasWindowsMeasures = true};

// The system's rules call plain fonts bold or slanted where they ask for that to be made; for the first family they
// are taken back.
const std::string Rules = R"(
  <match target="font">
    <test name="family"><string>Lumbrix Bare</string></test>
    <edit name="weight" mode="assign"><const>regular</const></edit>
    <edit name="slant" mode="assign"><const>roman</const></edit>
    <edit name="embolden" mode="delete_all"/>
    <edit name="matrix" mode="delete_all"/>
  </match>
  <match target="font">
    <test name="family"><string>Lumbrix Ruled</string></test>
    <test target="pattern" name="weight" compare="more_eq"><const>bold</const></test>
    <edit name="weight" mode="assign"><const>bold</const></edit>
    <edit name="embolden" mode="assign"><bool>true</bool></edit>
  </match>
  <match target="font">
    <test name="family"><string>Lumbrix Ruled</string></test>
    <test target="pattern" name="slant" compare="not_eq"><const>roman</const></test>
    <edit name="slant" mode="assign"><const>oblique</const></edit>
    <edit name="matrix" mode="assign">
      <matrix><double>1</double><double>0.2</double><double>0</double><double>1</double></matrix>
    </edit>
  </match>
)";

// Adds the two families to those of the system, before anybody has looked for one.
class FontsForTests : public testing::Environment {
  public:
    void SetUp() override {
        folder_.emplace();
        WriteBytes(*folder_ / "bare.ttf", MakeFont(Bare));
        WriteBytes(*folder_ / "ruled.ttf", MakeFont(Ruled));
        const std::string configuration = (*folder_ / "fonts.conf").string();
        WriteBytes(configuration, "<fontconfig><include>/etc/fonts/fonts.conf</include><dir>" +
                                      folder_->Path().string() + "</dir><cachedir>" + folder_->Path().string() +
                                      "</cachedir>" + Rules + "</fontconfig>");
        variable_.emplace("FONTCONFIG_FILE", configuration.c_str());
    }

    void TearDown() override {
        variable_.reset();
        folder_.reset();
    }

  private:
    std::optional<TemporaryFolder> folder_;
    std::optional<EnvironmentVariable> variable_;
};

[[maybe_unused]] const testing::Environment* const fontsForTests =
    testing::AddGlobalTestEnvironment(new FontsForTests); // GoogleTest deletes it

std::shared_ptr<const FontFace> Face(const std::u16string& family, bool isBold = false, bool isItalic = false) {
    auto face = OpenFontFace(family, isBold, isItalic);
    EXPECT_TRUE(face.Ok());
    return face.Ok() ? *face : nullptr;
}

struct Box {
    double left = std::numeric_limits<double>::max();
    double top = std::numeric_limits<double>::max();
    double right = std::numeric_limits<double>::lowest();
    double bottom = std::numeric_limits<double>::lowest();
    double area = 0; // negative where it runs the other way round
};

Box BoxOf(const std::vector<Edge>& edges) {
    Box box;
    for (const Edge& edge : edges) {
        for (const Point& point : {edge.from, edge.to}) {
            box.left = std::min(box.left, point.x);
            box.right = std::max(box.right, point.x);
            box.top = std::min(box.top, point.y);
            box.bottom = std::max(box.bottom, point.y);
        }
        box.area += (edge.from.x * edge.to.y - edge.to.x * edge.from.y) / 2;
    }
    return box;
}

Box BoxOf(const Glyph& glyph) {
    std::vector<Edge> edges;
    glyph.outline.AppendEdges(Affine(), edges);
    return BoxOf(edges);
}

void ExpectBox(const Box& box, double left, double top, double right, double bottom) {
    constexpr double Near = 1e-6;
    EXPECT_NEAR(box.left, left, Near);
    EXPECT_NEAR(box.top, top, Near);
    EXPECT_NEAR(box.right, right, Near);
    EXPECT_NEAR(box.bottom, bottom, Near);
}

TEST(FontFaceOnLinux, MeasuresOfWindowsCountWhereTheFontHasThem) {
    const FontMeasures measures = Face(u"Lumbrix Ruled")->Measures();
    EXPECT_NEAR(measures.ascent, 0.9, 1e-9);
    EXPECT_NEAR(measures.descent, 0.3, 1e-9);
    EXPECT_NEAR(measures.lineSpacing, 1.2, 1e-9) << "not the font's own 1.05";
    EXPECT_NEAR(measures.underlineTop, 0.1, 1e-9);
    EXPECT_NEAR(measures.underlineThickness, 0.06, 1e-9);
    EXPECT_NEAR(measures.strikeoutTop, -0.31, 1e-9);
    EXPECT_NEAR(measures.strikeoutThickness, 0.044, 1e-9);
}

TEST(FontFaceOnLinux, OthersAreMeasuredByTheirOwnHeader) {
    const FontMeasures measures = Face(u"Lumbrix Bare")->Measures();
    EXPECT_NEAR(measures.ascent, 0.7, 1e-9);
    EXPECT_NEAR(measures.descent, 0.25, 1e-9);
    EXPECT_NEAR(measures.lineSpacing, 1.05, 1e-9);
    EXPECT_NEAR(measures.underlineTop, 0.1, 1e-9);
    EXPECT_NEAR(measures.underlineThickness, 0.06, 1e-9);
    EXPECT_NEAR(measures.strikeoutTop, -0.28, 1e-9) << "a line about a quarter of the em, as thick as the underline";
    EXPECT_NEAR(measures.strikeoutThickness, 0.06, 1e-9);
}

TEST(FontFaceOnLinux, OutlineGrowsDownwardsAndRunsOneWayRound) {
    const Box clockwise = BoxOf(Face(u"Lumbrix Bare")->GlyphOf(U'A'));
    ExpectBox(clockwise, 0.1, -0.5, 0.6, 0);
    EXPECT_NEAR(clockwise.area, 0.25, 1e-6);
    const Box drawnTheOtherWay = BoxOf(Face(u"Lumbrix Bare")->GlyphOf(U'B'));
    ExpectBox(drawnTheOtherWay, 0.1, -0.5, 0.6, 0);
    EXPECT_NEAR(drawnTheOtherWay.area, 0.25, 1e-6);
}

// A square without what is behind the curve about one corner, a sixth of it.
TEST(FontFaceOnLinux, CurvesAreCurves) {
    const Box box = BoxOf(TextOutline(*Face(u"Lumbrix Bare"), u"C", {.size = 600}, {}, Affine()));
    ExpectBox(box, 100, 420 - 240, 340, 420);
    EXPECT_NEAR(box.area, 240 * 240 * 5 / 6.0, 10);
}

TEST(FontFaceOnLinux, BoldIsMadeWhereTheFamilyHasNone) {
    for (const auto* const family : {u"Lumbrix Bare", u"Lumbrix Ruled"}) {
        const Glyph glyph = Face(family, true)->GlyphOf(U'A');
        EXPECT_NEAR(glyph.advance, 0.64, 1e-9);
        ExpectBox(BoxOf(glyph), 0.1, -0.54, 0.64, 0);
        ExpectBox(BoxOf(Face(family)->GlyphOf(U'A')), 0.1, -0.5, 0.6, 0);
    }
}

TEST(FontFaceOnLinux, SlantIsMadeWhereTheFamilyHasNone) {
    for (const auto* const family : {u"Lumbrix Bare", u"Lumbrix Ruled"}) {
        const Glyph glyph = Face(family, false, true)->GlyphOf(U'A');
        EXPECT_NEAR(glyph.advance, 0.6, 1e-9);
        ExpectBox(BoxOf(glyph), 0.1, -0.5, 0.7, 0);
        EXPECT_NEAR(BoxOf(glyph).area, 0.25, 1e-6);
    }
}

// Liberation Sans has 2048 units to the em: its bold H is as wide as the plain one, and its slanted I goes from 81 to
// 546.
TEST(FontFaceOnLinux, BoldAndSlantOfTheFamilyAreTakenAsTheyAre) {
    EXPECT_NEAR(Face(u"Liberation Sans", true)->GlyphOf(U'H').advance, 1479 / 2048.0, 1e-9);
    const Box box = BoxOf(Face(u"Liberation Sans", false, true)->GlyphOf(U'I'));
    EXPECT_NEAR(box.left, 81 / 2048.0, 1e-9);
    EXPECT_NEAR(box.right, 546 / 2048.0, 1e-9);
}

TEST(FontFaceOnLinux, CharacterThatAFontLacksComesFromAnother) {
    const auto face = Face(u"Liberation Sans");
    for (int i = 0; i < 2; ++i) {
        EXPECT_NEAR(face->GlyphOf(OnlyInBare).advance, 0.8, 1e-9);
        EXPECT_NEAR(face->GlyphOf(OnlyInRuled).advance, 0.9, 1e-9);
    }
    ExpectBox(BoxOf(face->GlyphOf(OnlyInBare)), 0.05, -0.35, 0.35, -0.05);
    ExpectBox(BoxOf(face->GlyphOf(OnlyInRuled)), 0, -0.1, 0.1, 0);
}

TEST(FontFaceOnLinux, StandInIsAsBoldAndAsSlanted) {
    EXPECT_NEAR(Face(u"Liberation Sans", true)->GlyphOf(OnlyInBare).advance, 0.84, 1e-9);
    EXPECT_NEAR(BoxOf(Face(u"Liberation Sans", false, true)->GlyphOf(OnlyInBare)).right, 0.35 + 0.2 * 0.35, 1e-6);
}

TEST(FontFaceOnLinux, CharacterThatNoFontHasIsTheFontsSign) {
    const Glyph glyph = Face(u"Lumbrix Bare")->GlyphOf(Nowhere);
    EXPECT_NEAR(glyph.advance, 0.3, 1e-9);
    ExpectBox(BoxOf(glyph), 0, -0.2, 0.2, 0);
}

// The line below blanks, which is all that is seen of them. Without a style there is none.
Box LineBelow(std::u16string_view text) {
    return BoxOf(TextOutline(*Face(u"Lumbrix Bare"), text, {.size = 60, .isUnderlined = true}, {10, 20}, Affine()));
}

constexpr double FirstPen = 10 + 60 / 6.0;

TEST(TextOnLinux, UnderlineLiesWhereTheFontWantsItFromTheFirstPenToTheLast) {
    ExpectBox(LineBelow(u"  "), FirstPen, 20 + 60 * 0.8, FirstPen + 60 * 0.25, 20 + 60 * 0.86);
}

TEST(TextOnLinux, StrikeoutLiesWhereTheFontWantsIt) {
    ExpectBox(BoxOf(TextOutline(*Face(u"Lumbrix Bare"), u"  ", {.size = 60, .isStruckOut = true}, {10, 20}, Affine())),
              FirstPen, 20 + 60 * 0.42, FirstPen + 60 * 0.25, 20 + 60 * 0.48);
    EXPECT_TRUE(TextOutline(*Face(u"Lumbrix Bare"), u"  ", {.size = 60}, {10, 20}, Affine()).empty());
}

TEST(TextOnLinux, LinesRunTheWayThatGlyphsRun) { EXPECT_GT(LineBelow(u"  ").area, 0); }

TEST(TextOnLinux, EachLineHasItsOwnUnderline) {
    const Box box = LineBelow(u" \n  ");
    ExpectBox(box, FirstPen, 20 + 60 * 0.8, FirstPen + 60 * 0.25, 20 + 60 * (0.86 + 1.05));
    EXPECT_NEAR(box.area, 60 * 0.06 * 60 * 0.375, 1e-6);
}

TEST(TextOnLinux, TabBehindAFullStopGoesToTheNext) {
    EXPECT_NEAR(LineBelow(u"        \t").right, FirstPen + 60 * 2, 1e-6) << "eight blanks are one stop";
    EXPECT_NEAR(LineBelow(u"       \t").right, FirstPen + 60 * 1, 1e-6);
    EXPECT_NEAR(LineBelow(u"         \t").right, FirstPen + 60 * 2, 1e-6);
}

TEST(TextOnLinux, UnitsOfTextMakeCharacters) {
    const auto advance = [](std::u16string text) { return (LineBelow(text + u" ").right - FirstPen) / 60 - 0.125; };
    const auto units = [](std::initializer_list<unsigned> all) { return std::u16string(all.begin(), all.end()); };
    EXPECT_NEAR(advance(units({0xD7FF})), 0.11, 1e-6);
    EXPECT_NEAR(advance(units({0xE000})), 0.13, 1e-6);
    EXPECT_NEAR(advance(units({0xD800, 0xDC00})), 0.19, 1e-6);
    EXPECT_NEAR(advance(units({0xDBFF, 0xDFFF})), 0.23, 1e-6);
    for (const unsigned lone : {0xD800u, 0xDBFFu, 0xDC00u, 0xDFFFu}) {
        EXPECT_NEAR(advance(units({lone})), 0.17, 1e-6) << lone;
    }
    EXPECT_NEAR(advance(units({0xD800, 0xDBFF})), 0.34, 1e-6);
    EXPECT_NEAR(advance(units({0xDC00, 0xD800, 0xDC00})), 0.36, 1e-6);
    EXPECT_NEAR(advance(units({0xD800, 0xE000})), 0.30, 1e-6);
}

} // namespace
