// What the option controls of the main window mean.
#include "batch/options.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(LeadingNumber, KeepsItsFraction) {
    EXPECT_EQ(LeadingNumber("2.5"), 2.5);
    EXPECT_EQ(LeadingNumber(" -0.25 pixels"), -0.25);
    EXPECT_EQ(LeadingNumber("1e-2"), 0.01);
}

TEST(LeadingNumber, IsNotBoundToThirtyTwoBits) { EXPECT_EQ(LeadingNumber("99999999999"), 99999999999.0); }

TEST(LeadingNumber, IsZeroWhereThereIsNone) {
    for (const char* text : {"", "abc", "-", ".", "x2", "inf", "nan"}) {
        EXPECT_EQ(LeadingNumber(text), 0) << text;
    }
}

TEST(NumericValue, ReadsTheLeadingNumber) {
    const std::pair<const char*, std::int32_t> values[] = {{"512", 512},
                                                           {"  50 pixels", 50},
                                                           {"12abc", 12},
                                                           {"-7", -7},
                                                           {"+8", 8},
                                                           {"3.7", 4},
                                                           {"1e2", 100},
                                                           {"1e", 1},
                                                           {".6", 1},
                                                           {"7.", 7},
                                                           {"", 0},
                                                           {"abc", 0},
                                                           {"-", 0},
                                                           {"x12", 0},
                                                           {"1,5", 1},
                                                           {"0x10", 0},
                                                           {" ", 0},
                                                           {"inf", 0},
                                                           {"99999999999", INT32_MAX},
                                                           {"-99999999999", INT32_MIN}};
    for (const auto& [text, value] : values) {
        EXPECT_EQ(NumericValue(text), value) << text;
    }
}

TEST(NumericValue, TiesGoToTheEvenOne) {
    EXPECT_EQ(NumericValue("2.5"), 2);
    EXPECT_EQ(NumericValue("3.5"), 4);
    EXPECT_EQ(NumericValue("-2.5"), -2);
}

TEST(ConvertibleExtension, AreSixInAnyLetterCase) {
    for (const char* extension : {"bmp", "gif", "jpg", "tiff", "png", "sgl", "BMP", "Jpg"}) {
        EXPECT_TRUE(IsConvertibleExtension(extension)) << extension;
    }
    for (const char* extension : {"", "jpeg", "tif", "ico", "emf", "wmf", "txt", ".bmp", "bmp "}) {
        EXPECT_FALSE(IsConvertibleExtension(extension)) << extension;
    }
}

TEST(SelectedOutputWord, IsThatOfTheFirstChecked) {
    EXPECT_EQ(SelectedOutputWord({true, false, false, false, false, false}), "bmp");
    EXPECT_EQ(SelectedOutputWord({false, false, false, true, false, true}), "tiff");
    EXPECT_EQ(SelectedOutputWord({false, false, false, false, false, true}), "sgl");
    EXPECT_EQ(SelectedOutputWord({}), "");
}

TEST(SelectedRotation, IsTheFirstCheckedAngle) {
    EXPECT_EQ(SelectedRotation({true, false, false, false}), 0);
    EXPECT_EQ(SelectedRotation({false, false, true, true}), 180);
    EXPECT_EQ(SelectedRotation({false, false, false, true}), 270);
    EXPECT_EQ(SelectedRotation({}), 0);
}

TEST(SelectedFlip, VerticallyIsHAndHorizontallyIsV) {
    EXPECT_EQ(SelectedFlip(false, false), "");
    EXPECT_EQ(SelectedFlip(true, false), "H");
    EXPECT_EQ(SelectedFlip(false, true), "V");
    EXPECT_EQ(SelectedFlip(true, true), "HV");
}

} // namespace
