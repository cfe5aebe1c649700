// A bar that shows how far a long work has come.
#pragma once

#include <cstddef>
#include <mutex>
#include <string>

namespace lumbrix::cli {

// Draws one line on the error output, over and over, and erases it in the end. Several threads may report steps and
// tell lines.
class Progress {
  public:
    Progress(std::size_t total, bool isShown);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Step();

    // Prints a line that stays, above the bar.
    void Tell(const std::string& line);

  private:
    void Draw();
    void Erase();
    void Print(const std::string& line);

    std::size_t total_;
    bool isShown_;
    std::mutex mutex_;
    std::size_t done_ = 0;
    std::size_t length_ = 0; // of the line that stands there
};

// The line for a state: "[####----] 5 of 10", with a longer bar.
std::string ProgressLine(std::size_t done, std::size_t total);

} // namespace lumbrix::cli
