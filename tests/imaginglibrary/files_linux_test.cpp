// What saves owe to the system on Linux: full disks, kills, links, permissions, odd names.
#include "imaginglibrary/files/inputfile.h"
#include "imaginglibrary/files/outputfile.h"
#include "imaginglibrary/files/path_linux.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

class LinuxFiles : public testing::Test {
  protected:
    std::size_t CountOfFiles() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}));
    }

    TemporaryFolder folder_;
    std::filesystem::path target_ = folder_ / "target";
};

// Runs `body` in a process of its own, which may limit or kill itself, and gives back how it ended.
template <class Body> int InOtherProcess(Body body) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(body());
    }
    int ending = 0;
    waitpid(child, &ending, 0);
    return ending;
}

TEST_F(LinuxFiles, FullDiskLeavesTheOldFileAndNothingElse) {
    WriteBytes(target_, "old");
    const int ending = InOtherProcess([&] {
        // A limit on the size of files stands for a full disk.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{100000, 100000};
        setrlimit(RLIMIT_FSIZE, &limit);
        auto file = OutputFile::Create(target_.u16string());
        if (!file.Ok()) {
            return 1;
        }
        const std::string bytes(300000, 'n');
        if ((*file)->Append(bytes.data(), bytes.size()) != Status::Win32Error) {
            return 2;
        }
        return (*file)->Commit() == Status::Win32Error ? 0 : 3;
    });
    EXPECT_EQ(WEXITSTATUS(ending), 0);
    EXPECT_EQ(ReadBytes(target_), "old");
    EXPECT_EQ(CountOfFiles(), 1u);
}

TEST_F(LinuxFiles, KilledHalfwayLeavesTheOldFileAndNothingElse) {
    WriteBytes(target_, "old");
    const int ending = InOtherProcess([&] {
        auto file = OutputFile::Create(target_.u16string());
        const std::string bytes(300000, 'n');
        (*file)->Append(bytes.data(), bytes.size());
        raise(SIGKILL);
        return 0;
    });
    EXPECT_TRUE(WIFSIGNALED(ending));
    EXPECT_EQ(ReadBytes(target_), "old");
    EXPECT_EQ(CountOfFiles(), 1u);
}

TEST_F(LinuxFiles, BehindASymbolicLinkThePictureIsReplacedNotTheLink) {
    WriteBytes(target_, "old");
    std::filesystem::create_symlink(target_, folder_ / "link");
    auto file = std::move(*OutputFile::Create((folder_ / "link").u16string()));
    file->Append("new", 3);
    ASSERT_EQ(file->Commit(), Status::Ok);
    EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "link"));
    EXPECT_EQ(ReadBytes(target_), "new");
}

TEST_F(LinuxFiles, ReplacingKeepsThePermissions) {
    WriteBytes(target_, "old");
    std::filesystem::permissions(target_, std::filesystem::perms(0640));
    auto file = std::move(*OutputFile::Create(target_.u16string()));
    ASSERT_EQ(file->Commit(), Status::Ok);
    EXPECT_EQ(std::filesystem::status(target_).permissions(), std::filesystem::perms(0640));
}

TEST_F(LinuxFiles, NewFileFollowsTheUmask) {
    const mode_t before = umask(027);
    auto file = std::move(*OutputFile::Create(target_.u16string()));
    ASSERT_EQ(file->Commit(), Status::Ok);
    umask(before);
    EXPECT_EQ(std::filesystem::status(target_).permissions(), std::filesystem::perms(0640));
}

TEST_F(LinuxFiles, PipesAndDevicesAreNeitherReadNorReplaced) {
    const std::filesystem::path pipe = folder_ / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(InputFile::Open(pipe.u16string()).GetStatus(), Status::GenericError);
    EXPECT_EQ(OutputFile::Create(pipe.u16string()).GetStatus(), Status::GenericError);
    EXPECT_EQ(OutputFile::Create(u"/dev/null").GetStatus(), Status::GenericError);
}

// Root may write anywhere, so this one becomes somebody else.
TEST_F(LinuxFiles, ReadOnlyFileOrFolderIsRefused) {
    WriteBytes(target_, "old");
    std::filesystem::permissions(target_, std::filesystem::perms(0444));
    std::filesystem::permissions(folder_.Path(), std::filesystem::perms(0777));
    std::filesystem::create_directory(folder_ / "closed");
    std::filesystem::permissions(folder_ / "closed", std::filesystem::perms(0555));
    const int ending = InOtherProcess([&] {
        constexpr uid_t Nobody = 65534;
        if (geteuid() == 0 && setuid(Nobody) != 0) {
            return 1;
        }
        if (OutputFile::Create(target_.u16string()).GetStatus() != Status::GenericError) {
            return 2;
        }
        return OutputFile::Create((folder_ / "closed/new").u16string()).GetStatus() == Status::GenericError ? 0 : 3;
    });
    EXPECT_EQ(WEXITSTATUS(ending), 0);
    EXPECT_EQ(ReadBytes(target_), "old");
}

TEST(PathBytes, WideTextBecomesUtf8) { EXPECT_EQ(PathBytes(u"a\u00e4\u20ac\U0001F600"), "a\u00e4\u20ac\U0001F600"); }

TEST(PathBytes, BytesThatAreNotUtf8TravelAsLoneSurrogates) {
    const char16_t name[] = {'x', 0xDCE4, 0xDC80, 0};
    EXPECT_EQ(PathBytes(name), "x\xe4\x80");
}

TEST(PathBytes, OtherLoneSurrogatesAreReplaced) {
    const char16_t name[] = {0xD800, 'x', 0xDC00, 0};
    EXPECT_EQ(PathBytes(name), "\uFFFDx\uFFFD");
}

} // namespace
