// The conversion job and the batch driver on real files, with the engine behind and a main window that is not there.
#include "batch/croprect.h"
#include "batch/driver.h"
#include "batch/job.h"
#include "imaging/exports/lumbrix.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "tests/batch/fakedesk.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
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
        desk_.sourceFile = Path("source.png");
    }

    void TearDown() override {
        CropRect = {};
        UnloadImagingLibrary();
    }

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

    FakeDesk desk_;
    TemporaryFolder folder_;
};

using Job = Converting;
using Single = Converting;

const Said Unsupported{"Sorry...: The selected type of output is not supported"};

TEST_F(Job, ExtensionOfTheTargetNamesTheConversion) {
    const std::pair<const char*, const char*> targets[] = {
        {"a.bmp", "BM"}, {"a.JPG", "\xFF\xD8"}, {"a.gif", "GI"}, {"a.tiff", "II"}, {"a.Png", "\x89P"}};
    for (const auto& [name, start] : targets) {
        desk_.target = Path(name);
        RunConversionJob(desk_);
        EXPECT_EQ(Start(name), start);
    }
    EXPECT_EQ(desk_.said, Said{});
}

TEST_F(Job, OtherExtensionsAreRefusedAndAnOldTargetStays) {
    for (const char* name : {"a.jpeg", "a.tif", "a.sgl", "a.ico", "a", "a."}) {
        WriteBytes(folder_ / name, "old");
        desk_.target = Path(name);
        desk_.said.clear();
        RunConversionJob(desk_);
        EXPECT_EQ(desk_.said, Unsupported) << name;
        EXPECT_EQ(ReadBytes(folder_ / name), "old");
    }
}

TEST_F(Job, SmallerCopyTakesEveryExtensionThatCanBeWritten) {
    desk_.isSmallerChecked = true;
    desk_.heightText = "2";
    for (const char* name : {"a.jpeg", "a.tif", "a.png"}) {
        desk_.target = Path(name);
        RunConversionJob(desk_);
        EXPECT_EQ(HeightOf(name), 2) << name;
    }
    desk_.target = Path("a.sgl");
    RunConversionJob(desk_);
    EXPECT_FALSE(Exists("a.sgl"));
    EXPECT_EQ(desk_.said, Said{});
}

TEST_F(Job, HeightThatIsNoneConvertsAtFullSize) {
    desk_.isSmallerChecked = true;
    for (const char* text : {"0", "-3", "many", ""}) {
        desk_.heightText = text;
        desk_.target = Path("a.jpg");
        RunConversionJob(desk_);
        EXPECT_EQ(HeightOf("a.jpg"), 4) << text;
    }
}

TEST_F(Job, HeightIsIgnoredUnlessSmallerIsChecked) {
    desk_.heightText = "2";
    desk_.target = Path("a.png");
    RunConversionJob(desk_);
    EXPECT_EQ(HeightOf("a.png"), 4);
}

TEST_F(Job, SourceAsItsOwnSmallerTargetIsGone) {
    desk_.isSmallerChecked = true;
    desk_.target = desk_.sourceFile;
    RunConversionJob(desk_);
    EXPECT_FALSE(Exists("source.png"));
}

TEST_F(Job, OldTargetIsGoneWhereTheSmallerCopyFails) {
    desk_.isSmallerChecked = true;
    desk_.sourceFile = Path("none.png");
    desk_.target = Path("a.png");
    WriteBytes(folder_ / "a.png", "old");
    RunConversionJob(desk_);
    EXPECT_FALSE(Exists("a.png"));
    EXPECT_EQ(desk_.said, Said{});
}

TEST_F(Job, PathsAreCutAt259Characters) {
    desk_.target = Path("a.png") + std::string(300, 'x'); // what is left ends in no extension that is known
    RunConversionJob(desk_);
    EXPECT_EQ(desk_.said, Unsupported);
    EXPECT_FALSE(Exists("a.png"));
}

TEST_F(Single, IsConvertedAndFoundDone) {
    desk_.target = Path("a.jpg");
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Said{"Lumbrix: Done"});
    EXPECT_TRUE(Exists("a.jpg"));
}

TEST_F(Single, ThatCannotBeReadIsAFailure) {
    WriteBytes(folder_ / "source.png", "no picture");
    desk_.target = Path("a.jpg");
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Said{"Lumbrix: Faliure"});
}

TEST_F(Single, ExistingTargetIsAskedFor) {
    desk_.target = Path("a.jpg");
    WriteBytes(folder_ / "a.jpg", "old");
    desk_.answersYes = false;
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Said{"Please verify...? " + Path("a.jpg") + " file exists. Overwrite it?"});
    EXPECT_EQ(ReadBytes(folder_ / "a.jpg"), "old");
    desk_.answersYes = true;
    RunBatch(desk_);
    EXPECT_EQ(Start("a.jpg"), "\xFF\xD8");
    EXPECT_EQ(desk_.said.back(), "Lumbrix: Done");
}

TEST_F(Single, FailedOverwriteOfAnOldFileIsStillDone) {
    WriteBytes(folder_ / "source.png", "no picture");
    WriteBytes(folder_ / "a.jpg", "old");
    desk_.target = Path("a.jpg");
    RunBatch(desk_);
    EXPECT_EQ(desk_.said.back(), "Lumbrix: Done");
}

TEST_F(Single, MissingSourceSaysNothing) {
    desk_.sourceFile = Path("none.png");
    desk_.target = Path("a.jpg");
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Said{});
}

TEST_F(Single, HasPrecedenceOverTheFolder) {
    desk_.sourceFolder = MakeFolder("in");
    Copy("in/x.png");
    desk_.target = Path("a.jpg");
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Said{"Lumbrix: Done"});
    EXPECT_FALSE(Exists("ax.bmp"));
}

TEST_F(Single, CannotBeCroppedThisWay) {
    desk_.isCropChecked = true;
    desk_.target = Path("a.jpg");
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Said{"Sorry...: Cropping files is available only for batch operation"});
    EXPECT_FALSE(Exists("a.jpg"));
}

TEST_F(Single, UnsupportedTypeIsSaidAndThenWhatStandsThere) {
    desk_.target = Path("a.sgl");
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, (Said{Unsupported[0], "Lumbrix: Faliure"}));
}

class Folder : public Converting {
  protected:
    void SetUp() override {
        Converting::SetUp();
        desk_.sourceFile.clear();
        desk_.sourceFolder = MakeFolder("in");
        desk_.target = MakeFolder("out");
        desk_.heightText = "2";
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
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Counted(3, 1));
    for (const char* name : {"out/a.bmp", "out/b.bmp", "out/c.bmp"}) {
        EXPECT_EQ(HeightOf(name), 2) << name;
    }
}

TEST_F(Folder, OtherFilesTakeTheCropBranchAndFailWithoutARectangle) {
    Copy("in/a.jpeg");
    WriteBytes(folder_ / "in" / "letter.txt", "Dear Sir");
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Counted(0, 2));
    EXPECT_FALSE(Exists("out/a_cropped.bmp"));
}

TEST_F(Folder, OtherFilesAreCroppedToTheRectangle) {
    Copy("in/a.jpeg");
    CropRect = {1, 1, 4, 2};
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Counted(1, 0));
    EXPECT_EQ(HeightOf("out/a_cropped.bmp"), 1);
}

TEST_F(Folder, CropCheckedPassesOverConvertibleFiles) {
    desk_.isCropChecked = true;
    Copy("in/a.png");
    Copy("in/b.tif");
    CropRect = {0, 0, 2, 2};
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Counted(1, 0));
    EXPECT_FALSE(Exists("out/a.bmp"));
    EXPECT_TRUE(Exists("out/b_cropped.bmp"));
}

TEST_F(Folder, EmptyOneIsCounted) {
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Counted(0, 0));
}

TEST_F(Folder, HeightThatIsNoneCountsAsProcessedAndWritesNothing) {
    Copy("in/a.png");
    desk_.heightText = "none";
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Counted(1, 0));
    EXPECT_FALSE(Exists("out/a.bmp"));
}

TEST_F(Folder, TypeThatCannotBeWrittenFails) {
    Copy("in/a.png");
    desk_.outputWord = "sgl";
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Counted(0, 1));
}

TEST_F(Folder, SameStemsCountBothAndTheLaterStays) {
    Copy("in/a.b.png");
    Copy("in/a.c.png");
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Counted(2, 0));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_ / "out"), {}), 1);
}

TEST_F(Folder, ExistingTargetsAreReplacedWithoutAQuestion) {
    Copy("in/a.png");
    WriteBytes(folder_ / "out" / "a.bmp", "old");
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Counted(1, 0));
    EXPECT_EQ(Start("out/a.bmp"), "BM");
}

TEST_F(Folder, TargetWithoutASeparatorIsAPrefix) {
    Copy("in/a.png");
    desk_.target.pop_back();
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Counted(1, 0));
    EXPECT_TRUE(Exists("outa.bmp"));
}

TEST_F(Folder, SourceWithoutASeparatorListsTheNamesThatBeginSo) {
    Copy("inside.png");
    Copy("in/a.png");
    desk_.sourceFolder.pop_back();
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Counted(0, 1)); // the found name is put behind the folder's, where there is nothing
}

TEST_F(Folder, MissingOnesSayNothing) {
    desk_.target = Path("none") + PathSeparator;
    RunBatch(desk_);
    desk_.target = "";
    RunBatch(desk_);
    desk_.target = Path("source.png");
    RunBatch(desk_);
    desk_.target = Path("out");
    desk_.sourceFolder = Path("none");
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Said{});
}

TEST_F(Folder, SourceFileWithoutATargetIsNoFolderOrder) {
    desk_.sourceFile = Path("source.png");
    desk_.target = "";
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Said{});
}

TEST_F(Folder, SourceAndTargetMayBeTheSame) {
    Copy("in/a.png");
    desk_.target = desk_.sourceFolder;
    desk_.outputWord = "png";
    RunBatch(desk_);
    EXPECT_EQ(desk_.said, Counted(1, 0)); // the save onto the source fails unseen
    EXPECT_EQ(HeightOf("in/a.png"), 4);
}

#ifdef _WIN32

// The folder is found, but the pattern behind it makes the path too long.
TEST_F(Folder, ThatCannotBeListedIsAnError) {
    constexpr std::size_t Length = 258;
    std::string folder = folder_.Path().string();
    while (folder.size() + 1 < Length) {
        const std::size_t left = Length - 1 - folder.size();
        folder += "\\" + std::string(left > 60 ? 50 : left - 1, 'n');
        CreateDirectoryW((L"\\\\?\\" + std::filesystem::path(folder).wstring()).c_str(), nullptr);
    }
    desk_.sourceFolder = folder + "\\";
    ASSERT_EQ(desk_.sourceFolder.size(), Length);
    RunBatch(desk_);
    ASSERT_EQ(desk_.said.size(), 1u);
    EXPECT_EQ(desk_.said[0].substr(0, 16), "Lumbrix: Error: ");
    EXPECT_NE(desk_.said[0].substr(16), "0");
}

#endif

// A desk whose window breaks while it is read.
class BreakingDesk : public FakeDesk {
  public:
    std::string SourceFolder() const override { throw RuntimeError(53, "gone"); }
};

TEST(BatchError, EndsTheRunWithItsNumber) {
    BreakingDesk desk;
    RunBatch(desk);
    EXPECT_EQ(desk.said, Said{"Lumbrix: Error: 53"});
}

} // namespace
