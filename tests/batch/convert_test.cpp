// The conversion job, and the batch driver with a single file.
#include "batch/driver.h"
#include "batch/job.h"
#include "platform/cleanup.h"
#include "platform/errors.h"
#include "tests/batch/convertingfixture.h"

#ifdef _WIN32
#include "tests/support/heldfile.h"
#endif

namespace {

using namespace tests;

using Job = Converting;
using Single = Converting;

const Said Unsupported{"Sorry...: The selected type of output is not supported"};

TEST_F(Job, ExtensionOfTheTargetNamesTheConversion) {
    const std::pair<const char*, const char*> targets[] = {
        {"a.bmp", "BM"}, {"a.JPG", "\xFF\xD8"}, {"a.gif", "GI"}, {"a.tiff", "II"}, {"a.Png", "\x89P"}};
    for (const auto& [name, start] : targets) {
        order_.target = Path(name);
        RunConversionJob(order_, messages_);
        EXPECT_EQ(Start(name), start);
    }
    EXPECT_EQ(messages_.said, Said{});
}

TEST_F(Job, OtherExtensionsAreRefusedAndAnOldTargetStays) {
    for (const char* name : {"a.jpeg", "a.tif", "a.sgl", "a.ico", "a", "a."}) {
        WriteBytes(folder_ / name, "old");
        order_.target = Path(name);
        messages_.said.clear();
        RunConversionJob(order_, messages_);
        EXPECT_EQ(messages_.said, Unsupported) << name;
        EXPECT_EQ(ReadBytes(folder_ / name), "old");
    }
}

TEST_F(Job, SmallerCopyTakesEveryExtensionThatCanBeWritten) {
    order_.isSmallerChecked = true;
    order_.heightText = "2";
    for (const char* name : {"a.jpeg", "a.tif", "a.png"}) {
        order_.target = Path(name);
        RunConversionJob(order_, messages_);
        EXPECT_EQ(HeightOf(name), 2) << name;
    }
    order_.target = Path("a.sgl");
    RunConversionJob(order_, messages_);
    EXPECT_FALSE(Exists("a.sgl"));
    EXPECT_EQ(messages_.said, Said{});
}

TEST_F(Job, HeightThatIsNoneConvertsAtFullSize) {
    order_.isSmallerChecked = true;
    for (const char* text : {"0", "-3", "many", ""}) {
        order_.heightText = text;
        order_.target = Path("a.jpg");
        RunConversionJob(order_, messages_);
        EXPECT_EQ(HeightOf("a.jpg"), 4) << text;
    }
}

TEST_F(Job, HeightIsIgnoredUnlessSmallerIsChecked) {
    order_.heightText = "2";
    order_.target = Path("a.png");
    RunConversionJob(order_, messages_);
    EXPECT_EQ(HeightOf("a.png"), 4);
}

TEST_F(Job, SourceAsItsOwnSmallerTargetIsGone) {
    order_.isSmallerChecked = true;
    order_.target = order_.sourceFile;
    RunConversionJob(order_, messages_);
    EXPECT_FALSE(Exists("source.png"));
}

TEST_F(Job, OldTargetIsGoneWhereTheSmallerCopyFails) {
    order_.isSmallerChecked = true;
    order_.sourceFile = Path("none.png");
    order_.target = Path("a.png");
    WriteBytes(folder_ / "a.png", "old");
    RunConversionJob(order_, messages_);
    EXPECT_FALSE(Exists("a.png"));
    EXPECT_EQ(messages_.said, Said{});
}

TEST_F(Job, PathsAreCutAt259Characters) {
    order_.target = Path("a.png") + std::string(300, 'x'); // what is left ends in no extension that is known
    RunConversionJob(order_, messages_);
    EXPECT_EQ(messages_.said, Unsupported);
    EXPECT_FALSE(Exists("a.png"));
}

TEST_F(Job, SourceIsCutAt259CharactersToo) {
    const std::string name(259 - Path("").size() - 4, 'n');
    Copy(name + ".png");
    order_.sourceFile = Path(name + ".png") + "x";
    order_.target = Path("a.bmp");
    RunConversionJob(order_, messages_);
    EXPECT_EQ(HeightOf("a.bmp"), 4);
}

TEST_F(Single, IsConvertedAndFoundDone) {
    order_.target = Path("a.jpg");
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Said{"Lumbrix: Done"});
    EXPECT_TRUE(Exists("a.jpg"));
}

TEST_F(Single, ThatCannotBeReadIsAFailure) {
    WriteBytes(folder_ / "source.png", "no picture");
    order_.target = Path("a.jpg");
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Said{"Lumbrix: Faliure"});
}

TEST_F(Single, ExistingTargetIsAskedFor) {
    order_.target = Path("a.jpg");
    WriteBytes(folder_ / "a.jpg", "old");
    messages_.answersYes = false;
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Said{"Please verify...? " + Path("a.jpg") + " file exists. Overwrite it?"});
    EXPECT_EQ(ReadBytes(folder_ / "a.jpg"), "old");
    messages_.answersYes = true;
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(Start("a.jpg"), "\xFF\xD8");
    EXPECT_EQ(messages_.said.back(), "Lumbrix: Done");
}

TEST_F(Single, FailedOverwriteOfAnOldFileIsStillDone) {
    WriteBytes(folder_ / "source.png", "no picture");
    WriteBytes(folder_ / "a.jpg", "old");
    order_.target = Path("a.jpg");
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said.back(), "Lumbrix: Done");
}

TEST_F(Single, MissingSourceSaysNothing) {
    order_.sourceFile = Path("none.png");
    order_.target = Path("a.jpg");
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Said{});
}

TEST_F(Single, MissingSourceEndsItBeforeTheQuestion) {
    order_.sourceFile = Path("none.png");
    order_.target = Path("a.jpg");
    WriteBytes(folder_ / "a.jpg", "old");
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Said{});
}

TEST_F(Single, HasPrecedenceOverTheFolder) {
    order_.sourceFolder = MakeFolder("in");
    Copy("in/x.png");
    order_.target = Path("a.jpg");
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Said{"Lumbrix: Done"});
    EXPECT_FALSE(Exists("ax.bmp"));
}

TEST_F(Single, CannotBeCroppedThisWay) {
    order_.isCropChecked = true;
    order_.target = Path("a.jpg");
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Said{"Sorry...: Cropping files is available only for batch operation"});
    EXPECT_FALSE(Exists("a.jpg"));
}

TEST_F(Single, QuestionComesBeforeTheRefusalToCrop) {
    order_.isCropChecked = true;
    order_.target = Path("a.jpg");
    WriteBytes(folder_ / "a.jpg", "old");
    const std::string question = "Please verify...? " + Path("a.jpg") + " file exists. Overwrite it?";
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, (Said{question, "Sorry...: Cropping files is available only for batch operation"}));
    messages_.said.clear();
    messages_.answersYes = false;
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Said{question});
}

TEST_F(Single, UnsupportedTypeIsSaidAndThenWhatStandsThere) {
    order_.target = Path("a.sgl");
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, (Said{Unsupported[0], "Lumbrix: Faliure"}));
}

#ifdef _WIN32

TEST_F(Job, OldTargetThatCannotBeDeletedIsListed) {
    order_.isSmallerChecked = true;
    order_.target = Path("a.png");
    WriteBytes(folder_ / "a.png", "old");
    const HeldFile held(order_.target);
    RunConversionJob(order_, messages_);
    EXPECT_TRUE(IsListedForCleanUp(Path("a.png")));
    EXPECT_EQ(ReadBytes(folder_ / "a.png"), "old");
    std::filesystem::remove(ProgramFolder() + "CleanUp.txt");
}

#endif

TEST_F(Single, PointerWaitsWhileItIsConverted) {
    order_.target = Path("a.jpg");
    order_.onRead = [&] { messages_.LookAtPointer(); };
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.pointer, (Said{"waits", "waits"})); // at the run's height and at the job's
    EXPECT_EQ(messages_.waits, 0);
}

// A main window that breaks while it is read.
class BreakingOrder : public FakeOrder {
  public:
    std::string SourceFolder() const override { throw RuntimeError(53, "gone"); }
};

TEST(BatchError, EndsTheRunWithItsNumber) {
    BreakingOrder order;
    FakeMessages messages;
    RunBatch(order, messages, {});
    EXPECT_EQ(messages.said, Said{"Lumbrix: Error: 53"});
    EXPECT_EQ(messages.waits, 0);
}

} // namespace
