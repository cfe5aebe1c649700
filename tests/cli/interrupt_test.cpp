// What an interrupt leaves behind where it ends the program at once: nothing.
#include "tests/cli/folderfixture.h"

#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <cstdlib>

namespace {

using namespace tests;
using Names = std::set<std::string>;

class Interrupted : public Folder {
  protected:
    Interrupted() {
        MakeVastPicture("in/vast.bmp");
        MakeFolder("temporary");
        setenv("TMPDIR", Path("temporary").c_str(), 1);
    }

    ~Interrupted() override { unsetenv("TMPDIR"); }

    // Expects that the program is under way, and that it ends at once, without a word and without a file.
    void ExpectEndWith(int signal, pid_t child) {
        ASSERT_EQ(waitpid(child, nullptr, WNOHANG), 0) << "the work was done too soon for this test";
        kill(child, signal);
        const auto start = std::chrono::steady_clock::now();
        const Outcome outcome = Wait(child);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
        EXPECT_EQ(outcome.status, 130);
        EXPECT_EQ(outcome.output + outcome.errors, "");
        EXPECT_EQ(NamesIn(""), (Names{"in", "source.bmp", "temporary"}));
        EXPECT_EQ(NamesIn("temporary"), Names{});
    }
};

TEST_F(Interrupted, EndsAConversion) {
    const pid_t child = Start({"convert", Path("in/vast.bmp"), Path("a.gif")});
    AwaitUnderWay(child, "in/vast.bmp");
    ExpectEndWith(SIGINT, child);
}

TEST_F(Interrupted, EndsASmallCopy) {
    const pid_t child = Start({"thumb", Path("in/vast.bmp"), "5000", Path("a.png")});
    AwaitUnderWay(child, "in/vast.bmp");
    ExpectEndWith(SIGINT, child);
}

TEST_F(Interrupted, EndsTheWritingOfALargePicture) {
    const pid_t child = Start({"resize", Path("source.bmp"), Path("a.png"), "20000"});
    AwaitUnderWay(child, "source.bmp");
    ExpectEndWith(SIGINT, child);
}

TEST_F(Interrupted, EndsTheShrinkingOfALargePicture) {
    const pid_t child = Start({"resize", Path("in/vast.bmp"), Path("a.png"), "9000"});
    AwaitUnderWay(child, "in/vast.bmp");
    ExpectEndWith(SIGINT, child);
}

TEST_F(Interrupted, TerminationIsOne) {
    const pid_t child = Start({"resize", Path("in/vast.bmp"), Path("a.png"), "9000"});
    AwaitUnderWay(child, "in/vast.bmp");
    ExpectEndWith(SIGTERM, child);
}

TEST_F(Interrupted, LostTerminalIsOne) {
    const pid_t child = Start({"resize", Path("in/vast.bmp"), Path("a.png"), "9000"});
    AwaitUnderWay(child, "in/vast.bmp");
    ExpectEndWith(SIGHUP, child);
}

TEST_F(Interrupted, SecondOneEndsARunOverSeveralSources) {
    MakeFolder("in/out");
    const pid_t child =
        Start({"resize", Path("in/vast.bmp"), Path("source.bmp"), "9000", "--into", Path("in/out"), "-j1"});
    AwaitUnderWay(child, "in/vast.bmp");
    Interrupt(child, SIGINT);
    ExpectEndWith(SIGINT, child);
    EXPECT_EQ(NamesIn("in/out"), Names{});
}

TEST_F(Interrupted, FirstOneFinishesTheFileOfSeveralThatIsUnderWay) {
    MakeFolder("in/out");
    const pid_t child =
        Start({"resize", Path("in/vast.bmp"), Path("source.bmp"), "900", "--into", Path("in/out"), "-j1"});
    AwaitUnderWay(child, "in/vast.bmp");
    ASSERT_EQ(waitpid(child, nullptr, WNOHANG), 0) << "the work was done too soon for this test";
    kill(child, SIGINT);
    const Outcome outcome = Wait(child);
    EXPECT_EQ(outcome.status, 130);
    EXPECT_EQ(outcome.output, "1 written, 0 skipped, 0 failed, 1 not reached\n");
    EXPECT_EQ(NamesIn("in/out"), (Names{"vast.bmp"}));
}

TEST_F(Interrupted, SecondOneEndsAWholeRun) {
    MakeFolder("in/out");
    const pid_t child = Start({"folder", Path("in"), Path("in/out"), "png", "9000"});
    AwaitUnderWay(child, "in/vast.bmp");
    Interrupt(child, SIGHUP);
    ExpectEndWith(SIGINT, child);
    EXPECT_EQ(NamesIn("in/out"), Names{});
}

} // namespace
