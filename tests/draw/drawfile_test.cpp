// The names of the files that come into the paint window and go back.
#include "draw/drawfile.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(DrawFileName, IsThatOfTheNextStepBesideTheOutput) {
    EXPECT_EQ(DrawFile("C:\\a\\cat.jpg", 1), "C:\\a\\cat2.bmp");
    EXPECT_EQ(DrawFile("C:\\a\\cat.big.jpg", 4), "C:\\a\\cat5.bmp");
    EXPECT_EQ(DrawFile("", 0), "1.bmp");
}

TEST(SavedDrawingName, EndsWithAThreeInThePlaceOfTheLastDigit) {
    EXPECT_EQ(SavedDrawing("C:\\a\\cat2.bmp"), "C:\\a\\cat3.bmp");
    EXPECT_EQ(SavedDrawing("C:\\a\\cat5.bmp"), "C:\\a\\cat3.bmp");
    EXPECT_EQ(SavedDrawing("C:\\a\\cat12.bmp"), "C:\\a\\cat13.bmp");
}

TEST(SavedDrawingName, IsThatOfTheStepBehindOnlyTheFirstTime) {
    EXPECT_EQ(SavedDrawing(DrawFile("cat.jpg", 1)), StepFile("cat.jpg", 3));
    for (const std::int32_t counter : {0, 2, 4, 9}) {
        EXPECT_NE(SavedDrawing(DrawFile("cat.jpg", counter)), StepFile("cat.jpg", counter + 2)) << counter;
    }
}

TEST(SavedDrawingName, OfAShortNameIsTheEndAlone) {
    EXPECT_EQ(SavedDrawing("a2.bmp"), "a3.bmp");
    EXPECT_EQ(SavedDrawing("2.bmp"), "3.bmp");
    EXPECT_EQ(SavedDrawing(".bmp"), "3.bmp");
    EXPECT_EQ(SavedDrawing(""), "3.bmp");
}

TEST(MissingFile, IsNamed) { EXPECT_EQ(MissingFileMessage("C:\\a\\cat2.bmp"), "No C:\\a\\cat2.bmp"); }

} // namespace
