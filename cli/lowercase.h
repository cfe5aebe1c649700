// Letter case of words that are compared: ASCII only, whatever the code page.
#pragma once

#include <algorithm>
#include <string>

namespace lumbrix::cli {

inline std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return text;
}

} // namespace lumbrix::cli
