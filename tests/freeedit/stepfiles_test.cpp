// The numbered bitmaps beside an output file: their names, their removal, and the list of what is left to delete.
#include "freeedit/stepfiles.h"
#include "tests/batch/fakeorder.h"
#include "tests/support/fakesettings.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#endif

#include <set>

#ifndef _WIN32
namespace {

std::set<std::string> heldFiles; // cannot be deleted

} // namespace

// What files are deleted with is this program's own.
extern "C" int unlink(const char* path) noexcept {
    if (heldFiles.contains(path)) {
        errno = EBUSY;
        return -1;
    }
    return unlinkat(AT_FDCWD, path, 0);
}
#endif

namespace {

using namespace lumbrix;
using namespace tests;

TEST(StepFileName, IsTheOutputsWithANumber) {
    EXPECT_EQ(StepFile("C:\\pics\\out.jpg", 1), "C:\\pics\\out1.bmp");
    EXPECT_EQ(StepFile("C:\\pics\\out.jpg", 12), "C:\\pics\\out12.bmp");
    EXPECT_EQ(StepFile("out", 0), "out0.bmp");
}

TEST(StepFileName, TakesTheOutputsNameUpToItsFirstDot) {
    EXPECT_EQ(StepFile("C:\\p.q\\a.b.jpg", 1), "C:\\p.q\\a1.bmp");
    EXPECT_EQ(StepFile("C:\\pics\\.hidden", 2), "C:\\pics\\2.bmp");
}

TEST(StepFileName, IsTheNumberAloneWithoutAnOutput) {
    EXPECT_EQ(StepFile("", 3), "3.bmp");
    EXPECT_EQ(StepFile("C:\\pics\\", 3), "C:\\pics\\3.bmp");
}

TEST(StepFileName, KnowsFoldersByTheirBackslashes) { EXPECT_EQ(StepFile("C:/pics/out.jpg", 1), "out1.bmp"); }

// While it lives a file cannot be deleted.
class HeldFile {
  public:
    explicit HeldFile(const std::string& path) : path_(path) {
#ifdef _WIN32
        file_ = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
        EXPECT_NE(file_, INVALID_HANDLE_VALUE);
#else
        heldFiles.insert(path);
#endif
    }
    ~HeldFile() {
#ifdef _WIN32
        CloseHandle(file_);
#else
        heldFiles.erase(path_);
#endif
    }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

  private:
    std::string path_;
#ifdef _WIN32
    HANDLE file_ = nullptr;
#endif
};

// An output file "out.jpg" in a folder, whose name stands before a backslash on every system.
class StepFilesBesideOutput : public testing::Test {
  protected:
    StepFilesBesideOutput() {
        std::filesystem::create_directory(folder_ / "p");
        order_.target = Path("out.jpg");
    }

    std::string Path(const std::string& name) const { return (folder_ / "p").string() + "\\" + name; }
    void Make(const std::string& name) const { WriteBytes(Path(name), "picture"); }
    bool Exists(const std::string& name) const { return std::filesystem::exists(Path(name)); }

    // The list as it was written; "none" where there is none.
    std::string List() { return store_.values.contains("Delete") ? store_.values["Delete"] : "none"; }
    static std::string Text(const std::string& text) { return text + '\0'; }

    TemporaryFolder folder_;
    FakeOrder order_;
    FakeSettings store_;
};

TEST_F(StepFilesBesideOutput, FirstThreeAreDeletedWhoeverMadeThem) {
    for (const char* name : {"out.jpg", "out0.bmp", "out1.bmp", "out2.bmp", "out3.bmp", "out4.bmp"}) {
        Make(name);
    }
    RemoveStepFiles({0, &order_}, store_);
    EXPECT_TRUE(Exists("out.jpg"));
    EXPECT_TRUE(Exists("out0.bmp"));
    EXPECT_FALSE(Exists("out1.bmp"));
    EXPECT_FALSE(Exists("out2.bmp"));
    EXPECT_FALSE(Exists("out3.bmp"));
    EXPECT_TRUE(Exists("out4.bmp"));
    EXPECT_TRUE(store_.calls.empty()); // nothing is to be listed
}

TEST_F(StepFilesBesideOutput, ThreeBeyondTheCounterAreDeleted) {
    Make("out5.bmp");
    Make("out6.bmp");
    RemoveStepFiles({2, &order_}, store_);
    EXPECT_FALSE(Exists("out5.bmp"));
    EXPECT_TRUE(Exists("out6.bmp"));
}

TEST_F(StepFilesBesideOutput, OutputWithSeveralDotsIsCutAtTheFirst) {
    order_.target = Path("a.b.jpg");
    Make("a1.bmp");
    Make("a.b1.bmp");
    RemoveStepFiles({0, &order_}, store_);
    EXPECT_FALSE(Exists("a1.bmp"));
    EXPECT_TRUE(Exists("a.b1.bmp"));
}

TEST_F(StepFilesBesideOutput, EmptyListIsWrittenForEachMissingOne) {
    store_.values["Delete"] = Text("of before");
    RemoveStepFiles({0, &order_}, store_);
    EXPECT_EQ(List(), Text(""));
    EXPECT_EQ(store_.Count("create 80000001 SOFTWARE\\Lumbrix 000F003F"), 3);
    EXPECT_EQ(store_.Count("set"), 3);
    EXPECT_TRUE(store_.openKeys.empty());
}

TEST_F(StepFilesBesideOutput, HeldOneIsListedAndTheOthersAreDeleted) {
    Make("out1.bmp");
    Make("out2.bmp");
    const HeldFile held(Path("out1.bmp"));
    RemoveStepFiles({0, &order_}, store_);
    EXPECT_TRUE(Exists("out1.bmp"));
    EXPECT_FALSE(Exists("out2.bmp"));
    EXPECT_EQ(List(), Text(Path("out1.bmp")));
    EXPECT_EQ(store_.Count("set"), 2); // for the held one and the missing third
}

TEST_F(StepFilesBesideOutput, HeldOnesAreListedInOrder) {
    Make("out2.bmp");
    Make("out4.bmp");
    const HeldFile later(Path("out4.bmp"));
    const HeldFile earlier(Path("out2.bmp"));
    RemoveStepFiles({1, &order_}, store_);
    EXPECT_EQ(List(), Text(Path("out2.bmp") + "|" + Path("out4.bmp")));
}

TEST_F(StepFilesBesideOutput, FolderOfThatNameIsNeitherDeletedNorListed) {
    std::filesystem::create_directory(Path("out1.bmp"));
    RemoveStepFiles({0, &order_}, store_);
    EXPECT_TRUE(Exists("out1.bmp"));
    EXPECT_EQ(List(), Text(""));
}

// While it lives a test works in a folder.
class CurrentFolder {
  public:
    explicit CurrentFolder(const std::filesystem::path& folder) { std::filesystem::current_path(folder); }
    ~CurrentFolder() { std::filesystem::current_path(before_); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

  private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

// As the window that edits freely leaves them: cleared before they are removed.
TEST_F(StepFilesBesideOutput, ClearedOnesStayAndNumbersOfTheCurrentFolderGo) {
    const CurrentFolder current(folder_.Path());
    for (const char* name : {"1.bmp", "3.bmp", "4.bmp"}) {
        WriteBytes(folder_ / name, "");
    }
    Make("out1.bmp");
    StepFiles stepFiles{2, &order_};
    stepFiles = {};
    RemoveStepFiles(stepFiles, store_);
    EXPECT_TRUE(Exists("out1.bmp"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "1.bmp"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "3.bmp"));
    EXPECT_TRUE(std::filesystem::exists(folder_ / "4.bmp"));
    EXPECT_EQ(store_.Count("set"), 1); // for number 2
    EXPECT_EQ(List(), Text(""));
}

TEST_F(StepFilesBesideOutput, PendingOnesAreDeletedWithTheirList) {
    Make("a");
    Make("b");
    store_.values["Delete"] = Text(Path("a") + "|" + Path("none") + "||" + Path("b"));
    RunPendingDeletes(store_);
    EXPECT_FALSE(Exists("a"));
    EXPECT_FALSE(Exists("b"));
    EXPECT_EQ(List(), "none");
    EXPECT_EQ(store_.calls[0], "open 80000001 SOFTWARE\\Lumbrix 000F003F");
}

TEST_F(StepFilesBesideOutput, EveryPendingOneIsDeleted) {
    for (const char* name : {"a", "b", "c", "d"}) {
        Make(name);
    }
    store_.values["Delete"] = Text(Path("a") + "|" + Path("b") + "|" + Path("c") + "|" + Path("d"));
    RunPendingDeletes(store_);
    for (const char* name : {"a", "b", "c", "d"}) {
        EXPECT_FALSE(Exists(name)) << name;
    }
}

TEST_F(StepFilesBesideOutput, EmptyListOfPendingOnesStays) {
    store_.values["Delete"] = Text("");
    RunPendingDeletes(store_);
    EXPECT_EQ(List(), Text(""));
    store_.values.clear();
    RunPendingDeletes(store_);
    EXPECT_EQ(store_.Count("delete"), 0);
}

TEST_F(StepFilesBesideOutput, PendingOneThatIsStillHeldIsForgotten) {
    Make("a");
    Make("b");
    store_.values["Delete"] = Text(Path("a") + "|" + Path("b"));
    const HeldFile held(Path("a"));
    RunPendingDeletes(store_);
    EXPECT_TRUE(Exists("a"));
    EXPECT_FALSE(Exists("b"));
    EXPECT_EQ(List(), "none");
}

TEST_F(StepFilesBesideOutput, HeldOneIsGoneBehindTheNextStart) {
    Make("out1.bmp");
    {
        const HeldFile held(Path("out1.bmp"));
        RemoveStepFiles({0, &order_}, store_);
    }
    RunPendingDeletes(store_);
    EXPECT_FALSE(Exists("out1.bmp"));
    EXPECT_EQ(List(), "none");
}

// A value of more than 256 bytes reads as empty.
TEST_F(StepFilesBesideOutput, ListThatIsTooLongToBeReadStays) {
    Make("a");
    const std::string start = Path("a") + "|";
    store_.values["Delete"] = Text(start + std::string(256 - start.size(), 'x'));
    RunPendingDeletes(store_);
    EXPECT_TRUE(Exists("a"));
    EXPECT_NE(List(), "none");
    store_.values["Delete"] = Text(start + std::string(255 - start.size(), 'x'));
    RunPendingDeletes(store_);
    EXPECT_FALSE(Exists("a"));
    EXPECT_EQ(List(), "none");
}

} // namespace
