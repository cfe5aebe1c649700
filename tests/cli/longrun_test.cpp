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
        for (int i = 0; i < 3000 && !fs::exists(folder_ / name); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        ASSERT_TRUE(fs::exists(folder_ / name)) << name;
    }

    // Waits until a run has begun with a file.
    void AwaitOpened(pid_t child, const std::string& name) {
        const fs::path opened = "/proc/" + std::to_string(child) + "/fd";
        const auto isOpened = [&] {
            std::error_code closedMeanwhile;
            for (const auto& entry : fs::directory_iterator(opened, closedMeanwhile)) {
                if (fs::read_symlink(entry.path(), closedMeanwhile) == folder_ / name) {
                    return true;
                }
            }
            return false;
        };
        for (int i = 0; i < 3000 && !isOpened(); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        ASSERT_TRUE(isOpened()) << name;
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
    kill(child, SIGINT);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_EQ(waitpid(child, nullptr, WNOHANG), 0) << "the first interrupt waits for the file under way";
    kill(child, SIGINT);
    const Outcome outcome = Wait(child);
    EXPECT_EQ(outcome.status, 130);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(NamesIn("out"), (std::set<std::string>{"a.gif"}));
}

// Runs the folder command with its error output on a terminal; gives back what the terminal got.
class OnTerminal : public LongRun {
  protected:
    std::string RunOnTerminal(const std::string& counts = "3 written, 0 skipped, 0 failed\n") {
        const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
        EXPECT_EQ(grantpt(terminal) + unlockpt(terminal), 0);
        const int end = open(ptsname(terminal), O_RDWR | O_NOCTTY);
        const pid_t child = Start({"folder", Path("in"), Path("out"), "png"}, false, end);
        close(end);
        std::string shown;
        char buffer[4096];
        for (ssize_t count = 0; (count = read(terminal, buffer, sizeof buffer)) > 0;) {
            shown.append(buffer, static_cast<std::size_t>(count));
        }
        close(terminal);
        EXPECT_EQ(Wait(child).output, counts);
        return shown;
    }
};

TEST_F(OnTerminal, BarIsDrawnInOneLineAndErased) {
    for (const char* name : {"in/a.bmp", "in/b.bmp", "in/c.bmp"}) {
        MakePicture(name);
    }
    const std::string shown = RunOnTerminal();
    EXPECT_NE(shown.find("] 0 of 3"), std::string::npos) << shown;
    EXPECT_NE(shown.find("#] 3 of 3"), std::string::npos) << shown;
    EXPECT_EQ(shown.find('\n'), std::string::npos) << shown;
    const std::size_t last = shown.find_last_not_of(" \r");
    EXPECT_EQ(shown.substr(last + 1), "\r" + std::string(std::string("[] 3 of 3").size() + 40, ' ') + "\r");
}

TEST_F(OnTerminal, FailureIsShownOnceAboveTheBar) {
    for (const char* name : {"in/a.bmp", "in/c.bmp", "in/d.bmp"}) {
        MakePicture(name);
    }
    WriteBytes(folder_ / "in/b.png", "Dear Sir or Madam");
    const std::string shown = RunOnTerminal("3 written, 0 skipped, 1 failed\n");
    const std::size_t failure = shown.find("\rlumbrix-cli: cannot read " + Path("in/b.png"));
    ASSERT_NE(failure, std::string::npos) << shown;
    EXPECT_LT(shown.find("] 0 of 4"), failure);
    EXPECT_GT(shown.find("] 4 of 4"), failure);
    EXPECT_EQ(shown.find("b.png", shown.find('\n')), std::string::npos) << shown;
}

TEST_F(OnTerminal, NoBarIsDrawnElsewhere) {
    MakePicture("in/a.bmp");
    ExpectSuccess(RunFolder({"png"}), "1 written, 0 skipped, 0 failed\n");
}

} // namespace
