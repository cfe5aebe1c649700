// The rows of a PNG picture as they lie in the file, read more quickly than libpng does.
#include "imaginglibrary/codecs/png/pngrawrows.h"

#include "imaginglibrary/codecs/png/pngunfilter.h"
#include "imaginglibrary/core/bytes.h"

#include <algorithm>
#include <utility>

namespace imaginglibrary {

namespace {

constexpr std::size_t InputBytes = 1 << 16;
constexpr std::size_t BandBytes = 1 << 18;

// Deflate, the largest window, no dictionary. A smaller window is left to libpng, for libraries differ over data that
// reach farther back.
bool IsUsualHeader(std::span<const std::uint8_t> stream) {
    constexpr std::uint8_t DeflateInLargestWindow = 0x78;
    constexpr std::uint8_t HasDictionary = 0x20;
    return stream.size() >= 2 && stream[0] == DeflateInLargestWindow && (stream[1] & HasDictionary) == 0 &&
           BigEndian16(stream.data()) % 31 == 0;
}

} // namespace

PngRawRows::PngRawRows(std::shared_ptr<const InputFile> file, std::uint64_t offset, const PngRowForm& form,
                       std::uint32_t rows)
    : form_(form), chunks_(std::move(file), offset), buffer_(InputBytes), rowsLeft_(rows),
      bandRows_(std::clamp<std::size_t>(BandBytes / SlotBytes(), 1, rows)), slots_((1 + bandRows_) * SlotBytes()) {}

const std::uint8_t* PngRawRows::Next() {
    if (given_ == filled_ && !ReadBand()) {
        return nullptr;
    }
    const std::uint8_t* const above = Slot(given_) + 1;
    std::uint8_t* const row = Slot(++given_) + 1;
    const auto filter = static_cast<PngFilter>(row[-1]);
    if (filter > PngFilter::Paeth) {
        return nullptr;
    }
    UnfilterRow(filter, {row, form_.rowBytes}, above, form_.pixelBytes);
    return row;
}

bool PngRawRows::ReadBand() {
    std::copy_n(Slot(filled_), SlotBytes(), Slot(0));
    filled_ = std::min<std::size_t>(bandRows_, rowsLeft_);
    rowsLeft_ -= static_cast<std::uint32_t>(filled_);
    given_ = 0;
    return InflateBand({Slot(1), filled_ * SlotBytes()}) && (rowsLeft_ != 0 || End());
}

bool PngRawRows::InflateBand(std::span<std::uint8_t> to) {
    while (!to.empty()) {
        if (state_ != InflateState::GoesOn || !InflateSome(to)) {
            return false;
        }
    }
    return true;
}

// Reads the checksum, behind which chunks may contain anything.
bool PngRawRows::End() {
    std::uint8_t surplus;
    std::span<std::uint8_t> to(&surplus, 1);
    while (state_ == InflateState::GoesOn) {
        if (!InflateSome(to) || to.empty()) {
            return false;
        }
    }
    return chunks_.AreSound();
}

bool PngRawRows::InflateSome(std::span<std::uint8_t>& to) {
    const std::size_t before = input_.size() + to.size();
    state_ = inflater_.Inflate(input_, to);
    const bool isMoving = input_.size() + to.size() != before;
    return state_ != InflateState::Broken && (isMoving || state_ == InflateState::Ended || Refill());
}

bool PngRawRows::Refill() {
    if (!input_.empty()) {
        return false;
    }
    input_ = std::span(buffer_).first(chunks_.Read(buffer_));
    return std::exchange(isBegun_, true) ? !input_.empty() : IsUsualHeader(input_);
}

} // namespace imaginglibrary
