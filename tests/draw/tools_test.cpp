// The gestures of all tools, call by call.
#include "draw/tools.h"

#include "tests/draw/recordingsurface.h"
#include "toolkit/mousepoint.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

using Calls = std::vector<std::string>;

constexpr std::uint32_t Held = 0x0001;
constexpr std::uint32_t RightHeldAndShift = 0x0006;

constexpr int Line = 181;
constexpr int Freehand = 182;
constexpr int Beams = 183;
constexpr int RoundedBox = 184;
constexpr int SquareBox = 185;
constexpr int Circle = 186;
constexpr int Oval = 187;
constexpr int FillTool = 188;
constexpr int NormalText = 189;
constexpr int SunkenText = 190;
constexpr int RaisedText = 191;

// A blue pen and an orange fill.
class DrawTools : public testing::Test {
  protected:
    DrawTools() {
        state_.penColor = 0xFF0000;
        state_.fillColor = 0x0080FF;
    }

    Calls Press(int tool, PixelPoint place) {
        state_.currentTool = tool;
        PressTool(state_, surface_, place);
        return surface_.Taken();
    }
    Calls Move(PixelPoint place, std::uint32_t held = Held) {
        MoveTool(state_, surface_, place, held);
        return surface_.Taken();
    }
    Calls Release() {
        ReleaseTool(state_, surface_);
        return surface_.Taken();
    }

    // What the canvas shows under the mouse once a shape has been dragged there.
    std::string Dragged(int tool, PixelPoint from, PixelPoint to) {
        Press(tool, from);
        const Calls calls = Move(to);
        Release();
        return calls.front();
    }

    tests::RecordingSurface surface_;
    DrawingState state_;
};

TEST_F(DrawTools, LineBeginsARubberBandWithoutALength) {
    EXPECT_EQ(Press(Line, {12, 34}), (Calls{"take mouse", "hold back", "snapshot", "mix 10", "from 12,34",
                                            "line to 12,34 in FF0000", "repaint", "status Pos: 12, 34"}));
    EXPECT_TRUE(state_.isDragging);
}

TEST_F(DrawTools, LineIsWipedAndDrawnAnewAtEachMove) {
    Press(Line, {12, 34});
    EXPECT_EQ(Move({50, 60}), (Calls{"from 12,34", "line to 12,34 in FF0000", "from 12,34", "line to 50,60 in FF0000",
                                     "repaint", "status Pos: 12, 34  -  50, 60"}));
    EXPECT_EQ(Move({-7, 8}), (Calls{"from 12,34", "line to 50,60 in FF0000", "from 12,34", "line to -7,8 in FF0000",
                                    "repaint", "status Pos: 12, 34  - -7, 8"}));
}

TEST_F(DrawTools, LineStaysWhereItsRubberBandWasLast) {
    Press(Line, {12, 34});
    Move({70, 80});
    Move({50, 60});
    EXPECT_EQ(Release(), (Calls{"mix 13", "from 12,34", "line to 50,60 in FF0000", "repaint", "release mouse"}));
}

TEST_F(DrawTools, LineThatWasNotDraggedHasNoLength) {
    Press(Line, {12, 34});
    EXPECT_EQ(Release(), (Calls{"mix 13", "from 12,34", "line to 12,34 in FF0000", "repaint", "release mouse"}));
}

TEST_F(DrawTools, RubberBandThatIsGoneIsNotWiped) {
    Press(Line, {12, 34});
    state_.rubberStart = {-1, 0};
    EXPECT_EQ(Move({50, 60}),
              (Calls{"from 12,34", "line to 50,60 in FF0000", "repaint", "status Pos: 12, 34  -  50, 60"}));
    EXPECT_EQ(state_.rubberStart, (PixelPoint{12, 34}));
    Press(Oval, {12, 34});
    state_.rubberStart = {-1, 0};
    EXPECT_EQ(Move({50, 60}).front(), "shape 12,34 to 50,60 corner ellipse in FF0000 fill none style 0");
    EXPECT_EQ(state_.rubberStart, (PixelPoint{12, 34}));
}

TEST_F(DrawTools, RubberBandFromTheLeftBorderIsWiped) {
    Press(Line, {0, 34});
    EXPECT_EQ(Move({50, 60}).size(), 6u);
}

TEST_F(DrawTools, FreehandBeginsWithADotThatStays) {
    EXPECT_EQ(Press(Freehand, {12, 34}), (Calls{"take mouse", "hold back", "snapshot", "mix 13", "from 12,34",
                                                "line to 12,34 in FF0000", "repaint", "status Pos: 12, 34"}));
}

TEST_F(DrawTools, FreehandDrawsFromPlaceToPlace) {
    Press(Freehand, {12, 34});
    EXPECT_EQ(Move({15, 36}), (Calls{"from 12,34", "line to 15,36 in FF0000", "repaint", "status Pos: 15, 36"}));
    EXPECT_EQ(Move({-1, 40}), (Calls{"from 15,36", "line to -1,40 in FF0000", "repaint", "status Pos:-1, 40"}));
    EXPECT_EQ(Release(), Calls{"release mouse"});
}

TEST_F(DrawTools, BeamsBeginWithADotThatStays) {
    EXPECT_EQ(Press(Beams, {12, 34}), (Calls{"take mouse", "hold back", "snapshot", "mix 13", "from 12,34",
                                             "line to 12,34 in FF0000", "repaint", "status Pos: 12, 34"}));
}

TEST_F(DrawTools, BeamsFanOutFromTheFirstPlace) {
    Press(Beams, {12, 34});
    EXPECT_EQ(Move({15, 36}),
              (Calls{"from 12,34", "line to 15,36 in FF0000", "repaint", "status Pos: 12, 34  -  15, 36"}));
    EXPECT_EQ(Move({20, 30}),
              (Calls{"from 12,34", "line to 20,30 in FF0000", "repaint", "status Pos: 12, 34  -  20, 30"}));
    EXPECT_EQ(Release(), Calls{"release mouse"});
}

TEST_F(DrawTools, ShapesBeginWithoutDrawing) {
    for (const int tool : {RoundedBox, SquareBox, Circle, Oval}) {
        EXPECT_EQ(Press(tool, {12, 34}), (Calls{"take mouse", "hold back", "snapshot", "mix 10", "status Pos: 12, 34"}))
            << tool;
    }
}

TEST_F(DrawTools, ShapesAreWipedAndDrawnAnewHollowAtEachMove) {
    for (const auto& [tool, corner] : {std::pair{RoundedBox, "20"}, {SquareBox, "0"}, {Oval, "ellipse"}}) {
        const std::string look = std::string(" corner ") + corner + " in FF0000 fill none style 0";
        state_.fillStyle = 3;
        Press(tool, {12, 34});
        EXPECT_EQ(Move({50, 60}), (Calls{"shape 12,34 to 12,34" + look, "shape 12,34 to 50,60" + look, "repaint",
                                         "status Pos: 12, 34  -  50, 60\r\nSize: 38 x 26"}));
        EXPECT_EQ(Move({2, -4}), (Calls{"shape 12,34 to 50,60" + look, "shape 12,34 to 2,-4" + look, "repaint",
                                        "status Pos: 12, 34  -  2,-4\r\nSize: 10 x 38"}));
        Release();
    }
}

TEST_F(DrawTools, ShapesStayFilledWhereTheirRubberBandWasLast) {
    for (const auto& [tool, corner] :
         {std::pair{RoundedBox, "20"}, {SquareBox, "0"}, {Circle, "ellipse"}, {Oval, "ellipse"}}) {
        Press(tool, {12, 34});
        Move({50, 72});
        EXPECT_EQ(
            Release(),
            (Calls{"mix 13", std::string("shape 12,34 to 50,72 corner ") + corner + " in FF0000 fill 0080FF style 0",
                   "repaint", "release mouse"}));
    }
}

TEST_F(DrawTools, ShapesStayInTheirPattern) {
    state_.fillStyle = 6;
    Press(SquareBox, {12, 34});
    EXPECT_EQ(Release()[1], "shape 12,34 to 12,34 corner 0 in FF0000 fill 0080FF style 6");
}

TEST_F(DrawTools, ShapesStayHollowUnderHollowWhateverTheColor) {
    state_.fillStyle = -1;
    for (const int tool : {SquareBox, Oval}) {
        Press(tool, {1, 2});
        EXPECT_NE(Release()[1].find("in FF0000 fill none style 0"), std::string::npos) << tool;
    }
}

TEST_F(DrawTools, ShapesStayHollowUnderAPatternWithoutAColor) {
    state_.fillColor = -2;
    state_.fillStyle = 4;
    Press(SquareBox, {1, 2});
    EXPECT_EQ(Release()[1], "shape 1,2 to 1,2 corner 0 in FF0000 fill none style 4");
}

TEST_F(DrawTools, ShapeThatWasNotDraggedIsDrawnWithBothPlacesEqual) {
    Press(Circle, {12, 34});
    EXPECT_EQ(Release(), (Calls{"mix 13", "shape 12,34 to 12,34 corner ellipse in FF0000 fill 0080FF style 0",
                                "repaint", "release mouse"}));
}

TEST_F(DrawTools, CirclesGreaterDifferenceDecides) {
    Press(Circle, {200, 100});
    EXPECT_EQ(Move({230, 120})[1], "shape 200,100 to 230,130 corner ellipse in FF0000 fill none style 0");
    EXPECT_EQ(Move({220, 135})[1], "shape 200,100 to 235,135 corner ellipse in FF0000 fill none style 0");
    EXPECT_EQ(Move({240, 140})[1], "shape 200,100 to 240,140 corner ellipse in FF0000 fill none style 0");
}

TEST_F(DrawTools, CircleDraggedUpOrLeftGoesOutToTheShorterSide) {
    Press(Circle, {200, 100});
    EXPECT_EQ(Move({160, 90}), (Calls{"shape 200,100 to 200,100 corner ellipse in FF0000 fill none style 0",
                                      "shape 200,100 to 190,90 corner ellipse in FF0000 fill none style 0", "repaint",
                                      "status Pos: 200, 100  -  190, 90\r\nSize: 10 x 10"}));
    EXPECT_EQ(Move({195, 20})[1], "shape 200,100 to 195,95 corner ellipse in FF0000 fill none style 0");
    EXPECT_EQ(Move({203, 20})[1], "shape 200,100 to 203,103 corner ellipse in FF0000 fill none style 0");
    EXPECT_EQ(Move({20, 104})[1], "shape 200,100 to 204,104 corner ellipse in FF0000 fill none style 0");
}

TEST_F(DrawTools, CircleIsWipedWhereItWasDrawn) {
    Press(Circle, {200, 100});
    Move({160, 90});
    EXPECT_EQ(Move({210, 105})[0], "shape 200,100 to 190,90 corner ellipse in FF0000 fill none style 0");
    EXPECT_EQ(Release()[1], "shape 200,100 to 210,110 corner ellipse in FF0000 fill 0080FF style 0");
}

TEST_F(DrawTools, AreaIsFilledAtThePress) {
    EXPECT_EQ(Press(FillTool, {12, 34}), (Calls{"take mouse", "hold back", "snapshot", "look at 12,34",
                                                "fill ABCDEF at 12,34 with 0080FF", "repaint", "status Pos: 12, 34"}));
}

TEST_F(DrawTools, AreaIsFilledWithThePattern) {
    for (const auto& [style, hatch] : {std::pair{1, "0"}, {6, "5"}}) {
        state_.fillStyle = style;
        EXPECT_EQ(Press(FillTool, {12, 34})[4], std::string("fill ABCDEF at 12,34 with 0080FF hatch ") + hatch);
    }
}

TEST_F(DrawTools, AreaIsFilledSolidlyWithAColorChosenUnderHollow) {
    state_.fillStyle = -1;
    EXPECT_EQ(Press(FillTool, {12, 34})[4], "fill ABCDEF at 12,34 with 0080FF");
}

TEST_F(DrawTools, AreaWithoutAFillColorStaysYetCanBeUndone) {
    state_.fillColor = -2;
    EXPECT_EQ(Press(FillTool, {12, 34}),
              (Calls{"take mouse", "hold back", "snapshot", "look at 12,34", "repaint", "status Pos: 12, 34"}));
}

TEST_F(DrawTools, MovingAfterAFillDoesNothingAtAll) {
    Press(FillTool, {12, 34});
    EXPECT_EQ(Move({50, 60}), Calls{});
    EXPECT_EQ(Release(), Calls{"release mouse"});
    EXPECT_EQ(Move({50, 60}), Calls{"status Pos: 50, 60"});
}

TEST_F(DrawTools, MovingWithoutTheButtonAfterAFillTellsThePlace) {
    Press(FillTool, {12, 34});
    EXPECT_EQ(Move({50, 60}, 0), Calls{"status Pos: 50, 60"});
}

TEST_F(DrawTools, TextToolsPostTheCommandAndRememberPlaceAndRelief) {
    for (const auto& [tool, relief] : {std::pair{NormalText, TextRelief::Normal},
                                       {SunkenText, TextRelief::Sunken},
                                       {RaisedText, TextRelief::Raised},
                                       {NormalText, TextRelief::Normal}}) {
        EXPECT_EQ(Press(tool, {12, 34}), (Calls{"take mouse", "hold back", "post text", "status Pos: 12, 34"}));
        EXPECT_EQ(state_.textStyle, relief);
        EXPECT_EQ(state_.textOrigin, (PixelPoint{12, 34}));
        EXPECT_TRUE(state_.isDragging);
    }
}

TEST_F(DrawTools, OtherToolsLeavePlaceAndReliefOfTheText) {
    Press(RaisedText, {12, 34});
    Press(Line, {50, 60});
    EXPECT_EQ(state_.textStyle, TextRelief::Raised);
    EXPECT_EQ(state_.textOrigin, (PixelPoint{12, 34}));
}

TEST_F(DrawTools, TextToolsDrawNothingWhileTheMouseIsMoved) {
    Press(SunkenText, {12, 34});
    EXPECT_EQ(Move({50, 60}), (Calls{"repaint", "status Pos: 12, 34  -  50, 60"}));
    EXPECT_EQ(Release(), Calls{"release mouse"});
}

TEST_F(DrawTools, StartIsNeverLeftOfOrAboveTheCanvas) {
    EXPECT_EQ(Press(Line, {-1, -20}), (Calls{"take mouse", "hold back", "snapshot", "mix 10", "from 0,0",
                                             "line to 0,0 in FF0000", "repaint", "status Pos: 0, 0"}));
    EXPECT_EQ(Press(SunkenText, {5, -1}).back(), "status Pos: 5, 0");
    EXPECT_EQ(state_.textOrigin, (PixelPoint{5, 0}));
    EXPECT_EQ(Press(SunkenText, {-1, 5}).back(), "status Pos: 0, 5");
}

TEST_F(DrawTools, MessagesBeyondTheBordersCarryPlacesBelowNone) {
    Press(SquareBox, {3, 4});
    EXPECT_EQ(Move(SignedMousePoint(0xFFFEFFFF)).back(), "status Pos: 3, 4  - -1,-2\r\nSize: 4 x 6");
}

TEST_F(DrawTools, MovingWithoutAPressTellsThePlaceAlone) {
    EXPECT_EQ(Move({50, -60}), Calls{"status Pos: 50,-60"});
    EXPECT_EQ(Move({50, 60}, 0), Calls{"status Pos: 50, 60"});
}

TEST_F(DrawTools, MovingWithoutTheLeftButtonTellsThePlaceAlone) {
    Press(Line, {12, 34});
    EXPECT_EQ(Move({50, 60}, RightHeldAndShift), Calls{"status Pos: 50, 60"});
    EXPECT_EQ(state_.rubberEnd, (PixelPoint{12, 34}));
    EXPECT_TRUE(state_.isDragging);
}

TEST_F(DrawTools, OtherButtonsAndKeysDoNotKeepTheMouseFromDrawing) {
    Press(Line, {12, 34});
    EXPECT_EQ(Move({50, 60}, RightHeldAndShift | Held).size(), 6u);
}

TEST_F(DrawTools, ReleaseWithoutAPressDoesNothing) {
    EXPECT_EQ(Release(), Calls{});
    Press(Line, {12, 34});
    Release();
    EXPECT_EQ(Release(), Calls{});
}

TEST_F(DrawTools, ReleaseForgetsTheRubberBand) {
    for (const int tool : {Line, Freehand, Oval, FillTool, NormalText}) {
        Press(tool, {12, 34});
        EXPECT_EQ(state_.rubberStart, (PixelPoint{12, 34}));
        EXPECT_EQ(state_.rubberEnd, (PixelPoint{12, 34}));
        Release();
        EXPECT_EQ(state_.rubberStart, (PixelPoint{-1, 0})) << tool;
        EXPECT_EQ(state_.rubberEnd, (PixelPoint{0, 0})) << tool;
        EXPECT_FALSE(state_.isDragging);
    }
}

TEST_F(DrawTools, EachDragBeginsAnew) {
    EXPECT_EQ(Dragged(Oval, {10, 10}, {20, 20}), "shape 10,10 to 10,10 corner ellipse in FF0000 fill none style 0");
    EXPECT_EQ(Dragged(Oval, {30, 30}, {40, 40}), "shape 30,30 to 30,30 corner ellipse in FF0000 fill none style 0");
}

} // namespace
