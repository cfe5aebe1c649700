// The small procedures on file names.
#include "imaging/paths.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(AddBackslash, AddsOneWhereThereIsNone) {
    EXPECT_EQ(AddBackslash(""), "");
    EXPECT_EQ(AddBackslash("C:\\a"), "C:\\a\\");
    EXPECT_EQ(AddBackslash("C:\\a\\"), "C:\\a\\");
    EXPECT_EQ(AddBackslash("C:\\a/"), "C:\\a/\\");
}

TEST(FileNamePart, IsWhatStandsBehindTheLastSeparator) {
    EXPECT_EQ(FileNamePart("C:\\a\\b.c.d"), "b.c.d");
    EXPECT_EQ(FileNamePart("C:\\a/b\\c/d.e"), "d.e");
    EXPECT_EQ(FileNamePart("C:\\a\\"), "");
    EXPECT_EQ(FileNamePart("plain"), "plain");
    EXPECT_EQ(FileNamePart(""), "");
}

TEST(BaseNamePart, EndsAtTheFirstDot) {
    EXPECT_EQ(BaseNamePart("C:\\a\\b.c.d"), "b");
    EXPECT_EQ(BaseNamePart(".hidden"), "");
    EXPECT_EQ(BaseNamePart("C:\\a.b\\c"), "c");
}

TEST(ExtensionPart, StandsBehindTheLastDotInItsOwnCase) {
    EXPECT_EQ(ExtensionPart("C:\\a\\b.c.d"), "d");
    EXPECT_EQ(ExtensionPart("C:\\a.b\\c"), "");
    EXPECT_EQ(ExtensionPart("photo.JpG"), "JpG");
    EXPECT_EQ(ExtensionPart("photo."), "");
}

TEST(FolderPart, EndsInItsBackslash) {
    EXPECT_EQ(FolderPart("C:\\a\\b.txt"), "C:\\a\\");
    EXPECT_EQ(FolderPart("b.txt"), "");
    EXPECT_EQ(FolderPart("C:\\a/b.txt"), "C:\\");
    EXPECT_EQ(FolderPart("C:\\a\\"), "C:\\a\\");
}

TEST(ShortcutSize, IsTheSizeOrMinusOne) {
    tests::TemporaryFolder folder;
    tests::WriteBytes(folder / "file", "12345");
    EXPECT_EQ(ShortcutSize((folder / "file").string()), 5);
    EXPECT_EQ(ShortcutSize((folder / "none").string()), -1);
}

TEST(ShortcutSize, OfALargeFileIsItsLow32Bits) {
    tests::TemporaryFolder folder;
    tests::WriteBytes(folder / "file", "");
    for (const auto& [size, low] :
         {std::pair<std::uint64_t, std::int32_t>{0x100000005, 5}, {0x80000000, INT32_MIN}, {0xFFFFFFFE, -2}}) {
        std::filesystem::resize_file(folder / "file", size);
        EXPECT_EQ(ShortcutSize((folder / "file").string()), low) << size;
    }
}

TEST(ModulePath, NamesTheRunningProgram) {
    EXPECT_NE(ModulePath().find("imaging_test"), std::string::npos);
    EXPECT_LE(ModulePath().size(), 255u);
}

#ifdef _WIN32
TEST(SystemFolderPath, EndsInOneBackslash) {
    EXPECT_EQ(SystemFolderPath().substr(SystemFolderPath().size() - 2), "2\\");
    EXPECT_EQ(WindowsFolderPath().substr(WindowsFolderPath().size() - 2), "s\\");
}
#endif

} // namespace
