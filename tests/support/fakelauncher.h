// A launcher that starts nothing and writes down what it was asked for.
#pragma once

#include "desktop/launcher.h"

#include <string>
#include <vector>

namespace tests {

class FakeLauncher : public lumbrix::Launcher {
  public:
    void OpenPage(const std::string& address) override { calls.push_back("page " + address); }
    void StartProgram(const std::string& program) override { calls.push_back("program " + program); }

    std::vector<std::string> calls;
};

} // namespace tests
