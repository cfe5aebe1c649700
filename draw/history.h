// What can be undone and redone on the canvas.
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace lumbrix {

// The canvas as undoing sees it: as snapshots, in the form of canvasbits.h.
class SnapshotCanvas {
  public:
    virtual ~SnapshotCanvas() = default;

    // Empty where the canvas cannot be read.
    virtual std::string ReadBits() = 0;

    // Puts a snapshot on the canvas, and what the canvas was in its place: empty where it cannot be read.
    virtual void ExchangeBits(std::string& bits) = 0;

    virtual void RepaintBits() = 0;
};

// Two lists of twelve snapshots, the newest first; the oldest drops out. What is drawn after undoing leaves the list
// for redoing as it is.
class History {
  public:
    static constexpr std::size_t Entries = 12;

    void TakeSnapshot(SnapshotCanvas& canvas);

    // Each puts the canvas as it is on the other list and the newest snapshot of its own in its place. Where its newest
    // one is empty, its whole list becomes empty.
    void DrawUndo(SnapshotCanvas& canvas);
    void DrawRedo(SnapshotCanvas& canvas);

    // How many snapshots take memory, 24 at most.
    std::size_t KeptSnapshots() const;

  private:
    using List = std::array<std::string, Entries>;

    static void Insert(List& list, std::string bits);
    static void StepBack(List& from, List& to, SnapshotCanvas& canvas);

    List undoList_;
    List redoList_;
};

} // namespace lumbrix
