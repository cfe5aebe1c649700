// The conversion job and the batch driver on real files, with the engine behind and a main window that is not there.
#include "batch/driver.h"
#include "batch/job.h"
#include "imaging/exports/lumbrix.h"
#include "platform/cleanup.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "tests/batch/fakeorder.h"
#include "tests/support/fakemessages.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "tests/support/heldfile.h"
#endif

namespace {

using namespace lumbrix;
using namespace tests;

using Said = std::vector<std::string>;

// One pixel, white.
const std::string DotBmp("BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\4\0\0\0\0\0\0\0"
                         "\0\0\0\0\0\0\0\0\0\0\0\0\xFF\xFF\xFF\0",
                         58);

class Converting : public testing::Test {
  protected:
    void SetUp() override {
        LoadImagingLibrary();
        // A picture of four by four pixels and true colour, by way of the engine.
        WriteBytes(folder_ / "dot.bmp", DotBmp);
        ConvertImageToThumbPng(Path("dot.bmp").c_str(), 4, Path("source.png").c_str());
        std::filesystem::remove(folder_ / "dot.bmp");
        order_.sourceFile = Path("source.png");
    }

    void TearDown() override { UnloadImagingLibrary(); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    bool Exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

    // A folder with its separator.
    std::string MakeFolder(const std::string& name) const {
        std::filesystem::create_directory(folder_ / name);
        return Path(name) + PathSeparator;
    }

    void Copy(const std::string& name) const { std::filesystem::copy_file(folder_ / "source.png", folder_ / name); }

    int32_t HeightOf(const std::string& name) const {
        int32_t width = 0;
        int32_t height = 0;
        GetImageDimensions(Path(name).c_str(), &width, &height);
        return height;
    }

    std::string Start(const std::string& name) const { return ReadBytes(folder_ / name).substr(0, 2); }

    FakeOrder order_;
    FakeMessages messages_;
    PixelRectangle cropRectangle_;
    TemporaryFolder folder_;
};

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

class Folder : public Converting {
  protected:
    void SetUp() override {
        Converting::SetUp();
        order_.sourceFile.clear();
        order_.sourceFolder = MakeFolder("in");
        order_.target = MakeFolder("out");
        order_.heightText = "2";
    }

    static Said Counted(int processed, int failed) {
        return {"Lumbrix: " + std::to_string(processed) + " files were processed. \r\n" + std::to_string(failed) +
                " files could not be resized."};
    }
};

TEST_F(Folder, EveryConvertibleFileIsMadeSmaller) {
    Copy("in/a.png");
    Copy("in/b.JPG"); // known by its content
    Copy("in/c.d.gif");
    WriteBytes(folder_ / "in" / "bad.bmp", "no picture");
    MakeFolder("in/folder.png");
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(3, 1));
    for (const char* name : {"out/a.bmp", "out/b.bmp", "out/c.bmp"}) {
        EXPECT_EQ(HeightOf(name), 2) << name;
    }
}

TEST_F(Folder, DamagedPictureCountsAsNotResizedAndLeavesItsOldTarget) {
    Copy("in/whole.png");
    ConvertImageToBmp(Path("source.png").c_str(), Path("in/cut.bmp").c_str());
    const std::string whole = ReadBytes(folder_ / "in" / "cut.bmp");
    WriteBytes(folder_ / "in" / "cut.bmp", whole.substr(0, whole.size() - 20));
    WriteBytes(folder_ / "out" / "cut.bmp", "old");
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(1, 1));
    EXPECT_EQ(ReadBytes(folder_ / "out" / "cut.bmp"), "old");
}

TEST_F(Folder, DamagedPhotographIsMadeSmallerAsFarAsItGoes) {
    ConvertImageToThumbJpeg(Path("source.png").c_str(), 64, Path("in/cut.jpg").c_str());
    const std::string whole = ReadBytes(folder_ / "in" / "cut.jpg");
    WriteBytes(folder_ / "in" / "cut.jpg", whole.substr(0, whole.size() - 20));
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(1, 0));
    EXPECT_EQ(HeightOf("out/cut.bmp"), 2);
}

TEST_F(Folder, DamagedPictureThatCannotBeCroppedCountsAsSuch) {
    ConvertImageToBmp(Path("source.png").c_str(), Path("in/cut.tif").c_str());
    const std::string whole = ReadBytes(folder_ / "in" / "cut.tif");
    WriteBytes(folder_ / "in" / "cut.tif", whole.substr(0, whole.size() - 20));
    cropRectangle_ = {0, 0, 4, 4};
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(0, 1));
    EXPECT_FALSE(Exists("out/cut_cropped.bmp"));
}

TEST_F(Folder, OtherFilesTakeTheCropBranchAndFailWithoutARectangle) {
    Copy("in/a.jpeg");
    WriteBytes(folder_ / "in" / "letter.txt", "Dear Sir");
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(0, 2));
    EXPECT_FALSE(Exists("out/a_cropped.bmp"));
}

TEST_F(Folder, OtherFilesAreCroppedToTheRectangle) {
    Copy("in/a.jpeg");
    cropRectangle_ = {1, 1, 4, 2};
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(1, 0));
    EXPECT_EQ(HeightOf("out/a_cropped.bmp"), 1);
}

TEST_F(Folder, CropCheckedPassesOverConvertibleFiles) {
    order_.isCropChecked = true;
    Copy("in/a.png");
    Copy("in/b.tif");
    cropRectangle_ = {0, 0, 2, 2};
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(1, 0));
    EXPECT_FALSE(Exists("out/a.bmp"));
    EXPECT_TRUE(Exists("out/b_cropped.bmp"));
}

TEST_F(Folder, EmptyOneIsCounted) {
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(0, 0));
}

TEST_F(Folder, HeightThatIsNoneCountsAsProcessedAndWritesNothing) {
    Copy("in/a.png");
    order_.heightText = "none";
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(1, 0));
    EXPECT_FALSE(Exists("out/a.bmp"));
}

TEST_F(Folder, TypeThatCannotBeWrittenFails) {
    Copy("in/a.png");
    order_.outputWord = "sgl";
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(0, 1));
}

TEST_F(Folder, SameStemsCountBothAndTheLaterStays) {
    Copy("in/a.b.png");
    Copy("in/a.c.png");
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(2, 0));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_ / "out"), {}), 1);
}

TEST_F(Folder, ExistingTargetsAreReplacedWithoutAQuestion) {
    Copy("in/a.png");
    WriteBytes(folder_ / "out" / "a.bmp", "old");
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(1, 0));
    EXPECT_EQ(Start("out/a.bmp"), "BM");
}

TEST_F(Folder, TargetWithoutASeparatorIsAPrefix) {
    Copy("in/a.png");
    order_.target.pop_back();
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(1, 0));
    EXPECT_TRUE(Exists("outa.bmp"));
}

TEST_F(Folder, SourceWithoutASeparatorListsTheNamesThatBeginSo) {
    Copy("inside.png");
    Copy("in/a.png");
    order_.sourceFolder.pop_back();
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(0, 1)); // the found name is put behind the folder's, where there is nothing
}

TEST_F(Folder, MissingOnesSayNothing) {
    order_.target = Path("none") + PathSeparator;
    RunBatch(order_, messages_, cropRectangle_);
    order_.target = "";
    RunBatch(order_, messages_, cropRectangle_);
    order_.target = Path("source.png");
    RunBatch(order_, messages_, cropRectangle_);
    order_.target = Path("out");
    order_.sourceFolder = Path("none");
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Said{});
}

TEST_F(Folder, SourceFileWithoutATargetIsNoFolderOrder) {
    order_.sourceFile = Path("source.png");
    order_.target = "";
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Said{});
}

TEST_F(Folder, SourceAndTargetMayBeTheSame) {
    Copy("in/a.png");
    order_.target = order_.sourceFolder;
    order_.outputWord = "png";
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(1, 0)); // the save onto the source fails unseen
    EXPECT_EQ(HeightOf("in/a.png"), 4);
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

TEST_F(Folder, HiddenFilesAreNotListed) {
    for (const char* name : {".hidden.png", ".system.png"}) { // for file systems that keep no marks
        Copy(std::string("in/") + name);
    }
    SetFileAttributesA(Path("in\\.hidden.png").c_str(), FILE_ATTRIBUTE_HIDDEN);
    SetFileAttributesA(Path("in\\.system.png").c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(0, 0));
}

// The folder is found, but the pattern behind it makes the path too long.
TEST_F(Folder, ThatCannotBeListedIsAnError) {
    constexpr std::size_t Length = 258;
    std::string folder = folder_.Path().string();
    while (folder.size() + 1 < Length) {
        const std::size_t left = Length - 1 - folder.size();
        folder += "\\" + std::string(left > 60 ? 50 : left - 1, 'n');
        CreateDirectoryW((L"\\\\?\\" + std::filesystem::path(folder).wstring()).c_str(), nullptr);
    }
    order_.sourceFolder = folder + "\\";
    ASSERT_EQ(order_.sourceFolder.size(), Length);
    RunBatch(order_, messages_, cropRectangle_);
    ASSERT_EQ(messages_.said.size(), 1u);
    EXPECT_EQ(messages_.said[0].substr(0, 16), "Lumbrix: Error: ");
    EXPECT_NE(messages_.said[0].substr(16), "0");
}

#endif

TEST_F(Folder, PointerWaitsWhileFilesAreMade) {
    Copy("in/a.png");
    order_.onRead = [&] { messages_.LookAtPointer(); };
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.pointer, (Said{"waits", "waits"})); // at the height and at the file's type
    EXPECT_EQ(messages_.waits, 0);
}

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
