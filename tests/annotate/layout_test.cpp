// The table of the annotate and crop window and of its modes, without a window.
#include "annotate/layout.h"

#include "tests/windows/expected/againsttable.h"
#include "tests/windows/expected/annotatewindow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

using namespace lumbrix;
using namespace lumbrix::annotatewindow;

constexpr EditMode Modes[] = {EditMode::Annotate, EditMode::Crop, EditMode::Cropped};

std::set<int> HiddenIn(EditMode mode) {
    const auto& ids = LayoutOf(mode).hidden;
    std::set<int> hidden(ids.begin(), ids.end());
    hidden.erase(0);
    return hidden;
}

// The table as a mode changes it. The caption is that of the table in all of them, and so is the order.
TEST(AnnotateWindowTable, IsAsExpectedInEachMode) {
    for (const EditMode mode : Modes) {
        SCOPED_TRACE(static_cast<int>(mode));
        const AnnotateModeLayout& changes = LayoutOf(mode);
        OwnedLayout layout(AnnotateWindowLayout);
        layout.height = changes.windowHeight;
        OwnedControl& help = layout.controls.back();
        help.caption = changes.helpText;
        help.y = changes.helpY;
        help.height = changes.helpHeight;
        if (mode == EditMode::Crop) {
            std::rotate(layout.controls.begin() + 6, layout.controls.begin() + 7, layout.controls.end());
        }
        tests::ExpectedWindow expected = tests::ExpectedInMode(static_cast<int>(mode));
        expected.caption = "Annotate image";
        tests::ExpectTable(layout, expected);
    }
}

TEST(AnnotateWindowTable, IsOfTheFullHeightUntilAModeChangesIt) { EXPECT_EQ(AnnotateWindowLayout.height, 295); }

TEST(AnnotateModes, HideWhatIsExpected) {
    for (const EditMode mode : Modes) {
        std::set<int> expected;
        for (const tests::ExpectedControl& control : tests::ExpectedInMode(static_cast<int>(mode)).controls) {
            if (control.isHidden) {
                expected.insert(control.id);
            }
        }
        EXPECT_EQ(HiddenIn(mode), expected) << static_cast<int>(mode);
    }
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
        if (control.y == 260 && !HiddenIn(EditMode::Annotate).contains(control.id)) {
            line.push_back(&control);
        }
    }
    std::sort(line.begin(), line.end(), [](const Control* a, const Control* b) { return a->x < b->x; });
    for (std::size_t i = 1; i < line.size(); ++i) {
        EXPECT_LE(line[i - 1]->x + line[i - 1]->width, line[i]->x) << line[i]->id;
    }
}

TEST(AnnotateModes, ColorButtonIsAlwaysHidden) {
    for (const EditMode mode : Modes) {
        EXPECT_EQ(HiddenIn(mode).count(FontColorButton), 1u) << static_cast<int>(mode);
    }
}

TEST(AnnotateModes, OnlyAnnotatingShowsWhatAnnotates) {
    EXPECT_EQ(HiddenIn(EditMode::Annotate), std::set<int>{FontColorButton});
    const std::set<int> annotating{FontColorButton, AnnotationBox, AnnotationLabel,
                                   FontButton,      StampButton,   HelpButton};
    EXPECT_EQ(HiddenIn(EditMode::Crop), annotating);
}

// Keep lies below the smaller window.
TEST(AnnotateModes, CroppedPictureStandsAlone) {
    EXPECT_EQ(HiddenIn(EditMode::Cropped), (std::set<int>{FontColorButton, AnnotationBox, AnnotationLabel, FontButton,
                                                          StampButton, HelpLabel, HelpButton}));
    const int windowHeight = LayoutOf(EditMode::Cropped).windowHeight;
    EXPECT_EQ(windowHeight, AnnotateWindowControls[0].height);
}

TEST(AnnotateModes, KeyboardBeginsInTheTextOrAtThePicture) {
    EXPECT_EQ(LayoutOf(EditMode::Annotate).firstFocus, 1003);
    EXPECT_EQ(LayoutOf(EditMode::Crop).firstFocus, 1001);
    EXPECT_EQ(LayoutOf(EditMode::Cropped).firstFocus, 1001);
}

TEST(AnnotateModes, HelpCoversKeepWhereTheyMeet) {
    const auto row = [](int id) {
        return *std::find_if(std::begin(AnnotateWindowControls), std::end(AnnotateWindowControls),
                             [&](const Control& control) { return control.id == id; });
    };
    for (const EditMode mode : Modes) {
        const AnnotateModeLayout& layout = LayoutOf(mode);
        const bool isShown = !HiddenIn(mode).contains(HelpLabel);
        const bool isMeeting = isShown && layout.helpY < row(KeepCheck).y + row(KeepCheck).height;
        EXPECT_EQ(layout.covered, isMeeting ? 1019 : 0) << static_cast<int>(mode);
    }
}

TEST(AnnotateModes, HelpTextsHaveNoBlankAndOneLineBreak) {
    EXPECT_NE(std::string(LayoutOf(EditMode::Annotate).helpText).find("needed.The annotated"), std::string::npos);
    EXPECT_NE(std::string(LayoutOf(EditMode::Crop).helpText).find("button.\r\nThe cropped"), std::string::npos);
    EXPECT_EQ(std::string(LayoutOf(EditMode::Cropped).helpText), "");
}

} // namespace
