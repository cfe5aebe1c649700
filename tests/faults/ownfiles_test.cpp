// What the program's own files are when the system fails it: settings, copies, the clean-up list.
#include "platform/cleanup.h"
#include "platform/errors.h"
#include "platform/filefacts.h"
#include "platform/files.h"
#include "platform/registry.h"
#include "tests/faults/faultyfiles.h"
#include "tests/faults/systemerrors.h"
#include "tests/support/ownsettings.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <algorithm>

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

using namespace lumbrix;
using namespace tests;
using Calls = std::vector<FileCall>;

class OwnFiles : public testing::Test {
  protected:
    OwnFiles() {
        WriteBytes(folder_ / "old", "old");
        WriteBytes(folder_ / "source", "new");
    }
    ~OwnFiles() override { lacksUnnamedFiles = false; }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    std::size_t CountOfFiles() const { return FilesIn(folder_.Path().string()).size(); }

    // Has each call of each kind fail once, in turn, while `body` works on the file "old"; it must raise that error and
    // change nothing.
    template <class Body> void ExpectOldFileWhereAnyCallFails(const std::vector<FileCall>& kinds, const Body& body) {
        for (const FileCall call : kinds) {
            int number = 1;
            for (; number < 20; ++number) {
                BeginFileFault({call, number, DiskFullError});
                const auto error = trap(body);
                if (!EndFileFault()) {
                    EXPECT_FALSE(error);
                    break;
                }
                ASSERT_TRUE(error) << static_cast<int>(call) << " " << number;
                EXPECT_EQ(error->Number(), DiskFullError);
                EXPECT_EQ(ReadBytes(folder_ / "old"), "old") << static_cast<int>(call) << " " << number;
                EXPECT_EQ(CountOfFiles(), 2u) << static_cast<int>(call) << " " << number;
            }
            EXPECT_GT(number, 1) << "no such call is made";
            EXPECT_EQ(ReadBytes(folder_ / "old"), "new");
            WriteBytes(folder_ / "old", "old");
        }
    }

    // The calls behind the last opening of a file.
    static Calls CallsBehindOpening() {
        Calls calls = RecordedCalls();
        const auto opening = std::find(calls.rbegin(), calls.rend(), FileCall::Open);
        calls.erase(calls.begin(), opening.base());
        std::erase(calls, FileCall::Read);
        return calls;
    }

    TemporaryFolder folder_;
};

TEST_F(OwnFiles, ReplacingThatFailsAtAnyCallLeavesTheOldFile) {
    ExpectOldFileWhereAnyCallFails(
        {FileCall::Open, FileCall::Write, FileCall::Flush, FileCall::Name, FileCall::Close, FileCall::Rename},
        [&] { ReplaceWholeFile(Path("old"), "new"); });
}

TEST_F(OwnFiles, CopyThatFailsAtAnyCallLeavesTheOldFile) {
    ExpectOldFileWhereAnyCallFails({FileCall::Open, FileCall::Write, FileCall::Flush, FileCall::Name, FileCall::Rename},
                                   [&] { DuplicateFile(Path("source"), Path("old")); });
}

TEST_F(OwnFiles, WritingThatFailsHalfwayRaisesAsTheDiskSays) {
    for (const auto write : {WriteWholeFile, WriteIntoFile, AppendToFile,
                             +[](const std::string&path, const std::string&bytes) { ReplaceWholeFile(path, bytes); }}) {
        const FaultyFiles fault({FileCall::Write, 1, DiskFullError, Failing::Halfway});
        const auto error = trap([&] { write(Path("other"), "new"); });
        ASSERT_TRUE(error);
        EXPECT_EQ(error->Number(), DiskFullError);
    }
}

TEST_F(OwnFiles, WholeFileIsWrittenOrThereIsAnError) {
    for (const auto write : {WriteWholeFile, WriteIntoFile, AppendToFile}) {
        const FaultyFiles fault({FileCall::Write, 1, DiskFullError});
        EXPECT_TRUE(trap([&] { write(Path("other"), "new"); }));
    }
}

// Half a path would be that of another file, which the next start would delete.
TEST_F(OwnFiles, CleanUpListHasNoHalfPaths) {
    const std::string program = folder_.Path().string() + PathSeparator;
    AppendToCleanUpList("first", program);
    {
        const FaultyFiles fault({FileCall::Write, 1, DiskFullError, Failing::Halfway});
        DeleteOrListFile(Path("missing"), program);
    }
    EXPECT_EQ(ReadBytes(folder_ / "CleanUp.txt"), "first\r\n");
    AppendToCleanUpList("second", program);
    EXPECT_EQ(ReadBytes(folder_ / "CleanUp.txt"), "first\r\nsecond\r\n");
}

// It goes with the handle: were it removed by a call, a kill before that would leave it.
TEST_F(OwnFiles, FileThatTriesAFolderGoesByItself) {
    BeginFileFault({});
    EXPECT_TRUE(CanMakeFileIn(folder_.Path().string()));
    EndFileFault();
    EXPECT_EQ(RecordedCalls(), (Calls{FileCall::Open, FileCall::Close}));
    EXPECT_EQ(CountOfFiles(), 2u);
}

#ifdef _WIN32

TEST_F(OwnFiles, CopyIsOnTheDiskBeforeItTakesAnothersPlace) {
    BeginFileFault({});
    DuplicateFile(Path("source"), Path("old"));
    EndFileFault();
    EXPECT_EQ(CallsBehindOpening(), (Calls{FileCall::Write, FileCall::Close, FileCall::Flush, FileCall::Name,
                                           FileCall::Close, FileCall::Rename}))
        << "the first to be closed is the source";
}

TEST_F(OwnFiles, NewContentIsOnTheDiskBeforeItTakesAnothersPlace) {
    BeginFileFault({});
    ReplaceWholeFile(Path("old"), "new");
    EndFileFault();
    EXPECT_EQ(CallsBehindOpening(),
              (Calls{FileCall::Write, FileCall::Flush, FileCall::Name, FileCall::Close, FileCall::Rename}));
}

#else

class OwnLinuxFiles : public OwnFiles {
  protected:
    mode_t Permissions(const std::string& name) const {
        struct stat facts {};
        EXPECT_EQ(stat(Path(name).c_str(), &facts), 0);
        return facts.st_mode & 07777u;
    }
};

TEST_F(OwnLinuxFiles, NewContentIsOnTheDiskAndClosedBeforeItTakesAnothersPlace) {
    const Calls behindOpening{FileCall::Write, FileCall::Flush, FileCall::Name, FileCall::Close, FileCall::Rename};
    BeginFileFault({});
    ReplaceWholeFile(Path("old"), "new");
    EndFileFault();
    EXPECT_EQ(CallsBehindOpening(), behindOpening);
    BeginFileFault({});
    DuplicateFile(Path("source"), Path("old"));
    EndFileFault();
    Calls calls = CallsBehindOpening();
    EXPECT_EQ(calls.back(), FileCall::Close) << "of the source";
    calls.pop_back();
    EXPECT_EQ(calls, behindOpening);
}

TEST_F(OwnLinuxFiles, WhereFilesHaveNamesFromTheStartNothingIsLeftEither) {
    lacksUnnamedFiles = true;
    ExpectOldFileWhereAnyCallFails(
        {FileCall::Open, FileCall::Write, FileCall::Flush, FileCall::Close, FileCall::Rename},
        [&] { ReplaceWholeFile(Path("old"), "new"); });
}

TEST_F(OwnLinuxFiles, FolderIsTriedWhereFilesHaveNamesFromTheStart) {
    lacksUnnamedFiles = true;
    EXPECT_TRUE(CanMakeFileIn(folder_.Path().string()));
    EXPECT_EQ(CountOfFiles(), 2u);
}

TEST_F(OwnLinuxFiles, InterruptedWriteIsRepeated) {
    const FaultyFiles fault({FileCall::Write, 1, EINTR});
    ReplaceWholeFile(Path("old"), "new");
    EXPECT_EQ(ReadBytes(folder_ / "old"), "new");
}

TEST_F(OwnLinuxFiles, DiskThatSaysSoAtTheEndOnlyIsBelieved) {
    for (const auto write : {WriteWholeFile, WriteIntoFile, AppendToFile}) {
        const FaultyFiles fault({FileCall::Close, 1, DiskFullError});
        const auto error = trap([&] { write(Path("other"), "new"); });
        ASSERT_TRUE(error);
        EXPECT_EQ(error->Number(), DiskFullError);
    }
}

TEST_F(OwnLinuxFiles, ReplacedFileHandsItsPermissionsOn) {
    ASSERT_EQ(chmod(Path("old").c_str(), 0640), 0);
    ReplaceWholeFile(Path("old"), "new");
    EXPECT_EQ(Permissions("old"), 0640u);
    ASSERT_EQ(chmod(Path("source").c_str(), 0604), 0);
    DuplicateFile(Path("source"), Path("old"));
    EXPECT_EQ(Permissions("old"), 0640u);
}

TEST_F(OwnLinuxFiles, ReplacedFileHandsItsOwnerOn) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root may make a file somebody else's";
    }
    ASSERT_EQ(chown(Path("old").c_str(), 1234, 5678), 0);
    ASSERT_EQ(chmod(Path("old").c_str(), 04751), 0);
    ReplaceWholeFile(Path("old"), "new");
    struct stat facts {};
    ASSERT_EQ(stat(Path("old").c_str(), &facts), 0);
    EXPECT_EQ(facts.st_uid, 1234u);
    EXPECT_EQ(facts.st_gid, 5678u);
    EXPECT_EQ(Permissions("old"), 04751u);
}

TEST_F(OwnLinuxFiles, NewFileFollowsTheUmask) {
    const mode_t before = umask(027);
    ReplaceWholeFile(Path("new"), "new");
    ASSERT_EQ(chmod(Path("source").c_str(), 0444), 0);
    DuplicateFile(Path("source"), Path("copy"));
    umask(before);
    EXPECT_EQ(Permissions("new"), 0640u);
    EXPECT_EQ(Permissions("copy"), 0640u) << "which may be written though the source may not";
}

TEST_F(OwnLinuxFiles, BehindALinkTheFileIsReplacedNotTheLink) {
    std::filesystem::create_directory(folder_ / "sub");
    std::filesystem::create_symlink("../old", folder_ / "sub/link");
    ReplaceWholeFile(Path("sub/link"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "sub/link"));
    EXPECT_EQ(ReadBytes(folder_ / "old"), "new");
    EXPECT_TRUE(FilesIn(Path("sub")).size() == 1u);
}

TEST_F(OwnLinuxFiles, FileIsMadeWhereALinkLeadsToNothing) {
    std::filesystem::create_directory(folder_ / "sub");
    std::filesystem::create_symlink(folder_ / "sub/second", folder_ / "first");
    std::filesystem::create_symlink("fresh", folder_ / "sub/second");
    ReplaceWholeFile(Path("first"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "first"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "sub/second"));
    EXPECT_EQ(ReadBytes(folder_ / "sub/fresh"), "new");
}

TEST_F(OwnLinuxFiles, LinksThatNeverEndAreLeftAlone) {
    std::filesystem::create_symlink("second", folder_ / "first");
    std::filesystem::create_symlink("first", folder_ / "second");
    const auto error = trap([&] { ReplaceWholeFile(Path("first"), "new"); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), ELOOP);
    EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "first"));
}

TEST_F(OwnLinuxFiles, LineThatCannotBeWrittenIsNotThere) {
    AppendToFile(Path("list"), "first\n");
    const FaultyFiles fault({FileCall::Write, 1, DiskFullError});
    EXPECT_THROW(AppendToFile(Path("list"), "second\n"), RuntimeError);
    EXPECT_EQ(ReadBytes(folder_ / "list"), "first\n");
}

TEST_F(OwnLinuxFiles, ShortWriteIsGoneOnWithWhereItEnded) {
    const FaultyFiles fault({FileCall::Write, 1, 0, Failing::Short});
    ReplaceWholeFile(Path("old"), "newer");
    EXPECT_EQ(ReadBytes(folder_ / "old"), "newer");
}

TEST_F(OwnLinuxFiles, ReadingIsRepeatedWhereItIsInterrupted) {
    BeginFileFault({FileCall::Read, 1, EINTR});
    EXPECT_EQ(ReadFileContent(Path("old")), "old");
    BeginFileFault({FileCall::Read, 1, EINTR});
    DuplicateFile(Path("source"), Path("old"));
    EndFileFault();
    EXPECT_EQ(ReadBytes(folder_ / "old"), "new");
}

TEST_F(OwnLinuxFiles, WhatCannotBeReadIsNotTakenForTheEnd) {
    BeginFileFault({FileCall::Read, 1, EIO});
    EXPECT_THROW(ReadFileContent(Path("old")), RuntimeError);
    BeginFileFault({FileCall::Read, 1, EIO});
    EXPECT_THROW(DuplicateFile(Path("source"), Path("old")), RuntimeError);
    EndFileFault();
    EXPECT_EQ(ReadBytes(folder_ / "old"), "old");
}

TEST_F(OwnLinuxFiles, PipeIsNotCopied) {
    ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
    EXPECT_THROW(DuplicateFile(Path("pipe"), Path("old")), RuntimeError); // and not waited for
    EXPECT_EQ(ReadBytes(folder_ / "old"), "old");
}

TEST_F(OwnLinuxFiles, NoDescriptorIsLeftOpen) {
    const auto count = [] { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); };
    const auto before = count();
    for (const FileCall call : {FileCall::Write, FileCall::Flush, FileCall::Rename, FileCall::Kinds}) {
        BeginFileFault({call, 1, DiskFullError});
        trap([&] { ReplaceWholeFile(Path("old"), "new"); });
        BeginFileFault({call, 1, DiskFullError});
        trap([&] { DuplicateFile(Path("source"), Path("old")); });
        EndFileFault();
    }
    EXPECT_EQ(count(), before);
}

class FaultySettings : public OwnFiles {
  protected:
    FaultySettings() { SetRegValue(CurrentUserRoot, "A", "Name", "old"); }

    std::string Value() const { return GetRegValue(CurrentUserRoot, "A", "Name"); }

    OwnSettings own_;
};

TEST_F(FaultySettings, StayAsTheyWereWhereTheyCannotBeWritten) {
    for (const FileCall call : {FileCall::Write, FileCall::Flush, FileCall::Name, FileCall::Rename}) {
        BeginFileFault({call, 1, DiskFullError, Failing::Onwards});
        SetRegValue(CurrentUserRoot, "A", "Name", "new");
        EXPECT_TRUE(EndFileFault());
        EXPECT_EQ(Value(), "old");
        EXPECT_EQ(FilesIn(own_.Folder().string()).size(), 1u);
    }
}

// An empty file must not be made of settings that could not be read a moment ago.
TEST_F(FaultySettings, AreNotLostWhereTheyCannotBeRead) {
    for (int number = 1;; ++number) {
        BeginFileFault({FileCall::Open, number, TooManyFilesError});
        SetRegValue(CurrentUserRoot, "B", "Name", "new");
        if (!EndFileFault()) {
            ASSERT_GT(number, 3);
            break;
        }
        EXPECT_EQ(Value(), "old") << number;
    }
    EXPECT_EQ(GetRegValue(CurrentUserRoot, "B", "Name"), "new");
}

TEST_F(FaultySettings, AreNotLostWhereTheDiskCannotBeRead) {
    for (int number = 1; number < 10; ++number) {
        BeginFileFault({FileCall::Read, number, EIO});
        SetRegValue(CurrentUserRoot, "A", "Other", "new");
        EndFileFault();
        EXPECT_EQ(Value(), "old") << number;
    }
}

TEST_F(FaultySettings, NeedNoRoomInTheFolderForTemporaryFiles) {
    const TemporaryFilesIn nowhere(folder_ / "missing");
    SetRegValue(CurrentUserRoot, "A", "Name", "new");
    EXPECT_EQ(Value(), "new");
}

#endif

} // namespace
