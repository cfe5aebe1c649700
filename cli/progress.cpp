// A bar that shows how far a long work has come.
#include "cli/progress.h"

#include <algorithm>
#include <utility>

namespace lumbrix::cli {

namespace {

constexpr std::chrono::milliseconds Delay(1000); // what is done sooner needs no bar
constexpr std::chrono::milliseconds Pace(100);
constexpr std::size_t Width = 40;

std::string Bar(std::size_t filled) { return "[" + std::string(filled, '#') + std::string(Width - filled, '-') + "] "; }

} // namespace

Progress::Progress(std::size_t files, bool isShown, ProgressClock clock)
    : files_(files), isShown_(isShown && files > 0), clock_(std::move(clock)), nextDrawing_(clock_() + Delay) {}

Progress::~Progress() { Erase(); }

void Progress::Step() {
    const std::lock_guard lock(mutex_);
    ++done_;
    DrawWhenDue();
}

void Progress::Rows(std::uint32_t done, std::uint32_t rows) {
    const std::lock_guard lock(mutex_);
    percent_ = rows == 0 ? 0 : static_cast<unsigned>(std::uint64_t{std::min(done, rows)} * 100 / rows);
    DrawWhenDue();
}

void Progress::Tell(const std::string& line, std::FILE* output) {
    const std::lock_guard lock(mutex_);
    const bool stood = length_ > 0;
    Erase();
    std::fputs(line.c_str(), output);
    if (stood) {
        std::fflush(output); // before the bar is drawn below it
        Draw();
    }
}

void Progress::DrawWhenDue() {
    if (isShown_ && clock_() >= nextDrawing_) {
        Draw();
        nextDrawing_ = clock_() + Pace;
    }
}

void Progress::Draw() {
    const std::string line = files_ == 1 ? PercentLine(percent_) : ProgressLine(done_, files_);
    const std::size_t shorter = length_ > line.size() ? length_ - line.size() : 0;
    length_ = line.size();
    Print(line + std::string(shorter, ' '));
}

void Progress::Erase() {
    if (length_ > 0) {
        Print(std::string(length_, ' ') + '\r');
        length_ = 0;
    }
}

void Progress::Print(const std::string& line) {
    std::fprintf(stderr, "\r%s", line.c_str());
    std::fflush(stderr);
}

std::string ProgressLine(std::size_t done, std::size_t total) {
    return Bar(total == 0 ? Width : done * Width / total) + std::to_string(done) + " of " + std::to_string(total);
}

std::string PercentLine(unsigned percent) { return Bar(percent * Width / 100) + std::to_string(percent) + " %"; }

} // namespace lumbrix::cli
