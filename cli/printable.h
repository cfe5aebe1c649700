// Texts from files as a terminal may see them.
#pragma once

#include <algorithm>
#include <string>

namespace lumbrix::cli {

// The text with a question mark for each control character but tabs, for a terminal obeys them.
inline std::string Printable(std::string text) {
    std::replace_if(
        text.begin(), text.end(),
        [](unsigned char character) { return (character < ' ' && character != '\t') || character == 0x7F; }, '?');
    return text;
}

} // namespace lumbrix::cli
