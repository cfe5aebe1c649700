// lumbrix-cli run as a process in a folder of its own, and what came of it.
#include "tests/cli/commandline.h"

#include "tests/support/bmpfiles.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

namespace tests {

namespace {

// Becomes somebody without rights, if it is root who runs the tests.
bool BecomeNobody() {
    constexpr uid_t Nobody = 65534;
    return geteuid() != 0 || setuid(Nobody) == 0;
}

} // namespace

CommandLine::CommandLine() {
    WriteBytes(folder_ / "source.bmp", MakeBmp(1, 2, [](int, int y) { return y == 0 ? Blue : Red; }));
}

pid_t CommandLine::Start(const std::vector<std::string>& arguments, bool asNobody, int errorOutput) {
    std::vector<std::string> texts(arguments);
    texts.insert(texts.begin(), LUMBRIX_CLI);
    std::vector<char*> words;
    for (std::string& text : texts) {
        words.push_back(text.data());
    }
    words.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        dup2(open(Path("stdout").c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600), 1);
        const int errors = open(Path("stderr").c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600);
        dup2(errorOutput >= 0 ? errorOutput : errors, 2);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) { // whoever runs the tests may pass them over
            std::signal(signal, SIG_DFL);
        }
        if (asNobody && !BecomeNobody()) {
            _exit(126);
        }
        execv(LUMBRIX_CLI, words.data());
        _exit(127);
    }
    return child;
}

Outcome CommandLine::Wait(pid_t child) {
    int ending = 0;
    waitpid(child, &ending, 0);
    return {WIFEXITED(ending) ? WEXITSTATUS(ending) : -1, ReadBytes(folder_ / "stdout"), ReadBytes(folder_ / "stderr")};
}

Outcome CommandLine::Run(const std::vector<std::string>& arguments, bool asNobody) {
    return Wait(Start(arguments, asNobody));
}

void CommandLine::ExpectSuccess(const Outcome& outcome, const std::string& output) {
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, output);
    EXPECT_EQ(outcome.errors, "");
}

void CommandLine::ExpectFailure(const Outcome& outcome, const std::string& file, const std::string& cause) {
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find(file), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find(cause), std::string::npos) << outcome.errors;
}

void CommandLine::ExpectWrongUsage(const Outcome& outcome, const std::string& text) {
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.errors.find(text), std::string::npos) << outcome.errors;
}

std::set<std::string> CommandLine::NamesIn(const std::string& name) const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_ / name)) {
        names.insert(entry.path().filename().string());
    }
    names.erase("stdout");
    names.erase("stderr");
    return names;
}

} // namespace tests
