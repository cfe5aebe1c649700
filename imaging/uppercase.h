// Letter case of the words that the engine compares.
#pragma once

#include <string>
#include <string_view>

namespace lumbrix {

// With the letters a to z made capital; all other characters stay.
inline std::string UpperCase(std::string_view text) {
    std::string upper(text);
    for (char& character : upper) {
        if (character >= 'a' && character <= 'z') {
            character = static_cast<char>(character - 'a' + 'A');
        }
    }
    return upper;
}

} // namespace lumbrix
