// Temporary files, the clean-up list, the Work folder.
#include "platform/cleanup.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "tests/support/heldfile.h"
#endif

namespace {

using namespace lumbrix;
using namespace tests;

// A program folder of its own. A folder with a file in it stands for a file that cannot be deleted.
class CleanUp : public testing::Test {
  protected:
    std::string Path(const std::string& name) const { return folder_.Path().string() + PathSeparator + name; }
    std::string WorkPath(const std::string& name) const { return Path("Work") + PathSeparator + name; }

    void MakeUndeletable(const std::string& name) {
        std::filesystem::create_directory(folder_ / name);
        WriteBytes(folder_ / name / "inside", "");
    }

    bool Exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }
    std::string List() const { return ReadBytes(folder_ / "CleanUp.txt"); }

    TemporaryFolder folder_;
    std::string program_ = folder_.Path().string() + PathSeparator;
};

TEST_F(CleanUp, DeletedFileIsNotListed) {
    WriteBytes(folder_ / "file", "");
    DeleteOrListFile(Path("file"), program_);
    EXPECT_FALSE(Exists("file"));
    EXPECT_FALSE(Exists("CleanUp.txt"));
}

TEST_F(CleanUp, FileThatCannotBeDeletedIsListed) {
    MakeUndeletable("kept");
    DeleteOrListFile(Path("kept"), program_);
    DeleteOrListFile(Path("missing"), program_);
    EXPECT_EQ(List(), Path("kept") + "\r\n" + Path("missing") + "\r\n");
}

TEST_F(CleanUp, SamePathMayBeListedTwice) {
    AppendToCleanUpList("a", program_);
    AppendToCleanUpList("a", program_);
    EXPECT_EQ(List(), "a\r\na\r\n");
}

TEST_F(CleanUp, ProgramFolderThatCannotBeWrittenForgetsThePath) {
    DeleteOrListFile(Path("missing"), Path("nowhere") + PathSeparator);
    EXPECT_THROW(AppendToCleanUpList("a", Path("nowhere") + PathSeparator), RuntimeError);
}

TEST_F(CleanUp, WithoutAListNothingHappens) {
    SweepCleanUpList(program_);
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(CleanUp, EmptyListIsDeleted) {
    WriteBytes(folder_ / "CleanUp.txt", "");
    SweepCleanUpList(program_);
    EXPECT_FALSE(Exists("CleanUp.txt"));
}

TEST_F(CleanUp, ListedFilesAreDeletedAndMissingOnesPassedOver) {
    WriteBytes(folder_ / "first", "");
    WriteBytes(folder_ / "last", "");
    for (const char* name : {"first", "missing", "last"}) {
        AppendToCleanUpList(Path(name), program_);
    }
    SweepCleanUpList(program_);
    EXPECT_FALSE(Exists("first"));
    EXPECT_FALSE(Exists("last"));
    EXPECT_FALSE(Exists("CleanUp.txt"));
}

TEST_F(CleanUp, LastLineCountsWithoutItsEnd) {
    WriteBytes(folder_ / "file", "");
    WriteBytes(folder_ / "CleanUp.txt", Path("file"));
    SweepCleanUpList(program_);
    EXPECT_FALSE(Exists("file"));
}

TEST_F(CleanUp, PathStillInUseIsDroppedFromTheList) {
    MakeUndeletable("kept");
    AppendToCleanUpList(Path("kept"), program_);
    SweepCleanUpList(program_);
    EXPECT_TRUE(Exists("kept"));
    EXPECT_FALSE(Exists("CleanUp.txt"));
}

TEST_F(CleanUp, WorkFolderDoesNotSurvive) {
    SweepWorkFolder(program_);
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(CleanUp, FilesLeftInTheWorkFolderAreDeleted) {
    std::filesystem::create_directory(folder_ / "Work");
    WriteBytes(folder_ / "Work" / "left.bmp", "");
    WriteBytes(folder_ / "Work" / "left", "");
    SweepWorkFolder(program_);
    EXPECT_FALSE(Exists("Work"));
    EXPECT_FALSE(Exists("CleanUp.txt"));
}

TEST_F(CleanUp, WorkFolderThatCannotBeRemovedStaysInSilence) {
    std::filesystem::create_directory(folder_ / "Work");
    MakeUndeletable("Work/folder");
    SweepWorkFolder(program_);
    EXPECT_TRUE(Exists("Work"));
}

TEST_F(CleanUp, WorkFolderThatCannotBeMadeIsPassedOver) {
    WriteBytes(folder_ / "Work", "a file of that name");
    SweepWorkFolder(program_);
    EXPECT_EQ(ReadBytes(folder_ / "Work"), "a file of that name");
}

TEST_F(CleanUp, TemporaryImageIsNewEmptyAndNamedAsJpegIsWrittenTo) {
    const std::string path = NewTempImageName();
    const std::string other = NewTempImageName();
    const std::string name = path.substr(TempFolderPath().size());
    EXPECT_EQ(path.substr(0, TempFolderPath().size()), TempFolderPath());
    EXPECT_EQ(std::filesystem::file_size(path), 0u);
    EXPECT_EQ(name.substr(0, 3), "IMG");
    EXPECT_EQ(name.substr(name.size() - 4), ".tmp");
    EXPECT_EQ(name.find_first_not_of("0123456789ABCDEFabcdef", 3), name.size() - 4);
    EXPECT_NE(path, other);
    EnsureFileExists(path);
    EXPECT_EQ(std::filesystem::file_size(path), 0u) << "making sure changes nothing";
    RemoveFile(path);
    RemoveFile(other);
}

TEST_F(CleanUp, EnsuringMakesAFileAndKeepsAnExistingOne) {
    EnsureFileExists(Path("new"));
    EXPECT_EQ(ReadBytes(folder_ / "new"), "");
    WriteBytes(folder_ / "old", "content");
    EnsureFileExists(Path("old"));
    EXPECT_EQ(ReadBytes(folder_ / "old"), "content");
}

TEST(ProgramFolder, IsThatOfTheRunningProgram) {
    EXPECT_EQ(ProgramFolder().back(), PathSeparator);
    EXPECT_EQ(ProgramPath().substr(0, ProgramFolder().size()), ProgramFolder());
    EXPECT_EQ(ProgramPath().find(PathSeparator, ProgramFolder().size()), std::string::npos);
}

#ifdef _WIN32

TEST_F(CleanUp, FileInUseIsListedAndDroppedWhereItStaysInUse) {
    WriteBytes(folder_ / "used", "");
    const HANDLE file =
        CreateFileA(Path("used").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    DeleteOrListFile(Path("used"), program_);
    EXPECT_EQ(List(), Path("used") + "\r\n");
    SweepCleanUpList(program_);
    EXPECT_TRUE(Exists("used"));
    EXPECT_FALSE(Exists("CleanUp.txt"));
    CloseHandle(file);
}

TEST_F(CleanUp, FileInUseInTheWorkFolderIsListed) {
    std::filesystem::create_directory(folder_ / "Work");
    WriteBytes(folder_ / "Work" / "used.bmp", "");
    WriteBytes(folder_ / "Work" / "left.bmp", "");
    const HeldFile held(WorkPath("used.bmp"));
    SweepWorkFolder(program_);
    EXPECT_EQ(List(), WorkPath("used.bmp") + "\r\n");
    EXPECT_FALSE(Exists("Work/left.bmp"));
}

TEST_F(CleanUp, HiddenFilesArePassedOverWithoutAnError) {
    WriteBytes(folder_ / "hidden", "");
    SetFileAttributesA(Path("hidden").c_str(), FILE_ATTRIBUTE_HIDDEN);
    if ((GetFileAttributesA(Path("hidden").c_str()) & FILE_ATTRIBUTE_HIDDEN) == 0) {
        GTEST_SKIP() << "this file system keeps no hidden mark";
    }
    DeleteOrListFile(Path("hidden"), program_);
    EXPECT_TRUE(Exists("hidden"));
    EXPECT_FALSE(Exists("CleanUp.txt"));
}

TEST_F(CleanUp, HiddenFilesAreDeletedWhereThatIsMeant) {
    WriteBytes(folder_ / "hidden", "");
    SetFileAttributesA(Path("hidden").c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(TryToRemoveFile(Path("hidden")), 0);
    EXPECT_FALSE(Exists("hidden"));
}

#endif

} // namespace
