// The batch driver with the files of a folder.
#include "batch/driver.h"
#include "tests/batch/convertingfixture.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

using namespace tests;

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

// A part that begins where the other coordinate says would lie beyond the picture.
TEST_F(Folder, OtherFilesAreCroppedFromWhereTheRectangleBegins) {
    const auto convert = [&](std::int32_t width, std::int32_t height) {
        const PixelRectangle whole{0, 0, width, height};
        CropImage(Path("large.bmp").c_str(), Path("in/a.bmp").c_str(), 0, 0, whole.Width(), whole.Height());
        std::filesystem::rename(folder_ / "in" / "a.bmp", folder_ / "in" / "a.jpeg");
    };
    ConvertImageToThumbBmp(Path("source.png").c_str(), 20, Path("large.bmp").c_str());
    convert(20, 3);
    cropRectangle_ = {15, 1, 17, 2};
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(1, 0));
    convert(3, 20);
    cropRectangle_ = {1, 15, 2, 17};
    messages_.said.clear();
    RunBatch(order_, messages_, cropRectangle_);
    EXPECT_EQ(messages_.said, Counted(1, 0));
    EXPECT_EQ(HeightOf("out/a_cropped.bmp"), 2);
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

} // namespace
