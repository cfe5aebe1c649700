// Nothing that a test waits for may hang: what does not come in time is a failure of that test alone.
#include "tests/windows/deadline.h"
#include "tests/windows/programfixture.h"

#include <gtest/gtest-spi.h>

namespace {

using namespace tests;

using Unanswered = ProgramTest;

constexpr int ConvertButtonId = 1018;

TEST_F(Unanswered, MessageIsAFailureThatTellsWhatWasSentToWhichWindow) {
    static HWND button;
    button = program_.Item(ConvertButtonId);
    program_.Suspend();
    const DWORD start = GetTickCount();
    EXPECT_NONFATAL_FAILURE(Send(button, BM_CLICK, 0, 0, 500),
                            "no answer to BM_CLICK (0) to the Button \"Convert\" of id 1018 within 500 ms");
    EXPECT_NONFATAL_FAILURE(Send(button, 0x1234, 7, 0, 500), "no answer to message 0x1234 (7) to the Button");
    EXPECT_GE(GetTickCount() - start, 900u);
    EXPECT_LT(GetTickCount() - start, PatienceMs);
    program_.Resume();
}

TEST_F(Unanswered, MessageToAWindowThatIsGoneIsNone) {
    const HWND button = program_.Item(ConvertButtonId);
    EXPECT_EQ(program_.Close(), 0u);
    EXPECT_EQ(Send(button, BM_GETCHECK), 0);
}

TEST_F(Unanswered, AnswerThatComesIsGivenBack) {
    EXPECT_EQ(Send(program_.Item(ConvertButtonId), WM_GETTEXTLENGTH, 0, 0, 5000), 7);
}

// A program of tests that hang on purpose, run to its end.
class Hung : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        std::filesystem::remove(ScreenshotOf("InAMessageThatIsNotAnswered"));
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        const TemporaryFolder folder;
        const HANDLE output = CreateFileW((folder / "output").c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                          CREATE_ALWAYS, 0, nullptr);
        STARTUPINFOA start{};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdOutput = start.hStdError = output;
        PROCESS_INFORMATION process{};
        std::string command = "hanging_test.exe";
        ASSERT_TRUE(
            CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process));
        EXPECT_EQ(WaitForSingleObject(process.hProcess, TestLimitMs), WAIT_OBJECT_0);
        GetExitCodeProcess(process.hProcess, &ExitCode);
        TerminateProcess(process.hProcess, 2);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        CloseHandle(output);
        Output = ReadBytes(folder / "output");
    }

    static std::filesystem::path ScreenshotOf(const std::string& test) {
        return std::string(LUMBRIX_LOGS) + "/Hanging." + test + ".bmp";
    }

    static bool Says(const std::string& words) { return Output.find(words) != std::string::npos; }

    // That a test has failed for having waited for something without end.
    static void ExpectHung(const std::string& test, const std::string& waitedFor) {
        EXPECT_TRUE(Says("Hanging." + test + " has taken 4000 ms and waits for " + waitedFor)) << Output;
        EXPECT_TRUE(Says("[  FAILED  ] Hanging." + test)) << Output;
    }

    static inline std::string Output;
    static inline DWORD ExitCode = 0;
};

TEST_F(Hung, TestFailsAndTellsWhichAnswerItWaitsFor) {
    ExpectHung("InAMessageThatIsNotAnswered", "an answer to BM_CLICK (0) to the Button \"Convert\" of id 1018");
}

TEST_F(Hung, TestFailsInACallWithinTheProgramToo) {
    ExpectHung("InACallWithinTheProgram", "an answer to message 0x");
    EXPECT_TRUE(Says(", for an answer to GetDlgCtrlID of user32.dll within the program")) << Output;
}

TEST_F(Hung, TestTellsWhereItAsks) {
    ExpectHung("InAConditionThatNeverHolds", "what ");
    EXPECT_TRUE(Says("hanging_test.cpp, line 27, asks for")) << Output;
}

TEST_F(Hung, TestLeavesAPictureOfTheScreen) {
    const std::string picture = ReadBytes(ScreenshotOf("InAMessageThatIsNotAnswered"));
    EXPECT_EQ(picture.substr(0, 2), "BM");
    EXPECT_GT(picture.size(), 1000000u);
}

TEST_F(Hung, TestThatDoesNotEndWithTheProgramEndsAll) {
    EXPECT_TRUE(Says("Hanging.InItself has taken 4000 ms")) << Output;
    EXPECT_FALSE(Says("Hanging.InItself has taken 4000 ms and waits")) << Output;
    EXPECT_TRUE(Says("Hanging.InItself does not come to its end; no test can be run after it")) << Output;
    EXPECT_FALSE(Says("BehindTheLast")) << Output;
}

TEST_F(Hung, TestIsFollowedByTheRest) {
    EXPECT_TRUE(Says("[       OK ] Hanging.BeforeItAllIsWell")) << Output;
    EXPECT_TRUE(Says("[       OK ] Hanging.AfterItAllIsWell")) << Output;
    EXPECT_EQ(ExitCode, 1u);
}

} // namespace
