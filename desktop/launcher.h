// Starting what lies outside the program, so that tests put a record in its place.
#pragma once

#include <string>

namespace lumbrix {

// Nothing is waited for, and a failure passes in silence.
class Launcher {
  public:
    virtual ~Launcher() = default;

    // Opens a page of the web in the system's browser.
    virtual void OpenPage(const std::string& address) = 0;

    // Starts a program, named by its file, as a new process with a normal window.
    virtual void StartProgram(const std::string& program) = 0;
};

} // namespace lumbrix
