// The shortcut on the desktop over a system that keeps a record of what is asked of it.
#include "desktop/shortcut.h"

#include "platform/errors.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <vector>

namespace {

using namespace lumbrix;

constexpr const char* Shortcut = "C:\\Desktop\\Lumbrix.lnk";

class RecordedSystem : public ShortcutSystem {
  public:
    std::string ProgramPath() override { return "C:\\Programs\\Lumbrix\\lumbrix.exe"; }

    std::string DestinationFolder(std::int32_t id) override {
        record.push_back("folder " + std::to_string(id));
        return folder;
    }

    std::string FirstMatch(const std::string& pattern) override {
        if (pattern.empty()) {
            ++furtherSearches;
            return furtherSearches == matchAt ? "source.lnk" : "";
        }
        record.push_back("search " + pattern);
        Fail("search");
        return files.contains(pattern) ? "Lumbrix.lnk" : "";
    }

    std::int32_t FileSize(const std::string& path) override { return files.contains(path) ? files[path] : -1; }

    void RemoveFile(const std::string& path) override {
        record.push_back("remove " + path);
        Fail("remove");
        files.erase(path);
    }

    void DuplicateFile(const std::string& source, const std::string& target) override {
        record.push_back("copy " + source + " to " + target);
        Fail("copy");
    }

    void DeleteOrListFile(const std::string& path) override {
        record.push_back("delete or list " + path);
        Fail("delete");
        if (!isInUse) {
            files.erase(path);
        }
    }

    void CreateLink(std::int32_t id, const std::string& name, const LinkFields& fields) override {
        Fail("link");
        record.push_back("link " + std::to_string(id) + " " + name);
        links.push_back(fields);
    }

    std::int32_t MillisecondsOfDay() override { return clock; }

    void Pause(int milliseconds) override {
        if (pauses == 0) {
            record.push_back("pause");
        }
        pauses += milliseconds;
        clock += pauses <= pausesWithoutAStep ? 0 : clockStep;
        if (pauses == setBackAt) {
            clock -= 1000;
        }
        if (clock >= Day) {
            clock -= Day;
        }
        if (pauses > 2 * Day / clockStep) {
            throw std::logic_error("waits for ever");
        }
    }

    static constexpr std::int32_t Day = 24 * 60 * 60 * 1000;

    std::string folder = "C:\\Desktop";
    std::map<std::string, std::int32_t> files; // with their sizes
    std::string failing;
    bool isInUse = false;
    int matchAt = 0;
    std::int32_t clock = 1000;
    std::int32_t clockStep = 1; // of a pause
    int pausesWithoutAStep = 0;
    int setBackAt = 0; // the pause at which the clock is set back by a second

    std::vector<std::string> record;
    std::vector<LinkFields> links;
    int furtherSearches = 0;
    int pauses = 0;

  private:
    void Fail(const char* what) const {
        if (failing == what) {
            throw RuntimeError(5, what);
        }
    }
};

using Record = std::vector<std::string>;

TEST(DesktopShortcut, IsMadeWhereThereIsNone) {
    RecordedSystem system;
    EnsureDesktopShortcut(system);
    EXPECT_EQ(system.record,
              (Record{"folder 16", "search C:\\Desktop\\Lumbrix.lnk", "link 16 Lumbrix", "folder 16", "pause"}));
    ASSERT_EQ(system.links.size(), 1u);
    EXPECT_EQ(system.links[0], (LinkFields{"C:\\Programs\\Lumbrix\\lumbrix.exe", "C:\\Programs\\Lumbrix\\", "",
                                           "Lumbrix", "C:\\Programs\\Lumbrix\\lumbrix.exe", 0, 1, 0}));
}

TEST(DesktopShortcut, FolderMayEndWithItsBackslash) {
    RecordedSystem system;
    system.folder = "C:\\";
    EnsureDesktopShortcut(system);
    EXPECT_EQ(system.record[1], "search C:\\Lumbrix.lnk");
}

TEST(DesktopShortcut, WithoutADesktopIsSearchedInTheCurrentFolder) {
    RecordedSystem system;
    system.folder = "";
    EnsureDesktopShortcut(system);
    EXPECT_EQ(system.record[1], "search Lumbrix.lnk");
}

TEST(DesktopShortcut, WithContentsStaysWhereverItLeads) {
    RecordedSystem system;
    system.files[Shortcut] = 1;
    EnsureDesktopShortcut(system);
    EXPECT_EQ(system.record, (Record{"folder 16", "search C:\\Desktop\\Lumbrix.lnk"}));
    EXPECT_EQ(system.pauses, 0);
}

TEST(DesktopShortcut, ThatIsEmptyIsReplaced) {
    RecordedSystem system;
    system.files[Shortcut] = 0;
    EnsureDesktopShortcut(system);
    EXPECT_EQ(system.record, (Record{"folder 16", "search C:\\Desktop\\Lumbrix.lnk", "remove C:\\Desktop\\Lumbrix.lnk",
                                     "link 16 Lumbrix", "folder 16", "pause"}));
}

TEST(DesktopShortcut, ThatIsGoneWhenItsSizeIsAskedIsNotMade) {
    RecordedSystem system;
    system.files[Shortcut] = -1;
    EnsureDesktopShortcut(system);
    EXPECT_EQ(system.record.back(), "search C:\\Desktop\\Lumbrix.lnk");
}

TEST(DesktopShortcut, ThatCannotBeMadeIsPassedOver) {
    RecordedSystem system;
    system.failing = "link";
    EXPECT_NO_THROW(EnsureDesktopShortcut(system));
    EXPECT_EQ(system.pauses, 0);
}

TEST(DesktopShortcut, ThatIsEmptyAndStaysIsNotReplaced) {
    RecordedSystem system;
    system.files[Shortcut] = 0;
    system.failing = "remove";
    EnsureDesktopShortcut(system);
    EXPECT_EQ(system.record.back(), "remove C:\\Desktop\\Lumbrix.lnk");
}

TEST(DesktopShortcut, ThatCannotBeSearchedForIsNotMade) {
    RecordedSystem system;
    system.failing = "search";
    EnsureDesktopShortcut(system);
    EXPECT_EQ(system.record.back(), "search C:\\Desktop\\Lumbrix.lnk");
}

TEST(MadeShortcut, IsWaitedForForSixSecondsAndCountsAsNone) {
    RecordedSystem system;
    EXPECT_EQ(MakeShortcut(system, "not looked at", "Lumbrix", 16), 0);
    EXPECT_EQ(system.clock, 7001); // the first moment that is later than six seconds
    EXPECT_EQ(system.pauses, 6001);
    EXPECT_EQ(system.furtherSearches, 6001);
    ASSERT_EQ(system.links.size(), 1u);
    EXPECT_EQ(system.links[0].target, "C:\\Programs\\Lumbrix\\lumbrix.exe");
    EXPECT_EQ(system.links[0].iconFile, "C:\\Programs\\Lumbrix\\lumbrix.exe");
    EXPECT_EQ(system.links[0].workingFolder, "C:\\Programs\\Lumbrix\\");
}

// Many clocks go in steps.
TEST(MadeShortcut, IsWaitedForWhileTheClockStandsStill) {
    RecordedSystem system;
    system.pausesWithoutAStep = 10;
    EXPECT_EQ(MakeShortcut(system, "", "Lumbrix", 16), 0);
    EXPECT_EQ(system.pauses, 6011);
}

TEST(MadeShortcut, IsWaitedForLongerWhereTheClockIsSetBack) {
    RecordedSystem system;
    system.setBackAt = 500;
    EXPECT_EQ(MakeShortcut(system, "", "Lumbrix", 16), 0);
    EXPECT_EQ(system.pauses, 7001);
}

// However late the clock is read, there is one pause and one search at least.
TEST(MadeShortcut, IsSearchedForOnceBeforeTheClockIsRead) {
    RecordedSystem system;
    system.clockStep = 60000;
    EXPECT_EQ(MakeShortcut(system, "", "Lumbrix", 16), 0);
    EXPECT_EQ(system.furtherSearches, 1);
}

TEST(MadeShortcut, ThatMidnightFallsIntoIsWaitedForUntilTheSameTimeOfTheNextDay) {
    RecordedSystem system;
    system.clockStep = 1000;
    system.clock = RecordedSystem::Day - 7000; // six seconds later is the last reading of the day
    EXPECT_EQ(MakeShortcut(system, "", "Lumbrix", 16), 0);
    EXPECT_EQ(system.pauses, 24 * 60 * 60);
    EXPECT_EQ(system.clock, RecordedSystem::Day - 7000);
}

TEST(MadeShortcut, ThatEndsBeforeMidnightIsWaitedForAsEver) {
    RecordedSystem system;
    system.clockStep = 1000;
    system.clock = RecordedSystem::Day - 8000;
    EXPECT_EQ(MakeShortcut(system, "", "Lumbrix", 16), 0);
    EXPECT_EQ(system.pauses, 7);
}

TEST(MadeShortcut, TakesAFurtherMatchInItsPlace) {
    RecordedSystem system;
    system.matchAt = 3;
    EXPECT_EQ(MakeShortcut(system, "", "Other", 5), 1);
    EXPECT_EQ(system.furtherSearches, 3);
    EXPECT_EQ(system.record,
              (Record{"link 5 Other", "folder 5", "pause", "copy source.lnk to C:\\Desktop\\Other.lnk"}));
    EXPECT_EQ(system.links[0].description, "Other");
}

TEST(MadeShortcut, OfAMatchThatCannotBeCopiedCountsAsNone) {
    RecordedSystem system;
    system.matchAt = 1;
    system.failing = "copy";
    EXPECT_EQ(MakeShortcut(system, "", "Lumbrix", 16), 0);
}

TEST(RemovedShortcut, IsDeleted) {
    RecordedSystem system;
    system.files[Shortcut] = 700;
    RemoveDesktopShortcut(system);
    EXPECT_EQ(system.record, (Record{"folder 16", "search C:\\Desktop\\Lumbrix.lnk",
                                     "delete or list C:\\Desktop\\Lumbrix.lnk", "search C:\\Desktop\\Lumbrix.lnk"}));
}

TEST(RemovedShortcut, NeedNotBeThere) {
    RecordedSystem system;
    RemoveDesktopShortcut(system);
    EXPECT_EQ(system.record, (Record{"folder 16", "search C:\\Desktop\\Lumbrix.lnk"}));
}

TEST(RemovedShortcut, ThatIsInUseIsTriedFiftyTimes) {
    RecordedSystem system;
    system.files[Shortcut] = 700;
    system.isInUse = true;
    RemoveDesktopShortcut(system);
    EXPECT_EQ(std::count(system.record.begin(), system.record.end(), "delete or list C:\\Desktop\\Lumbrix.lnk"), 50);
}

TEST(RemovedShortcut, ThatCannotBeListedEndsIt) {
    RecordedSystem system;
    system.files[Shortcut] = 700;
    system.failing = "delete";
    RemoveDesktopShortcut(system);
    EXPECT_EQ(system.record.back(), "delete or list C:\\Desktop\\Lumbrix.lnk");
    EXPECT_EQ(system.record.size(), 3u);
}

} // namespace
