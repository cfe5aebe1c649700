// The table of the About box, and what a press in it does, without a window.
#include "desktop/aboutlayout.h"
#include "desktop/aboutpress.h"
#include "platform/files.h"
#include "tests/support/fakelauncher.h"
#include "tests/support/fakesettings.h"
#include "tests/windows/expected/about.h"
#include "tests/windows/expected/againsttable.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace lumbrix;
using namespace tests;

using Steps = std::vector<std::string>;

TEST(AboutBoxTable, IsAsExpected) { ExpectTable(aboutbox::AboutBoxLayout, ExpectedAboutBox()); }

TEST(AboutBoxTable, LastLineAloneReachesBeyondTheBox) {
    std::set<int> beyond;
    for (const Control& control : aboutbox::AboutBoxControls) {
        EXPECT_LT(control.x, 200) << control.id;
        EXPECT_LE(control.y + control.height, 121) << control.id;
        if (control.x + control.width > 200) {
            beyond.insert(control.id);
        }
    }
    EXPECT_EQ(beyond, std::set<int>{210});
}

TEST(AboutBoxTable, LinksAloneAreUnderlined) {
    const std::set<int> links(AboutBoxLinks.begin(), AboutBoxLinks.end());
    EXPECT_EQ(links, (std::set<int>{207, 208, 210}));
    for (const ExpectedControl& control : ExpectedAboutBox().controls) {
        EXPECT_EQ(control.font.isUnderlined, links.contains(control.id)) << control.id;
    }
}

// Presses with records in the place of all that happens.
class PressInTheAboutBox : public testing::Test {
  protected:
    void Press(int control) {
        ActOnPress(control, launcher_,
                   {.removeDesktopShortcut = [&] { steps_.push_back("shortcut"); },
                    .endAboutBox = [&] { steps_.push_back("box"); },
                    .deleteAtRestart = [&](const std::string& path) { steps_.push_back("delete " + path); },
                    .endMainWindow = [&] { steps_.push_back("main window"); }},
                   settings_);
    }

    FakeLauncher launcher_;
    FakeSettings settings_;
    Steps steps_;
};

TEST_F(PressInTheAboutBox, OnTheWebAddressOpensThePage) {
    Press(207);
    EXPECT_EQ(launcher_.calls, (Steps{"page " LUMBRIX_MAKER_WEB}));
    EXPECT_TRUE(settings_.calls.empty());
    EXPECT_TRUE(steps_.empty());
}

TEST_F(PressInTheAboutBox, OnSystemInformationStartsTheTool) {
    settings_.values["PATH"] = std::string("C:\\tool.exe\0", 12);
    Press(208);
    EXPECT_EQ(launcher_.calls, (Steps{"program C:\\tool.exe"}));
    EXPECT_TRUE(steps_.empty());
}

TEST_F(PressInTheAboutBox, OnUninstallTakesItsStepsInOrder) {
    Press(210);
    EXPECT_EQ(steps_, (Steps{"shortcut", "box", "delete " + ProgramPath(), "main window"}));
    EXPECT_TRUE(launcher_.calls.empty());
    EXPECT_TRUE(settings_.calls.empty());
}

TEST_F(PressInTheAboutBox, ElsewhereDoesNothing) {
    for (const int control : {-1, 0, 1, 201, 202, 203, 204, 205, 206, 209, 211}) {
        Press(control);
    }
    EXPECT_TRUE(launcher_.calls.empty());
    EXPECT_TRUE(settings_.calls.empty());
    EXPECT_TRUE(steps_.empty());
}

} // namespace
