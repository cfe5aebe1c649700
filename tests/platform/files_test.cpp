// Files and folders under 8-bit names, and the errors they raise.
#include "platform/errors.h"
#include "platform/files.h"
#include "tests/support/environment.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <algorithm>

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

using namespace lumbrix;
using namespace tests;

class PlatformFiles : public testing::Test {
  protected:
    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    TemporaryFolder folder_;
};

TEST(Trap, EndsTheBodyAndGivesBackTheError) {
    bool wentOn = false;
    const auto error = trap([&] {
        throw RuntimeError(53, "file not found");
        wentOn = true;
    });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), 53);
    EXPECT_STREQ(error->what(), "file not found");
    EXPECT_FALSE(wentOn);
    EXPECT_FALSE(trap([] {}));
}

TEST(Trap, LetsOtherExceptionsPass) {
    EXPECT_THROW(trap([] { throw std::logic_error("a mistake"); }), std::logic_error);
}

// The reason in the error's text, behind what could not be done.
std::string ReasonOf(const std::optional<RuntimeError>& error, const std::string& action) {
    const std::string text = error ? error->what() : "";
    EXPECT_EQ(text.substr(0, action.size()), action);
    return text.substr(std::min(text.size(), action.size()));
}

TEST_F(PlatformFiles, ErrorsGiveTheSystemsReason) {
    WriteBytes(folder_ / "file", "");
    const std::string missing =
        ReasonOf(trap([&] { RemoveFile(Path("none")); }), "cannot delete " + Path("none") + ": ");
    const std::string occupied =
        ReasonOf(trap([&] { MakeFolders(Path("file")); }), "cannot make " + Path("file") + ": ");
    EXPECT_NE(missing.find("ile"), std::string::npos) << missing;
    EXPECT_NE(missing, occupied);
    for (const std::string& reason : {missing, occupied}) {
        EXPECT_GT(reason.size(), 8u);
        EXPECT_EQ(reason.find_first_of("\r\n"), std::string::npos) << reason;
        EXPECT_EQ(reason.find_last_not_of(". "), reason.size() - 1) << reason;
    }
}

TEST(SystemReason, NumberThatMeansNothingIsToldItself) {
    EXPECT_NE(SystemReason(987654321).find("987654321"), std::string::npos);
}

TEST_F(PlatformFiles, RemovingAMissingFileRaises) { EXPECT_THROW(RemoveFile(Path("none")), RuntimeError); }

TEST_F(PlatformFiles, TryingToRemoveTellsTheSystemsNumber) {
    constexpr int NoSuchFile = 2; // on both systems
    WriteBytes(folder_ / "file", "");
    EXPECT_EQ(TryToRemoveFile(Path("file")), 0);
    EXPECT_EQ(TryToRemoveFile(Path("file")), NoSuchFile);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "file"));
}

TEST_F(PlatformFiles, WritingKeepsWhatStandsBehind) {
    WriteBytes(folder_ / "file", "abcdef");
    WriteIntoFile(Path("file"), "XY");
    EXPECT_EQ(ReadBytes(folder_ / "file"), "XYcdef");
    WriteIntoFile(Path("new"), "Z");
    EXPECT_EQ(ReadBytes(folder_ / "new"), "Z");
}

TEST_F(PlatformFiles, WritingToAnEmptyNameRaises) { EXPECT_THROW(WriteIntoFile("", "x"), RuntimeError); }

TEST_F(PlatformFiles, WritingAWholeFileLeavesNothingOfTheOldOne) {
    WriteBytes(folder_ / "file", "abcdef");
    WriteWholeFile(Path("file"), "X\r\n");
    EXPECT_EQ(ReadBytes(folder_ / "file"), "X\r\n");
    WriteWholeFile(Path("new"), "Z");
    EXPECT_EQ(ReadBytes(folder_ / "new"), "Z");
    EXPECT_THROW(WriteWholeFile(Path("none/new"), "Z"), RuntimeError);
}

TEST_F(PlatformFiles, AppendingMakesTheFileAndAddsToIt) {
    AppendToFile(Path("list"), "a");
    AppendToFile(Path("list"), "b");
    EXPECT_EQ(ReadFileContent(Path("list")), "ab");
    EXPECT_THROW(AppendToFile(Path("none/list"), "a"), RuntimeError);
}

TEST_F(PlatformFiles, DuplicateReplacesTheWholeTarget) {
    WriteBytes(folder_ / "a", "new");
    WriteBytes(folder_ / "b", "older and longer");
    DuplicateFile(Path("a"), Path("b"));
    EXPECT_EQ(ReadBytes(folder_ / "b"), "new");
    EXPECT_EQ(ReadBytes(folder_ / "a"), "new");
    EXPECT_EQ(FilesIn(folder_.Path().string()).size(), 2u);
}

TEST_F(PlatformFiles, DuplicateOfALargeFileIsWhole) {
    std::string bytes(700001, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(i * 2654435761u >> 24);
    }
    WriteBytes(folder_ / "large", bytes);
    DuplicateFile(Path("large"), Path("copy"));
    EXPECT_TRUE(ReadBytes(folder_ / "copy") == bytes);
}

#ifndef _WIN32
TEST_F(PlatformFiles, NewTemporaryFileIsEmptyAndNotHeldOpen) {
    using Entries = std::filesystem::directory_iterator;
    const auto countOpen = [] { return std::distance(Entries("/proc/self/fd"), Entries()); };
    const auto before = countOpen();
    for (int i = 0; i < 3; ++i) {
        const std::string file = NewTemporaryFile("IMG");
        EXPECT_EQ(std::filesystem::file_size(file), 0u);
        RemoveFile(file);
    }
    EXPECT_EQ(countOpen(), before);
}
#endif

TEST_F(PlatformFiles, SmallFileIsReadUpToAMebibyte) {
    const std::string longest(1 << 20, 'x');
    WriteBytes(folder_ / "longest", longest);
    WriteBytes(folder_ / "longer", longest + "x");
    EXPECT_EQ(ReadSmallFile(Path("longest")), longest);
    EXPECT_EQ(ReadSmallFile(Path("longer")), "");
    EXPECT_EQ(ReadSmallFile(Path("none")), "");
    EXPECT_EQ(ReadSmallFile(folder_.Path().string()), "");
}

// One that is written over in place would change under its other name too.
TEST_F(PlatformFiles, ReplacingPutsANewFileInThePlaceOfTheOldOne) {
    WriteBytes(folder_ / "a", "old and longer");
    std::filesystem::create_hard_link(folder_ / "a", folder_ / "other");
    ReplaceWholeFile(Path("a"), "new");
    ReplaceWholeFile(Path("b"), "also new");
    EXPECT_EQ(ReadBytes(folder_ / "a"), "new");
    EXPECT_EQ(ReadBytes(folder_ / "b"), "also new");
    EXPECT_EQ(ReadBytes(folder_ / "other"), "old and longer");
    EXPECT_EQ(FilesIn(folder_.Path().string()).size(), 3u);
}

TEST_F(PlatformFiles, ReplacingThatFailsRaisesAndLeavesNothingBehind) {
    const TemporaryFolder temporary;
    const EnvironmentVariable variable(TemporaryFolderVariable, temporary.Path().string().c_str());
    std::filesystem::create_directory(folder_ / "folder");
    const auto error = trap([&] { ReplaceWholeFile(Path("folder"), "new"); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->what(), "cannot write " + Path("folder") + ": " + SystemReason(error->Number()));
    EXPECT_THROW(ReplaceWholeFile(Path("none") + PathSeparator + "b", "new"), RuntimeError);
    EXPECT_THROW(ReplaceWholeFile("", "new"), RuntimeError);
    EXPECT_TRUE(FilesIn(folder_.Path().string()).empty());
    EXPECT_TRUE(FilesIn(temporary.Path().string()).empty());
}

// Whatever is made on the way has to have a shorter name.
TEST_F(PlatformFiles, DuplicateMayHaveTheLongestName) {
    constexpr std::size_t LongestName = 255;
    constexpr std::size_t LongestWindowsPath = 259;
    const std::size_t length =
        PathSeparator == '/' ? LongestName : LongestWindowsPath - folder_.Path().string().size() - 1;
    const std::string target = Path(std::string(length, 'n'));
    WriteBytes(folder_ / "a", "new");
    DuplicateFile(Path("a"), target);
    EXPECT_EQ(ReadFileContent(target), "new");
}

TEST_F(PlatformFiles, DuplicateThatCannotBeMadeRaisesAndLeavesTheTarget) {
    WriteBytes(folder_ / "a", "new");
    WriteBytes(folder_ / "b", "old");
    std::filesystem::create_directory(folder_ / "folder");
    EXPECT_THROW(DuplicateFile(Path("none"), Path("b")), RuntimeError);
    EXPECT_THROW(DuplicateFile(Path("a"), ""), RuntimeError);
    EXPECT_THROW(DuplicateFile(Path("a"), Path("none") + PathSeparator + "b"), RuntimeError);
    EXPECT_THROW(DuplicateFile(Path("a"), Path("folder")), RuntimeError);
    EXPECT_EQ(ReadBytes(folder_ / "b"), "old");
    EXPECT_EQ(FilesIn(folder_.Path().string()).size(), 2u);
}

TEST_F(PlatformFiles, ListingPassesOverFolders) {
    std::filesystem::create_directory(folder_ / "folder");
    WriteBytes(folder_ / "b", "");
    WriteBytes(folder_ / "a.txt", "");
    auto names = FilesIn(folder_.Path().string());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"a.txt", "b"}));
    EXPECT_TRUE(FilesIn(Path("none")).empty());
}

TEST_F(PlatformFiles, FoldersAreMadeWithAllAboveAndRemovedWhenEmpty) {
    const std::string deep = (folder_ / "one").string() + PathSeparator + "two";
    MakeFolders(deep);
    EXPECT_TRUE(std::filesystem::is_directory(deep));
    WriteBytes(std::filesystem::path(deep) / "file", "");
    EXPECT_THROW(RemoveFolder(deep), RuntimeError);
    RemoveFile(deep + PathSeparator + "file");
    RemoveFolder(deep);
    EXPECT_FALSE(std::filesystem::exists(deep));
}

TEST_F(PlatformFiles, MakingAFolderBelowAFileRaises) {
    WriteBytes(folder_ / "file", "");
    EXPECT_THROW(MakeFolders(Path("file") + PathSeparator + "folder"), RuntimeError);
}

TEST_F(PlatformFiles, SearchGivesTheBareNameAndGoesOn) {
    WriteBytes(folder_ / "one.dll", "");
    WriteBytes(folder_ / "two.dll", "");
    FileSearch search;
    std::vector<std::string> found{search.FirstMatch(Path("*.dll")), search.FirstMatch("")};
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, (std::vector<std::string>{"one.dll", "two.dll"}));
    EXPECT_EQ(search.FirstMatch(""), "");
    EXPECT_EQ(search.FirstMatch(Path("none.dll")), "");
    EXPECT_EQ(search.FirstMatch(""), "") << "a search that found nothing goes on with nothing";
}

TEST_F(PlatformFiles, SearchRaisesWhereTheFolderCannotBeListed) {
    constexpr int NoSuchFolder = PathSeparator == '\\' ? 3 : 2; // as each system numbers it
    WriteBytes(folder_ / "one.dll", "");
    WriteBytes(folder_ / "two.dll", "");
    FileSearch search;
    search.FirstMatch(Path("*.dll"));
    const auto error = trap([&] { search.FirstMatch(Path("none") + PathSeparator + "*.dll"); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), NoSuchFolder);
    EXPECT_EQ(search.FirstMatch(""), "") << "the search before is over";
    EXPECT_THROW(search.FirstMatch(Path(std::string(5000, 'n')) + PathSeparator + "*.*"), RuntimeError);
}

TEST_F(PlatformFiles, SearchOfAnEmptyFolderFindsNothing) {
    std::filesystem::create_directory(folder_ / "empty");
    FileSearch search;
    EXPECT_EQ(search.FirstMatch(Path("empty") + PathSeparator + "*.*"), "");
    EXPECT_EQ(search.FirstMatch(Path("empty") + PathSeparator + "none"), "");
}

TEST_F(PlatformFiles, SizeOfAMissingFileIsNothing) {
    WriteBytes(folder_ / "file", "abc");
    EXPECT_EQ(FileSize(Path("file")), 3u);
    EXPECT_EQ(FileSize(Path("none")), std::nullopt);
}

#ifdef _WIN32

TEST_F(PlatformFiles, HiddenAndSystemFilesCountAsAbsent) {
    for (const auto& [name, mark] :
         {std::pair<const char*, DWORD>{".hidden", FILE_ATTRIBUTE_HIDDEN}, {".system", FILE_ATTRIBUTE_SYSTEM}}) {
        WriteBytes(folder_ / name, ""); // with a dot for file systems that keep no marks
        EXPECT_NE(SetFileAttributesA(Path(name).c_str(), mark), 0);
        EXPECT_FALSE(FileExists(Path(name))) << name;
        FileSearch search;
        EXPECT_EQ(search.FirstMatch(Path("*.*")), "") << name;
        EXPECT_EQ(FilesIn(folder_.Path().string()), std::vector<std::string>{}) << name;
    }
}

#endif

} // namespace
