// The numbers under which the platform knows what a surface does.
#include "draw/surface.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(RasterMixes, HaveThePlatformsNumbers) {
    EXPECT_EQ(static_cast<int>(RasterMix::NotXorPen), 10);
    EXPECT_EQ(static_cast<int>(RasterMix::CopyPen), 13);
}

TEST(RasterMixes, ThatThereAreStay) {
    for (const std::int32_t mix : {1, 10, 13, 16}) {
        EXPECT_EQ(ValidMix(mix), mix);
    }
}

TEST(RasterMixes, ThatThereAreNotCopy) {
    for (const std::int32_t mix : {0, 17, -1}) {
        EXPECT_EQ(ValidMix(mix), 13) << mix;
    }
}

TEST(FailingLines, AreTriedAHundredTimesTwoMillisecondsApart) {
    EXPECT_EQ(LineRetries, 100);
    EXPECT_EQ(LinePauseMilliseconds, 2);
}

} // namespace
