// lumbrix-cli as a shell meets it: what it prints, what it writes, how it ends.
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

namespace {

using namespace tests;

struct Outcome {
    int status;
    std::string output;
    std::string errors;
};

class CommandLine : public testing::Test {
  protected:
    CommandLine() {
        // A one-by-two picture: a blue pixel over a red one.
        WriteBytes(
            folder_ / "source.bmp",
            std::string("BM\x3E\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\2\0\0\0\1\0\x18\0\0\0\0\0\x08\0\0\0\0\0"
                        "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\xFF\0\xFF\0\0\0",
                        62));
    }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    // Runs the program; as somebody without special rights where that matters.
    Outcome Run(std::vector<std::string> arguments, bool asNobody = false) {
        arguments.insert(arguments.begin(), LUMBRIX_CLI);
        std::vector<char*> words;
        for (std::string& argument : arguments) {
            words.push_back(argument.data());
        }
        words.push_back(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            dup2(open(Path("stdout").c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600), 1);
            dup2(open(Path("stderr").c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600), 2);
            constexpr uid_t Nobody = 65534;
            if (asNobody && geteuid() == 0 && setuid(Nobody) != 0) {
                _exit(126);
            }
            execv(LUMBRIX_CLI, words.data());
            _exit(127);
        }
        int ending = 0;
        waitpid(child, &ending, 0);
        return {WIFEXITED(ending) ? WEXITSTATUS(ending) : -1, ReadBytes(folder_ / "stdout"),
                ReadBytes(folder_ / "stderr")};
    }

    // Expects status 1 and one sentence that names the file and the cause.
    void ExpectFailure(const Outcome& outcome, const std::string& file, const std::string& cause) {
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
        EXPECT_NE(outcome.errors.find(file), std::string::npos) << outcome.errors;
        EXPECT_NE(outcome.errors.find(cause), std::string::npos) << outcome.errors;
    }

    void ExpectWrongUsage(const Outcome& outcome, const std::string& text) {
        EXPECT_EQ(outcome.status, 2);
        EXPECT_NE(outcome.errors.find(text), std::string::npos) << outcome.errors;
    }

    TemporaryFolder folder_;
};

TEST_F(CommandLine, FormatFollowsTheExtensionOfTheTarget) {
    const std::pair<const char*, const char*> formats[] = {
        {"a.bmp", "BM"}, {"a.jpg", "\xFF\xD8"}, {"a.JPEG", "\xFF\xD8"}, {"a.gif", "GI"},
        {"a.tif", "II"}, {"a.tiff", "II"},      {"a.PNG", "\x89P"}};
    for (const auto& [name, start] : formats) {
        const Outcome outcome = Run({"convert", Path("source.bmp"), Path(name)});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_EQ(outcome.output + outcome.errors, "");
        EXPECT_EQ(ReadBytes(folder_ / name).substr(0, 2), start);
    }
}

TEST_F(CommandLine, ThumbHasItsHeight) {
    EXPECT_EQ(Run({"thumb", Path("source.bmp"), "40", Path("thumb.png")}).status, 0);
    EXPECT_EQ(Run({"size", Path("thumb.png")}).output, "20 x 40\n");
}

TEST_F(CommandLine, HelpNamesEveryCommand) {
    const Outcome outcome = Run({"--help"});
    EXPECT_EQ(outcome.status, 0);
    for (const char* word : {"convert", "thumb", "size", "SOURCE TARGET", "--version"}) {
        EXPECT_NE(outcome.output.find(word), std::string::npos) << word;
    }
}

TEST_F(CommandLine, VersionIsPrinted) { EXPECT_EQ(Run({"--version"}).output, "lumbrix-cli " LUMBRIX_VERSION "\n"); }

TEST_F(CommandLine, WrongUsageEndsWithTwo) {
    ExpectWrongUsage(Run({}), "a command is needed");
    ExpectWrongUsage(Run({"paint", "x"}), "no command 'paint'");
    ExpectWrongUsage(Run({"convert", "x"}), "convert SOURCE TARGET");
    ExpectWrongUsage(Run({"convert", "x", "y.png", "z"}), "convert SOURCE TARGET");
    ExpectWrongUsage(Run({"convert", Path("source.bmp"), "y.sgl"}), "must end in .bmp");
    ExpectWrongUsage(Run({"convert", Path("source.bmp"), "png"}), "must end in .bmp");
    ExpectWrongUsage(Run({"convert", " ", "y.png"}), "empty file name");
    for (const char* height : {"0", "-5", "ten", "5x", "", "99999999999"}) {
        ExpectWrongUsage(Run({"thumb", Path("source.bmp"), height, "y.png"}), "is no height");
    }
}

TEST_F(CommandLine, MissingSourceIsNamed) {
    ExpectFailure(Run({"convert", Path("none.png"), Path("a.jpg")}), "none.png", "no such file");
    ExpectFailure(Run({"size", Path("none.png")}), "none.png", "no such file");
}

TEST_F(CommandLine, FolderAsSourceIsNamed) {
    ExpectFailure(Run({"convert", folder_.Path().string(), Path("a.jpg")}), folder_.Path().string(), "it is a folder");
}

TEST_F(CommandLine, SourceThatIsNoPictureIsNamed) {
    WriteBytes(folder_ / "letter.png", "Dear Sir or Madam");
    ExpectFailure(Run({"convert", Path("letter.png"), Path("a.jpg")}), "letter.png", "no picture");
    WriteBytes(folder_ / "cut.bmp", ReadBytes(folder_ / "source.bmp").substr(0, 55));
    ExpectFailure(Run({"convert", Path("cut.bmp"), Path("a.jpg")}), "cut.bmp", "damaged");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "a.jpg"));
}

TEST_F(CommandLine, MissingTargetFolderIsNamed) {
    ExpectFailure(Run({"convert", Path("source.bmp"), Path("none/a.jpg")}), "none/a.jpg", "does not exist");
}

TEST_F(CommandLine, FolderAsTargetIsNamed) {
    std::filesystem::create_directory(folder_ / "folder.png");
    ExpectFailure(Run({"convert", Path("source.bmp"), Path("folder.png")}), "folder.png", "it is a folder");
}

TEST_F(CommandLine, SourceAsTargetIsRefused) {
    const std::string before = ReadBytes(folder_ / "source.bmp");
    ExpectFailure(Run({"convert", Path("source.bmp"), Path("source.bmp")}), "source.bmp", "the source itself");
    EXPECT_EQ(ReadBytes(folder_ / "source.bmp"), before);
}

TEST_F(CommandLine, ThumbBeyondTheLimitIsRefused) {
    ExpectFailure(Run({"thumb", Path("source.bmp"), "70000", Path("a.png")}), "a.png", "size");
}

TEST_F(CommandLine, ClosedFilesAndFoldersAreNamed) {
    chmod(folder_.Path().c_str(), 0777);
    WriteBytes(folder_ / "secret.bmp", ReadBytes(folder_ / "source.bmp"));
    chmod(Path("secret.bmp").c_str(), 0);
    ExpectFailure(Run({"convert", Path("secret.bmp"), Path("a.png")}, true), "secret.bmp", "permission");
    WriteBytes(folder_ / "kept.png", "old");
    chmod(Path("kept.png").c_str(), 0444);
    ExpectFailure(Run({"convert", Path("source.bmp"), Path("kept.png")}, true), "kept.png", "not writable");
    EXPECT_EQ(ReadBytes(folder_ / "kept.png"), "old");
    std::filesystem::create_directory(folder_ / "closed");
    chmod(Path("closed").c_str(), 0555);
    ExpectFailure(Run({"convert", Path("source.bmp"), Path("closed/a.png")}, true), "closed/a.png", "not writable");
}

} // namespace
