// The door that draws a file, over the fake imaging library: the real one draws nothing by it.
#include "imaging/exports/lumbrix.h"
#include "tests/imaging/fakemodule.h"

#include <gtest/gtest.h>

namespace {

using DisplayDoor = tests::WithFake;

TEST_F(DisplayDoor, HandsOnContextAndPlace) {
    EXPECT_EQ(DisplayImage("a.png", reinterpret_cast<void*>(99), 1.5f, 2), 0);
    EXPECT_EQ(fake_.CountOf("GdipCreateFromHDC 99"), 1u);
    EXPECT_EQ(fake_.CountOf("GdipDrawImage 55 11 1.5 2"), 1u);
}

} // namespace
