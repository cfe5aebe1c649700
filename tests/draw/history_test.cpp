// Undoing and redoing on a canvas that holds a text in the place of a picture.
#include "draw/history.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace lumbrix;

class TextCanvas : public SnapshotCanvas {
  public:
    std::string ReadBits() override {
        calls.push_back("read " + shown);
        return isReadable ? shown : std::string();
    }
    void ExchangeBits(std::string& bits) override {
        calls.push_back("put " + bits + " for " + shown);
        shown.swap(bits);
        if (!isReadable) {
            bits.clear();
        }
    }
    void RepaintBits() override { calls.push_back("repaint"); }

    std::string shown = "blank";
    bool isReadable = true;
    std::vector<std::string> calls;
};

class DrawHistory : public testing::Test {
  protected:
    void Stroke(const std::string& picture) {
        history_.TakeSnapshot(canvas_);
        canvas_.shown = picture;
    }

    // What the canvas shows after each of so many steps.
    std::vector<std::string> Undone(int steps) { return Shown(steps, &History::DrawUndo); }
    std::vector<std::string> Redone(int steps) { return Shown(steps, &History::DrawRedo); }

    History history_;
    TextCanvas canvas_;

  private:
    std::vector<std::string> Shown(int steps, void (History::*step)(SnapshotCanvas&)) {
        std::vector<std::string> shown;
        for (int i = 0; i < steps; ++i) {
            (history_.*step)(canvas_);
            shown.push_back(canvas_.shown);
        }
        return shown;
    }
};

using Steps = std::vector<std::string>;

TEST_F(DrawHistory, WithEmptyListsNothingIsTouched) {
    EXPECT_EQ(Undone(2), (Steps{"blank", "blank"}));
    EXPECT_EQ(Redone(2), (Steps{"blank", "blank"}));
    EXPECT_EQ(canvas_.calls, Steps{});
}

TEST_F(DrawHistory, SnapshotOnlyReads) {
    Stroke("one");
    EXPECT_EQ(canvas_.calls, Steps{"read blank"});
}

TEST_F(DrawHistory, UndoExchangesTheCanvasAndRepaints) {
    Stroke("one");
    canvas_.calls.clear();
    history_.DrawUndo(canvas_);
    EXPECT_EQ(canvas_.calls, (Steps{"put blank for one", "repaint"}));
}

TEST_F(DrawHistory, RedoExchangesTheCanvasAndRepaints) {
    Stroke("one");
    history_.DrawUndo(canvas_);
    canvas_.calls.clear();
    history_.DrawRedo(canvas_);
    EXPECT_EQ(canvas_.calls, (Steps{"put one for blank", "repaint"}));
}

TEST_F(DrawHistory, GoesBackAndForthStepByStep) {
    Stroke("one");
    Stroke("two");
    Stroke("three");
    EXPECT_EQ(Undone(4), (Steps{"two", "one", "blank", "blank"}));
    EXPECT_EQ(Redone(4), (Steps{"one", "two", "three", "three"}));
    EXPECT_EQ(Undone(2), (Steps{"two", "one"}));
}

TEST_F(DrawHistory, ThirteenthSnapshotPushesOutTheOldest) {
    for (int stroke = 1; stroke <= 13; ++stroke) {
        Stroke(std::to_string(stroke));
    }
    EXPECT_EQ(Undone(13), (Steps{"12", "11", "10", "9", "8", "7", "6", "5", "4", "3", "2", "1", "1"}));
}

TEST_F(DrawHistory, TwelveSnapshotsAreKept) {
    for (int stroke = 1; stroke <= 12; ++stroke) {
        Stroke(std::to_string(stroke));
    }
    EXPECT_EQ(Undone(12).back(), "blank");
    EXPECT_EQ(Redone(12).back(), "12");
}

TEST_F(DrawHistory, StrokeAfterUndoingLeavesWhatCanBeRedone) {
    Stroke("one");
    Stroke("two");
    Undone(1);
    Stroke("other");
    EXPECT_EQ(Redone(2), (Steps{"two", "two"}));
    EXPECT_EQ(Undone(3), (Steps{"other", "one", "blank"}));
}

TEST_F(DrawHistory, RedoListKeepsTwelveToo) {
    for (int stroke = 1; stroke <= 13; ++stroke) {
        Stroke(std::to_string(stroke));
        Undone(1);
        canvas_.shown = "blank";
    }
    EXPECT_EQ(Redone(13), (Steps{"13", "12", "11", "10", "9", "8", "7", "6", "5", "4", "3", "2", "2"}));
}

TEST_F(DrawHistory, EmptyNewestSnapshotEmptiesItsWholeListAtTheNextUndo) {
    Stroke("one");
    canvas_.isReadable = false;
    Stroke("two");
    canvas_.isReadable = true;
    EXPECT_EQ(Undone(1), Steps{"two"});
    Stroke("three");
    EXPECT_EQ(Undone(2), (Steps{"two", "two"}));
}

TEST_F(DrawHistory, EmptiedListTakesNoMemory) {
    Stroke("one");
    Stroke("two");
    EXPECT_EQ(history_.KeptSnapshots(), 2u);
    canvas_.isReadable = false;
    Stroke("three");
    EXPECT_EQ(history_.KeptSnapshots(), 2u);
    Undone(1);
    EXPECT_EQ(history_.KeptSnapshots(), 0u);
}

TEST_F(DrawHistory, SnapshotThatIsShownAgainTakesNoMemory) {
    Stroke("one");
    Stroke("two");
    Undone(1);
    EXPECT_EQ(history_.KeptSnapshots(), 2u);
    Redone(1);
    EXPECT_EQ(history_.KeptSnapshots(), 2u);
}

TEST_F(DrawHistory, TwentyFourSnapshotsAreKeptAtMost) {
    for (int round = 0; round < 2; ++round) {
        for (int stroke = 1; stroke <= 13; ++stroke) {
            Stroke("picture");
        }
        if (round == 0) {
            Undone(12);
        }
    }
    EXPECT_EQ(history_.KeptSnapshots(), 24u);
}

TEST_F(DrawHistory, EmptyNewestSnapshotLeavesTheOtherList) {
    Stroke("one");
    Undone(1);
    canvas_.isReadable = false;
    Stroke("two");
    canvas_.isReadable = true;
    Undone(1);
    EXPECT_EQ(Redone(1), Steps{"one"});
}

TEST_F(DrawHistory, EmptyNewestSnapshotEmptiesTheRedoListAtTheNextRedo) {
    Stroke("one");
    Stroke("two");
    Undone(1);
    canvas_.isReadable = false;
    Undone(1);
    canvas_.isReadable = true;
    EXPECT_EQ(Redone(2), (Steps{"blank", "blank"}));
}

} // namespace
