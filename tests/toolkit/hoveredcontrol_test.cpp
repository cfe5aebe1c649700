// Which control the mouse was last seen over, without a window.
#include "toolkit/hoveredcontrol.h"

#include <gtest/gtest.h>

namespace {

using lumbrix::HoveredControl;

constexpr int FirstLink = 7;
constexpr int LastLink = 9;
constexpr int PlainLabel = 8;

class HoveringOver : public testing::Test {
  protected:
    HoveredControl hovered_{{FirstLink, LastLink}};
};

TEST_F(HoveringOver, NothingAtFirst) {
    EXPECT_EQ(hovered_.Id(), 0);
    EXPECT_FALSE(hovered_.IsLink());
}

TEST_F(HoveringOver, EachLinkIsOne) {
    hovered_.MoveOver(FirstLink);
    EXPECT_EQ(hovered_.Id(), 7);
    EXPECT_TRUE(hovered_.IsLink());
    hovered_.MoveOver(LastLink);
    EXPECT_EQ(hovered_.Id(), 9);
    EXPECT_TRUE(hovered_.IsLink());
}

TEST_F(HoveringOver, OtherControlIsRememberedAndNoLink) {
    hovered_.MoveOver(FirstLink);
    hovered_.MoveOver(PlainLabel);
    EXPECT_EQ(hovered_.Id(), 8);
    EXPECT_FALSE(hovered_.IsLink());
}

TEST_F(HoveringOver, PlainWindowTakesTheLinkAway) {
    hovered_.MoveOver(FirstLink);
    hovered_.MoveOver(0);
    EXPECT_EQ(hovered_.Id(), 0);
    EXPECT_FALSE(hovered_.IsLink());
}

TEST_F(HoveringOver, WhereThereIsNoWindowTheOneBeforeStays) {
    hovered_.MoveOver(LastLink);
    hovered_.MoveOver(std::nullopt);
    EXPECT_EQ(hovered_.Id(), 9);
    EXPECT_TRUE(hovered_.IsLink());
}

} // namespace
