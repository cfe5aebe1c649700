// That a copy is on the disk before it takes another file's place, with a disk that can be made to fail.
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/registry.h"
#include "tests/support/ownsettings.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <functional>

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace {

// Called in place of the system's flush; whether it works.
std::function<bool()> flushInstead;

} // namespace

// What the files are flushed with is this program's own.
#ifdef _WIN32

static BOOL WINAPI FlushOrFail(HANDLE file) {
    if (flushInstead && !flushInstead()) {
        SetLastError(ERROR_DISK_FULL);
        return FALSE;
    }
    using Flush = BOOL(WINAPI*)(HANDLE);
    static const auto flush = reinterpret_cast<Flush>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "FlushFileBuffers")));
    return flush(file);
}

extern "C" {
extern BOOL(WINAPI* flushFileBuffersInstead)(HANDLE) __asm__("__imp__FlushFileBuffers@4");
BOOL(WINAPI* flushFileBuffersInstead)(HANDLE) = FlushOrFail;
}

#else

extern "C" int fsync(int file) {
    if (flushInstead && !flushInstead()) {
        errno = ENOSPC;
        return -1;
    }
    return static_cast<int>(syscall(SYS_fsync, file));
}

#endif

namespace {

using namespace lumbrix;
using namespace tests;

constexpr int DiskFull = PathSeparator == '\\' ? 112 : 28; // as each system numbers it

class Flushing : public testing::Test {
  protected:
    Flushing() {
        WriteBytes(folder_ / "new", "new");
        WriteBytes(folder_ / "old", "old");
    }
    ~Flushing() override { flushInstead = nullptr; }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    TemporaryFolder folder_;
};

TEST_F(Flushing, ComesBetweenTheCopyAndItsTakingTheOldFilesPlace) {
    std::vector<std::string> besides;
    flushInstead = [&] {
        EXPECT_EQ(ReadBytes(folder_ / "old"), "old");
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
            if (entry.path().extension() == ".tmp") {
                besides.push_back(entry.path().string());
                EXPECT_EQ(std::filesystem::file_size(entry.path()), 3u);
            }
        }
        return true;
    };
    DuplicateFile(Path("new"), Path("old"));
    EXPECT_EQ(besides.size(), 1u);
    EXPECT_EQ(ReadBytes(folder_ / "old"), "new");
}

TEST_F(Flushing, FailureLeavesTheOldFileAndNothingElse) {
    flushInstead = [] { return false; };
    const auto error = trap([&] { DuplicateFile(Path("new"), Path("old")); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), DiskFull);
    EXPECT_EQ(ReadBytes(folder_ / "old"), "old");
    EXPECT_EQ(FilesIn(folder_.Path().string()).size(), 2u);
}

#ifndef _WIN32
TEST_F(Flushing, FailureLeavesTheOldSettings) {
    const OwnSettings own;
    const TemporaryFilesIn temporary(folder_.Path());
    SetRegValue(CurrentUserRoot, "A", "Name", "old");
    flushInstead = [] { return false; };
    SetRegValue(CurrentUserRoot, "A", "Name", "new");
    EXPECT_EQ(GetRegValue(CurrentUserRoot, "A", "Name"), "old");
    EXPECT_EQ(FilesIn(own.Folder().string()).size(), 1u);
    EXPECT_EQ(FilesIn(folder_.Path().string()).size(), 2u);
}
#endif

} // namespace
