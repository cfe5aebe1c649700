// The jobs of the annotate and crop window.
#include "annotate/editmode.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(TitleOrAnnotate, EmptyOneAsksToAnnotateAndOthersStay) {
    EXPECT_EQ(TitleOrAnnotate(""), "Annotate image");
    for (const std::string title : {"Annotate image", "Crop image", "Cropped image", "Something else", " "}) {
        EXPECT_EQ(TitleOrAnnotate(title), title);
    }
}

TEST(EditModeForTitle, ThreeTitlesAreKnownAndOthersChangeNothing) {
    for (const EditMode current : {EditMode::Annotate, EditMode::Crop, EditMode::Cropped}) {
        EXPECT_EQ(EditModeForTitle("Annotate image", current), EditMode::Annotate);
        EXPECT_EQ(EditModeForTitle("Crop image", current), EditMode::Crop);
        EXPECT_EQ(EditModeForTitle("Cropped image", current), EditMode::Cropped);
        EXPECT_EQ(EditModeForTitle("crop image", current), current);
        EXPECT_EQ(EditModeForTitle("Something else", current), current);
    }
}

} // namespace
