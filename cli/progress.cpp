// A bar that shows how far a long work has come.
#include "cli/progress.h"

#include <algorithm>
#include <cstdio>

namespace lumbrix::cli {

Progress::Progress(std::size_t total, bool isShown) : total_(total), isShown_(isShown && total > 0) { Draw(); }

Progress::~Progress() { Erase(); }

void Progress::Step() {
    const std::lock_guard lock(mutex_);
    ++done_;
    Draw();
}

void Progress::Tell(const std::string& line) {
    const std::lock_guard lock(mutex_);
    Erase();
    std::fputs(line.c_str(), stderr);
    Draw();
}

void Progress::Erase() {
    if (isShown_) {
        Print(std::string(length_, ' ') + '\r');
    }
}

void Progress::Draw() {
    if (isShown_) {
        const std::string line = ProgressLine(done_, total_);
        length_ = std::max(length_, line.size());
        Print(line);
    }
}

void Progress::Print(const std::string& line) {
    std::fprintf(stderr, "\r%s", line.c_str());
    std::fflush(stderr);
}

std::string ProgressLine(std::size_t done, std::size_t total) {
    constexpr std::size_t Width = 40;
    const std::size_t filled = total == 0 ? Width : done * Width / total;
    return "[" + std::string(filled, '#') + std::string(Width - filled, '-') + "] " + std::to_string(done) + " of " +
           std::to_string(total);
}

} // namespace lumbrix::cli
