// How the canvas is panned by its scroll bars.
#include "freeedit/scrolling.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

constexpr std::int32_t Page = 50;

std::optional<std::int32_t> Vertical(int code, std::int32_t position, std::uint16_t thumb = 0) {
    return ScrolledPosition({static_cast<ScrollCode>(code), thumb}, position, Page, ScrollLine::Vertical);
}

std::optional<std::int32_t> Horizontal(int code, std::int32_t position, std::uint16_t thumb = 0) {
    return ScrolledPosition({static_cast<ScrollCode>(code), thumb}, position, Page, ScrollLine::Horizontal);
}

TEST(Scrolling, LineIsFiveDownAndFiftyAcross) {
    EXPECT_EQ(Vertical(0, 7), 2);
    EXPECT_EQ(Vertical(1, 7), 12);
    EXPECT_EQ(Horizontal(0, 7), -43);
    EXPECT_EQ(Horizontal(1, 7), 57);
}

TEST(Scrolling, PageIsTheBarsOwn) {
    EXPECT_EQ(Vertical(2, 7), -43);
    EXPECT_EQ(Vertical(3, 7), 57);
    EXPECT_EQ(Horizontal(2, 7), -43);
    EXPECT_EQ(Horizontal(3, 7), 57);
    EXPECT_EQ(ScrolledPosition({ScrollCode::PageForward, 0}, 7, 3, ScrollLine::Horizontal), 10);
}

TEST(Scrolling, ThumbHasNoSign) {
    EXPECT_EQ(Vertical(5, 7, 300), 300);
    EXPECT_EQ(Horizontal(5, 7, 0), 0);
    EXPECT_EQ(Vertical(5, 7, static_cast<std::uint16_t>(-1)), 65535);
    EXPECT_EQ(Horizontal(5, 7, static_cast<std::uint16_t>(-1000)), 64536);
}

TEST(Scrolling, GoesBeyondTheRange) {
    EXPECT_EQ(Vertical(5, 0, 1000), 1000);
    EXPECT_EQ(Vertical(1, 1000), 1005);
    EXPECT_EQ(Horizontal(0, -1000), -1050);
}

TEST(Scrolling, OtherEventsDoNothing) {
    for (const int code : {-1, 4, 6, 7, 8, 9}) { // the thumb released, the ends, the end of it all
        EXPECT_EQ(Vertical(code, 7, 300), std::nullopt) << code;
        EXPECT_EQ(Horizontal(code, 7, 300), std::nullopt) << code;
    }
}

TEST(Scrolling, BarsGoFromMinusToPlusAThousandInPagesOfFifty) {
    EXPECT_EQ(LeastPan, -1000);
    EXPECT_EQ(MostPan, 1000);
    EXPECT_EQ(PanPage, 50);
}

} // namespace
