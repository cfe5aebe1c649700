// What the system is asked to delete at its next start.
#include "desktop/desktopsystem.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

using namespace lumbrix;

TEST(DeletionAtRestart, ThatTheSystemRefusesIsPassedOver) {
    ASSERT_FALSE(MoveFileExA("", nullptr, MOVEFILE_DELAY_UNTIL_REBOOT)) << "so there is no such file";
    EXPECT_NO_THROW(DeleteAtRestart(""));
}

} // namespace
