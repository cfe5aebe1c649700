// Which control the mouse is over.
#include "toolkit/hover.h"

#include "tests/toolkit/ownwindow.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

constexpr int Link = 207;
constexpr int Plain = 201;
constexpr int Other = 208;

class Hovering : public testing::Test {
  protected:
    HWND Add(int id, int x) {
        return CreateWindowExA(0, "static", "", WS_CHILD | WS_VISIBLE, x, 0, 20, 20, window_.Handle(),
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    }

    void MoveTo(int x, int y) { hover_.MoveTo(window_.Handle(), {x, y}); }

    static bool IsHand() { return GetCursor() == LoadCursorA(nullptr, IDC_HAND); }
    static bool IsArrow() { return GetCursor() == LoadCursorA(nullptr, IDC_ARROW); }

    OwnWindow window_{200, 100};
    HWND link_ = Add(Link, 0);
    HWND plain_ = Add(Plain, 30);
    HWND other_ = Add(Other, 60);
    Hover hover_{{Link, Other}};
};

TEST_F(Hovering, BeginsWithNone) {
    EXPECT_EQ(hover_.Control(), 0);
    EXPECT_FALSE(hover_.IsOverLink());
}

TEST_F(Hovering, PointerIsAHandOverALinkAndAnArrowElsewhere) {
    MoveTo(5, 5);
    EXPECT_EQ(hover_.Control(), Link);
    EXPECT_TRUE(hover_.IsOverLink());
    EXPECT_TRUE(IsHand());
    MoveTo(35, 5);
    EXPECT_EQ(hover_.Control(), Plain);
    EXPECT_FALSE(hover_.IsOverLink());
    EXPECT_TRUE(IsArrow());
    MoveTo(65, 5);
    EXPECT_TRUE(hover_.IsOverLink());
}

TEST_F(Hovering, PlainBackgroundIsTheWindowItself) {
    MoveTo(5, 5);
    MoveTo(150, 80);
    EXPECT_EQ(hover_.Control(), 0);
    EXPECT_TRUE(IsArrow());
}

TEST_F(Hovering, OutsideTheControlBeforeStays) {
    MoveTo(5, 5);
    MoveTo(65530, 5);
    EXPECT_EQ(hover_.Control(), Link);
    EXPECT_TRUE(IsHand());
}

TEST_F(Hovering, HiddenAndDisabledControlsArePassedOver) {
    ShowWindow(link_, SW_HIDE);
    MoveTo(5, 5);
    EXPECT_EQ(hover_.Control(), 0);
    EnableWindow(other_, FALSE);
    MoveTo(65, 5);
    EXPECT_EQ(hover_.Control(), 0);
}

} // namespace
