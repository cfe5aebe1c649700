// Text on the canvas, pass by pass, and what it does to clearing.
#include "draw/tools.h"

#include "tests/draw/recordingsurface.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

using Passes = std::vector<std::string>;

class TextPlacing : public testing::Test {
  protected:
    TextPlacing() {
        state_.penColor = 0xFF0000;
        state_.fillColor = 0x0080FF;
        state_.textOrigin = {12, 34};
        state_.enteredText = "of the last time";
    }

    // All calls but the first two, which attach and let the user type.
    Passes Placed(const std::string& text, TextRelief relief = TextRelief::Normal) {
        surface_.typedText = text;
        state_.textStyle = relief;
        PlaceText(state_, surface_);
        Passes calls = surface_.Taken();
        EXPECT_EQ(Passes(calls.begin(), calls.begin() + 2), (Passes{"paint at once", "enter text, had ''"}));
        calls.erase(calls.begin(), calls.begin() + 2);
        return calls;
    }

    tests::RecordingSurface surface_;
    DrawingState state_;
};

TEST_F(TextPlacing, NormalTextIsInTheFillColor) {
    EXPECT_EQ(Placed("One"), (Passes{"snapshot", "text 'One' at 12,34 in 0080FF", "repaint"}));
}

TEST_F(TextPlacing, SunkenTextIsDarkAboveAndLightBelow) {
    EXPECT_EQ(Placed("One", TextRelief::Sunken),
              (Passes{"snapshot", "text 'One' at 11,33 in 800000", "text 'One' at 13,35 in FFFFFF",
                      "text 'One' at 12,34 in 0080FF", "repaint"}));
}

TEST_F(TextPlacing, RaisedTextIsLightAboveAndDarkBelow) {
    EXPECT_EQ(Placed("One", TextRelief::Raised),
              (Passes{"snapshot", "text 'One' at 11,33 in FFFFFF", "text 'One' at 13,35 in 800000",
                      "text 'One' at 12,34 in 0080FF", "repaint"}));
}

TEST_F(TextPlacing, EachLineStandsBelowTheOneBefore) {
    EXPECT_EQ(Placed("One\r\nFour\r\nx"),
              (Passes{"snapshot", "text 'One' at 12,34 in 0080FF", "text 'Four' at 12,47 in 0080FF",
                      "text 'x' at 12,61 in 0080FF", "repaint"}));
}

TEST_F(TextPlacing, AllPassesOfALineComeBeforeTheNextLine) {
    EXPECT_EQ(Placed("a\r\nb", TextRelief::Sunken),
              (Passes{"snapshot", "text 'a' at 11,33 in 800000", "text 'a' at 13,35 in FFFFFF",
                      "text 'a' at 12,34 in 0080FF", "text 'b' at 11,44 in 800000", "text 'b' at 13,46 in FFFFFF",
                      "text 'b' at 12,45 in 0080FF", "repaint"}));
}

TEST_F(TextPlacing, EmptyLinesTakeTheHeightOfAnEmptyText) {
    EXPECT_EQ(Placed("\r\n\r\nx\r\n"),
              (Passes{"snapshot", "text '' at 12,34 in 0080FF", "text '' at 12,44 in 0080FF",
                      "text 'x' at 12,54 in 0080FF", "text '' at 12,65 in 0080FF", "repaint"}));
}

TEST_F(TextPlacing, OnlyBothCharactersOfABreakBreakALine) {
    EXPECT_EQ(Placed("a\rb\nc\n\rd"), (Passes{"snapshot", "text 'a\rb\nc\n\rd' at 12,34 in 0080FF", "repaint"}));
}

TEST_F(TextPlacing, WithoutAFillColorTextIsANearWhite) {
    state_.fillColor = -2;
    EXPECT_EQ(Placed("One"), (Passes{"snapshot", "text 'One' at 12,34 in FFFFFE", "repaint"}));
}

TEST_F(TextPlacing, NothingIsDoneWithoutText) {
    EXPECT_EQ(Placed(""), Passes{});
    EXPECT_EQ(state_.background, 0xFFFFFF);
}

TEST_F(TextPlacing, TextOfTheLastTimeIsNotPlacedAgainWhereTypingIsGivenUp) {
    surface_.isTextEntered = false;
    EXPECT_EQ(Placed("One"), Passes{});
    EXPECT_EQ(state_.enteredText, "");
}

TEST_F(TextPlacing, OriginStays) {
    Placed("One\r\nTwo");
    EXPECT_EQ(state_.textOrigin, (PixelPoint{12, 34}));
}

TEST_F(TextPlacing, ClearingTakesTheBackgroundAndNoSnapshot) {
    ClearCanvas(state_, surface_);
    EXPECT_EQ(surface_.Taken(), (Passes{"paint at once", "clear with FFFFFF", "repaint"}));
}

TEST_F(TextPlacing, ClearingHasNoEffectOnceTextHasBeenPlaced) {
    Placed("One");
    ClearCanvas(state_, surface_);
    EXPECT_EQ(surface_.Taken(), (Passes{"paint at once", "repaint"}));
}

} // namespace
