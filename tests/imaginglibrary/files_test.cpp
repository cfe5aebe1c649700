// Files that are read under a lock, and files that appear whole or not at all.
#include "imaginglibrary/files/inputfile.h"
#include "imaginglibrary/files/outputfile.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

using namespace imaginglibrary;
using namespace tests;

class Files : public testing::Test {
  protected:
    std::size_t CountOfFiles() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}));
    }

    Result<std::unique_ptr<OutputFile>> Create(const std::filesystem::path& path) {
        return OutputFile::Create(path.u16string());
    }

    TemporaryFolder folder_;
    std::filesystem::path target_ = folder_ / "target";
};

TEST_F(Files, MissingFileIsNotFound) {
    EXPECT_EQ(InputFile::Open((folder_ / "none").u16string()).GetStatus(), Status::FileNotFound);
    EXPECT_EQ(InputFile::Open((folder_ / "none/deeper").u16string()).GetStatus(), Status::FileNotFound);
    EXPECT_EQ(InputFile::Open(u"").GetStatus(), Status::FileNotFound);
}

TEST_F(Files, FolderCannotBeRead) {
    EXPECT_EQ(InputFile::Open(folder_.Path().u16string()).GetStatus(), Status::GenericError);
}

TEST_F(Files, ReadingBeyondTheEndGivesFewerBytes) {
    WriteBytes(target_, "abcdef");
    const auto file = *InputFile::Open(target_.u16string());
    char buffer[10];
    EXPECT_EQ(*file->ReadAt(4, buffer, sizeof buffer), 2u);
    EXPECT_EQ(*file->ReadAt(99, buffer, sizeof buffer), 0u);
    EXPECT_EQ(file->ReadExactlyAt(4, buffer, 3), UndecodableContent);
    EXPECT_EQ(file->Size(), 6u);
}

TEST_F(Files, ByteReaderFindsItsWayInAFileLongerThanItsBuffer) {
    std::string bytes(100000, 'x');
    bytes[70000] = 'y';
    WriteBytes(target_, bytes);
    ByteReader reader(*InputFile::Open(target_.u16string()));
    std::vector<char> all(bytes.size() + 5);
    EXPECT_EQ(reader.Read(all.data(), all.size()), bytes.size());
    EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), all.begin()));
    EXPECT_EQ(reader.ReadByte(), -1);
    reader.Seek(70000);
    EXPECT_EQ(reader.ReadByte(), 'y');
    EXPECT_EQ(reader.Position(), 70001u);
    reader.Seek(70000);
    EXPECT_EQ(reader.ReadByte(), 'y');
}

TEST_F(Files, TargetAppearsOnlyAtCommit) {
    auto file = Create(target_);
    ASSERT_TRUE(file.Ok());
    ASSERT_EQ((*file)->Append("abc", 3), Status::Ok);
    EXPECT_FALSE(std::filesystem::exists(target_));
    ASSERT_EQ((*file)->Commit(), Status::Ok);
    EXPECT_EQ(ReadBytes(target_), "abc");
    EXPECT_EQ(CountOfFiles(), 1u);
}

TEST_F(Files, WithoutCommitTheOldFileStaysAndNothingElse) {
    WriteBytes(target_, "old");
    {
        auto file = Create(target_);
        ASSERT_TRUE(file.Ok());
        ASSERT_EQ((*file)->Append(std::string(200000, 'n').data(), 200000), Status::Ok);
    }
    EXPECT_EQ(ReadBytes(target_), "old");
    EXPECT_EQ(CountOfFiles(), 1u);
}

TEST_F(Files, OldFileIsReplaced) {
    WriteBytes(target_, "an older and longer content");
    auto file = Create(target_);
    ASSERT_TRUE(file.Ok());
    ASSERT_EQ((*file)->Append("new", 3), Status::Ok);
    ASSERT_EQ((*file)->Commit(), Status::Ok);
    EXPECT_EQ(ReadBytes(target_), "new");
    EXPECT_EQ(CountOfFiles(), 1u);
}

TEST_F(Files, OldFileStaysThroughEveryStepOfACommit) {
    WriteBytes(target_, "old");
    auto file = std::move(*OutputFile::Create(target_.u16string(), [&](CommitStep step) {
        EXPECT_EQ(ReadBytes(target_), "old") << static_cast<int>(step);
        return true;
    }));
    ASSERT_EQ(file->Append("new", 3), Status::Ok);
    ASSERT_EQ(file->Commit(), Status::Ok);
    EXPECT_EQ(ReadBytes(target_), "new");
}

TEST_F(Files, FileThatTakesTheTargetsPlaceHasNoProgramsName) {
    std::vector<std::string> names;
    auto file = std::move(*OutputFile::Create(target_.u16string(), [&](CommitStep step) {
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
            names.push_back(step == CommitStep::Replace ? entry.path().filename().string() : "");
        }
        return true;
    }));
    ASSERT_EQ(file->Commit(), Status::Ok);
    ASSERT_FALSE(names.empty());
    EXPECT_TRUE(names.back().ends_with(".tmp"));
    EXPECT_EQ(names.back().find("lumbrix"), std::string::npos);
}

TEST_F(Files, OnlyAReplacingFileIsFlushed) {
    using enum CommitStep;
    const auto stepsTo = [&](const std::string& name) {
        std::vector<CommitStep> steps;
        auto file = std::move(*OutputFile::Create((folder_ / name).u16string(), [&](CommitStep step) {
            steps.push_back(step);
            return true;
        }));
        EXPECT_EQ(file->Commit(), Status::Ok);
        return steps;
    };
    EXPECT_EQ(stepsTo("a"), (std::vector<CommitStep>{Name, Close, Replace}));
    EXPECT_EQ(stepsTo("a"), (std::vector<CommitStep>{Flush, Name, Close, Replace}));
}

TEST_F(Files, StepThatFailsFailsTheCommitAndLeavesTheOldFileAndNothingElse) {
    for (const CommitStep failing : {CommitStep::Flush, CommitStep::Name, CommitStep::Close, CommitStep::Replace}) {
        WriteBytes(target_, "old");
        {
            auto file =
                std::move(*OutputFile::Create(target_.u16string(), [&](CommitStep step) { return step != failing; }));
            ASSERT_EQ(file->Append("new", 3), Status::Ok);
            EXPECT_EQ(file->Commit(), Status::Win32Error) << static_cast<int>(failing);
            EXPECT_EQ(file->Commit(), Status::Win32Error) << "the first failure stays";
        }
        EXPECT_EQ(ReadBytes(target_), "old");
        EXPECT_EQ(CountOfFiles(), 1u);
    }
}

TEST_F(Files, StepThatFailsLeavesNoNewFile) {
    for (const CommitStep failing : {CommitStep::Name, CommitStep::Close, CommitStep::Replace}) {
        {
            auto file =
                std::move(*OutputFile::Create(target_.u16string(), [&](CommitStep step) { return step != failing; }));
            EXPECT_EQ(file->Commit(), Status::Win32Error);
        }
        EXPECT_EQ(CountOfFiles(), 0u);
    }
}

TEST_F(Files, PiecesMayBeWrittenInAnyOrderAndReadBack) {
    auto file = Create(target_);
    ASSERT_TRUE(file.Ok());
    const std::string large(70000, 'L');
    (*file)->WriteAt(10, "tail", 4);
    (*file)->WriteAt(0, "head", 4);
    (*file)->Append(large.data(), large.size());
    (*file)->WriteAt(2, "AD", 2);
    char back[4];
    ASSERT_EQ(*(*file)->ReadAt(0, back, 4), 4u);
    EXPECT_EQ(std::string(back, 4), "heAD");
    EXPECT_EQ((*file)->Size(), 14 + large.size());
    ASSERT_EQ((*file)->Commit(), Status::Ok);
    EXPECT_EQ(ReadBytes(target_), "heAD" + std::string(6, '\0') + "tail" + large);
}

TEST_F(Files, FileInUseByAnImageIsNotReplaced) {
    WriteBytes(target_, "old");
    auto inUse = *InputFile::Open(target_.u16string());
    EXPECT_EQ(Create(target_).GetStatus(), Status::GenericError);
    inUse.reset();
    EXPECT_TRUE(Create(target_).Ok());
}

TEST_F(Files, TwoReadersMayShareAFile) {
    WriteBytes(target_, "old");
    const auto first = InputFile::Open(target_.u16string());
    const auto second = InputFile::Open(target_.u16string());
    EXPECT_TRUE(first.Ok());
    EXPECT_TRUE(second.Ok());
}

TEST_F(Files, TargetThatCannotBeAFileIsRefused) {
    std::filesystem::create_directory(folder_ / "folder");
    EXPECT_EQ(Create(folder_ / "folder").GetStatus(), Status::GenericError);
    EXPECT_EQ(Create(folder_ / "missing/file").GetStatus(), Status::GenericError);
    EXPECT_EQ(Create("").GetStatus(), Status::GenericError);
}

} // namespace
