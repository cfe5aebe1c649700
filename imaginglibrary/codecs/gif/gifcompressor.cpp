// The codes of GIF's pixels, in the blocks of a file.
#include "imaginglibrary/codecs/gif/gifcompressor.h"

#include <algorithm>
#include <utility>

namespace imaginglibrary {

namespace {

// Codes have 12 bits at most. The greatest is never given out, for then readers need not agree on what comes next.
constexpr unsigned CodeBits = 12;
constexpr unsigned GreatestCode = (1u << CodeBits) - 1;

// Four times as many places as there are codes, so that a string is seldom looked for in a second one.
constexpr unsigned PlaceBits = CodeBits + 2;
constexpr std::size_t Places = std::size_t{1} << PlaceBits;
constexpr std::uint32_t Free = 0xFFFFFFFF; // would be the greatest code followed by an index

std::size_t PlaceOf(std::uint32_t string) { return (string * 2654435761u) >> (32 - PlaceBits); }

} // namespace

GifCompressor::GifCompressor(unsigned indexBits, PutBlock put)
    : indexBits_(indexBits), put_(std::move(put)), codes_(Places), bits_(indexBits + 1) {}

bool GifCompressor::Add(std::span<const std::uint8_t> indices) {
    auto index = indices.begin();
    if (!isBegun_ && index != indices.end()) {
        isBegun_ = true;
        if (!PutClear()) {
            return false;
        }
        known_ = *index++;
    }
    std::uint32_t* const codes = codes_.data();
    unsigned known = known_;
    for (; index != indices.end(); ++index) {
        const std::uint32_t string = known << 8 | *index;
        std::size_t place = PlaceOf(string);
        std::uint32_t entry = codes[place];
        while (entry >> CodeBits != string && entry != Free) {
            place = (place + 1) % Places;
            entry = codes[place];
        }
        if (entry >> CodeBits == string) {
            known = entry & GreatestCode;
            continue;
        }
        if (!Put(known)) {
            return false;
        }
        known = *index;
        if (next_ < GreatestCode) {
            codes[place] = string << CodeBits | next_++;
        } else if (!PutClear()) {
            return false;
        }
    }
    known_ = known;
    return true;
}

bool GifCompressor::Finish() {
    const unsigned end = (1u << indexBits_) + 1;
    if ((isBegun_ && !Put(known_)) || !Put(end)) {
        return false;
    }
    for (; waitingBits_ > 0; waitingBits_ -= std::min(waitingBits_, 8u), waiting_ >>= 8) {
        bytes_[1 + count_++] = static_cast<std::uint8_t>(waiting_);
    }
    return (count_ < BlockBytes || PutBlockOf(BlockBytes)) && (count_ == 0 || PutBlockOf(count_));
}

// Both ends begin with single indices again.
bool GifCompressor::PutClear() {
    const unsigned clear = 1u << indexBits_;
    const bool isPut = Put(clear);
    std::fill(codes_.begin(), codes_.end(), Free);
    next_ = clear + 2;
    bits_ = indexBits_ + 1;
    return isPut;
}

bool GifCompressor::Put(unsigned code) {
    waiting_ |= std::uint64_t{code} << waitingBits_;
    waitingBits_ += bits_;
    // The reader learns a code one later than it is given out here.
    if (next_ >> bits_ != 0) {
        ++bits_;
    }
    if (waitingBits_ < 32) {
        return true;
    }
    for (unsigned i = 0; i < 4; ++i) {
        bytes_[1 + count_ + i] = static_cast<std::uint8_t>(waiting_ >> (8 * i));
    }
    count_ += 4;
    waiting_ >>= 32;
    waitingBits_ -= 32;
    return count_ < BlockBytes || PutBlockOf(BlockBytes);
}

// Sends off the oldest bytes.
bool GifCompressor::PutBlockOf(unsigned count) {
    bytes_[0] = static_cast<std::uint8_t>(count);
    const bool isPut = put_(bytes_.data());
    count_ -= count;
    std::copy_n(bytes_.begin() + 1 + count, count_, bytes_.begin() + 1);
    return isPut;
}

} // namespace imaginglibrary
