// The command folder while it runs: the wish to stop, and the bar that shows how far it has come.
#include "tests/cli/folderfixture.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

namespace {

using namespace tests;
namespace fs = std::filesystem;

class LongRun : public Folder {
  protected:
    // Waits until a file stands somewhere.
    void AwaitFile(const std::string& name) {
        ASSERT_TRUE(Await([&] { return fs::exists(folder_ / name); })) << name;
    }

    // Enough pictures that a run over them lasts a while; all are one file under many names.
    void MakeManyPictures(int count) {
        MakePicture("in/000.bmp", 500, 500);
        for (int i = 1; i < count; ++i) {
            const std::string number = std::to_string(1000 + i).substr(1);
            fs::create_hard_link(folder_ / "in/000.bmp", folder_ / ("in/" + number + ".bmp"));
        }
    }

    // Interrupts a run over many pictures and expects that what it wrote is whole and what it counted is true.
    void ExpectCleanStop(int signal) {
        constexpr int Count = 600;
        MakeManyPictures(Count);
        const pid_t child = Start({"folder", Path("in"), Path("out"), "tif", "--jobs", "3"});
        AwaitFile("out/002.tif");
        kill(child, signal);
        const Outcome outcome = Wait(child);
        EXPECT_EQ(outcome.status, 130);
        const auto written = NamesIn("out");
        EXPECT_LT(written.size(), std::size_t{Count});
        EXPECT_EQ(outcome.output, std::to_string(written.size()) + " written, 0 skipped, 0 failed, " +
                                      std::to_string(Count - written.size()) + " not reached\n");
        const std::string whole = ReadBytes(folder_ / "out/000.tif");
        for (const std::string& name : written) {
            EXPECT_EQ(ReadBytes(folder_ / ("out/" + name)), whole) << name;
        }
    }
};

TEST_F(LongRun, InterruptFinishesTheFilesUnderWay) { ExpectCleanStop(SIGINT); }

TEST_F(LongRun, TerminationFinishesTheFilesUnderWay) { ExpectCleanStop(SIGTERM); }

TEST_F(LongRun, SecondInterruptEndsAtOnce) {
    MakePicture("in/a.bmp");
    MakeVastPicture("in/b.bmp");
    const pid_t child = Start({"folder", Path("in"), Path("out"), "gif", "--jobs", "1"});
    AwaitFile("out/a.gif");
    AwaitOpened(child, "in/b.bmp");
    Interrupt(child, SIGINT);
    std::this_thread::sleep_for(std::chrono::milliseconds(100)); // in which it could end
    EXPECT_EQ(waitpid(child, nullptr, WNOHANG), 0) << "the first interrupt waits for the file under way";
    kill(child, SIGINT);
    const Outcome outcome = Wait(child);
    EXPECT_EQ(outcome.status, 130);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(NamesIn("out"), (std::set<std::string>{"a.gif"}));
}

// Runs a command with its error output on a terminal; gives back what the terminal got.
class OnTerminal : public LongRun {
  protected:
    // Long enough for the bar, as a GIF.
    OnTerminal() { MakeVastPicture("in/vast.bmp", 14000); }

    // `atBar` is called with the child once there is a bar.
    std::string ShownOnTerminal(const std::vector<std::string>& words, Outcome& outcome,
                                const std::function<void(pid_t)>& atBar) {
        const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
        EXPECT_EQ(grantpt(terminal) + unlockpt(terminal), 0);
        const int end = open(ptsname(terminal), O_RDWR | O_NOCTTY);
        const pid_t child = Start(words, false, end);
        close(end);
        std::string shown;
        bool isBarSeen = false;
        char buffer[4096];
        for (ssize_t count = 0; (count = read(terminal, buffer, sizeof buffer)) > 0;) {
            shown.append(buffer, static_cast<std::size_t>(count));
            if (!isBarSeen && shown.find("\r[") != std::string::npos) {
                isBarSeen = true;
                atBar(child);
            }
        }
        close(terminal);
        outcome = Wait(child);
        return shown;
    }

    std::string RunOnTerminal(const std::vector<std::string>& words, const std::string& output) {
        Outcome outcome;
        std::string shown = ShownOnTerminal(words, outcome, [](pid_t) {});
        EXPECT_EQ(outcome.output, output);
        return shown;
    }

    std::string RunFolderOnTerminal(const std::string& counts) {
        return RunOnTerminal({"folder", Path("in"), Path("out"), "gif", "--jobs", "1"}, counts);
    }

    // Expects that what was shown is a bar in one line, which is blank in the end.
    void ExpectErasedBar(const std::string& shown) {
        EXPECT_EQ(shown.find('\n'), std::string::npos) << shown;
        EXPECT_NE(shown.find("\r["), std::string::npos) << shown;
        EXPECT_EQ(shown.substr(shown.size() - 2), " \r") << shown;
        const std::size_t last = shown.find_last_not_of(" \r");
        EXPECT_EQ(shown.substr(last + 1, 1), "\r") << shown;
        EXPECT_EQ(shown.size() - last - 3, last - shown.rfind('[') + 1) << shown;
    }
};

TEST_F(OnTerminal, BarOfAFolderCountsFiles) {
    MakePicture("in/a.bmp");
    MakePicture("in/z.bmp");
    const std::string shown = RunFolderOnTerminal("3 written, 0 skipped, 0 failed\n");
    EXPECT_NE(shown.find("] 1 of 3"), std::string::npos) << shown;
    ExpectErasedBar(shown);
}

TEST_F(OnTerminal, BarOfASingleFileCountsItsRows) {
    const std::string shown = RunOnTerminal({"convert", Path("in/vast.bmp"), Path("a.gif")}, "");
    EXPECT_NE(shown.find(" %"), std::string::npos) << shown;
    ExpectErasedBar(shown);
}

TEST_F(OnTerminal, InterruptTakesTheBarAwayToo) {
    Outcome outcome;
    const std::string shown = ShownOnTerminal({"convert", Path("in/vast.bmp"), Path("a.gif")}, outcome,
                                              [](pid_t child) { kill(child, SIGINT); });
    EXPECT_EQ(outcome.status, 130);
    EXPECT_EQ(outcome.output, "");
    ExpectErasedBar(shown);
    EXPECT_FALSE(fs::exists(folder_ / "a.gif"));
}

TEST_F(OnTerminal, QuietRunHasNoBar) {
    EXPECT_EQ(RunOnTerminal({"convert", Path("in/vast.bmp"), Path("a.gif"), "--quiet"}, ""), "");
}

TEST_F(OnTerminal, ShortRunHasNoBar) {
    MakePicture("in/a.bmp");
    EXPECT_EQ(RunOnTerminal({"convert", Path("in/a.bmp"), Path("a.png")}, ""), "");
}

TEST_F(OnTerminal, FailureIsShownOnceAboveTheBar) {
    WriteBytes(folder_ / "in/z.png", "Dear Sir or Madam");
    const std::string shown = RunFolderOnTerminal("1 written, 0 skipped, 1 failed\n");
    const std::size_t failure = shown.find("\rlumbrix-cli: cannot read " + Path("in/z.png"));
    ASSERT_NE(failure, std::string::npos) << shown;
    EXPECT_LT(shown.find("] 0 of 2"), failure);
    EXPECT_EQ(shown.find("z.png", shown.find('\n')), std::string::npos) << shown;
}

TEST_F(OnTerminal, NoBarIsDrawnElsewhere) { ExpectSuccess(RunFolder({"gif"}), "1 written, 0 skipped, 0 failed\n"); }

} // namespace
