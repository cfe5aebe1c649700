// Commands that write, with several sources and a folder for their targets.
#include "tests/cli/folderfixture.h"

#include <sys/stat.h>

namespace {

using namespace tests;
using FileNames = std::set<std::string>;

class Several : public Folder {
  protected:
    Several() {
        MakePicture("in/a.bmp", 40, 20);
        MakePicture("in/b.bmp", 20, 10, Green);
    }

    // Runs a command on in/a.bmp and in/b.bmp, with these words behind.
    Outcome RunOnBoth(const std::string& command, std::vector<std::string> words) {
        words.insert(words.begin(), {command, Path("in/a.bmp"), Path("in/b.bmp")});
        words.insert(words.end(), {"--into", Path("out")});
        return Run(words);
    }

    std::string SizeOf(const std::string& name) { return Run({"size", Path(name)}).output; }
};

TEST_F(Several, EachKeepsItsFormatInAFolderThatIsMade) {
    ExpectSuccess(Run({"convert", Path("in/b.bmp"), Path("in/c.gif")}));
    ExpectSuccess(Run({"convert", Path("in/a.bmp"), Path("in/c.gif"), "--into", Path("new/deep")}),
                  "2 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(NamesIn("new/deep"), (FileNames{"a.bmp", "c.gif"}));
    EXPECT_EQ(ReadBytes(folder_ / "new/deep/a.bmp").substr(0, 2), "BM");
    EXPECT_EQ(ReadBytes(folder_ / "new/deep/c.gif").substr(0, 3), "GIF");
}

TEST_F(Several, FormatIsChosenForAll) {
    ExpectSuccess(RunOnBoth("convert", {"--to", "PNG"}), "2 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(NamesIn("out"), (FileNames{"a.PNG", "b.PNG"}));
    EXPECT_EQ(ReadBytes(folder_ / "out/a.PNG").substr(0, 4), "\x89PNG");
}

TEST_F(Several, OneSourceMayGoIntoAFolderToo) {
    ExpectSuccess(Run({"convert", Path("in/a.bmp"), "-o", Path("out"), "-tgif"}), "1 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(NamesIn("out"), FileNames{"a.gif"});
}

TEST_F(Several, HeightStandsBehindTheSources) {
    ExpectSuccess(RunOnBoth("resize", {"5"}), "2 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(SizeOf("out/a.bmp") + SizeOf("out/b.bmp"), "10 x 5\n10 x 5\n");
    ExpectSuccess(RunOnBoth("thumb", {"4"}), "2 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(SizeOf("out/a.bmp") + SizeOf("out/b.bmp"), "8 x 4\n8 x 4\n");
}

TEST_F(Several, RectangleStandsBehindTheSources) {
    ExpectSuccess(RunOnBoth("crop", {"1", "2", "3", "4"}), "2 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(SizeOf("out/a.bmp") + SizeOf("out/b.bmp"), "3 x 4\n3 x 4\n");
}

TEST_F(Several, AngleAndFlipStandBehindTheSources) {
    ExpectSuccess(RunOnBoth("rotate", {"90"}), "2 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(SizeOf("out/a.bmp") + SizeOf("out/b.bmp"), "20 x 40\n10 x 20\n");
    WriteBytes(folder_ / "in/b.bmp", MakeBmp(2, 1, [](int x, int) { return x == 0 ? Red : Blue; }));
    ExpectSuccess(RunOnBoth("rotate", {"0", "H"}), "2 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(View("out/b.bmp").At(0, 0), Blue);
}

TEST_F(Several, FlipAloneIsNoAngle) {
    ExpectWrongUsage(RunOnBoth("rotate", {"h"}), "invalid angle 'h'");
    ExpectWrongUsage(RunOnBoth("rotate", {"90", "x"}), "invalid angle 'x'");
}

TEST_F(Several, StampAndTextStandBehindTheirPlace) {
    MakePicture("stamp.bmp", 4, 4, Blue);
    ExpectSuccess(RunOnBoth("stamp", {"-2", "1", Path("stamp.bmp")}), "2 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(View("out/a.bmp").At(1, 1), Blue);
    EXPECT_EQ(View("out/a.bmp").At(2, 1), Red);
    EXPECT_EQ(View("out/b.bmp").At(1, 4), Blue);
    ExpectSuccess(RunOnBoth("annotate", {"0", "-3", "M", "--size", "20", "--color", "0000FF"}),
                  "2 written, 0 skipped, 0 failed\n");
    EXPECT_GT(View("out/a.bmp").CountOthers(Red), 10);
    EXPECT_GT(View("out/b.bmp").CountOthers(Green), 10);
}

TEST_F(Several, MissingWordsAreWrongCalls) {
    ExpectWrongUsage(Run({"convert", "--into", Path("out")}), "too few words");
    ExpectWrongUsage(Run({"resize", "500", "--into", Path("out")}), "too few words");
    ExpectWrongUsage(Run({"crop", "1", "2", "3", "4", "--into", Path("out")}), "too few words");
    ExpectWrongUsage(Run({"resize", Path("in/a.bmp"), Path("in/b.bmp"), "--into", Path("out")}), "invalid height");
    ExpectWrongUsage(Run({"convert", "a.bmp", " ", "--into", Path("out")}), "empty file name");
    ExpectWrongUsage(Run({"convert", "a.bmp", "--into", " "}), "empty file name");
    ExpectWrongUsage(RunOnBoth("convert", {"--to", "webp"}), "unknown format");
    ExpectWrongUsage(RunOnBoth("convert", {"--jobs", "0"}), "invalid number of jobs");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "out"));
}

TEST_F(Several, UsageShowsBothForms) {
    ExpectWrongUsage(Run({"thumb", "a.bmp"}), "usage: lumbrix-cli thumb SOURCE HEIGHT TARGET, or lumbrix-cli thumb "
                                              "SOURCE... HEIGHT --into FOLDER");
}

TEST_F(Several, OptionsOfAFolderNeedOne) {
    ExpectWrongUsage(Run({"convert", Path("in/a.bmp"), Path("a.png"), "--list", "x"}), "--list goes with --into");
    ExpectWrongUsage(Run({"convert", Path("in/a.bmp"), Path("a.png"), "--keep-both"}), "--keep-both goes with --into");
}

TEST_F(Several, WorkGoesOnBehindAFailure) {
    WriteBytes(folder_ / "in/letter.png", "Dear Sir or Madam");
    const Outcome outcome = Run({"convert", Path("in/none.bmp"), Path("in/letter.png"), Path("in/a.bmp"), "--to", "gif",
                                 "--into", Path("out"), "-j1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "1 written, 0 skipped, 2 failed\n");
    const std::size_t first = outcome.errors.find("in/none.bmp: there is no such file");
    EXPECT_NE(first, std::string::npos) << outcome.errors;
    EXPECT_GT(outcome.errors.find("in/letter.png: it is not a picture"), first) << outcome.errors;
    EXPECT_EQ(NamesIn("out"), FileNames{"a.gif"});
}

TEST_F(Several, SecondSourceForATargetIsRefused) {
    MakeFolder("other");
    MakePicture("other/a.bmp", 4, 4);
    const Outcome outcome =
        Run({"convert", Path("other/a.bmp"), Path("in/a.bmp"), "--to", "png", "--into", Path("out"), "--jobs", "1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "1 written, 0 skipped, 1 failed\n");
    EXPECT_NE(outcome.errors.find("cannot write " + Path("out/a.png") + " from " + Path("in/a.bmp") +
                                  ": it is made from " + Path("other/a.bmp")),
              std::string::npos)
        << outcome.errors;
    EXPECT_EQ(SizeOf("out/a.png"), "4 x 4\n");
}

TEST_F(Several, SourcesAreNotWrittenOver) {
    const std::string before = ReadBytes(folder_ / "in/a.bmp");
    std::filesystem::create_directory_symlink("in", folder_ / "alias");
    const Outcome outcome = Run({"resize", Path("in/a.bmp"), Path("in/b.bmp"), "5", "--into", Path("alias")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("it is the source itself"), std::string::npos) << outcome.errors;
    EXPECT_EQ(ReadBytes(folder_ / "in/a.bmp"), before);
}

TEST_F(Several, OtherSourcesAreNotWrittenOverUnderAnotherNameEither) {
    MakePicture("in/a.png", 4, 4); // BMP inside
    std::filesystem::create_directory_symlink("in", folder_ / "alias");
    const Outcome outcome =
        Run({"convert", Path("in/a.bmp"), Path("in/a.png"), "--to", "png", "--into", Path("alias")});
    EXPECT_EQ(outcome.output, "0 written, 0 skipped, 2 failed\n");
    EXPECT_NE(outcome.errors.find("it is a source as well"), std::string::npos) << outcome.errors;
    EXPECT_EQ(SizeOf("in/a.png"), "4 x 4\n");
}

TEST_F(Several, BothAreKeptOnDemand) {
    MakePicture("in/a.png", 4, 4); // BMP inside
    ExpectSuccess(
        Run({"convert", Path("in/a.bmp"), Path("in/a.png"), "--to", "gif", "--into", Path("out"), "--keep-both"}),
        "2 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(SizeOf("out/a.gif") + SizeOf("out/a (2).gif"), "40 x 20\n4 x 4\n");
}

TEST_F(Several, RarerExtensionsAreWrittenInTheirFormat) {
    std::filesystem::copy_file(folder_ / "in/a.bmp", folder_ / "in/a.jfif");
    ExpectSuccess(Run({"convert", Path("in/a.jfif"), "--into", Path("out")}), "1 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(ReadBytes(folder_ / "out/a.jfif").substr(0, 2), "\xFF\xD8");
}

TEST_F(Several, FormatsThatAreNotWrittenAreFailures) {
    std::filesystem::copy_file(folder_ / "in/a.bmp", folder_ / "in/a.ico");
    const Outcome outcome = Run({"convert", Path("in/a.ico"), Path("in/b.bmp"), "--into", Path("out")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "1 written, 0 skipped, 1 failed\n");
    EXPECT_NE(outcome.errors.find("out/a.ico: its extension names no format that is written, use --to"),
              std::string::npos)
        << outcome.errors;
}

TEST_F(Several, FileInThePlaceOfTheFolderIsNamed) {
    ExpectFailure(Run({"convert", Path("in/a.bmp"), "--into", Path("source.bmp")}), "source.bmp", "it is not a folder");
}

TEST_F(Several, FormatOfASingleTargetIsChosenToo) {
    ExpectSuccess(Run({"convert", Path("in/a.bmp"), Path("picture.bin"), "--to", "gif"}));
    EXPECT_EQ(ReadBytes(folder_ / "picture.bin").substr(0, 3), "GIF");
    ExpectWrongUsage(Run({"convert", Path("in/a.bmp"), " ", "--to", "gif"}), "empty file name");
}

TEST_F(Several, NamesWithADashStandBehindTwo) {
    const std::filesystem::path former = std::filesystem::current_path();
    std::filesystem::current_path(folder_.Path());
    std::filesystem::copy_file("in/a.bmp", "-a.bmp");
    const Outcome outcome = Run({"convert", "--into", "out", "--", "-a.bmp"});
    const Outcome other = Run({"convert", "./-a.bmp", "a.gif"});
    std::filesystem::current_path(former);
    ExpectSuccess(outcome, "1 written, 0 skipped, 0 failed\n");
    ExpectSuccess(other);
}

TEST_F(Several, DamagedSourceIsWrittenWithAWarning) {
    const std::string whole = ReadBytes(LUMBRIX_SAMPLES "/photo.jpg");
    WriteBytes(folder_ / "in/a.jpg", whole.substr(0, whole.size() / 2));
    const Outcome outcome = Run({"convert", Path("in/a.jpg"), "--to", "png", "--into", Path("out")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors.find("lumbrix-cli: warning: "), 0u) << outcome.errors;
    EXPECT_EQ(Run({"convert", Path("in/a.jpg"), "--to", "png", "--into", Path("out"), "--strict"}).status, 1);
    ExpectSuccess(Run({"convert", Path("in/a.jpg"), "--to", "png", "--into", Path("out"), "--quiet"}));
}

} // namespace
