// What the option controls of the main window mean.
#include "batch/options.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

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
