// The command folder where something stands in the way of single files or of the whole run.
#include "tests/cli/folderfixture.h"

#include <sys/stat.h>

#include <algorithm>

namespace {

using namespace tests;
namespace fs = std::filesystem;
using Names = std::set<std::string>;

class FolderFaults : public Folder {
  protected:
    // Expects status 1, these counts, and one line for each failure that has all the words given for it, in the order
    // of one job.
    void ExpectFailures(const Outcome& outcome, const std::string& counts,
                        const std::vector<std::vector<std::string>>& failures) {
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.output, counts + "\n");
        EXPECT_EQ(static_cast<std::size_t>(std::count(outcome.errors.begin(), outcome.errors.end(), '\n')),
                  failures.size())
            << outcome.errors;
        std::size_t start = 0;
        for (const auto& words : failures) {
            const std::size_t end = outcome.errors.find('\n', start);
            const std::string line = outcome.errors.substr(start, end - start);
            for (const std::string& word : words) {
                EXPECT_NE(line.find(word), std::string::npos) << word << " in: " << line;
            }
            start = end + 1;
        }
    }
};

TEST_F(FolderFaults, BadFilesDoNotStopTheRun) {
    MakePicture("in/a.bmp");
    WriteBytes(folder_ / "in/b.png", "Dear Sir or Madam");
    MakePicture("in/c.bmp");
    WriteBytes(folder_ / "in/d.bmp", ReadBytes(folder_ / "in/a.bmp").substr(0, 60));
    MakePicture("in/e.bmp");
    ExpectFailures(RunFolder({"png", "--jobs", "1"}), "3 written, 0 skipped, 2 failed",
                   {{"in/b.png", "not a picture"}, {"in/d.bmp", "damaged"}});
    EXPECT_EQ(NamesIn("out"), (Names{"a.png", "c.png", "e.png"}));
}

TEST_F(FolderFaults, DamagedPicturesAreNotMadeSmaller) {
    MakePicture("in/a.bmp", 40, 40);
    WriteBytes(folder_ / "in/a.bmp", ReadBytes(folder_ / "in/a.bmp").substr(0, 600));
    ExpectFailures(RunFolder({"png", "10"}), "0 written, 0 skipped, 1 failed", {{"in/a.bmp", "damaged"}});
    EXPECT_EQ(NamesIn("out"), Names{});
}

TEST_F(FolderFaults, LaterOfTwoSourcesForOneTargetFails) {
    MakePicture("in/a.bmp", 4, 4);
    MakePicture("in/a.png", 5, 5);
    MakePicture("in/a.tif", 6, 6);
    ExpectFailures(RunFolder({"gif", "--jobs", "1"}), "1 written, 0 skipped, 2 failed",
                   {{"out/a.gif", "in/a.png", "in/a.bmp"}, {"out/a.gif", "in/a.tif", "in/a.bmp"}});
    ExpectSuccess(Run({"size", Path("out/a.gif")}), "4 x 4\n");
}

TEST_F(FolderFaults, CollisionsFailAlsoWhereTheTargetIsSkipped) {
    MakePicture("in/a.bmp");
    MakePicture("in/a.png");
    RunFolder({"gif"});
    ExpectFailures(RunFolder({"gif", "--skip-existing", "--jobs", "4"}), "0 written, 1 skipped, 1 failed",
                   {{"in/a.png", "in/a.bmp"}});
}

TEST_F(FolderFaults, SourcesAreNotWrittenOver) {
    MakePicture("in/a.bmp", 4, 4);
    MakePicture("in/a.png", 5, 5);
    MakePicture("in/b.bmp", 6, 6);
    ExpectFailures(Run({"folder", Path("in"), Path("in"), "png", "--jobs", "1"}), "1 written, 0 skipped, 2 failed",
                   {{"in/a.png", "in/a.bmp", "it is a source as well"}, {"in/a.png", "it is the source itself"}});
    ExpectSuccess(Run({"size", Path("in/a.png")}), "5 x 5\n");
    EXPECT_EQ(NamesIn("in"), (Names{"a.bmp", "a.png", "b.bmp", "b.png"}));
}

TEST_F(FolderFaults, SecondRunInsideOneFolderSkipsWhatIsThere) {
    MakePicture("in/a.bmp");
    ExpectSuccess(Run({"folder", Path("in"), Path("in"), "png"}), "1 written, 0 skipped, 0 failed\n");
    ExpectSuccess(Run({"folder", Path("in"), Path("in"), "png", "--skip-existing"}),
                  "0 written, 2 skipped, 0 failed\n");
}

TEST_F(FolderFaults, SourceFolderUnderAnotherNameIsSeenThrough) {
    MakePicture("in/a.png", 5, 5);
    fs::create_directory_symlink("in", folder_ / "alias");
    ExpectFailures(Run({"folder", Path("in"), Path("alias"), "png"}), "0 written, 0 skipped, 1 failed",
                   {{"alias/a.png", "it is the source itself"}});
}

TEST_F(FolderFaults, MissingSourceFolderIsNamed) {
    ExpectFailure(Run({"folder", Path("none"), Path("out"), "png"}), "none", "no such folder");
    ExpectFailure(Run({"folder", Path("source.bmp"), Path("out"), "png"}), "source.bmp", "it is not a folder");
}

TEST_F(FolderFaults, FileAsTargetFolderIsNamed) {
    ExpectFailure(Run({"folder", Path("in"), Path("source.bmp"), "png"}), "source.bmp", "it is not a folder");
}

TEST_F(FolderFaults, TargetFolderThatCannotBeMadeIsNamed) {
    MakePicture("in/a.bmp");
    MakeFolder("closed");
    chmod(Path("closed").c_str(), 0555);
    chmod(folder_.Path().c_str(), 0755);
    ExpectFailures(Run({"folder", Path("in"), Path("closed/out"), "png"}, true), "0 written, 0 skipped, 1 failed",
                   {{"cannot make the folder", "closed/out"}});
}

TEST_F(FolderFaults, ReadOnlyTargetFolderIsNamedForEachFile) {
    MakePicture("in/a.bmp", 4, 4);
    MakePicture("in/b.bmp", 20, 20);
    MakeFolder("closed");
    chmod(Path("closed").c_str(), 0555);
    chmod(folder_.Path().c_str(), 0755);
    ExpectFailures(Run({"folder", Path("in"), Path("closed"), "png", "10", "--jobs", "1"}, true),
                   "0 written, 0 skipped, 2 failed",
                   {{"closed/a.png", "not writable"}, {"closed/b.png", "not writable"}});
}

TEST_F(FolderFaults, SubfolderThatCannotBeListedIsNamed) {
    MakeFolder("in/closed");
    MakeFolder("out");
    MakePicture("in/a.bmp");
    chmod(Path("in/closed").c_str(), 0);
    chmod(Path("out").c_str(), 0777);
    chmod(folder_.Path().c_str(), 0755);
    const Outcome outcome = Run({"folder", Path("in"), Path("out"), "png", "--recursive"}, true);
    chmod(Path("in/closed").c_str(), 0755);
    ExpectFailures(outcome, "1 written, 0 skipped, 1 failed", {{"in/closed", "cannot read the folder"}});
}

} // namespace
