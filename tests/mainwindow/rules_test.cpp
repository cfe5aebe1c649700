// How the main window's texts follow from each other.
#include "mainwindow/rules.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(Retargeted, KeepsFolderAndExtensionAndTakesTheStem) {
    EXPECT_EQ(Retargeted("C:\\in\\new.png", "C:\\out\\old.jpg"), "C:\\out\\new.jpg");
}

TEST(Retargeted, SourceOfSeveralDotsGivesThePartBeforeTheFirst) {
    EXPECT_EQ(Retargeted("C:\\in\\a.b.jpg", "C:\\out\\old.gif"), "C:\\out\\a.gif");
}

TEST(Retargeted, TargetThatIsAFolderEndsInADot) {
    EXPECT_EQ(Retargeted("C:\\name.png", "C:\\out\\"), "C:\\out\\name.");
}

TEST(Retargeted, TargetWithoutAFolderStaysWithout) { EXPECT_EQ(Retargeted("C:\\in\\new.png", "old.jpg"), "new.jpg"); }

TEST(Retargeted, EmptySourceLeavesTheExtension) { EXPECT_EQ(Retargeted("", "C:\\x\\a.jpg"), "C:\\x\\.jpg"); }

TEST(TargetInFolder, HasTheStemAndTheWord) {
    EXPECT_EQ(TargetInFolder("C:\\out", "C:\\in\\a.b.png", "tiff"), "C:\\out\\a.tiff");
    EXPECT_EQ(TargetInFolder("C:\\", "a.png", "bmp"), "C:\\a.bmp");
    EXPECT_EQ(TargetInFolder("C:\\out", "", "bmp"), "C:\\out\\.bmp");
}

TEST(WithOutputType, ReplacesTheExtension) {
    EXPECT_EQ(WithOutputType("C:\\x\\a.jpg", "sgl"), "C:\\x\\a.sgl");
    EXPECT_EQ(WithOutputType("C:\\x\\a.jpg", "jpg"), "C:\\x\\a.jpg");
}

TEST(WithOutputType, ReplacesEveryOccurrence) {
    EXPECT_EQ(WithOutputType("C:\\a.jpg.d\\b.jpg", "png"), "C:\\a.png.d\\b.png");
    EXPECT_EQ(WithOutputType("C:\\a.jpgs\\b.jpg", "tiff"), "C:\\a.tiffs\\b.tiff");
}

TEST(WithOutputType, LetterCaseMatters) {
    EXPECT_EQ(WithOutputType("C:\\a.JPG\\b.jpg", "png"), "C:\\a.JPG\\b.png");
    EXPECT_EQ(WithOutputType("a.JPG", "png"), "a.png");
}

TEST(WithOutputType, WhatWasPutInIsNotSearchedAgain) { EXPECT_EQ(WithOutputType("a.p.p", "p.p"), "a.p.p.p.p"); }

TEST(WithOutputType, TargetWithoutAnExtensionStays) {
    for (const char* target : {"", "C:\\out\\", "C:\\a.b\\name", "name", "name."}) {
        EXPECT_EQ(WithOutputType(target, "png"), target);
    }
}

TEST(SizeText, ShowsBothSidesOrNothing) {
    EXPECT_EQ(SizeText(640, 480), "(W640 x H480)");
    EXPECT_EQ(SizeText(0, 480), "");
    EXPECT_EQ(SizeText(640, 0), "");
    EXPECT_EQ(SizeText(-1, 5), "");
}

} // namespace
