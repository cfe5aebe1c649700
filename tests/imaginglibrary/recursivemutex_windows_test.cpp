// That the mutex of an image costs nothing once the image is gone.
#include "imaginglibrary/core/recursivemutex.h"

#include "tests/support/resources.h"

#include <gtest/gtest.h>

namespace {

void LockAndUnlock(int count) {
    for (int i = 0; i < count; ++i) {
        imaginglibrary::RecursiveMutex mutex;
        const std::lock_guard lock(mutex);
        const std::lock_guard again(mutex);
    }
}

TEST(RecursiveMutex, GivesBackWhatItTook) {
    LockAndUnlock(1);
    const std::int64_t before = tests::CountHeapBytes();
    LockAndUnlock(1000);
    EXPECT_LT(tests::CountHeapBytes(), before + 1000);
}

} // namespace
