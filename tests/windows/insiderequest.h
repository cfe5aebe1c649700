// What is asked of the hook within the program under test, in memory that both processes share.
#pragma once

#include <windows.h>

#include <array>
#include <cstdint>
#include <string>

namespace tests {

constexpr const char* InsideHookFile = "insidehook.dll";
constexpr const char* InsideHookName = "CallForTheTest";

// A function of that file to be called within the program: what has been drawn there is on the screen behind it, where
// it may come later otherwise. Its argument counts for nothing.
constexpr const char* BringToScreenName = "BringToScreen";

// The message on which the hook does what is asked. Its first argument is the process that asks.
constexpr const char* InsideMessageName = "LumbrixInsideCall";

// The name of the memory of a process that asks.
inline std::string InsideMemoryName(std::uint32_t process) { return "LumbrixInside" + std::to_string(process); }

struct InsideRequest {
    static constexpr std::size_t MostArguments = 4;

    std::array<char, 32> library;
    std::array<char, 64> function;
    std::uint32_t count; // of arguments
    std::array<std::uint32_t, MostArguments> arguments;
    std::uint32_t isDone; // 1 once `result` is there
    std::uint32_t result;
};

} // namespace tests
