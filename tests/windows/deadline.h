// The time that a test may take: a test that hangs becomes a failed one, and the rest goes on. The first failure of a
// test leaves a picture of the screen among the logs, named after the test.
#pragma once

#include <windows.h>

#include <string>

namespace tests {

// Every test has this long. What is still waited for then is told as a failure of the test; the programs under test are
// ended, and whoever waits gives up. A test that does not come to its end even so within half the time takes all the
// tests with it.
constexpr DWORD TestLimitMs = 60000;

// Gives the tests that begin from here on another time.
void LimitTests(DWORD limitMs);

// Whether the running test has had its time. Whoever waits in steps asks.
bool IsTestOver();

// What is waited for while this lives, for the report: "the program to start", say. The innermost one is told first.
class Waiting {
  public:
    explicit Waiting(std::string what);
    ~Waiting();
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
};

// A process that is ended when a test has had its time. The handle stays the caller's, who keeps it open meanwhile.
class EndedWithTest {
  public:
    explicit EndedWithTest(HANDLE process);
    ~EndedWithTest();
    EndedWithTest(const EndedWithTest&) = delete;
    EndedWithTest& operator=(const EndedWithTest&) = delete;

  private:
    HANDLE process_;
};

} // namespace tests
