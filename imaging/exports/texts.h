// What all exported doors do with C texts and exceptions.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

namespace lumbrix::exports {

// A null pointer counts as an empty text.
inline std::string Text(const char* text) { return text == nullptr ? std::string() : std::string(text); }

// Runs the body of a door. An exception becomes -1.
template <class Body> std::int32_t Door(Body body) noexcept {
    constexpr std::int32_t InternalError = -1;
    try {
        return body();
    } catch (...) {
        return InternalError;
    }
}

// Memory for a caller, who gives it back with lumbrix_free.
inline void* Allocate(std::size_t bytes) {
    void* memory = std::malloc(bytes);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

inline char* NewText(const std::string& text) {
    return static_cast<char*>(std::memcpy(Allocate(text.size() + 1), text.c_str(), text.size() + 1));
}

// Puts a text where the caller holds one; the text that stood there is given back. An unchanged one stays.
inline void ReplaceText(char** place, const std::string& text) {
    if (Text(*place) != text) {
        char* replacement = NewText(text);
        std::free(*place);
        *place = replacement;
    }
}

} // namespace lumbrix::exports
