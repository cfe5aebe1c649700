// The table of the annotate and crop window and of its modes, without a window.
#include "annotate/layout.h"

#include "annotate/state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

using namespace lumbrix;

std::set<int> HiddenIn(std::int32_t mode) {
    const auto& ids = AnnotateModeLayouts[mode].hidden;
    std::set<int> hidden(ids.begin(), ids.end());
    hidden.erase(0);
    return hidden;
}

TEST(AnnotateWindowTable, HasNineControlsOfDistinctIds) {
    std::set<int> ids;
    for (const Control& control : AnnotateWindowControls) {
        ids.insert(control.id);
    }
    EXPECT_EQ(ids, (std::set<int>{1001, 1002, 1003, 1012, 1013, 1014, 1019, 1020, 1021}));
    EXPECT_EQ(std::size(AnnotateWindowControls), 9u);
}

TEST(AnnotateWindowTable, EveryControlBeginsInTheWindow) {
    for (const Control& control : AnnotateWindowControls) {
        EXPECT_GE(control.x, 0) << control.id;
        EXPECT_LT(control.x, AnnotateWindowLayout.width) << control.id;
        EXPECT_GE(control.y, 0) << control.id;
        EXPECT_LT(control.y, AnnotateWindowLayout.height) << control.id;
    }
}

TEST(AnnotateWindowTable, ShownControlsOfTheLineBelowThePictureDoNotOverlap) {
    std::vector<const Control*> line;
    for (const Control& control : AnnotateWindowControls) {
        if (control.y == 260 && HiddenIn(AnnotateMode).count(control.id) == 0) {
            line.push_back(&control);
        }
    }
    std::sort(line.begin(), line.end(), [](const Control* a, const Control* b) { return a->x < b->x; });
    for (std::size_t i = 1; i < line.size(); ++i) {
        EXPECT_LE(line[i - 1]->x + line[i - 1]->width, line[i]->x) << line[i]->id;
    }
}

TEST(AnnotateModes, ColorButtonIsAlwaysHidden) {
    for (const std::int32_t mode : {AnnotateMode, CropMode, CroppedMode}) {
        EXPECT_EQ(HiddenIn(mode).count(FontColorButton), 1u) << mode;
    }
}

TEST(AnnotateModes, OnlyAnnotatingShowsWhatAnnotates) {
    EXPECT_EQ(HiddenIn(AnnotateMode), std::set<int>{FontColorButton});
    const std::set<int> annotating{FontColorButton, AnnotationBox, AnnotationLabel,
                                   FontButton,      StampButton,   HelpButton};
    EXPECT_EQ(HiddenIn(CropMode), annotating);
}

// Keep lies below the smaller window.
TEST(AnnotateModes, CroppedPictureStandsAlone) {
    EXPECT_EQ(HiddenIn(CroppedMode), (std::set<int>{FontColorButton, AnnotationBox, AnnotationLabel, FontButton,
                                                    StampButton, HelpLabel, HelpButton}));
    const int windowHeight = AnnotateModeLayouts[CroppedMode].windowHeight;
    EXPECT_EQ(windowHeight, AnnotateWindowControls[0].height);
}

TEST(AnnotateModes, KeyboardBeginsInTheTextOrAtThePicture) {
    EXPECT_EQ(AnnotateModeLayouts[AnnotateMode].firstFocus, 1003);
    EXPECT_EQ(AnnotateModeLayouts[CropMode].firstFocus, 1001);
    EXPECT_EQ(AnnotateModeLayouts[CroppedMode].firstFocus, 1001);
}

TEST(AnnotateModes, HelpCoversKeepWhereTheyMeet) {
    const auto row = [](int id) {
        return *std::find_if(std::begin(AnnotateWindowControls), std::end(AnnotateWindowControls),
                             [&](const Control& control) { return control.id == id; });
    };
    for (const std::int32_t mode : {AnnotateMode, CropMode, CroppedMode}) {
        const AnnotateModeLayout& layout = AnnotateModeLayouts[mode];
        const bool isShown = HiddenIn(mode).count(HelpLabel) == 0;
        const bool isMeeting = isShown && layout.helpY < row(KeepCheck).y + row(KeepCheck).height;
        EXPECT_EQ(layout.covered, isMeeting ? 1019 : 0) << mode;
    }
}

TEST(AnnotateModes, HelpTextsHaveNoBlankAndOneLineBreak) {
    EXPECT_NE(std::string(AnnotateModeLayouts[AnnotateMode].helpText).find("needed.The annotated"), std::string::npos);
    EXPECT_NE(std::string(AnnotateModeLayouts[CropMode].helpText).find("button.\r\nThe cropped"), std::string::npos);
    EXPECT_EQ(std::string(AnnotateModeLayouts[CroppedMode].helpText), "");
}

} // namespace
