// Calls of functions within the program under test.
#include "tests/windows/programfixture.h"

#include <gtest/gtest-spi.h>

namespace {

using namespace tests;

class InsideProgram : public ProgramTest {
  protected:
    static std::uint32_t AsArgument(HWND window) {
        return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window));
    }
};

TEST_F(InsideProgram, FunctionRunsInTheProcessAndOnTheThreadOfTheWindow) {
    DWORD process = 0;
    const DWORD thread = GetWindowThreadProcessId(program_.Window(), &process);
    EXPECT_EQ(program_.CallInside("kernel32.dll", "GetProcessId", {static_cast<std::uint32_t>(-1)}), process);
    EXPECT_EQ(program_.CallInside("kernel32.dll", "GetThreadId", {static_cast<std::uint32_t>(-2)}), thread);
}

TEST_F(InsideProgram, FunctionGetsItsArgumentsInTheirOrder) {
    EXPECT_EQ(program_.CallInside("kernel32.dll", "MulDiv", {21, 10, 3}), 70u);
    const std::uint32_t button = AsArgument(program_.Item(1018));
    EXPECT_EQ(program_.CallInside("user32.dll", "GetDlgItem", {AsArgument(program_.Window()), 1018}), button);
    EXPECT_EQ(program_.CallInside("user32.dll", "SendMessageA", {button, WM_GETTEXTLENGTH, 0, 0}), 7u);
}

TEST_F(InsideProgram, FunctionThatThereIsNotIsAFailure) {
    static const RunningProgram* program;
    program = &program_;
    EXPECT_NONFATAL_FAILURE(program->CallInside("kernel32.dll", "NoSuchFunction", {0}),
                            "NoSuchFunction has not been called within the program");
}

TEST_F(InsideProgram, BytesComeBackAsTheyWerePut) {
    const std::string bytes("\0between two zeros\0", 19);
    std::string seen(bytes.size(), 'x');
    program_.GetFromInside(program_.PutInside(bytes.data(), bytes.size()), seen.data(), seen.size());
    EXPECT_EQ(seen, bytes);
}

// Calls come between two messages, never in the midst of something.
TEST_F(InsideProgram, ManyCallsWhileTheProgramIsBusyLeaveItAlive) {
    for (int call = 0; call < 300; ++call) {
        program_.SetText(1003, std::to_string(call)); // which the program paints
        ASSERT_EQ(program_.CallInside("kernel32.dll", "MulDiv", {static_cast<std::uint32_t>(call), 2, 1}),
                  static_cast<std::uint32_t>(call) * 2);
    }
    EXPECT_EQ(program_.Text(1003), "299");
}

} // namespace
