// Windows that are opened and closed again and again in the test's own process, and what that holds behind it.
#pragma once

#include "imaging/exports/lumbrix.h"
#include "tests/support/resources.h"
#include "tests/windows/runningprogram.h"
#include "tests/windows/visitor.h"

#include <gtest/gtest.h>

#include <objbase.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace tests {

constexpr std::int64_t KiB = 1024;

// Behind the first ones; more of them for long.
inline int Openings() {
    const char* asked = std::getenv("OPENINGS");
    return asked != nullptr ? std::atoi(asked) : 10;
}

struct Held {
    int gdiObjects = CountGdiObjects();
    int userObjects = CountUserObjects();
    int handles = CountHandles();
    std::int64_t bytes = CountPrivateBytes();
};

struct Growth {
    int gdiObjects;
    int userObjects;
    int handles;
    std::int64_t bytes;
};

inline void Press(HWND window, int button) { PostMessageA(GetDlgItem(window, button), BM_CLICK, 0, 0); }

inline Visit Closing(const char* caption) {
    return {caption, [](HWND window) {
                PostMessageA(window, WM_CLOSE, 0, 0);
                return true;
            }};
}

inline Visit Pressing(const char* caption, int button) {
    return {caption, [button](HWND window) {
                Press(window, button);
                return true;
            }};
}

class Opening : public testing::Test {
  protected:
    static void SetUpTestSuite() { LimitTests(TestLimitMs + static_cast<DWORD>(Openings()) * 3000); }

    Opening() {
        CoInitialize(nullptr);
        LoadImagingLibrary();
    }
    ~Opening() override {
        UnloadImagingLibrary();
        CoUninitialize();
    }

    std::string Path(const char* name) const { return (folder_ / name).string(); }

    // What the process holds behind some openings, and behind many more. What is shown and worked by the first ones is
    // kept by the system.
    Growth Measure(const char* name, const std::function<void()>& open,
                   const std::function<std::deque<Visit>()>& visits) {
        // The pointer of the desktop strays now and then, so that an opening is not worked to its end and made up for.
        int mostMissed = 3;
        const auto openTimes = [&](int times) {
            for (int done = 0; done < times;) {
                const Visitor visitor(visits());
                open();
                if (visitor.IsDone()) {
                    ++done;
                } else if (mostMissed-- == 0) {
                    ADD_FAILURE() << name << " was not worked to its end, opening " << done;
                    return;
                }
            }
        };
        openTimes(std::max(5, Openings() / 10));
        const Held before;
        openTimes(Openings());
        const Held after;
        std::printf("| %s | %d | %d, %d | %d, %d | %d, %d | %lld, %lld |\n", name, Openings(), before.gdiObjects,
                    after.gdiObjects, before.userObjects, after.userObjects, before.handles, after.handles,
                    static_cast<long long>(before.bytes / KiB), static_cast<long long>(after.bytes / KiB));
        std::fflush(stdout);
        return {after.gdiObjects - before.gdiObjects, after.userObjects - before.userObjects,
                after.handles - before.handles, after.bytes - before.bytes};
    }

    // Half a KiB for each of a thousand openings: less than any bitmap or table of ours takes, and more than the
    // system's own heap goes up and down. The first wait of a thread for a lock costs a handle that stays, once for the
    // program and for either library. Threads of the system hold objects of windows a moment longer than these are
    // open.
    static void ExpectNothing(const Growth& growth) {
        EXPECT_LE(growth.gdiObjects, 0);
        EXPECT_LE(growth.userObjects, 3);
        EXPECT_LE(growth.handles, 3);
        EXPECT_LE(growth.bytes, 512 * KiB);
    }

    TemporaryFolder folder_;
    TemporaryFilesIn temporaryFiles_{folder_.Path()};
};

} // namespace tests
