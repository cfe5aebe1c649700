// Annotating and stamping: the order of their calls over the fake imaging library, colours and fonts.
#include "imaging/annotate.h"

#include "tests/imaging/fakemodule.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace lumbrix;

using Calls = std::vector<std::string>;

using Annotating = tests::WithFake;
using Stamping = tests::WithFake;

Annotation Red() {
    Annotation annotation;
    annotation.x = 3.5f;
    annotation.y = 4;
    annotation.text = "Hello";
    annotation.fontName = "Arial";
    annotation.fontSize = 10;
    annotation.alpha = 200;
    annotation.red = 255;
    return annotation;
}

TEST(MakeArgb, PacksTheLowBytes) {
    EXPECT_EQ(MakeArgb(255, 1, 2, 3), 0xFF010203u);
    EXPECT_EQ(MakeArgb(0x1FF, 0x101, -1, 256), 0xFF01FF00u);
}

TEST_F(Annotating, DrawsTheImageOverItselfAndThenTheText) {
    EXPECT_EQ(AnnotateImage("a.png", "b.jpg", Red()), 0);
    EXPECT_EQ(
        fake_.Calls(),
        (Calls{"GdiplusStartup", "GdipCreateFontFamilyFromName Arial", "GdipCreateFont 66 10 0 2",
               "GdipDeleteFontFamily 66", "GdipLoadImageFromFile", "GdipGetImageGraphicsContext 11",
               "GdipDrawImage 55 11 0 0", "GdipCreateSolidFill C8FF0000", "GdipDrawString 55 'Hello' 77 3.5 4 0 0 88",
               "GdipDeleteFont 77", "GdipSaveGraphics 55", "GdipGetImageEncodersSize", "GdipGetImageEncoders",
               "GdipSaveImageToFile 11", "GdipDisposeImage 11", "GdiplusShutdown 1"}));
}

TEST_F(Annotating, AlphaOutsideItsRangeIsOpaque) {
    for (const auto& [alpha, expected] : {std::pair<std::int32_t, const char*>{-1, "FF"},
                                          {0, "FF"},
                                          {256, "FF"},
                                          {255, "FF"},
                                          {1, "01"},
                                          {254, "FE"}}) {
        Annotation annotation = Red();
        annotation.alpha = alpha;
        AnnotateImage("a.png", "b.jpg", annotation);
        const Calls calls = fake_.Calls();
        const auto brush = std::find_if(calls.rbegin(), calls.rend(), [](const std::string& call) {
            return call.starts_with("GdipCreateSolidFill");
        });
        ASSERT_NE(brush, calls.rend());
        EXPECT_EQ(*brush, "GdipCreateSolidFill " + std::string(expected) + "FF0000") << alpha;
    }
}

TEST_F(Annotating, EveryFlagThatIsNotZeroIsSet) {
    Annotation annotation = Red();
    annotation.bold = -7;
    annotation.underline = 2;
    AnnotateImage("a.png", "b.jpg", annotation);
    EXPECT_EQ(fake_.CountOf("GdipCreateFont 66 10 5 2"), 1u);
    annotation = Red();
    annotation.italic = 1;
    annotation.strikeout = 1;
    AnnotateImage("a.png", "b.jpg", annotation);
    EXPECT_EQ(fake_.CountOf("GdipCreateFont 66 10 10 2"), 1u);
}

TEST_F(Annotating, BadNamesMakeNoCall) {
    EXPECT_EQ(AnnotateImage("", "b.jpg", Red()), -16003);
    EXPECT_EQ(AnnotateImage("   ", "b.jpg", Red()), -16003);
    EXPECT_EQ(AnnotateImage("a.png", "", Red()), -16003);
    EXPECT_EQ(AnnotateImage("a.png", "b.doc", Red()), -16003);
    EXPECT_EQ(fake_.Calls(), Calls{});
}

TEST_F(Annotating, SourceThatDoesNotLoadLeavesFontAndSession) {
    fake_.Answer("GdipLoadImageFromFile", 3);
    EXPECT_EQ(AnnotateImage("a.png", "b.jpg", Red()), -16004);
    EXPECT_EQ(fake_.Calls().back(), "GdipLoadImageFromFile");
}

TEST_F(Annotating, AbsentFamilyGivesACopyWithoutText) {
    fake_.Answer("GdipCreateFontFamilyFromName", 14);
    EXPECT_EQ(AnnotateImage("a.png", "b.jpg", Red()), 0);
    EXPECT_EQ(fake_.CountOf("GdipCreateFont 0 10 0 2"), 1u);
    EXPECT_EQ(fake_.CountOf("GdipDeleteFontFamily 0"), 1u);
    EXPECT_EQ(fake_.CountOf("GdipDrawString 55 'Hello' 0 3.5 4 0 0 88"), 1u);
    EXPECT_EQ(fake_.CountOf("GdipDeleteFont 0"), 0u);
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 11"), 1u);
}

TEST_F(Annotating, NoStatusOfDrawingOrSavingIsLookedAt) {
    for (const char* name : {"GdipGetImageGraphicsContext", "GdipDrawImage", "GdipCreateSolidFill", "GdipDrawString",
                             "GdipSaveGraphics", "GdipGetImageEncoders", "GdipSaveImageToFile"}) {
        fake_.Answer(name, 1);
        EXPECT_EQ(AnnotateImage("a.png", "b.jpg", Red()), 0) << name;
        EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1") << name;
        fake_.Answer(name, 0);
    }
}

TEST_F(Annotating, PictureThatCannotBeDecodedIsNotWrittenAndLeavesFontAndSession) {
    for (const char* name : {"GdipDrawImage", "GdipDrawString"}) {
        fake_.Answer(name, 3);
        EXPECT_EQ(AnnotateImage("a.png", "b.jpg", Red()), -16004) << name;
        EXPECT_EQ(fake_.Calls().back().substr(0, 16), "GdipDisposeImage") << name;
        fake_.Answer(name, 0);
    }
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 11") + fake_.CountOf("GdipSaveImageToFile 12"), 0u);
    EXPECT_EQ(fake_.CountOf("GdipDeleteFont 77"), 0u);
}

TEST_F(Annotating, WithoutASurfaceNothingIsDrawnAndThePictureIsWritten) {
    for (const char* name : {"GdipGetImageGraphicsContext", "GdipDrawImage", "GdipDrawString"}) {
        fake_.Answer(name, 3);
    }
    EXPECT_EQ(AnnotateImage("a.png", "b.jpg", Red()), 0);
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 11"), 1u);
}

#ifndef _WIN32
TEST_F(Annotating, LengthIsThatOfTheBytesAndAllOfItCanBeRead) {
    Annotation annotation = Red();
    annotation.text = "\xC3\x9C\xE2\x82\xAC"; // two characters in five bytes
    AnnotateImage("a.png", "b.jpg", annotation);
    EXPECT_EQ(fake_.CountOf("GdipDrawString 55 '\?\?...' 77 3.5 4 0 0 88"), 1u);
}
#endif

TEST(AnnotateUnloaded, FindsNoSource) { EXPECT_EQ(AnnotateImage("a.png", "b.jpg", Red()), -16004); }

TEST_F(Stamping, DrawsTheStampAtItsPlace) {
    EXPECT_EQ(StampImage("a.png", "b.jpg", -3, 7.5f, "s.png"), 0);
    EXPECT_EQ(fake_.Calls(),
              (Calls{"GdiplusStartup", "GdipLoadImageFromFile", "GdipLoadImageFromFile",
                     "GdipGetImageGraphicsContext 11", "GdipDrawImage 55 11 0 0", "GdipDrawImage 55 12 -3 7.5",
                     "GdipSaveGraphics 55", "GdipGetImageEncodersSize", "GdipGetImageEncoders",
                     "GdipSaveImageToFile 11", "GdipDisposeImage 11", "GdipDisposeImage 12", "GdiplusShutdown 1"}));
}

TEST_F(Stamping, BadNamesMakeNoCall) {
    EXPECT_EQ(StampImage(" ", "b.jpg", 0, 0, "s.png"), -16003);
    EXPECT_EQ(StampImage("a.png", " ", 0, 0, "s.png"), -16003);
    EXPECT_EQ(StampImage("a.png", "b.", 0, 0, "s.png"), -16003);
    EXPECT_EQ(fake_.Calls(), Calls{});
}

TEST_F(Stamping, WhatDoesNotLoadLeavesTheRestOpen) {
    fake_.Answer("GdipLoadImageFromFile#1", 3);
    EXPECT_EQ(StampImage("a.png", "b.jpg", 0, 0, "s.png"), -16004);
    EXPECT_EQ(fake_.Calls(), (Calls{"GdiplusStartup", "GdipLoadImageFromFile", "GdipLoadImageFromFile"}));
    fake_.Answer("GdipLoadImageFromFile#4", 3);
    EXPECT_EQ(StampImage("a.png", "b.jpg", 0, 0, ""), -16004);
    EXPECT_EQ(fake_.Calls().back(), "GdipLoadImageFromFile");
}

TEST_F(Stamping, NoStatusOfDrawingOrSavingIsLookedAt) {
    for (const char* name :
         {"GdipGetImageGraphicsContext", "GdipDrawImage#3", "GdipDrawImage#6", "GdipSaveImageToFile"}) {
        fake_.Answer(name, 1);
        EXPECT_EQ(StampImage("a.png", "b.jpg", 0, 0, "s.png"), 0) << name;
        EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1") << name;
        fake_.Answer(name, 0);
    }
}

TEST_F(Stamping, PictureOrStampThatCannotBeDecodedIsNotWrittenAndLeavesTheSessionOpen) {
    fake_.Answer("GdipDrawImage#1", 3);
    EXPECT_EQ(StampImage("a.png", "b.jpg", 0, 0, "s.png"), -16004);
    fake_.Answer("GdipDrawImage#3", 3);
    EXPECT_EQ(StampImage("a.png", "b.jpg", 0, 0, "s.png"), -16004);
    EXPECT_EQ(fake_.CountOf("GdiplusShutdown 1"), 0u);
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 11") + fake_.CountOf("GdipSaveImageToFile 13"), 0u);
    EXPECT_EQ(fake_.CountOf("GdipGetImageThumbnail 14"), 0u) << "which of the two it was makes no difference";
}

TEST(StampUnloaded, FindsNoSource) { EXPECT_EQ(StampImage("a.png", "b.jpg", 0, 0, "s.png"), -16004); }

} // namespace
