// What the user is told and asked, and that there is something to wait for. Those who tell and ask know this alone, so
// that tests can listen.
#pragma once

#include <string>

namespace lumbrix {

// The title of most messages.
inline constexpr const char* ProgramTitle = "Lumbrix";
inline constexpr const char* SorryTitle = "Sorry...";
inline constexpr const char* VerifyTitle = "Please verify...";
inline constexpr const char* UnableTitle = "Unable to proceed";

class Messages {
  public:
    virtual ~Messages() = default;

    // A message with one button, OK. Comes back when it was pressed.
    virtual void Show(const std::string& text, const std::string& title) = 0;

    // A message about the machine rather than the work: without a title, in front of everything.
    virtual void ShowTechnical(const std::string& text) = 0;

    // A question with two buttons; whether Yes was pressed.
    virtual bool Confirm(const std::string& text, const std::string& title) = 0;

    // From the one call to the other the mouse pointer says that work goes on, but for messages in between. They may
    // stand within each other. Use WaitCursor.
    virtual void BeginWaiting() = 0;
    virtual void EndWaiting() = 0;
};

// While it lives the mouse pointer says that work goes on.
class WaitCursor {
  public:
    explicit WaitCursor(Messages& messages) : messages_(messages) { messages_.BeginWaiting(); }
    ~WaitCursor() { messages_.EndWaiting(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

  private:
    Messages& messages_;
};

} // namespace lumbrix
