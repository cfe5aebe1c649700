// A test with the program running, and pictures for it to work on.
#pragma once

#include "mainwindow/layout.h"
#include "tests/windows/runningprogram.h"

#include <gtest/gtest.h>

namespace tests {

using namespace lumbrix::mainwindow;

// A picture of one blue pixel over a red one.
inline const std::string
    SmallBmp("BM\x3E\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\2\0\0\0\1\0\x18\0\0\0\0\0\x08\0\0\0\0\0\0\0"
             "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\xFF\0\xFF\0\0\0",
             62);

class ProgramTest : public testing::Test {
  protected:
    ProgramTest() { WriteBytes(program_.Folder() / "source.bmp", SmallBmp); }

    std::string Path(const std::string& name) const { return program_.Path(name); }
    bool Exists(const std::string& name) const { return std::filesystem::exists(program_.Folder() / name); }
    std::string Start(const std::string& name) const { return ReadBytes(program_.Folder() / name).substr(0, 2); }

    std::string MakeFolder(const std::string& name) const {
        std::filesystem::create_directories(program_.Folder() / name);
        return Path(name) + "\\";
    }

    // Once no further window is open and the action of the main window has ended: a click that waits in line is worked
    // off only then.
    void WaitForTheEnd() const {
        const int box = FlipVerticalCheck;
        EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(program_.Window()) != 0; }));
        const bool wasChecked = program_.IsChecked(box);
        program_.BeginClick(box);
        EXPECT_TRUE(WaitFor([&] { return program_.IsChecked(box) != wasChecked; }));
    }

    RunningProgram program_;
};

} // namespace tests
