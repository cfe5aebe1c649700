// Pictures from the standard input and to the standard output.
#include "tests/cli/commandline.h"

#include <cstdlib>
#include <sys/wait.h>

namespace {

using namespace tests;

class Streams : public CommandLine {
  protected:
    // Runs the program with words and redirections as a shell takes them, in the folder of the test.
    int RunInShell(const std::string& words) {
        const std::string command =
            "cd " + folder_.Path().string() + " && " LUMBRIX_CLI " " + words + " 2>" + Path("errors");
        return WEXITSTATUS(std::system(command.c_str()));
    }

    std::string File(const std::string& name) const { return ReadBytes(folder_ / name); }
};

TEST_F(Streams, PictureGoesFromTheStandardInputToTheStandardOutput) {
    ASSERT_EQ(RunInShell("convert source.bmp file.png"), 0);
    EXPECT_EQ(RunInShell("convert - - --to png <source.bmp >stream.png"), 0) << File("errors");
    EXPECT_EQ(File("stream.png"), File("file.png"));
    EXPECT_EQ(File("errors"), "");
}

TEST_F(Streams, EitherSideMayBeAFile) {
    ASSERT_EQ(RunInShell("resize source.bmp file.png 5"), 0);
    EXPECT_EQ(RunInShell("resize - in.png 5 <source.bmp"), 0);
    EXPECT_EQ(RunInShell("resize source.bmp - 5 --format PNG >out.png"), 0);
    EXPECT_EQ(File("in.png"), File("file.png"));
    EXPECT_EQ(File("out.png"), File("file.png"));
    EXPECT_EQ(RunInShell("thumb - 5 - --to png <source.bmp >thumb.png"), 0);
    EXPECT_EQ(Run({"size", Path("thumb.png")}).output, "2 x 5\n");
}

TEST_F(Streams, WhatAFileSaysIsReadFromTheStandardInputToo) {
    EXPECT_EQ(RunInShell("size - <source.bmp >out"), 0);
    EXPECT_EQ(File("out"), "1 x 2\n");
    ASSERT_EQ(RunInShell("date " LUMBRIX_SAMPLES "/photo.jpg >wanted"), 0);
    EXPECT_EQ(RunInShell("date - <" LUMBRIX_SAMPLES "/photo.jpg >out"), 0);
    EXPECT_EQ(File("out"), File("wanted"));
    ASSERT_EQ(RunInShell("properties " LUMBRIX_SAMPLES "/photo.jpg >wanted"), 0);
    EXPECT_EQ(RunInShell("properties - <" LUMBRIX_SAMPLES "/photo.jpg >out"), 0);
    EXPECT_EQ(File("out"), File("wanted"));
}

TEST_F(Streams, FailuresNameTheStream) {
    EXPECT_EQ(RunInShell("convert - a.png </dev/null"), 1);
    EXPECT_EQ(File("errors").find("lumbrix-cli: cannot read the standard input: it is not a picture"), 0u)
        << File("errors");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "a.png"));
    EXPECT_EQ(RunInShell("convert source.bmp - --to png >/dev/full"), 1);
    EXPECT_EQ(File("errors").find("lumbrix-cli: cannot write the standard output: "), 0u) << File("errors");
    EXPECT_EQ(RunInShell("convert - a.png <&-"), 1);
    EXPECT_NE(File("errors").find("cannot read the standard input"), std::string::npos) << File("errors");
}

TEST_F(Streams, NothingComesOutOfASourceThatIsBroken) {
    const std::string whole = File("source.bmp");
    WriteBytes(folder_ / "cut.bmp", whole.substr(0, whole.size() - 6));
    EXPECT_EQ(RunInShell("convert - - --to png <cut.bmp >out"), 1);
    EXPECT_EQ(File("out"), "");
}

TEST_F(Streams, FileOfThatNameIsMeantWithItsFolder) {
    WriteBytes(folder_ / "-", File("source.bmp"));
    EXPECT_EQ(RunInShell("convert ./- a.png"), 0);
    EXPECT_EQ(RunInShell("convert source.bmp ./- --to png"), 0);
    EXPECT_EQ(File("-"), File("a.png"));
    EXPECT_EQ(RunInShell("convert - - --to png --skip <source.bmp >out"), 0);
    EXPECT_EQ(File("out"), File("a.png"));
}

TEST_F(Streams, WhatMeansNothingForThemIsWrongUsage) {
    ExpectWrongUsage(Run({"convert", Path("source.bmp"), "-"}), "must be named: --to FORMAT");
    ExpectWrongUsage(Run({"convert", "-", "--to", "png", "--into", Path("out")}), "a file of that name is ./-");
    ExpectWrongUsage(Run({"convert", "-", Path("a.png"), "--keep-dates"}), "--keep-dates needs files");
    ExpectWrongUsage(Run({"convert", "-", Path("a.png"), "--newer"}), "--newer needs files");
    ExpectWrongUsage(Run({"convert", "-", "-", "--to", "png", "--json"}), "--json prints to the standard output");
    ExpectWrongUsage(Run({"convert", "-", "-", "--to", "png", "--verbose"}), "--verbose prints to the standard output");
    ExpectWrongUsage(Run({"convert", "-", "-", "--to", "png", "--dry-run"}), "--dry-run prints to the standard output");
    ExpectWrongUsage(Run({"convert", "a", "b", "--to", "png", "--format", "png"}), "exclude each other");
    ExpectWrongUsage(Run({"date", "-", "2026:01:01 00:00:00"}), "must be a file");
}

} // namespace
