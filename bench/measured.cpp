// Runs a command and prints what it took: measured PROGRAM ARGUMENTS…
//
// One line on standard output: seconds by the clock, seconds of processors, peak memory in KiB, exit status (-1 where a
// signal ended it). The command's own output is thrown away. A small process starts the command, for on Linux a program
// inherits the peak of the one that it was started from.
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double SecondsOf(const timeval& time) { return static_cast<double>(time.tv_sec) + time.tv_usec / 1e6; }

[[noreturn]] void Become(char** command) {
    const int nothing = open("/dev/null", O_WRONLY);
    dup2(nothing, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
    execvp(command[0], command);
    _exit(127);
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::fprintf(stderr, "usage: measured PROGRAM ARGUMENTS…\n");
        return 2;
    }
    const auto before = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        Become(arguments + 1);
    }
    int ending = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &ending, 0, &usage) != child) {
        std::perror("measured");
        return 1;
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - before).count();
    std::printf("%.6f %.6f %ld %d\n", seconds, SecondsOf(usage.ru_utime) + SecondsOf(usage.ru_stime), usage.ru_maxrss,
                WIFEXITED(ending) ? WEXITSTATUS(ending) : -1);
    return 0;
}
