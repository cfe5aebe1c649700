// The numbered bitmaps beside the target, as the program removes them at its start and its end.
#include "tests/windows/runningprogram.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <optional>
#include <string>

namespace {

using namespace tests;

constexpr int TargetBox = 1004;
constexpr const char* SettingsKey = "SOFTWARE\\Lumbrix";

// The value "Delete" in the user's registry, which is as it was before once this is gone.
class PendingList {
  public:
    PendingList() : before_(Read()), wasThere_(HasKey()) {}
    ~PendingList() {
        if (before_) {
            Write(*before_);
        } else {
            Remove();
        }
        if (!wasThere_) {
            RegDeleteKeyA(HKEY_CURRENT_USER, SettingsKey);
        }
    }
    PendingList(const PendingList&) = delete;
    PendingList& operator=(const PendingList&) = delete;

    // Nothing where there is no such value.
    static std::optional<std::string> Read() {
        char text[2048] = {};
        DWORD size = sizeof text;
        if (RegGetValueA(HKEY_CURRENT_USER, SettingsKey, "Delete", RRF_RT_REG_SZ, nullptr, text, &size) != 0) {
            return std::nullopt;
        }
        return text;
    }

    static void Write(const std::string& list) {
        EXPECT_EQ(RegSetKeyValueA(HKEY_CURRENT_USER, SettingsKey, "Delete", REG_SZ, list.c_str(),
                                  static_cast<DWORD>(list.size() + 1)),
                  0);
    }

    static void Remove() { RegDeleteKeyValueA(HKEY_CURRENT_USER, SettingsKey, "Delete"); }

  private:
    static bool HasKey() {
        HKEY key = nullptr;
        const bool isThere = RegOpenKeyA(HKEY_CURRENT_USER, SettingsKey, &key) == 0;
        RegCloseKey(key);
        return isThere;
    }

    std::optional<std::string> before_;
    bool wasThere_;
};

// The program in a folder that outlives its runs.
class StepFilesOfProgram : public testing::Test {
  protected:
    StepFilesOfProgram() {
        for (const char* name : {"lumbrix.exe", "lumbrix.dll", "gdiplus.dll"}) {
            std::filesystem::copy_file(std::filesystem::path(LUMBRIX_ARTIFACTS) / name, folder_ / name);
        }
        PendingList::Remove();
    }

    // Starts the program, puts a file of its folder into the target box, and ends it.
    void RunWithTarget(const std::string& name) {
        RunningProgram program(folder_.Path(), folder_.Path());
        program.SetText(TargetBox, Path(name));
        EXPECT_EQ(program.Close(), 0u);
    }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    void Make(const std::string& name) const { WriteBytes(folder_ / name, "picture"); }
    bool Exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

    PendingList list_;
    TemporaryFolder folder_;
};

TEST_F(StepFilesOfProgram, UsersOwnFilesOfThoseNamesGoAtTheEnd) {
    for (const char* name : {"out.jpg", "out1.bmp", "out2.bmp", "out3.bmp", "out4.bmp"}) {
        Make(name);
    }
    RunWithTarget("out.jpg");
    EXPECT_TRUE(Exists("out.jpg"));
    EXPECT_FALSE(Exists("out1.bmp"));
    EXPECT_FALSE(Exists("out2.bmp"));
    EXPECT_FALSE(Exists("out3.bmp"));
    EXPECT_TRUE(Exists("out4.bmp"));
    EXPECT_EQ(list_.Read(), std::nullopt);
}

TEST_F(StepFilesOfProgram, TargetIsCutAtItsFirstDot) {
    Make("a1.bmp");
    Make("a.b1.bmp");
    RunWithTarget("a.b.jpg");
    EXPECT_FALSE(Exists("a1.bmp"));
    EXPECT_TRUE(Exists("a.b1.bmp"));
    EXPECT_EQ(list_.Read(), ""); // for the second, which was missing
}

TEST_F(StepFilesOfProgram, WithoutATargetNumbersOfTheCurrentFolderGo) {
    Make("1.bmp");
    EXPECT_EQ(RunningProgram(folder_.Path(), folder_.Path()).Close(), 0u);
    EXPECT_FALSE(Exists("1.bmp"));
}

TEST_F(StepFilesOfProgram, LockedOneIsListedAndGoneBehindTheNextStart) {
    Make("out1.bmp");
    Make("out3.bmp");
    const HANDLE first =
        CreateFileA(Path("out1.bmp").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    const HANDLE third =
        CreateFileA(Path("out3.bmp").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(first, INVALID_HANDLE_VALUE);
    ASSERT_NE(third, INVALID_HANDLE_VALUE);
    RunWithTarget("out.jpg");
    CloseHandle(first);
    CloseHandle(third);
    EXPECT_TRUE(Exists("out1.bmp"));
    EXPECT_EQ(list_.Read(), Path("out1.bmp") + "|" + Path("out3.bmp"));

    const RunningProgram program(folder_.Path(), folder_.Path());
    EXPECT_FALSE(Exists("out1.bmp"));
    EXPECT_FALSE(Exists("out3.bmp"));
    EXPECT_EQ(list_.Read(), std::nullopt);
}

TEST_F(StepFilesOfProgram, ListedNameThatIsMissingIsPassedOver) {
    Make("left.bmp");
    PendingList::Write(Path("none.bmp") + "|" + Path("left.bmp"));
    const RunningProgram program(folder_.Path(), folder_.Path());
    EXPECT_TRUE(program.IsQuiet());
    EXPECT_FALSE(Exists("left.bmp"));
    EXPECT_EQ(list_.Read(), std::nullopt);
}

TEST_F(StepFilesOfProgram, EmptyListStaysAtTheStart) {
    PendingList::Write("");
    const RunningProgram program(folder_.Path(), folder_.Path());
    EXPECT_EQ(list_.Read(), "");
}

// The module that is listed is written anew, for start-up misses it by the time it looks.
TEST_F(StepFilesOfProgram, ListIsWorkedThroughBeforeTheImagingLibraryIsLookedFor) {
    const std::filesystem::path current = folder_ / "current";
    std::filesystem::create_directory(current);
    WriteBytes(current / "gdiplus.dll", "old");
    PendingList::Write((current / "gdiplus.dll").string());
    const RunningProgram program(folder_.Path(), current);
    EXPECT_EQ(std::filesystem::file_size(current / "gdiplus.dll"), 1706800u);
}

} // namespace
