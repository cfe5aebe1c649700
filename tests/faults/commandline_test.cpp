// What lumbrix-cli says and leaves where the system fails it: a process whose calls fail from its start on.
#include "tests/cli/commandline.h"
#include "tests/support/environment.h"

#include <cerrno>

namespace {

using namespace tests;
using Names = std::set<std::string>;

class FaultyCommandLine : public CommandLine {
  protected:
    FaultyCommandLine() { WriteBytes(folder_ / "old.png", "old"); }

    Outcome RunWith(const std::string& fault, const std::vector<std::string>& words) {
        const EnvironmentVariable library("LD_PRELOAD", LUMBRIX_PRELOAD);
        const EnvironmentVariable description("FAULT", fault.c_str());
        return Run(words);
    }

    static std::string Fault(const char* call, int number, int error, const char* manner) {
        return std::string(call) + " " + std::to_string(number) + " " + std::to_string(error) + " " + manner;
    }

    void ExpectOld() {
        EXPECT_EQ(ReadBytes(folder_ / "old.png"), "old");
        EXPECT_EQ(NamesIn(""), (Names{"old.png", "source.bmp"}));
    }
};

TEST_F(FaultyCommandLine, FullDiskIsNamedAtEveryStepOfASave) {
    for (const char* call : {"write", "flush", "name", "rename"}) {
        ExpectFailure(RunWith(Fault(call, 1, ENOSPC, "once"), {"convert", Path("source.bmp"), Path("old.png")}),
                      "cannot write " + Path("old.png"), "the disk may be full");
        ExpectOld();
    }
}

TEST_F(FaultyCommandLine, FullDiskIsNamedForIconsAndDates) {
    ExpectFailure(RunWith(Fault("write", 1, ENOSPC, "once"), {"date", Path("source.bmp"), "2024"}),
                  "source_stamped.jpg", "the disk may be full");
    ExpectFailure(RunWith(Fault("rename", 1, ENOSPC, "once"), {"icon", Path("source.bmp"), Path("new.ico")}), "new.ico",
                  "the disk may be full");
    ExpectOld();
}

TEST_F(FaultyCommandLine, FilesOfAFolderThatDoNotFitAreCounted) {
    std::filesystem::create_directory(folder_ / "in");
    for (const char* name : {"a.bmp", "b.bmp", "c.bmp"}) {
        std::filesystem::copy(folder_ / "source.bmp", folder_ / "in" / name);
    }
    const Outcome outcome =
        RunWith(Fault("write", 2, ENOSPC, "once"), {"folder", Path("in"), Path("out"), "bmp", "--jobs", "1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "2 written, 0 skipped, 1 failed\n");
    EXPECT_NE(outcome.errors.find("b.bmp: the system failed while writing"), std::string::npos) << outcome.errors;
    EXPECT_EQ(NamesIn("out"), (Names{"a.bmp", "c.bmp"}));
}

TEST_F(FaultyCommandLine, WhereNoFileCanBeOpenedThatIsSaid) {
    int worked = 0;
    int said = 0;
    for (int number = 1; number < 200 && worked == 0; ++number) {
        const Outcome outcome =
            RunWith(Fault("open", number, EMFILE, "onwards"), {"convert", Path("source.bmp"), Path("old.png")});
        if (outcome.status == 0) {
            ++worked;
            break;
        }
        EXPECT_EQ(outcome.status, 1) << number;
        said += outcome.errors.find("too many files are open") != std::string::npos ? 1 : 0;
        EXPECT_FALSE(outcome.errors.empty());
        ExpectOld();
    }
    EXPECT_EQ(worked, 1);
    EXPECT_GE(said, 3) << "for the source, and twice for the target";
}

// Of some hundred allocations every seventh, for each is a process of its own.
TEST_F(FaultyCommandLine, MissingMemoryEndsItWithASentence) {
    int failures = 0;
    for (int number = 1; number < 500; number += 7) {
        const Outcome outcome =
            RunWith(Fault("memory", number, ENOMEM, "once"), {"convert", Path("source.bmp"), Path("old.png")});
        if (outcome.status == 0) {
            WriteBytes(folder_ / "old.png", "old");
            continue;
        }
        ++failures;
        // The system's loader has words of its own.
        const bool isLoader = outcome.status == 127 && outcome.errors.find("cannot allocate") == 0;
        EXPECT_TRUE(outcome.status == 1 || isLoader) << number << ": " << outcome.errors;
        EXPECT_TRUE(isLoader || outcome.errors.find("lumbrix-cli: ") == 0) << number << ": " << outcome.errors;
        ExpectOld();
    }
    EXPECT_GT(failures, 10);
}

TEST_F(FaultyCommandLine, OutputThatCannotBePrintedIsAFailure) {
    const std::string command =
        std::string(LUMBRIX_CLI) + " size " + Path("source.bmp") + " >/dev/full 2>" + Path("errors");
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
    EXPECT_EQ(ReadBytes(folder_ / "errors"), "lumbrix-cli: cannot write to the standard output\n");
}

// The first part of what is printed is lost long before the last.
TEST_F(FaultyCommandLine, LongOutputThatCannotBePrintedIsAFailure) {
    const std::string command = std::string(LUMBRIX_CLI) + " convert --help >/dev/full 2>" + Path("errors");
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
    EXPECT_EQ(ReadBytes(folder_ / "errors"), "lumbrix-cli: cannot write to the standard output\n");
}

} // namespace
