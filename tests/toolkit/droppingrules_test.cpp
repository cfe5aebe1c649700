// Which of the files dropped on a window are taken.
#include "toolkit/droppingrules.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(PlainFolder, HasNoOtherAttribute) {
    EXPECT_TRUE(IsPlainFolder(16));
    EXPECT_FALSE(IsPlainFolder(16 | 1));
    EXPECT_FALSE(IsPlainFolder(32));
    EXPECT_FALSE(IsPlainFolder(0xFFFFFFFF));
}

} // namespace
