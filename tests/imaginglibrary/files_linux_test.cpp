// What saves owe to the system on Linux: full disks, kills, links, permissions, odd names.
#include "imaginglibrary/files/inputfile.h"
#include "imaginglibrary/files/outputfile.h"
#include "imaginglibrary/files/path_linux.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <future>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

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

Status SaveTo(const std::filesystem::path& path) {
    auto file = OutputFile::Create(path.u16string());
    if (!file.Ok()) {
        return file.GetStatus();
    }
    (*file)->Append("new", 3);
    return (*file)->Commit();
}

TEST_F(LinuxFiles, BehindALinkToNothingTheFileIsMade) {
    std::filesystem::create_directory(folder_ / "sub");
    std::filesystem::create_symlink("sub/second", folder_ / "first");
    std::filesystem::create_symlink("../target", folder_ / "sub/second");
    EXPECT_EQ(SaveTo(folder_ / "first"), Status::Ok);
    EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "first"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "sub/second"));
    EXPECT_EQ(ReadBytes(target_), "new");
}

TEST_F(LinuxFiles, LinksInARingAreRefused) {
    std::filesystem::create_symlink("two", folder_ / "one");
    std::filesystem::create_symlink("one", folder_ / "two");
    EXPECT_EQ(OutputFile::Create((folder_ / "one").u16string()).GetStatus(), Status::GenericError);
}

TEST_F(LinuxFiles, NameThatNoFileCanHaveIsRefusedAtTheStart) {
    EXPECT_EQ(SaveTo(folder_ / std::string(255, 'n')), Status::Ok);
    EXPECT_EQ(OutputFile::Create((folder_ / std::string(256, 'n')).u16string()).GetStatus(), Status::GenericError);
}

TEST_F(LinuxFiles, ReplacingKeepsTheOwner) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root may make a file somebody else's";
    }
    WriteBytes(target_, "old");
    ASSERT_EQ(chown(target_.c_str(), 1234, 5678), 0);
    ASSERT_EQ(chmod(target_.c_str(), 04751), 0);
    ASSERT_EQ(SaveTo(target_), Status::Ok);
    struct stat facts {};
    ASSERT_EQ(stat(target_.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_uid, 1234u);
    EXPECT_EQ(facts.st_gid, 5678u);
    EXPECT_EQ(facts.st_mode & 07777u, 04751u);
}

TEST_F(LinuxFiles, OwnerThatCannotBeKeptGivesNobodyHisRights) {
    constexpr uid_t Nobody = 65534;
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root may make a file somebody else's";
    }
    WriteBytes(target_, "old");
    ASSERT_EQ(chmod(target_.c_str(), 04666), 0);
    ASSERT_EQ(chmod(folder_.Path().c_str(), 0777), 0);
    const int ending = InOtherProcess([&] { return setuid(Nobody) == 0 && SaveTo(target_) == Status::Ok ? 0 : 1; });
    EXPECT_EQ(WEXITSTATUS(ending), 0);
    struct stat facts {};
    ASSERT_EQ(stat(target_.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_uid, Nobody);
    EXPECT_EQ(facts.st_mode & 07777u, 0666u);
}

TEST_F(LinuxFiles, SaversHinderNeitherReadersNorEachOther) {
    WriteBytes(target_, "old");
    constexpr int Rounds = 2000;
    const auto failuresOf = [](auto attempt) {
        return std::async(std::launch::async, [attempt] {
            int failures = 0;
            for (int i = 0; i < Rounds; ++i) {
                failures += attempt() ? 0 : 1;
            }
            return failures;
        });
    };
    const auto create = [path = target_.u16string()] { return OutputFile::Create(path).Ok(); };
    auto saver = failuresOf(create);
    auto other = failuresOf(create);
    EXPECT_EQ(saver.get(), 0);
    EXPECT_EQ(other.get(), 0);
    auto asking = std::async(std::launch::async, [&] {
        for (int i = 0; i < Rounds; ++i) {
            (void)create(); // is refused while it is read
        }
    });
    auto reader = failuresOf([path = target_.u16string()] { return InputFile::Open(path).Ok(); });
    EXPECT_EQ(reader.get(), 0);
    asking.get();
}

TEST_F(LinuxFiles, FileThatIsReadIsNotReplacedUntilItIsClosed) {
    WriteBytes(target_, "old");
    {
        const auto first = InputFile::Open(target_.u16string());
        const auto second = InputFile::Open(target_.u16string());
        ASSERT_TRUE(first.Ok() && second.Ok());
        EXPECT_EQ(SaveTo(target_), Status::GenericError);
    }
    EXPECT_EQ(SaveTo(target_), Status::Ok);
}

TEST_F(LinuxFiles, FileThatSomebodyHasForHimselfIsNotRead) {
    WriteBytes(target_, "old");
    const int descriptor = open(target_.c_str(), O_RDWR);
    struct flock lock {};
    lock.l_type = F_WRLCK;
    ASSERT_EQ(fcntl(descriptor, F_OFD_SETLK, &lock), 0);
    EXPECT_EQ(InputFile::Open(target_.u16string()).GetStatus(), Status::GenericError);
    close(descriptor);
    EXPECT_TRUE(InputFile::Open(target_.u16string()).Ok());
}

void MakeOlder(const std::filesystem::path& path, std::chrono::seconds age) {
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - age);
}

TEST_F(LinuxFiles, WhatAKilledSaveHasLeftGoesAfterADay) {
    using namespace std::chrono_literals;
    const std::pair<const char*, bool> files[] = {
        {".imaging-1234567890.tmp", true}, {".imaging-0.tmp", true},    {".imaging-.tmp", false},
        {".imaging-1a.tmp", false},        {".imaging-1:.tmp", false},  {".imaging-12.png", false},
        {"b.imaging-12.tmp", false},       {".imaging-777.tmp", false},
    };
    for (const auto& [name, goes] : files) {
        WriteBytes(folder_ / name, "left");
        MakeOlder(folder_ / name, 24h + 60s);
    }
    MakeOlder(folder_ / ".imaging-777.tmp", 24h - 60s);
    WriteBytes(folder_ / ".imaging-888.tmp", "in use");
    MakeOlder(folder_ / ".imaging-888.tmp", 48h);
    const auto use = InputFile::Open((folder_ / ".imaging-888.tmp").u16string());
    ASSERT_EQ(SaveTo(target_), Status::Ok);
    for (const auto& [name, goes] : files) {
        EXPECT_NE(std::filesystem::exists(folder_ / name), goes) << name;
    }
    EXPECT_TRUE(std::filesystem::exists(folder_ / ".imaging-888.tmp"));
}

// Some containers have no /proc.
TEST_F(LinuxFiles, SavesWithoutProc) {
    constexpr int NotAllowed = 77;
    const int ending = InOtherProcess([&] {
        if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("none", "/proc", "tmpfs", 0, nullptr) != 0) {
            return NotAllowed;
        }
        return SaveTo(target_) == Status::Ok ? 0 : 1;
    });
    if (WEXITSTATUS(ending) == NotAllowed) {
        GTEST_SKIP() << "mounting is not allowed here";
    }
    EXPECT_EQ(WEXITSTATUS(ending), 0);
    EXPECT_EQ(ReadBytes(target_), "new");
    EXPECT_EQ(CountOfFiles(), 1u);
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

TEST(PathBytes, LengthChangesWhereUtf8SaysSo) {
    EXPECT_EQ(PathBytes(u"\u007F\u0080"), "\x7F\xC2\x80");
    EXPECT_EQ(PathBytes(u"\u07FF\u0800"), "\xDF\xBF\xE0\xA0\x80");
    EXPECT_EQ(PathBytes(u"\uD7FF\uE000"), "\xED\x9F\xBF\xEE\x80\x80");
    EXPECT_EQ(PathBytes(u"\uFFFF\U00010000"), "\xEF\xBF\xBF\xF0\x90\x80\x80");
    EXPECT_EQ(PathBytes(u"\U000FFFFF\U0010FFFF"), "\xF3\xBF\xBF\xBF\xF4\x8F\xBF\xBF");
}

TEST(PathBytes, BytesThatAreNotUtf8TravelAsLoneSurrogates) {
    const char16_t name[] = {'x', 0xDCE4, 0xDC80, 0};
    EXPECT_EQ(PathBytes(name), "x\xe4\x80");
}

TEST(PathBytes, OtherLoneSurrogatesAreReplaced) {
    const char16_t name[] = {0xD800, 'x', 0xDC00, 0};
    EXPECT_EQ(PathBytes(name), "\uFFFDx\uFFFD");
}

} // namespace
