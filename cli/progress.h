// A bar that shows how far a long work has come.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <mutex>
#include <string>

namespace lumbrix::cli {

using ProgressClock = std::function<std::chrono::steady_clock::time_point()>;

// Draws one line on the error output, over and over, once the work lasts longer than a second, and erases it in the
// end: how many files of several are done, or the part of the rows of a single one. Several threads may report and
// tell.
class Progress {
  public:
    Progress(std::size_t files, bool isShown, ProgressClock clock = std::chrono::steady_clock::now);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // A file is done.
    void Step();

    // So many rows of a file are read.
    void Rows(std::uint32_t done, std::uint32_t rows);

    // Prints a line that stays, above the bar.
    void Tell(const std::string& line, std::FILE* output = stderr);

  private:
    void DrawWhenDue();
    void Draw();
    void Erase();
    void Print(const std::string& line);

    std::size_t files_;
    bool isShown_;
    ProgressClock clock_;
    std::chrono::steady_clock::time_point nextDrawing_;
    std::mutex mutex_;
    std::size_t done_ = 0;
    unsigned percent_ = 0;   // of a single file's rows
    std::size_t length_ = 0; // of the line that stands there
};

// The line for a state of several files: "[####----] 5 of 10", with a longer bar.
std::string ProgressLine(std::size_t done, std::size_t total);

// The line for a state of one file: "[####----] 50 %".
std::string PercentLine(unsigned percent);

} // namespace lumbrix::cli
