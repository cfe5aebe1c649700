// What can be undone and redone on the canvas.
#include "draw/history.h"

#include <algorithm>
#include <utility>

namespace lumbrix {

void History::TakeSnapshot(SnapshotCanvas& canvas) { Insert(undoList_, canvas.ReadBits()); }

void History::DrawUndo(SnapshotCanvas& canvas) { StepBack(undoList_, redoList_, canvas); }

void History::DrawRedo(SnapshotCanvas& canvas) { StepBack(redoList_, undoList_, canvas); }

std::size_t History::KeptSnapshots() const {
    const auto kept = [](const List& list) {
        return Entries - static_cast<std::size_t>(std::count(list.begin(), list.end(), std::string()));
    };
    return kept(undoList_) + kept(redoList_);
}

void History::Insert(List& list, std::string bits) {
    std::rotate(list.begin(), list.end() - 1, list.end());
    list.front() = std::move(bits);
}

void History::StepBack(List& from, List& to, SnapshotCanvas& canvas) {
    if (from.front().empty()) {
        from = {};
        return;
    }
    std::string bits = std::exchange(from.front(), {});
    std::rotate(from.begin(), from.begin() + 1, from.end());
    canvas.ExchangeBits(bits);
    canvas.RepaintBits();
    Insert(to, std::move(bits));
}

} // namespace lumbrix
