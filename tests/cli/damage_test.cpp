// Damaged photographs at the command line: a warning and a picture, or a refusal where that is asked for.
#include "tests/cli/folderfixture.h"

namespace {

using namespace tests;

class DamagedPhoto : public Folder {
  protected:
    DamagedPhoto() {
        MakeFolder("in");
        ExpectSuccess(Run({"resize", LUMBRIX_SAMPLES "/photo.jpg", Path("whole.jpg"), "200"}));
        const std::string whole = ReadBytes(folder_ / "whole.jpg");
        WriteBytes(folder_ / "in/cut.jpg", whole.substr(0, whole.size() / 2));
    }

    // Expects status 0 and one line that warns of the photograph.
    void ExpectWarning(const Outcome& outcome, const std::string& output = "") {
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.output, output);
        EXPECT_EQ(outcome.errors,
                  "lumbrix-cli: warning: " + Path("in/cut.jpg") + " is damaged: not all of it could be decoded\n");
    }
};

TEST_F(DamagedPhoto, EveryCommandThatWritesWarnsAndSucceeds) {
    const std::string source = Path("in/cut.jpg");
    const std::string target = Path("a.png");
    for (const std::vector<std::string>& words : {std::vector<std::string>{"convert", source, target},
                                                  {"thumb", source, "50", target},
                                                  {"resize", source, target, "50"},
                                                  {"crop", source, target, "0", "0", "300", "200"},
                                                  {"rotate", source, target, "180"},
                                                  {"annotate", source, target, "5", "5", "HI"},
                                                  {"stamp", source, target, "5", "5", LUMBRIX_SAMPLES "/stamp.png"}}) {
        ExpectWarning(Run(words));
        EXPECT_TRUE(std::filesystem::remove(target)) << words[0];
    }
    ExpectWarning(Run({"date", source, "now"}), Path("in/cut_stamped.jpg") + "\n");
}

TEST_F(DamagedPhoto, EveryCommandThatWritesRefusesItWhereThatIsAskedFor) {
    const std::string source = Path("in/cut.jpg");
    const std::string target = Path("a.png");
    WriteBytes(target, "old");
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"convert", source, target, "--strict"},
          {"thumb", source, "50", target, "--strict"},
          {"resize", source, target, "50", "--strict"},
          {"crop", source, target, "0", "0", "300", "200", "--strict"},
          {"rotate", source, target, "180", "--strict"},
          {"annotate", source, target, "5", "5", "HI", "--strict"},
          {"stamp", source, target, "5", "5", LUMBRIX_SAMPLES "/stamp.png", "--strict"},
          {"date", source, "now", "--strict"}}) {
        ExpectFailure(Run(words), "in/cut.jpg", "damaged");
        EXPECT_EQ(ReadBytes(target), "old") << words[0];
    }
    EXPECT_FALSE(std::filesystem::exists(folder_ / "in/cut_stamped.jpg"));
}

TEST_F(DamagedPhoto, AFolderIsWorkedThroughWithAWarning) {
    ExpectWarning(RunFolder({"png"}), "1 written, 0 skipped, 0 failed\n");
    const Outcome strict = RunFolder({"png", "50", "--strict"});
    EXPECT_EQ(strict.status, 1);
    EXPECT_EQ(strict.output, "0 written, 0 skipped, 1 failed\n");
}

TEST_F(DamagedPhoto, FilesThatAreOnlyAskedAboutAreNotDecoded) {
    ExpectSuccess(Run({"size", Path("in/cut.jpg")}), "300 x 200\n");
}

} // namespace
