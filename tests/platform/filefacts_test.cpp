// What can be found out about files without changing them.
#include "platform/filefacts.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace {

using namespace lumbrix;
using namespace tests;

class FileFacts : public testing::Test {
  protected:
    FileFacts() { WriteBytes(folder_ / "file", "content"); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    std::size_t CountOfFiles() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}));
    }

    TemporaryFolder folder_;
};

TEST_F(FileFacts, KindsAreToldApart) {
    EXPECT_EQ(KindOfFile(Path("file")), FileKind::Regular);
    EXPECT_EQ(KindOfFile(folder_.Path().string()), FileKind::Folder);
    EXPECT_EQ(KindOfFile(Path("none")), FileKind::Missing);
    EXPECT_EQ(KindOfFile(""), FileKind::Missing);
#ifdef _WIN32
    EXPECT_EQ(KindOfFile(Path("what?")), FileKind::Impossible);
#else
    EXPECT_EQ(KindOfFile(Path(std::string(255, 'n'))), FileKind::Missing);
    EXPECT_EQ(KindOfFile(Path(std::string(256, 'n'))), FileKind::Impossible);
    ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(KindOfFile(Path("pipe")), FileKind::Other);
    std::filesystem::create_symlink("file", folder_ / "link");
    EXPECT_EQ(KindOfFile(Path("link")), FileKind::Regular);
#endif
}

TEST_F(FileFacts, FilesThatCanBeOpenedStayAsTheyAre) {
    EXPECT_TRUE(CanReadFile(Path("file")));
    EXPECT_TRUE(CanWriteFile(Path("file")));
    EXPECT_EQ(ReadBytes(folder_ / "file"), "content");
    EXPECT_FALSE(CanReadFile(Path("none")));
    EXPECT_FALSE(CanWriteFile(Path("none")));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "none"));
}

TEST_F(FileFacts, TryingAFolderLeavesNothingBehind) {
    EXPECT_TRUE(CanMakeFileIn(folder_.Path().string()));
    EXPECT_EQ(CountOfFiles(), 1u);
    EXPECT_FALSE(CanMakeFileIn(Path("none")));
}

TEST_F(FileFacts, OneFileUnderTwoNamesIsSeen) {
    WriteBytes(folder_ / "other", "content");
    EXPECT_TRUE(IsSameFile(Path("file"), folder_.Path().string() + "/./file"));
    EXPECT_FALSE(IsSameFile(Path("file"), Path("other")));
    EXPECT_FALSE(IsSameFile(Path("none"), Path("none")));
    EXPECT_FALSE(IsSameFile(Path("file"), Path("none")));
}

TEST_F(FileFacts, FolderOfANameIsGivenInFull) {
    EXPECT_EQ(FullFolderOf(Path("file")), folder_.Path().string());
    EXPECT_EQ(FullFolderOf("bare"), std::filesystem::current_path().string());
}

} // namespace
