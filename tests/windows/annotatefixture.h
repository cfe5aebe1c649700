// A test with the annotate and crop window open in the running program, temporary files of its own, and a real mouse.
#pragma once

#include "annotate/layout.h"
#include "tests/support/picturefiles.h"
#include "tests/windows/mouse.h"
#include "tests/windows/programfixture.h"

#include <map>

namespace tests {

using namespace lumbrix::annotatewindow;

// A file as its folder lists it.
struct ListedFile {
    std::uint64_t bytes;
    std::uint64_t written; // when, in the system's own count

    bool operator==(const ListedFile&) const = default;
};

// The program inherits the folder for temporary files, so this comes before it.
class OwnTemporaryFiles {
  protected:
    // The temporary files that are there, by name. None is opened: the program could not replace it at that moment.
    std::map<std::string, ListedFile> TemporaryFiles() const {
        const auto number = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; };
        std::map<std::string, ListedFile> files;
        WIN32_FIND_DATAA found;
        const HANDLE search = FindFirstFileA((temporary_ / "*").string().c_str(), &found);
        for (BOOL isFound = search != INVALID_HANDLE_VALUE; isFound; isFound = FindNextFileA(search, &found)) {
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
                const FILETIME& written = found.ftLastWriteTime;
                files[found.cFileName] = {number(found.nFileSizeHigh, found.nFileSizeLow),
                                          number(written.dwHighDateTime, written.dwLowDateTime)};
            }
        }
        FindClose(search);
        return files;
    }

    TemporaryFolder temporary_;

  private:
    TemporaryFilesIn in_{temporary_.Path()};
};

class PictureWindowTest : public OwnTemporaryFiles, public ProgramTest {
  protected:
    PictureWindowTest() { LoadImagingLibrary(); }
    ~PictureWindowTest() override { UnloadImagingLibrary(); }

    // Chooses source and target and presses a button of the main window.
    OpenWindow Open(int button, const std::string& source, const std::string& target) const {
        program_.SetText(SourceFileBox, source);
        program_.SetText(TargetBox, target);
        program_.BeginClick(button);
        return Opened(program_.Further());
    }

    // A window that is ready for the mouse.
    static OpenWindow Opened(const OpenWindow& window) {
        window.Activate();
        return window;
    }

    static POINT On(const OpenWindow& window, int x, int y) {
        return ScreenPointOf(window.Item(PictureControl), {x, y});
    }

    // How many pixels of a picture of this size one pixel of the control stands for.
    static double ScaleOf(const OpenWindow& window, int width, int height) {
        RECT control{};
        GetClientRect(window.Item(PictureControl), &control);
        return std::max(
            {1.0, static_cast<double>(width) / control.right, static_cast<double>(height) / control.bottom});
    }

    // Clicks on the picture with the other button.
    static void ClickRightOn(const OpenWindow& window, int x, int y) {
        MoveMouse(On(window, x, y));
        const HWND picture = window.Item(PictureControl);
        PostMessageA(picture, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(x, y));
        PostMessageA(picture, WM_RBUTTONUP, 0, MAKELPARAM(x, y));
        // Behind them in the line.
        const HWND box = window.Item(AnnotationBox);
        Send(box, EM_SETMODIFY, FALSE);
        PostMessageA(box, EM_SETMODIFY, TRUE, 0);
        EXPECT_TRUE(WaitFor([&] { return Send(box, EM_GETMODIFY) != 0; }));
    }

    // Comes back when the window has worked off all that the mouse brought about.
    static void Settle(const OpenWindow& window) { Send(window.Window(), WM_NULL); }

    static void CloseAndWait(const OpenWindow& window) {
        window.Close();
        window.WaitUntilGone();
    }
};

} // namespace tests
