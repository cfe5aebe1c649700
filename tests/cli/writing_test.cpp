// What all commands that write have in common: whole files or none, and nothing left behind.
#include "tests/cli/commandline.h"
#include "tests/support/bmpfiles.h"

#include <sys/stat.h>

#include <cstdlib>
#include <ostream>

namespace {

using namespace tests;
namespace fs = std::filesystem;

// A command that writes, as the words for a source and a target.
struct Writer {
    const char* name;
    std::vector<std::string> wordsBehind;
};

// For googletest's messages.
void PrintTo(const Writer& writer, std::ostream* stream) { *stream << writer.name; }

// Without annotate, which needs a font, and whose way to the file is that of stamp.
const Writer Writers[] = {
    {"convert", {}},
    {"resize", {"5"}},
    {"crop", {"0", "0", "1", "1"}},
    {"rotate", {"180"}},
    {"stamp", {"0", "0", "STAMP"}},
};

class Writing : public CommandLine, public testing::WithParamInterface<Writer> {
  protected:
    Writing() {
        WriteBytes(folder_ / "stamp.bmp", MakeBmp(1, 1, [](int, int) { return Green; }));
        fs::create_directory(folder_ / "temporary");
        chmod(Path("temporary").c_str(), 0777);
        setenv("TMPDIR", Path("temporary").c_str(), 1);
    }

    ~Writing() override {
        EXPECT_EQ(NamesIn("temporary"), std::set<std::string>{});
        unsetenv("TMPDIR");
    }

    Outcome Write(const std::string& source, const std::string& target, bool asNobody = false) {
        std::vector<std::string> words{GetParam().name, Path(source), Path(target)};
        for (const std::string& word : GetParam().wordsBehind) {
            words.push_back(word == "STAMP" ? Path("stamp.bmp") : word);
        }
        return Run(words, asNobody);
    }

    // Expects that the only files are those that a test made.
    void ExpectOnly(std::set<std::string> names) {
        names.insert({"source.bmp", "stamp.bmp", "temporary"});
        EXPECT_EQ(NamesIn(""), names);
    }
};

TEST_P(Writing, WritesEveryFormatAndNothingElse) {
    const std::pair<const char*, const char*> formats[] = {
        {"a.bmp", "BM"}, {"a.JPEG", "\xFF\xD8"}, {"a.gif", "GI"}, {"a.tif", "II"}, {"a.PNG", "\x89P"}};
    for (const auto& [name, start] : formats) {
        ExpectSuccess(Write("source.bmp", name));
        EXPECT_EQ(ReadBytes(folder_ / name).substr(0, 2), start);
    }
    ExpectOnly({"a.bmp", "a.JPEG", "a.gif", "a.tif", "a.PNG"});
}

TEST_P(Writing, OlderTargetIsReplacedAndKeepsItsPermissions) {
    WriteBytes(folder_ / "a.png", "old");
    chmod(Path("a.png").c_str(), 0640);
    ExpectSuccess(Write("source.bmp", "a.png"));
    EXPECT_EQ(ReadBytes(folder_ / "a.png").substr(0, 2), "\x89P");
    EXPECT_EQ(fs::status(folder_ / "a.png").permissions(), fs::perms{0640});
}

TEST_P(Writing, PictureBehindALinkIsReplaced) {
    WriteBytes(folder_ / "far.png", "old");
    fs::create_symlink("far.png", folder_ / "a.png");
    ExpectSuccess(Write("source.bmp", "a.png"));
    EXPECT_TRUE(fs::is_symlink(folder_ / "a.png"));
    EXPECT_EQ(ReadBytes(folder_ / "far.png").substr(0, 2), "\x89P");
}

TEST_P(Writing, SourceAsTargetIsRefused) {
    const std::string before = ReadBytes(folder_ / "source.bmp");
    ExpectFailure(Write("source.bmp", "source.bmp"), "source.bmp", "it is the source itself");
    fs::create_symlink("source.bmp", folder_ / "link.bmp");
    ExpectFailure(Write("source.bmp", "link.bmp"), "link.bmp", "it is the source itself");
    EXPECT_EQ(ReadBytes(folder_ / "source.bmp"), before);
}

TEST_P(Writing, MissingSourceIsNamed) {
    ExpectFailure(Write("none.png", "a.png"), "none.png", "no such file");
    ExpectFailure(Write("", "a.png"), Path(""), "it is a folder");
}

TEST_P(Writing, SourceThatIsNoPictureIsNamed) {
    WriteBytes(folder_ / "letter.png", "Dear Sir or Madam");
    ExpectFailure(Write("letter.png", "a.png"), "letter.png", "not a picture");
    ExpectOnly({"letter.png"});
}

TEST_P(Writing, DamagedSourceLeavesAnOlderTargetAsItWas) {
    WriteBytes(folder_ / "cut.bmp", ReadBytes(folder_ / "source.bmp").substr(0, 55));
    WriteBytes(folder_ / "a.png", "old");
    ExpectFailure(Write("cut.bmp", "a.png"), "cut.bmp", "damaged");
    EXPECT_EQ(ReadBytes(folder_ / "a.png"), "old");
    ExpectOnly({"cut.bmp", "a.png"});
}

TEST_P(Writing, ReadOnlyTargetIsRefused) {
    chmod(folder_.Path().c_str(), 0777);
    WriteBytes(folder_ / "kept.png", "old");
    chmod(Path("kept.png").c_str(), 0444);
    ExpectFailure(Write("source.bmp", "kept.png", true), "kept.png", "not writable");
    EXPECT_EQ(ReadBytes(folder_ / "kept.png"), "old");
}

TEST_P(Writing, ClosedFolderIsNamed) {
    chmod(folder_.Path().c_str(), 0777);
    fs::create_directory(folder_ / "closed");
    chmod(Path("closed").c_str(), 0555);
    ExpectFailure(Write("source.bmp", "closed/a.png", true), "closed/a.png",
                  "the folder " + Path("closed") + " is not writable");
}

TEST_P(Writing, MissingFolderAndFolderAsTargetAreNamed) {
    ExpectFailure(Write("source.bmp", "none/a.png"), "none/a.png", "does not exist");
    fs::create_directory(folder_ / "folder.png");
    ExpectFailure(Write("source.bmp", "folder.png"), "folder.png", "it is a folder");
}

TEST_P(Writing, NameThatNoFileCanHaveIsNamed) {
    const std::string name = std::string(252, 'n') + ".png";
    ExpectFailure(Write("source.bmp", name), name, "no file can have this name");
    ExpectFailure(Write(name, "a.png"), name, "no file can have this name");
    ExpectOnly({"source.bmp"});
}

TEST_P(Writing, PictureWithAPaletteLeavesNoCopyBehind) {
    WriteBytes(folder_ / "palette.bmp", MakePaletteBmp(4, 4, Green));
    ExpectSuccess(Write("palette.bmp", "a.png"));
    ExpectOnly({"palette.bmp", "a.png"});
}

TEST_P(Writing, FolderForTemporaryFilesIsNotNeeded) {
    setenv("TMPDIR", "/nonexist", 1);
    const Outcome outcome = Write("source.bmp", "a.png");
    setenv("TMPDIR", Path("temporary").c_str(), 1);
    ExpectSuccess(outcome);
}

INSTANTIATE_TEST_SUITE_P(Commands, Writing, testing::ValuesIn(Writers),
                         [](const auto& parameter) { return std::string(parameter.param.name); });

} // namespace
