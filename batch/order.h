// What the conversion job and the batch driver need of the main window: its controls as they stand at the moment of
// asking, and a way to speak to its user.
#pragma once

#include <string>

namespace lumbrix {

class OrderDesk {
  public:
    virtual ~OrderDesk() = default;

    virtual std::string SourceFile() const = 0;
    virtual std::string SourceFolder() const = 0;
    virtual std::string Target() const = 0; // a file, or a folder for a batch
    virtual std::string HeightText() const = 0;
    virtual bool IsSmallerChecked() const = 0;
    virtual bool IsCropChecked() const = 0;
    virtual std::string SelectedOutputWord() const = 0;

    // A message with one button, OK.
    virtual void Show(const std::string& text, const std::string& title) = 0;

    // A question with two buttons; whether Yes was pressed.
    virtual bool Confirm(const std::string& text, const std::string& title) = 0;
};

// The title of most messages.
inline constexpr const char* ProgramTitle = "Lumbrix";
inline constexpr const char* SorryTitle = "Sorry...";
inline constexpr const char* VerifyTitle = "Please verify...";

} // namespace lumbrix
