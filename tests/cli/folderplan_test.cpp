// Which file becomes which in a run over a folder; no file is touched.
#include "base/lettercase.h"
#include "cli/folderplan.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix::cli;
namespace fs = std::filesystem;
using Files = std::vector<fs::path>;

fs::path KeyWithCase(const fs::path& path) { return path.lexically_normal(); }
fs::path KeyWithoutCase(const fs::path& path) { return lumbrix::LowerCase(path.lexically_normal().generic_string()); }

std::vector<PlannedFile> Plan(const Files& files, const std::string& word = "png",
                              const fs::path& targetFolder = "/out", const KeyFunction& keyOf = KeyWithCase) {
    return PlanFolder({"/in", targetFolder, word}, files, keyOf);
}

TEST(FolderPlan, TargetHasTheStemAndTheWord) {
    const auto plan = Plan({"a.jpg", "b.c.GIF", "sub/d.bmp"}, "jpeg");
    EXPECT_EQ(plan[0].target, "a.jpeg");
    EXPECT_EQ(plan[1].target, "b.c.jpeg");
    EXPECT_EQ(plan[2].target, fs::path("sub") / "d.jpeg");
}

TEST(FolderPlan, FilesAreSorted) {
    const auto plan = Plan({"c.bmp", "a.bmp", "b.bmp"});
    EXPECT_EQ(plan[0].source, "a.bmp");
    EXPECT_EQ(plan[1].source, "b.bmp");
    EXPECT_EQ(plan[2].source, "c.bmp");
}

TEST(FolderPlan, FirstOfTwoWithOneTargetGetsIt) {
    const auto plan = Plan({"a.gif", "a.bmp", "a.tif"});
    EXPECT_EQ(plan[0].obstacle, Obstacle::None);
    EXPECT_EQ(plan[1].obstacle, Obstacle::SameTarget);
    EXPECT_EQ(plan[1].other, "a.bmp");
    EXPECT_EQ(plan[2].obstacle, Obstacle::SameTarget);
    EXPECT_EQ(plan[2].other, "a.bmp");
}

TEST(FolderPlan, SameStemInOtherFoldersIsNoCollision) {
    for (const PlannedFile& file : Plan({"a.gif", "one/a.bmp", "two/a.bmp"})) {
        EXPECT_EQ(file.obstacle, Obstacle::None);
    }
}

TEST(FolderPlan, LetterCaseTellsTargetsApartOnlyWhereItTellsFilesApart) {
    const Files files{"A.bmp", "a.gif"};
    EXPECT_EQ(Plan(files)[1].obstacle, Obstacle::None);
    EXPECT_EQ(Plan(files, "png", "/out", KeyWithoutCase)[1].obstacle, Obstacle::SameTarget);
}

TEST(FolderPlan, FileIsNotItsOwnTarget) {
    const auto plan = Plan({"a.png", "b.PNG"}, "png", "/in");
    EXPECT_EQ(plan[0].obstacle, Obstacle::ItIsTheSource);
    EXPECT_EQ(plan[1].obstacle, Obstacle::None);
    EXPECT_EQ(Plan({"b.PNG"}, "png", "/in", KeyWithoutCase)[0].obstacle, Obstacle::ItIsTheSource);
}

TEST(FolderPlan, OtherSourcesAreNoTargets) {
    const auto plan = Plan({"a.bmp", "a.png"}, "png", "/in");
    EXPECT_EQ(plan[0].obstacle, Obstacle::OtherSource);
    EXPECT_EQ(plan[0].other, "a.png");
}

TEST(FolderPlan, SourcesInSubfoldersAreNoTargetsEither) {
    const auto plan = Plan({"a.bmp", "sub/a.png"}, "png", "/in/sub");
    EXPECT_EQ(plan[0].obstacle, Obstacle::OtherSource);
    EXPECT_EQ(plan[1].obstacle, Obstacle::None);
}

TEST(FolderPlan, PicturesAreKnownByTheirExtensions) {
    for (const char* name : {"a.bmp", "a.DIB", "a.rle", "a.jpg", "a.jpeg", "a.jpe", "a.JFIF", "a.gif", "a.tif",
                             "a.tiff", "a.Png", "a.ico", "sub.txt/a.b.png"}) {
        EXPECT_TRUE(IsPictureName(name)) << name;
    }
    for (const char* name : {"a", "png", ".png", "a.png.txt", "a.png/b", "a.tmp", "a.webp", "a."}) {
        EXPECT_FALSE(IsPictureName(name)) << name;
    }
}

TEST(FolderPlan, MetafilesArePicturesOnWindowsOnly) {
#ifdef _WIN32
    EXPECT_TRUE(IsPictureName("a.emf") && IsPictureName("a.WMF"));
#else
    EXPECT_FALSE(IsPictureName("a.emf") || IsPictureName("a.WMF"));
#endif
}

} // namespace
