// Counts the colours of a picture in memory that does not grow with the picture.
#include "imaginglibrary/operations/colorhistogram.h"

#include <utility>

namespace imaginglibrary {

namespace {

constexpr std::size_t MaximumCells = 65536;
constexpr unsigned SlotBits = 17;
constexpr std::uint32_t NoKey = 0xFFFFFFFF; // a key has 24 bits

std::uint8_t Mean8(std::uint64_t sum, std::uint32_t pixels) {
    return static_cast<std::uint8_t>((sum + pixels / 2) / pixels);
}

} // namespace

Color ColorCell::Mean() const { return MakeColor(Mean8(red, pixels), Mean8(green, pixels), Mean8(blue, pixels)); }

ColorHistogram::ColorHistogram() : slots_(std::size_t{1} << SlotBits, Slot{NoKey, {}}), lastKey_(NoKey) {}

std::size_t ColorHistogram::Probe(std::uint32_t key) const {
    std::size_t at = (key * 2654435761u) >> (32 - SlotBits);
    while (slots_[at].key != key && slots_[at].key != NoKey) {
        at = (at + 1) & (slots_.size() - 1);
    }
    return at;
}

std::size_t ColorHistogram::FindOrInsert(std::uint32_t key) {
    std::size_t at = Probe(key);
    if (slots_[at].key == NoKey) {
        while (used_ == MaximumCells) {
            Coarsen();
            key &= mask_;
            at = Probe(key);
        }
        if (slots_[at].key == NoKey) {
            slots_[at].key = key;
            ++used_;
        }
    }
    return at;
}

// Five bits per channel make 32768 cells at most, so the mask never loses more than three bits.
void ColorHistogram::Coarsen() {
    mask_ = ((mask_ << 1) & 0xFF) * 0x010101;
    std::vector<Slot> old(slots_.size(), Slot{NoKey, {}});
    std::swap(old, slots_);
    used_ = 0;
    for (const Slot& slot : old) {
        if (slot.key == NoKey) {
            continue;
        }
        Slot& merged = slots_[Probe(slot.key & mask_)];
        if (merged.key == NoKey) {
            merged.key = slot.key & mask_;
            ++used_;
        }
        merged.cell.pixels += slot.cell.pixels;
        merged.cell.red += slot.cell.red;
        merged.cell.green += slot.cell.green;
        merged.cell.blue += slot.cell.blue;
    }
}

std::vector<ColorCell> ColorHistogram::Cells() const {
    std::vector<ColorCell> cells;
    cells.reserve(used_);
    for (const Slot& slot : slots_) {
        if (slot.key != NoKey) {
            cells.push_back(slot.cell);
        }
    }
    return cells;
}

} // namespace imaginglibrary
