// Tests that hang on purpose, among others that do not, for the test of the time that tests may take.
#include "tests/windows/programfixture.h"

namespace {

using namespace tests;

class Hanging : public ProgramTest {
  protected:
    // Far less than anybody has patience for.
    static void SetUpTestSuite() { LimitTests(4000); }
};

TEST_F(Hanging, BeforeItAllIsWell) { EXPECT_EQ(program_.Text(1018), "Convert"); }

TEST_F(Hanging, InAMessageThatIsNotAnswered) {
    program_.Suspend();
    program_.Click(1018);
}

TEST_F(Hanging, InACallWithinTheProgram) {
    program_.Suspend();
    program_.CallInside("user32.dll", "GetDlgCtrlID", {0});
}

TEST_F(Hanging, InAConditionThatNeverHolds) {
    EXPECT_TRUE(WaitFor([] { return false; }));
}

TEST_F(Hanging, AfterItAllIsWell) { EXPECT_EQ(program_.Text(1018), "Convert"); }

// What does not end with the program.
TEST_F(Hanging, InItself) { WaitForSingleObject(GetCurrentThread(), TestLimitMs); }

TEST_F(Hanging, BehindTheLast) {}

} // namespace
