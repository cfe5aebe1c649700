// Texts: how a terminal may see them, and those that the engine hands out.
#pragma once

#include "imaging/exports/lumbrix.h"

#include <string>

namespace lumbrix::cli {

// The text with a question mark for each control character but tabs, for a terminal obeys them.
std::string Printable(const std::string& text);

// A message of this program as a line for the error output.
std::string MessageLine(const std::string& text);

// A text that the engine handed out, given back when it is no longer needed.
class LibraryText {
  public:
    explicit LibraryText(char* text = nullptr) : text_(text) {}
    ~LibraryText() { lumbrix_free(text_); }
    LibraryText(const LibraryText&) = delete;
    LibraryText& operator=(const LibraryText&) = delete;

    // Where the engine puts or replaces the text.
    char** Place() { return &text_; }

    std::string Text() const { return text_ == nullptr ? "" : text_; }

  private:
    char* text_;
};

} // namespace lumbrix::cli
