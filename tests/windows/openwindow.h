// A window of another process, worked as a person would work it.
#pragma once

#include "tests/windows/sending.h"

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace tests {

class OpenWindow {
  public:
    // `below` are the windows of the same program that were open before.
    explicit OpenWindow(HWND window, std::vector<HWND> below = {});

    HWND Window() const { return window_; }
    HWND Item(int id) const { return GetDlgItem(window_, id); }
    std::string Text(int id) const;
    void SetText(int id, const std::string& text) const;
    bool IsChecked(int id) const { return Send(Item(id), BM_GETCHECK) == BST_CHECKED; }
    bool IsVisible(int id) const { return IsWindowVisible(Item(id)) != FALSE; }

    // Presses a button and comes back when all it does is done; with Begin, at once, for what opens a further window.
    void Click(int id) const { Send(Item(id), BM_CLICK); }
    void BeginClick(int id) const { PostMessageA(Item(id), BM_CLICK, 0, 0); }

    void Drop(const std::vector<std::string>& paths) const;

    // The control that has the keyboard, and its id; null and 0 for none.
    HWND Focused() const;
    int FocusedId() const;

    // Brings the window to the front, so that real keys and clicks go to it.
    void Activate() const;

    // The further window of the program that opens over this one, waited for; with `besides`, one besides that.
    HWND WaitForDialog(HWND besides = nullptr) const;
    OpenWindow Further() const;

    // What a message box over this window says, "TITLE: TEXT", after which the button with this id is pressed and the
    // box is gone.
    std::string Answer(int button = IDOK) const;

    // Whether there is no further window.
    bool IsQuiet() const { return FindDialog() == nullptr; }

    // Presses the close box.
    void Close() const { PostMessageA(window_, WM_SYSCOMMAND, SC_CLOSE, 0); }
    void WaitUntilGone() const;

    // Calls a function of a system library within the program, with 32-bit arguments: some questions are answered only
    // there.
    std::uint32_t CallInside(const char* library, const char* function,
                             const std::vector<std::uint32_t>& arguments) const;

    // Bytes of memory within the program, and back.
    std::uint32_t PutInside(const void* bytes, std::size_t count) const;
    void GetFromInside(std::uint32_t address, void* bytes, std::size_t count) const;

  protected:
    // For a window that is not there yet.
    OpenWindow() = default;
    void Take(HWND window) { window_ = window; }

  private:
    HWND FindDialog(HWND besides = nullptr) const;

    HWND window_ = nullptr;
    std::vector<HWND> below_;
};

// Types a name into a dialog that chooses files.
void SetFileName(const OpenWindow& picker, const std::string& name);

// Types the name of a file that is not there and presses the dialog's own button: it says so, and stays open.
void ExpectMissingFileRefused(const OpenWindow& picker);

} // namespace tests
