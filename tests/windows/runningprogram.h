// The real program with its window, driven from outside as a person would drive it.
#pragma once

#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace tests {

// Asks again and again until something holds; false where it does not within half a minute.
bool WaitFor(const std::function<bool()>& holds);

// The same, but it must hold on many askings in a row: for what the display server settles in several steps.
bool WaitUntilLasting(const std::function<bool()>& holds);

// What a window's text is, asked across processes.
std::string WindowText(HWND window);
std::string WindowClass(HWND window);

// A real key.
void PressKey(WORD key, bool withShift = false);

// The first window of a class anywhere below a window; null where there is none.
HWND FindBelow(HWND window, const char* className);

// The whole screen as a BMP file.
void SaveScreenshot(const std::string& path);

// The program from its start to its end.
class RunningProgram {
  public:
    // In a folder of its own with the imaging library beside it.
    RunningProgram();

    // The program file in a folder that is there already.
    RunningProgram(const std::filesystem::path& folder, const std::filesystem::path& currentFolder);

    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    const TemporaryFolder& Folder() const { return folder_; }

    // The path of a file in the program's folder.
    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    HWND Window() const { return window_; }
    HWND Item(int id) const { return GetDlgItem(window_, id); }
    std::string Text(int id) const { return WindowText(Item(id)); }
    void SetText(int id, const std::string& text) const;
    bool IsChecked(int id) const { return SendMessageA(Item(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }

    // Presses a button and comes back when all it does is done; with Begin, at once, for what opens a further window.
    void Click(int id) const { SendMessageA(Item(id), BM_CLICK, 0, 0); }
    void BeginClick(int id) const { PostMessageA(Item(id), BM_CLICK, 0, 0); }

    void Drop(const std::vector<std::string>& paths) const;

    // The further window of the program that is open, waited for; with `besides`, one that is open besides that.
    HWND WaitForDialog(HWND besides = nullptr) const;

    // What a message box says, "TITLE: TEXT", after which the button with this id is pressed and the box is gone.
    std::string Answer(int button = IDOK) const;

    // Whether there is no further window.
    bool IsQuiet() const { return FindDialog() == nullptr; }

    // The id of the control that has the keyboard; 0 for none.
    int FocusedId() const;

    // Brings the window to the front, so that real keys go to it.
    void Activate() const;

    // Ends the program by its close box; its exit code.
    DWORD Close();

    // Calls a function of a system library within the program, with 32-bit arguments: some questions are answered only
    // there.
    std::uint32_t CallInside(const char* library, const char* function,
                             const std::vector<std::uint32_t>& arguments) const;

    // Bytes of memory within the program, and back.
    std::uint32_t PutInside(const void* bytes, std::size_t count) const;
    void GetFromInside(std::uint32_t address, void* bytes, std::size_t count) const;

  private:
    void Start(const std::filesystem::path& folder, const std::filesystem::path& currentFolder);
    HWND FindMainWindow() const;
    HWND FindDialog(HWND besides = nullptr) const;

    TemporaryFolder folder_;
    PROCESS_INFORMATION process_{};
    HWND window_ = nullptr;
};

} // namespace tests
