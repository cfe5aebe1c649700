// The action that turns pictures, on real files, with the engine behind and a main window that is not there.
#include "mainwindow/actions.h"

#include "tests/batch/fakeorder.h"
#include "tests/support/fakemessages.h"
#include "tests/support/picturefiles.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

using Said = std::vector<std::string>;

class RotateAction : public testing::Test {
  protected:
    void SetUp() override {
        LoadImagingLibrary();
        WritePlainPng(Path("source.png"), 6, 4, White);
        order_.sourceFile = Path("source.png");
        order_.target = Path("target.png");
    }

    void TearDown() override { UnloadImagingLibrary(); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    void Run(std::int32_t angle, const std::string& flip) { RunRotateAction(order_, angle, flip, messages_); }

    FakeOrder order_;
    FakeMessages messages_;
    TemporaryFolder folder_;
};

TEST_F(RotateAction, TurnsAndSaysDone) {
    Run(90, "");
    EXPECT_EQ(SizeOf(Path("target.png")), std::pair(4, 6));
    EXPECT_EQ(messages_.said, Said{"Lumbrix: Done"});
}

TEST_F(RotateAction, FlipsAsTheLettersSay) {
    WriteBytes(folder_ / "source.png", MakeBmp(2, 1, [](int x, int) { return x == 0 ? Red : Blue; }));
    Run(0, "H");
    const Rgb first = ReadPicture(Path("target.png")).At(0, 0);
    Run(0, "");
    EXPECT_NE(ReadPicture(Path("target.png")).At(0, 0), first);
}

TEST_F(RotateAction, WithoutAngleAndFlipStillWritesTheTarget) {
    Run(0, "");
    EXPECT_EQ(SizeOf(Path("target.png")), std::pair(6, 4));
}

TEST_F(RotateAction, TargetThatIsNotThereIsAFailure) {
    order_.sourceFile = Path("none.png");
    Run(90, "");
    EXPECT_EQ(messages_.said, Said{"Lumbrix: Faliure"});
}

TEST_F(RotateAction, WithoutASourceOrATargetNothingIsSaid) {
    order_.target = "";
    Run(90, "");
    order_.sourceFile = "";
    order_.target = Path("target.png");
    Run(90, "");
    EXPECT_EQ(messages_.said, Said{});
}

TEST_F(RotateAction, PointerWaitsForThePictureAndNotWithTheMessage) {
    messages_.onShow = [&] { messages_.LookAtPointer(); };
    messages_.onWait = [&] { EXPECT_FALSE(std::filesystem::exists(folder_ / "target.png")); };
    Run(90, "");
    EXPECT_EQ(messages_.pointer, Said{"arrow"});
    EXPECT_EQ(messages_.begun, 1);
}

} // namespace
