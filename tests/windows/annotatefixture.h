// A test with the annotate and crop window open in the running program, temporary files of its own, and a real mouse.
#pragma once

#include "annotate/layout.h"
#include "tests/support/picturefiles.h"
#include "tests/windows/mouse.h"
#include "tests/windows/programfixture.h"

#include <map>

namespace tests {

// The program inherits the folder for temporary files, so this comes before it.
class OwnTemporaryFiles {
  protected:
    // The names and the contents of the temporary files that are there.
    std::map<std::string, std::string> TemporaryFiles() const {
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(temporary_.Path())) {
            if (entry.is_regular_file()) {
                files[entry.path().filename().string()] = ContentOf(entry.path());
            }
        }
        return files;
    }

    TemporaryFolder temporary_;

  private:
    // A file that is being written at this moment has none yet.
    static std::string ContentOf(const std::filesystem::path& path) {
        try {
            return ReadBytes(path);
        } catch (const std::runtime_error&) {
            return {};
        }
    }

    TemporaryFilesIn in_{temporary_.Path()};
};

class PictureWindowTest : public OwnTemporaryFiles, public ProgramTest {
  protected:
    PictureWindowTest() { LoadImagingLibrary(); }
    ~PictureWindowTest() override { UnloadImagingLibrary(); }

    // Chooses source and target and presses a button of the main window.
    OpenWindow Open(int button, const std::string& source, const std::string& target) const {
        program_.SetText(lumbrix::SourceFileBox, source);
        program_.SetText(lumbrix::TargetBox, target);
        program_.BeginClick(button);
        return Opened(program_.Further());
    }

    // A window that is ready for the mouse.
    static OpenWindow Opened(const OpenWindow& window) {
        window.Activate();
        return window;
    }

    static POINT On(const OpenWindow& window, int x, int y) {
        return ScreenPointOf(window.Item(lumbrix::PictureControl), {x, y});
    }

    // How many pixels of a picture of this size one pixel of the control stands for.
    static double ScaleOf(const OpenWindow& window, int width, int height) {
        RECT control{};
        GetClientRect(window.Item(lumbrix::PictureControl), &control);
        return std::max(
            {1.0, static_cast<double>(width) / control.right, static_cast<double>(height) / control.bottom});
    }

    // Comes back when the window has worked off all that the mouse brought about.
    static void Settle(const OpenWindow& window) { SendMessageA(window.Window(), WM_NULL, 0, 0); }

    static void CloseAndWait(const OpenWindow& window) {
        window.Close();
        window.WaitUntilGone();
    }

    // Once no further window is open and the action of the main window has ended.
    void WaitForTheEnd() const {
        EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(program_.Window()) != 0; }));
        Settle(program_);
    }
};

} // namespace tests
