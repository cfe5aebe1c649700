// Writing links, and the folders that they lie in, over a shell that records the calls.
#include "platform/files.h"
#include "platform/shelllink.h"
#include "tests/support/fakeshell.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

using ShellCalls = std::vector<std::string>;

const std::string Between(1, PathSeparator);

const LinkFields WholeLink = {.target = "/bin/a",
                              .workingFolder = "/work",
                              .arguments = "-x y",
                              .description = "What it is",
                              .iconFile = "/icons/b.ico",
                              .iconIndex = 3,
                              .showCommand = 7,
                              .hotKey = 0x641};

std::string Xs(std::size_t count) { return std::string(count, 'x'); }

FakeShell ShellWithDesktop(const std::string& path = "/desktop") {
    FakeShell shell;
    shell.folders[16] = path;
    return shell;
}

// The path that the last link was saved to.
std::string SavedPath(const FakeShell& shell) {
    for (const std::string& call : shell.calls) {
        if (call.starts_with("Save ")) {
            const std::size_t start = call.find('\'') + 1;
            return call.substr(start, call.rfind('\'') - start);
        }
    }
    return "nowhere";
}

TEST(CreateLink, SetsAllAndSavesToTheFolderAndReleases) {
    FakeShell shell = ShellWithDesktop();
    CreateLink(16, "Name", WholeLink, shell);
    EXPECT_EQ(
        shell.calls,
        (ShellCalls{"CreateLinkObject", "SetPath 7 '/bin/a'", "SetArguments 7 '-x y'", "SetWorkingDirectory 7 '/work'",
                    "SetShowCmd 7 7", "SetDescription 7 'What it is'", "SetIconLocation 7 '/icons/b.ico' 3",
                    "QueryLinkFile 7", "SpecialFolder 16", "PathOfItemList 116", "FreeItemList 116", "MakeWide 260",
                    "Resolve 7 4", "Save 8 '/desktop" + Between + "Name.lnk' remembered", "ReleaseLinkFile 8",
                    "ReleaseLink 7"}));
    EXPECT_TRUE(shell.messages.empty());
}

TEST(CreateLink, WritesEmptyTextsButNoEmptyDescriptionOrIcon) {
    FakeShell shell = ShellWithDesktop();
    CreateLink(16, "Name", {.iconIndex = 5, .showCommand = -1}, shell);
    shell.calls.resize(6);
    EXPECT_EQ(shell.calls, (ShellCalls{"CreateLinkObject", "SetPath 7 ''", "SetArguments 7 ''",
                                       "SetWorkingDirectory 7 ''", "SetShowCmd 7 -1", "QueryLinkFile 7"}));
}

TEST(CreateLink, StopsWithoutALinkObject) {
    FakeShell shell = ShellWithDesktop();
    shell.createCode = 1; // any but 0
    CreateLink(16, "Name", WholeLink, shell);
    EXPECT_EQ(shell.calls, (ShellCalls{"CreateLinkObject"}));
    EXPECT_TRUE(shell.messages.empty());
}

TEST(CreateLink, ReleasesTheLinkThatHasNoFile) {
    FakeShell shell = ShellWithDesktop();
    shell.file = 0;
    CreateLink(16, "Name", {}, shell);
    shell.calls.erase(shell.calls.begin(), shell.calls.begin() + 5);
    EXPECT_EQ(shell.calls, (ShellCalls{"QueryLinkFile 7", "ReleaseLink 7"}));
}

TEST(CreateLink, UnknownFolderIsTheCurrentOne) {
    FakeShell shell = ShellWithDesktop();
    CreateLink(99, "Name", {}, shell);
    EXPECT_EQ(SavedPath(shell), "/current" + Between + "Name.lnk");
    EXPECT_TRUE(shell.Had("SpecialFolder 99"));
    EXPECT_FALSE(shell.Had("PathOfItemList 199"));
    EXPECT_FALSE(shell.Had("FreeItemList 199"));
}

TEST(CreateLink, FolderWithoutAPathIsTheCurrentOneAndItsListIsFreed) {
    FakeShell shell = ShellWithDesktop("");
    CreateLink(16, "Name", {}, shell);
    EXPECT_EQ(SavedPath(shell), "/current" + Between + "Name.lnk");
    EXPECT_TRUE(shell.Had("FreeItemList 116"));
}

TEST(CreateLink, SeparatorIsAddedEvenWhereOneStands) {
    FakeShell shell = ShellWithDesktop("C:" + Between);
    CreateLink(16, "Name", {}, shell);
    EXPECT_EQ(SavedPath(shell), "C:" + Between + Between + "Name.lnk");
}

TEST(CreateLink, CutsThePathAt259Bytes) {
    const std::string start = "/desktop" + Between;
    FakeShell fitting = ShellWithDesktop();
    CreateLink(16, Xs(246), {}, fitting);
    EXPECT_EQ(SavedPath(fitting), start + Xs(246) + ".lnk");
    EXPECT_EQ(SavedPath(fitting).size(), 259u);
    FakeShell longer = ShellWithDesktop();
    CreateLink(16, Xs(247), {}, longer);
    EXPECT_EQ(SavedPath(longer), start + Xs(247) + ".ln");
}

TEST(CreateLink, CutsALongCurrentFolderToo) {
    FakeShell shell;
    shell.currentFolder = "/" + Xs(257);
    CreateLink(16, "Name", {}, shell);
    EXPECT_EQ(SavedPath(shell), "/" + Xs(257) + Between);
    FakeShell longer;
    longer.currentFolder = "/" + Xs(300);
    CreateLink(16, "Name", {}, longer);
    EXPECT_EQ(SavedPath(longer), "/" + Xs(258));
}

TEST(ShellLinkFactory, GivesTheObjectOrNone) {
    FakeShell shell;
    EXPECT_EQ(ShellLinkFactory(shell), 7u);
    shell.createCode = -1;
    EXPECT_EQ(ShellLinkFactory(shell), 0u);
}

TEST(ShellLinkFactory, SetsThePathLengthAnew) {
    FakeShell shell;
    shell.version = SystemVersion{2, 5};
    ShellLinkFactory(shell);
    EXPECT_EQ(ShellPathLength(), 1024);
    shell.version = std::nullopt;
    shell.createCode = -1;
    ShellLinkFactory(shell);
    EXPECT_EQ(ShellPathLength(), 260);
}

TEST(FindMaxPath, IsLongFromTheFifthVersionOfTheNtFamilyOn) {
    EXPECT_EQ(FindMaxPath(SystemVersion{2, 5}), 1024);
    EXPECT_EQ(FindMaxPath(SystemVersion{2, 10}), 1024);
    EXPECT_EQ(FindMaxPath(SystemVersion{2, 4}), 260);
    EXPECT_EQ(FindMaxPath(SystemVersion{2, 0}), 260);
}

TEST(FindMaxPath, IsShortForOtherFamiliesAndUnknownOnes) {
    EXPECT_EQ(FindMaxPath(SystemVersion{1, 5}), 260);
    EXPECT_EQ(FindMaxPath(SystemVersion{0, 5}), 260);
    EXPECT_EQ(FindMaxPath(SystemVersion{3, 5}), 260);
    EXPECT_EQ(FindMaxPath(std::nullopt), 260);
}

TEST(GetDestinationFolder, IsThePathOfItsListWhichIsNotFreed) {
    FakeShell shell = ShellWithDesktop();
    EXPECT_EQ(GetDestinationFolder(16, shell), "/desktop");
    EXPECT_EQ(shell.calls, (ShellCalls{"SpecialFolder 16", "PathOfItemList 116"}));
}

TEST(GetDestinationFolder, HoldsTheLongestPath) {
    FakeShell shell = ShellWithDesktop(Xs(259));
    EXPECT_EQ(GetDestinationFolder(16, shell), Xs(259));
}

TEST(GetDestinationFolder, IsEmptyWhereTheNumberIsUnknown) {
    FakeShell shell = ShellWithDesktop("");
    EXPECT_EQ(GetDestinationFolder(99, shell), "");
    EXPECT_EQ(shell.calls, (ShellCalls{"SpecialFolder 99"}));
    EXPECT_EQ(GetDestinationFolder(16, shell), ""); // known, without a path
}

TEST(GetDestinationFolder, IsEmptyForEveryCodeButZero) {
    FakeShell shell = ShellWithDesktop();
    shell.folderCode = 1;
    EXPECT_EQ(GetDestinationFolder(16, shell), "");
    CreateLink(16, "Name", {}, shell);
    EXPECT_EQ(SavedPath(shell), "/current" + Between + "Name.lnk");
}

TEST(RecentFolder, IsNumberEight) {
    FakeShell shell;
    shell.folders[8] = "/recent";
    EXPECT_EQ(RecentFolder(shell), "/recent");
}

// A folder of the shell and one of the program, both of the test's own, and the first is the current one.
class RemovedShortcut : public testing::Test {
  protected:
    RemovedShortcut() {
        std::filesystem::create_directory(folder_ / "desktop");
        std::filesystem::create_directory(folder_ / "program");
        WriteBytes(folder_ / "desktop" / "Name.lnk", "");
        std::filesystem::current_path(folder_ / "desktop");
    }
    ~RemovedShortcut() override { std::filesystem::current_path(before_); }

    std::string Desktop() const { return (folder_ / "desktop").string(); }
    void Remove(const std::string& name, FakeShell& shell) const {
        RemoveShortcut(name, 16, shell, (folder_ / "program").string() + PathSeparator);
    }
    bool IsThere() const { return std::filesystem::exists(folder_ / "desktop" / "Name.lnk"); }
    bool IsAnyListed() const { return std::filesystem::exists(folder_ / "program" / "CleanUp.txt"); }
    std::string List() const { return ReadBytes(folder_ / "program" / "CleanUp.txt"); }

    TemporaryFolder folder_;
    std::filesystem::path before_ = std::filesystem::current_path();
};

TEST_F(RemovedShortcut, IsDeleted) {
    FakeShell shell = ShellWithDesktop(Desktop());
    Remove("Name", shell);
    EXPECT_FALSE(IsThere());
    EXPECT_FALSE(IsAnyListed());
    EXPECT_EQ(shell.calls, (ShellCalls{"SpecialFolder 16", "PathOfItemList 116"}));
}

TEST_F(RemovedShortcut, ThatCannotBeDeletedIsListed) {
    FakeShell shell = ShellWithDesktop(Desktop());
    Remove("Other", shell);
    EXPECT_EQ(List(), Desktop() + Between + "Other.lnk\r\n");
}

TEST_F(RemovedShortcut, SeparatorIsNotAddedWhereOneStands) {
    FakeShell shell = ShellWithDesktop(Desktop() + Between);
    Remove("Other", shell);
    EXPECT_EQ(List(), Desktop() + Between + "Other.lnk\r\n");
}

TEST_F(RemovedShortcut, OfAnUnknownFolderIsLookedForInTheCurrentOne) {
    FakeShell shell;
    Remove("Other", shell);
    EXPECT_EQ(List(), "Other.lnk\r\n");
    Remove("Name", shell);
    EXPECT_FALSE(IsThere());
    EXPECT_EQ(List(), "Other.lnk\r\n");
}

} // namespace
