// A text that the engine handed out, given back when it is no longer needed.
#pragma once

#include "imaging/exports/lumbrix.h"

#include <string>

namespace lumbrix::cli {

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
