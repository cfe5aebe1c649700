// Letter case of the words that are compared.
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

// With the letters A to Z made small.
inline std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& character : lower) {
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        }
    }
    return lower;
}

} // namespace lumbrix
