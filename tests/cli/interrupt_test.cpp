// What an interrupt leaves behind where it ends the program at once: nothing.
#include "tests/cli/folderfixture.h"

#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

namespace {

using namespace tests;
using Names = std::set<std::string>;

class Interrupt : public Folder {
  protected:
    Interrupt() {
        MakeVastPicture("in/vast.bmp");
        MakeFolder("temporary");
        setenv("TMPDIR", Path("temporary").c_str(), 1);
    }

    ~Interrupt() override { unsetenv("TMPDIR"); }

    void Sleep(int milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

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

TEST_F(Interrupt, EndsAConversion) {
    const pid_t child = Start({"convert", Path("in/vast.bmp"), Path("a.gif")});
    Sleep(300);
    ExpectEndWith(SIGINT, child);
}

TEST_F(Interrupt, EndsASmallCopy) {
    const pid_t child = Start({"thumb", Path("in/vast.bmp"), "5000", Path("a.png")});
    Sleep(300);
    ExpectEndWith(SIGINT, child);
}

TEST_F(Interrupt, EndsTheWritingOfALargePicture) {
    const pid_t child = Start({"resize", Path("source.bmp"), Path("a.png"), "20000"});
    Sleep(300);
    ExpectEndWith(SIGINT, child);
}

TEST_F(Interrupt, EndsTheShrinkingOfALargePicture) {
    const pid_t child = Start({"resize", Path("in/vast.bmp"), Path("a.png"), "9000"});
    Sleep(300);
    ExpectEndWith(SIGINT, child);
}

TEST_F(Interrupt, TerminationIsOne) {
    const pid_t child = Start({"resize", Path("in/vast.bmp"), Path("a.png"), "9000"});
    Sleep(300);
    ExpectEndWith(SIGTERM, child);
}

TEST_F(Interrupt, LostTerminalIsOne) {
    const pid_t child = Start({"resize", Path("in/vast.bmp"), Path("a.png"), "9000"});
    Sleep(300);
    ExpectEndWith(SIGHUP, child);
}

TEST_F(Interrupt, EndsAConversionWithABar) {
    const pid_t child = Start({"convert", Path("in/vast.bmp"), Path("a.tif"), "--compression", "deflate"});
    Sleep(1200);
    ExpectEndWith(SIGINT, child);
}

TEST_F(Interrupt, SecondOneEndsARunOverSeveralSources) {
    MakeFolder("in/out");
    const pid_t child =
        Start({"resize", Path("in/vast.bmp"), Path("source.bmp"), "9000", "--into", Path("in/out"), "-j1"});
    Sleep(300);
    kill(child, SIGINT);
    Sleep(50);
    ExpectEndWith(SIGINT, child);
    EXPECT_EQ(NamesIn("in/out"), Names{});
}

TEST_F(Interrupt, FirstOneFinishesTheFileOfSeveralThatIsUnderWay) {
    MakeFolder("in/out");
    const pid_t child =
        Start({"resize", Path("in/vast.bmp"), Path("source.bmp"), "900", "--into", Path("in/out"), "-j1"});
    Sleep(150);
    ASSERT_EQ(waitpid(child, nullptr, WNOHANG), 0) << "the work was done too soon for this test";
    kill(child, SIGINT);
    const Outcome outcome = Wait(child);
    EXPECT_EQ(outcome.status, 130);
    EXPECT_EQ(outcome.output, "1 written, 0 skipped, 0 failed, 1 not reached\n");
    EXPECT_EQ(NamesIn("in/out"), (Names{"vast.bmp"}));
}

TEST_F(Interrupt, SecondOneEndsAWholeRun) {
    MakeFolder("in/out");
    const pid_t child = Start({"folder", Path("in"), Path("in/out"), "png", "9000"});
    Sleep(300);
    kill(child, SIGHUP);
    Sleep(50);
    ExpectEndWith(SIGINT, child);
    EXPECT_EQ(NamesIn("in/out"), Names{});
}

} // namespace
