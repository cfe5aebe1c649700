// Which targets are left alone, which files are done, and what is told of them.
#include "tests/cli/folderfixture.h"

#include <chrono>

namespace {

using namespace tests;
using Files = std::set<std::string>;

namespace fs = std::filesystem;

class StandingTargets : public Folder {
  protected:
    // in/a.bmp and in/b.bmp, of which out/a.png is there already.
    StandingTargets() {
        MakePicture("in/a.bmp");
        MakePicture("in/b.bmp");
        MakeFolder("out");
        WriteBytes(folder_ / "out/a.png", "old");
    }

    // Makes a file so many seconds younger than in/a.bmp.
    void MakeYounger(const std::string& name, int seconds) {
        fs::last_write_time(folder_ / name, fs::last_write_time(folder_ / "in/a.bmp") + std::chrono::seconds(seconds));
    }

    bool IsOld() { return ReadBytes(folder_ / "out/a.png") == "old"; }

    Outcome RunInto(std::vector<std::string> words) {
        words.insert(words.begin(),
                     {"convert", Path("in/a.bmp"), Path("in/b.bmp"), "--to", "png", "--into", Path("out")});
        return Run(words);
    }
};

TEST_F(StandingTargets, AreReplacedWhereNothingIsSaidOrThat) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"png"}, {"png", "--overwrite"}, {"png", "-f"}}) {
        WriteBytes(folder_ / "out/a.png", "old");
        ExpectSuccess(RunFolder(words), "2 written, 0 skipped, 0 failed\n");
        EXPECT_FALSE(IsOld());
    }
}

TEST_F(StandingTargets, AreSkippedOnDemand) {
    MakeYounger("out/a.png", -5);
    for (const char* word : {"--skip", "--skip-existing"}) {
        fs::remove(folder_ / "out/b.png");
        ExpectSuccess(RunFolder({"png", word}), "1 written, 1 skipped, 0 failed\n");
        EXPECT_TRUE(IsOld());
    }
    fs::remove(folder_ / "out/b.png");
    ExpectSuccess(RunInto({"--skip"}), "1 written, 1 skipped, 0 failed\n");
    EXPECT_TRUE(IsOld());
}

TEST_F(StandingTargets, AreReplacedWhereTheyAreOlder) {
    MakeYounger("out/a.png", 0);
    ExpectSuccess(RunFolder({"png", "--newer"}), "1 written, 1 skipped, 0 failed\n");
    EXPECT_TRUE(IsOld());
    MakeYounger("out/a.png", 5);
    ExpectSuccess(RunInto({"-u"}), "0 written, 2 skipped, 0 failed\n");
    EXPECT_TRUE(IsOld());
    MakeYounger("out/a.png", -1);
    ExpectSuccess(RunInto({"-u"}), "1 written, 1 skipped, 0 failed\n");
    EXPECT_FALSE(IsOld());
}

TEST_F(StandingTargets, OfSingleFilesAreTreatedLikewise) {
    ExpectSuccess(Run({"convert", Path("in/a.bmp"), Path("out/a.png"), "--skip"}));
    EXPECT_TRUE(IsOld());
    MakeYounger("out/a.png", 1);
    ExpectSuccess(Run({"convert", Path("in/a.bmp"), Path("out/a.png"), "--newer"}));
    EXPECT_TRUE(IsOld());
    MakeYounger("out/a.png", -1);
    ExpectSuccess(Run({"convert", Path("in/a.bmp"), Path("out/a.png"), "--newer"}));
    EXPECT_FALSE(IsOld());
}

TEST_F(StandingTargets, WishesThatExcludeEachOtherAreWrongCalls) {
    ExpectWrongUsage(RunFolder({"png", "--skip", "--newer"}), "--skip and --newer exclude each other");
    ExpectWrongUsage(RunFolder({"png", "--overwrite", "--newer"}), "--overwrite and --newer exclude each other");
    ExpectWrongUsage(RunFolder({"png", "--overwrite", "--skip"}), "--overwrite and --skip exclude each other");
    ExpectWrongUsage(RunFolder({"png", "--overwrite", "--skip-existing"}), "exclude each other");
    ExpectWrongUsage(RunFolder({"png", "-qv"}), "--quiet and --verbose exclude each other");
    ExpectSuccess(RunFolder({"png", "--skip", "--skip-existing"}), "1 written, 1 skipped, 0 failed\n");
}

TEST_F(StandingTargets, DatesAreKeptOnDemand) {
    const auto long_ago = fs::last_write_time(folder_ / "in/a.bmp") - std::chrono::hours(1000);
    fs::last_write_time(folder_ / "in/a.bmp", long_ago);
    ExpectSuccess(RunFolder({"png"}), "2 written, 0 skipped, 0 failed\n");
    EXPECT_NE(fs::last_write_time(folder_ / "out/a.png"), long_ago);
    ExpectSuccess(RunFolder({"png", "--keep-dates"}), "2 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(fs::last_write_time(folder_ / "out/a.png"), long_ago);
    ExpectSuccess(RunFolder({"png", "--newer"}), "0 written, 2 skipped, 0 failed\n");
    ExpectSuccess(Run({"convert", Path("in/a.bmp"), Path("a.gif"), "-p"}));
    EXPECT_EQ(fs::last_write_time(folder_ / "a.gif"), long_ago);
}

TEST_F(StandingTargets, DryRunWritesNothing) {
    MakePicture("in/b.gif");
    const Outcome outcome = RunFolder({"png", "--dry-run", "--skip"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output,
              Path("in/b.bmp") + " -> " + Path("out/b.png") + "\n1 would be written, 1 skipped, 1 failed\n");
    EXPECT_NE(outcome.errors.find("it is made from"), std::string::npos) << outcome.errors;
    EXPECT_EQ(NamesIn("out"), Files{"a.png"});
    ExpectSuccess(Run({"convert", Path("in/a.bmp"), "--into", Path("new"), "-n"}),
                  Path("in/a.bmp") + " -> " + Path("new/a.bmp") + "\n1 would be written, 0 skipped, 0 failed\n");
    EXPECT_FALSE(fs::exists(folder_ / "new"));
    ExpectSuccess(Run({"convert", Path("in/a.bmp"), Path("a.gif"), "-n"}),
                  Path("in/a.bmp") + " -> " + Path("a.gif") + "\n");
    EXPECT_FALSE(fs::exists(folder_ / "a.gif"));
    ExpectFailure(Run({"convert", Path("none.bmp"), Path("a.gif"), "-n"}), "none.bmp", "no such file");
}

TEST_F(StandingTargets, DryRunKnowsWhichFormatsAreWritten) {
    fs::copy_file(folder_ / "in/a.bmp", folder_ / "in/a.ico");
    const Outcome outcome = Run({"convert", Path("in/a.ico"), "--into", Path("new"), "-n"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "0 would be written, 0 skipped, 1 failed\n");
}

TEST_F(StandingTargets, DryRunListsFilesInTheirOrder) {
    constexpr int Last = 1600; // enough for several threads to meet
    for (int i = 1000; i < Last; ++i) {
        fs::create_hard_link(folder_ / "in/a.bmp", folder_ / ("in/c" + std::to_string(i) + ".bmp"));
    }
    const Outcome outcome = RunFolder({"png", "--dry-run", "--jobs", "8"});
    std::size_t last = 0;
    for (int i = 1000; i < Last; ++i) {
        const std::size_t at = outcome.output.find("c" + std::to_string(i) + ".bmp -> ");
        ASSERT_GT(at, last);
        last = at;
    }
    EXPECT_LT(last, outcome.output.size());
}

TEST_F(StandingTargets, NumbersAreGivenInAFolderToo) {
    MakePicture("in/a.gif", 3, 3); // BMP inside
    ExpectSuccess(RunFolder({"png", "--keep-both"}), "3 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(NamesIn("out"), (Files{"a.png", "a (2).png", "b.png"}));
    ExpectSuccess(Run({"size", Path("out/a (2).png")}), "3 x 3\n");
}

TEST_F(StandingTargets, ListTellsWhichFilesAreDone) {
    MakeFolder("in/sub");
    MakePicture("in/sub/c.bmp");
    MakePicture("in/notes.txt"); // BMP inside
    WriteBytes(folder_ / "list", "sub/c.bmp\r\n\nb.bmp\nnotes.txt\nnone.bmp\n../source.bmp\nb.bmp");
    const Outcome outcome = RunFolder({"gif", "--list", Path("list")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "3 written, 0 skipped, 2 failed\n");
    EXPECT_NE(outcome.errors.find("in/none.bmp: there is no such file"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find("../source.bmp: it does not lie in the source folder"), std::string::npos);
    EXPECT_EQ(NamesIn("out"), (Files{"a.png", "b.gif", "notes.gif", "sub"}));
    EXPECT_EQ(NamesIn("out/sub"), Files{"c.gif"});
}

TEST_F(StandingTargets, ListThatIsMissingIsNamed) {
    ExpectFailure(RunFolder({"gif", "--list", Path("none")}), "none", "cannot read the list");
    ExpectFailure(RunFolder({"gif", "--list", Path("in")}), "in", "cannot read the list");
}

TEST_F(StandingTargets, ListIsReadFromTheStandardInput) {
    WriteBytes(folder_ / "list", "b.bmp\n");
    const std::string command = std::string(LUMBRIX_CLI) + " folder " + Path("in") + " " + Path("out") +
                                " gif --list - <" + Path("list") + " >" + Path("counts");
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(ReadBytes(folder_ / "counts"), "1 written, 0 skipped, 0 failed\n");
    EXPECT_TRUE(fs::exists(folder_ / "out/b.gif"));
}

TEST_F(StandingTargets, ListNamesSourcesOfOtherCommandsToo) {
    WriteBytes(folder_ / "list", Path("in/b.bmp") + "\n");
    ExpectSuccess(Run({"resize", Path("in/a.bmp"), "3", "--list", Path("list"), "--into", Path("small")}),
                  "2 written, 0 skipped, 0 failed\n");
    ExpectSuccess(Run({"resize", "3", "--list", Path("list"), "--into", Path("small"), "--to", "gif"}),
                  "1 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(NamesIn("small"), (Files{"a.bmp", "b.bmp", "b.gif"}));
}

TEST_F(StandingTargets, QuietRunTellsErrorsOnly) {
    ExpectSuccess(RunFolder({"png", "--quiet"}));
    ExpectSuccess(RunFolder({"png", "-qn"}));
    WriteBytes(folder_ / "in/b.bmp", "Dear Sir or Madam");
    ExpectFailure(RunFolder({"png", "-q"}), "in/b.bmp", "not a picture");
}

TEST_F(StandingTargets, VerboseRunHasALineForEachFileThatIsWritten) {
    const Outcome outcome = RunFolder({"bmp", "3", "--verbose", "-j1"});
    ExpectSuccess(outcome, Path("in/a.bmp") + " -> " + Path("out/a.bmp") + ": 4 x 3 pixels, 90 bytes\n" +
                               Path("in/b.bmp") + " -> " + Path("out/b.bmp") +
                               ": 4 x 3 pixels, 90 bytes\n2 written, 0 skipped, 0 failed\n");
    ExpectSuccess(Run({"convert", Path("in/a.bmp"), Path("b.bmp"), "-v"}),
                  Path("in/a.bmp") + " -> " + Path("b.bmp") + ": 8 x 6 pixels, 198 bytes\n");
    ExpectSuccess(RunFolder({"bmp", "-v", "--skip"}), "0 written, 2 skipped, 0 failed\n");
}

TEST_F(StandingTargets, SizesOfSeveralFilesHaveTheirNames) {
    ExpectSuccess(Run({"size", Path("in/a.bmp"), Path("source.bmp")}),
                  "8 x 6\t" + Path("in/a.bmp") + "\n1 x 2\t" + Path("source.bmp") + "\n");
    MakePicture("\x1B[2J.bmp");
    EXPECT_NE(Run({"size", Path("source.bmp"), Path("\x1B[2J.bmp")}).output.find("/?[2J.bmp\n"), std::string::npos);
    const Outcome outcome = Run({"size", Path("none.bmp"), Path("in/b.bmp")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "8 x 6\t" + Path("in/b.bmp") + "\n");
    EXPECT_NE(outcome.errors.find("none.bmp: there is no such file"), std::string::npos);
}

} // namespace
