// What the imaging library's saves leave when the system fails them: at every call, in every manner.
#include "imaginglibrary/files/inputfile.h"
#include "imaginglibrary/files/outputfile.h"
#include "tests/faults/faultyfiles.h"
#include "tests/faults/systemerrors.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace imaginglibrary;
using namespace tests;
using Calls = std::vector<FileCall>;

class Commit : public testing::Test {
  protected:
    Commit() { WriteBytes(target_, "old"); }
    ~Commit() override { lacksUnnamedFiles = false; }

    Status Save(const std::filesystem::path& target) const {
        auto file = OutputFile::Create(target.u16string());
        if (!file.Ok()) {
            return file.GetStatus();
        }
        (*file)->Append("new", 3);
        return (*file)->Commit();
    }

    // The status of a save while the system fails, and whether it did.
    struct Ending {
        Status status;
        bool hasFailed;
    };
    Ending SaveWith(const FileFault& fault, const std::filesystem::path& target) const {
        BeginFileFault(fault);
        const Status status = Save(target);
        return {status, EndFileFault()};
    }

    std::size_t CountOfFiles() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}));
    }

    // Has every call of a kind fail, one after the other, until the save needs no more of them.
    void ExpectOldFileWhere(FileCall call, int error, Status status) {
        int number = 1;
        for (;; ++number) {
            const Ending ending = SaveWith({call, number, error}, target_);
            if (!ending.hasFailed) {
                break;
            }
            EXPECT_EQ(ending.status, status) << static_cast<int>(call) << " " << number;
            EXPECT_EQ(ReadBytes(target_), "old") << static_cast<int>(call) << " " << number;
            EXPECT_EQ(CountOfFiles(), 1u) << static_cast<int>(call) << " " << number;
            ASSERT_LT(number, 20);
        }
        EXPECT_GT(number, 1) << "a save makes such a call";
        EXPECT_EQ(ReadBytes(target_), "new");
        WriteBytes(target_, "old");
    }

    void ExpectNothingWhere(FileCall call) {
        EXPECT_EQ(SaveWith({call, 1, DiskFullError}, folder_ / "other").status, Status::Win32Error);
        EXPECT_EQ(CountOfFiles(), 1u) << static_cast<int>(call);
    }

    TemporaryFolder folder_;
    std::filesystem::path target_ = folder_ / "target";
};

TEST_F(Commit, FailureOfAnyCallLeavesTheOldFileAndNothingElse) {
    for (const FileCall call : {FileCall::Write, FileCall::Flush, FileCall::Name, FileCall::Rename}) {
        ExpectOldFileWhere(call, DiskFullError, Status::Win32Error);
    }
    ExpectOldFileWhere(FileCall::Open, TooManyFilesError, Status::GenericError);
}

TEST_F(Commit, FailureOfAnyCallLeavesNoNewFile) {
    for (const FileCall call : {FileCall::Write, FileCall::Name, FileCall::Close, FileCall::Rename}) {
        ExpectNothingWhere(call);
    }
}

TEST_F(Commit, HalfAWriteIsGoneOnWith) {
    const Ending ending = SaveWith({FileCall::Write, 1, DiskFullError, Failing::Halfway}, target_);
    EXPECT_EQ(ending.status, Status::Win32Error) << "the other half finds the disk full";
    EXPECT_EQ(ReadBytes(target_), "old");
    EXPECT_EQ(CountOfFiles(), 1u);
}

TEST_F(Commit, FailureOfAWriteInTheMiddleStays) {
    const std::string large(100000, 'L');
    auto file = std::move(*OutputFile::Create(target_.u16string()));
    {
        const FaultyFiles fault({FileCall::Write, 2, DiskFullError});
        EXPECT_EQ(file->Append(large.data(), large.size()), Status::Ok);
        EXPECT_EQ(file->Append(large.data(), large.size()), Status::Win32Error);
    }
    EXPECT_EQ(file->Append("x", 1), Status::Win32Error);
    EXPECT_EQ(file->Append(large.data(), 65536), Status::Win32Error) << "which is handed on as it is";
    char byte = 0;
    EXPECT_EQ(file->ReadAt(0, &byte, 1).GetStatus(), Status::Win32Error);
    EXPECT_EQ(file->Commit(), Status::Win32Error);
    file.reset();
    EXPECT_EQ(ReadBytes(target_), "old");
    EXPECT_EQ(CountOfFiles(), 1u);
}

TEST_F(Commit, TargetIsReplacedByAFileThatIsOnTheDiskAndClosed) {
    SaveWith({}, target_);
    Calls calls = RecordedCalls();
    const auto write = std::find(calls.begin(), calls.end(), FileCall::Write);
    calls.erase(calls.begin(), write);
    EXPECT_EQ(calls, (Calls{FileCall::Write, FileCall::Flush, FileCall::Name, FileCall::Close, FileCall::Rename}));
}

TEST_F(Commit, FileThatReplacesNothingIsNotWaitedFor) {
    SaveWith({}, folder_ / "other");
    EXPECT_EQ(RecordedCalls(),
              (Calls{FileCall::Open, FileCall::Write, FileCall::Name, FileCall::Close, FileCall::Rename}));
}

// The disk may tell only when a file is closed that it has no room.
TEST_F(Commit, FailureOfClosingLeavesTheOldFileAndNothingElse) {
    SaveWith({}, target_);
    const Calls calls = RecordedCalls();
    const auto last = static_cast<int>(std::count(calls.begin(), calls.end(), FileCall::Close));
    WriteBytes(target_, "old");
    const Ending ending = SaveWith({FileCall::Close, last, DiskFullError}, target_);
    EXPECT_TRUE(ending.hasFailed);
    EXPECT_EQ(ending.status, Status::Win32Error);
    EXPECT_EQ(ReadBytes(target_), "old");
    EXPECT_EQ(CountOfFiles(), 1u);
}

TEST_F(Commit, ShortWriteIsGoneOnWithWhereItEnded) {
    const Ending ending = SaveWith({FileCall::Write, 1, 0, Failing::Short}, target_);
    EXPECT_EQ(ending.status, Status::Ok);
    EXPECT_EQ(ReadBytes(target_), "new");
}

#ifndef _WIN32

std::ptrdiff_t OpenDescriptors() { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); }

TEST_F(Commit, InterruptedCallsAreRepeated) {
    EXPECT_EQ(SaveWith({FileCall::Write, 1, EINTR}, target_).status, Status::Ok);
    EXPECT_EQ(ReadBytes(target_), "new");
    const auto file = *InputFile::Open(target_.u16string());
    const FaultyFiles fault({FileCall::Read, 1, EINTR});
    char bytes[3];
    const auto read = file->ReadAt(0, bytes, 3);
    ASSERT_TRUE(read.Ok());
    EXPECT_EQ(*read, 3u);
}

TEST_F(Commit, UnreadableDiskIsToldFromTheEndOfAFile) {
    const auto file = *InputFile::Open(target_.u16string());
    const FaultyFiles fault({FileCall::Read, 1, EIO});
    char bytes[3];
    EXPECT_EQ(file->ReadAt(0, bytes, 3).GetStatus(), Status::Win32Error);
}

TEST_F(Commit, WhereFilesHaveNamesFromTheStartNothingIsLeftEither) {
    lacksUnnamedFiles = true;
    for (const FileCall call : {FileCall::Write, FileCall::Flush, FileCall::Rename}) {
        ExpectOldFileWhere(call, DiskFullError, Status::Win32Error);
    }
    ExpectNothingWhere(FileCall::Rename);
}

TEST_F(Commit, NoDescriptorIsLeftOpen) {
    const auto before = OpenDescriptors();
    for (const FileCall call : {FileCall::Write, FileCall::Flush, FileCall::Name, FileCall::Rename, FileCall::Kinds}) {
        SaveWith({call, 1, DiskFullError}, target_);
        (void)InputFile::Open(target_.u16string());
    }
    EXPECT_EQ(OpenDescriptors(), before);
}

#endif

} // namespace
