// The one kind of error that file operations of our own raise, and the trap that ends it.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace lumbrix {

// Raised by file operations that can fail. `Number` is the system's error number, `what()` a text for people: what
// cannot be done with which file, and the system's reason.
class RuntimeError : public std::runtime_error {
  public:
    RuntimeError(int number, const std::string& text) : std::runtime_error(text), number_(number) {}

    int Number() const { return number_; }

  private:
    int number_;
};

// What the system says about one of its error numbers, in its own words, on one line without a stop at its end.
std::string SystemReason(int number);

// Runs the body until its end or its first RuntimeError, and gives back that error, or nothing. Whatever else the body
// throws goes on.
template <class Body> std::optional<RuntimeError> trap(Body&& body) {
    try {
        std::forward<Body>(body)();
        return std::nullopt;
    } catch (const RuntimeError& error) {
        return error;
    }
}

} // namespace lumbrix
