// The command folder: which files it writes, and how.
#include "tests/cli/folderfixture.h"

namespace {

using namespace tests;
namespace fs = std::filesystem;
using Names = std::set<std::string>;

TEST_F(Folder, EveryPictureIsConverted) {
    MakePicture("in/a.bmp");
    ExpectSuccess(Run({"convert", Path("in/a.bmp"), Path("in/b.jpg")}));
    ExpectSuccess(RunFolder({"png"}), "2 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(NamesIn("out"), (Names{"a.png", "b.png"}));
    EXPECT_EQ(ReadBytes(folder_ / "out/a.png").substr(0, 2), "\x89P");
}

TEST_F(Folder, EveryWordNamesAFormat) {
    MakePicture("in/a.bmp");
    const std::pair<const char*, const char*> formats[] = {{"bmp", "BM"},   {"jpg", "\xFF\xD8"}, {"jpeg", "\xFF\xD8"},
                                                           {"gif", "GI"},   {"tif", "II"},       {"tiff", "II"},
                                                           {"PNG", "\x89P"}};
    for (const auto& [word, start] : formats) {
        ExpectSuccess(RunFolder({word}), "1 written, 0 skipped, 0 failed\n");
        EXPECT_EQ(ReadBytes(folder_ / ("out/a." + std::string(word))).substr(0, 2), start);
    }
}

TEST_F(Folder, ExtensionsTellPicturesInAnyLetterCase) {
    for (const char* name : {"a.BMP", "b.Dib", "c.rle", "d.jpe", "e.JFIF", "f.ico.png"}) {
        MakePicture(std::string("in/") + name);
    }
    for (const char* name : {"notes.txt", "bmp", ".bmp", "a.bmp.bak"}) {
        WriteBytes(folder_ / (std::string("in/") + name), "not a picture");
    }
    ExpectSuccess(RunFolder({"gif"}), "6 written, 0 skipped, 0 failed, 4 passed over\n");
    EXPECT_EQ(NamesIn("out"), (Names{"a.gif", "b.gif", "c.gif", "d.gif", "e.gif", "f.ico.gif"}));
}

TEST_F(Folder, ContentCountsWhereTheExtensionIsWrong) {
    MakePicture("in/a.jpg"); // BMP inside
    ExpectSuccess(RunFolder({"png"}), "1 written, 0 skipped, 0 failed\n");
}

TEST_F(Folder, SubfoldersAreLeftAlone) {
    MakeFolder("in/sub");
    MakePicture("in/sub/a.bmp");
    ExpectSuccess(RunFolder({"png"}), "0 written, 0 skipped, 0 failed\n");
    EXPECT_FALSE(fs::exists(folder_ / "out"));
}

TEST_F(Folder, RecursionKeepsTheLayout) {
    MakeFolder("in/sub/deep");
    MakeFolder("in/empty");
    MakePicture("in/a.bmp");
    MakePicture("in/sub/a.bmp");
    MakePicture("in/sub/deep/b.bmp");
    ExpectSuccess(RunFolder({"png", "--recursive"}), "3 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(NamesIn("out"), (Names{"a.png", "sub"}));
    EXPECT_EQ(NamesIn("out/sub"), (Names{"a.png", "deep"}));
    EXPECT_EQ(NamesIn("out/sub/deep"), (Names{"b.png"}));
}

TEST_F(Folder, LinksToFoldersAreNotFollowed) {
    MakePicture("in/a.bmp");
    fs::create_directory_symlink(folder_ / "in", folder_ / "in/round");
    ExpectSuccess(RunFolder({"png", "--recursive"}), "1 written, 0 skipped, 0 failed\n");
}

TEST_F(Folder, TargetFolderInsideTheSourceIsNotSearched) {
    MakeFolder("in/out");
    MakePicture("in/a.bmp");
    MakePicture("in/out/b.bmp");
    ExpectSuccess(Run({"folder", Path("in"), Path("in/out"), "png", "--recursive"}),
                  "1 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(NamesIn("in/out"), (Names{"a.png", "b.bmp"}));
}

TEST_F(Folder, PicturesAreMadeSmallerButNotLarger) {
    MakePicture("in/large.bmp", 40, 20);
    MakePicture("in/small.bmp", 8, 6);
    MakePicture("in/same.bmp", 9, 10);
    MakePicture("in/other.png", 4, 4); // BMP inside
    ExpectSuccess(RunFolder({"bmp", "10"}), "4 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(View("out/large.bmp").Height(), 10);
    EXPECT_EQ(View("out/large.bmp").Width(), 20);
    EXPECT_EQ(View("out/small.bmp").Height(), 6);
    EXPECT_EQ(View("out/same.bmp").Height(), 10);
}

TEST_F(Folder, PicturesWithPalettesAreMadeSmallerToo) {
    WriteBytes(folder_ / "in/a.bmp", MakePaletteBmp(40, 20, Green));
    ExpectSuccess(RunFolder({"bmp", "10"}), "1 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(View("out/a.bmp").At(5, 5), Green);
}

TEST_F(Folder, ExistingTargetsAreReplaced) {
    MakeFolder("out");
    MakePicture("in/a.bmp");
    WriteBytes(folder_ / "out/a.png", "old");
    ExpectSuccess(RunFolder({"png"}), "1 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(ReadBytes(folder_ / "out/a.png").substr(0, 2), "\x89P");
}

TEST_F(Folder, ExistingTargetsAreSkippedOnDemand) {
    MakeFolder("out");
    MakePicture("in/a.bmp");
    MakePicture("in/b.bmp");
    WriteBytes(folder_ / "out/a.png", "old");
    ExpectSuccess(RunFolder({"png", "--skip-existing"}), "1 written, 1 skipped, 0 failed\n");
    EXPECT_EQ(ReadBytes(folder_ / "out/a.png"), "old");
}

TEST_F(Folder, OneJobAndFourWriteTheSameFiles) {
    for (int i = 0; i < 30; ++i) {
        MakePicture("in/" + std::to_string(i) + ".bmp", 10 + i, 5 + i);
    }
    ExpectSuccess(Run({"folder", Path("in"), Path("one"), "gif", "12", "--jobs", "1"}),
                  "30 written, 0 skipped, 0 failed\n");
    ExpectSuccess(Run({"folder", Path("in"), Path("four"), "gif", "12", "--jobs", "4"}),
                  "30 written, 0 skipped, 0 failed\n");
    ASSERT_EQ(NamesIn("one"), NamesIn("four"));
    for (const std::string& name : NamesIn("one")) {
        EXPECT_EQ(ReadBytes(folder_ / ("one/" + name)), ReadBytes(folder_ / ("four/" + name))) << name;
    }
}

TEST_F(Folder, WrongUsageEndsWithTwo) {
    ExpectWrongUsage(Run({"folder", Path("in"), Path("out")}), "folder SOURCE_FOLDER TARGET_FOLDER");
    ExpectWrongUsage(RunFolder({"webp"}), "unknown format");
    ExpectWrongUsage(RunFolder({".png"}), "unknown format");
    ExpectWrongUsage(RunFolder({"png", "0"}), "invalid height ");
    for (const char* jobs : {"0", "-1", "many", "257"}) {
        ExpectWrongUsage(RunFolder({"png", "--jobs", jobs}), "invalid number of jobs ");
    }
    ExpectWrongUsage(Run({"folder", "", Path("out"), "png"}), "empty file name");
    ExpectWrongUsage(Run({"folder", Path("in"), " ", "png"}), "empty file name");
}

} // namespace
