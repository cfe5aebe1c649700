// The font for text on the canvas, as the system takes it.
#include "draw/textentry.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(SlantedFontDescription, HasTheHeightOfThePointsOnThatScreen) {
    EXPECT_EQ(DescriptionOf({.points = 10}, 96).lfHeight, -13);
    EXPECT_EQ(DescriptionOf({.points = 10}, 144).lfHeight, -20);
}

TEST(SlantedFontDescription, SlantsTheLineAndItsLetters) {
    const LOGFONTA description = DescriptionOf({.escapement = 125}, 96);
    EXPECT_EQ(description.lfEscapement, 125);
    EXPECT_EQ(description.lfOrientation, 125);
}

TEST(SlantedFontDescription, HasEachStyleAlone) {
    const LOGFONTA italic = DescriptionOf({.isItalic = true}, 96);
    EXPECT_TRUE(italic.lfItalic && !italic.lfUnderline && !italic.lfStrikeOut);
    const LOGFONTA underlined = DescriptionOf({.isUnderlined = true}, 96);
    EXPECT_TRUE(!underlined.lfItalic && underlined.lfUnderline && !underlined.lfStrikeOut);
    const LOGFONTA struckOut = DescriptionOf({.isStruckOut = true}, 96);
    EXPECT_TRUE(!struckOut.lfItalic && !struckOut.lfUnderline && struckOut.lfStrikeOut);
}

TEST(SlantedFontDescription, HasWeightCharsetPitchAndFace) {
    const LOGFONTA description = DescriptionOf({.face = "Arial", .weight = 700, .charset = 204, .pitch = 2}, 96);
    EXPECT_EQ(description.lfWeight, 700);
    EXPECT_EQ(description.lfCharSet, 204);
    EXPECT_EQ(description.lfPitchAndFamily, 2);
    EXPECT_STREQ(description.lfFaceName, "Arial");
}

TEST(SlantedFontDescription, CutsAFaceThatIsTooLong) {
    const std::string longest(31, 'a');
    EXPECT_EQ(DescriptionOf({.face = longest}, 96).lfFaceName, longest);
    EXPECT_EQ(DescriptionOf({.face = longest + "b"}, 96).lfFaceName, longest);
}

} // namespace
