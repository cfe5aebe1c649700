// Decodes the compressed pixels of a GIF image.
#include "imaginglibrary/codecs/gif/gifpixels.h"

#include <algorithm>

namespace imaginglibrary {

GifPixels::GifPixels(ByteReader& reader, unsigned pixelBits)
    : reader_(reader), clearCode_(1u << pixelBits), pixelBits_(pixelBits) {
    for (unsigned code = 0; code < clearCode_; ++code) {
        lengths_[code] = 1;
        firsts_[code] = lasts_[code] = static_cast<std::uint8_t>(code);
    }
    Clear();
}

std::size_t GifPixels::Read(std::uint8_t* indices, std::size_t count) {
    std::size_t done = DeliverWaiting(indices, count);
    unsigned code = 0;
    while (done < count && !isAtEnd_ && ReadCode(code)) {
        if (!TakeCode(code)) {
            continue;
        }
        const std::size_t length = lengths_[code];
        if (length <= count - done) {
            Spell(code, indices + done);
            done += length;
        } else {
            Spell(code, waiting_.data());
            waitingStart_ = 0;
            waitingEnd_ = length;
            done += DeliverWaiting(indices + done, count - done);
        }
    }
    return done;
}

// False at the end of the data.
bool GifPixels::ReadCode(unsigned& code) {
    while (bitCount_ < codeBits_) {
        if (nextByte_ == blockBytes_ && !ReadBlock()) {
            isAtEnd_ = true;
            return false;
        }
        bits_ |= std::uint32_t{block_[nextByte_++]} << bitCount_;
        bitCount_ += 8;
    }
    code = bits_ & ((1u << codeBits_) - 1);
    bits_ >>= codeBits_;
    bitCount_ -= codeBits_;
    return true;
}

// A block that is shorter than it says is taken for the last.
bool GifPixels::ReadBlock() {
    const int length = reader_.ReadByte();
    blockBytes_ = reader_.Read(block_.data(), static_cast<std::size_t>(std::max(length, 0)));
    nextByte_ = 0;
    end_ = length == 0 ? End::Marked : End::Cut;
    return blockBytes_ > 0;
}

// Whether the code stands for a string, which is known from now on.
bool GifPixels::TakeCode(unsigned code) {
    const unsigned endCode = clearCode_ + 1;
    if (code == clearCode_) {
        Clear();
        return false;
    }
    // The only code that may stand for a string before it is known is that of the string behind the previous one.
    const bool isAhead = code == nextCode_ && previous_ != NoCode;
    const bool isKnown = code < clearCode_ || (code > endCode && code < nextCode_);
    if (!isAhead && !isKnown) {
        end_ = code == endCode ? End::Marked : End::Broken;
        isAtEnd_ = true;
        return false;
    }
    if (previous_ != NoCode) {
        Add(previous_, firsts_[isAhead ? previous_ : code]);
    }
    previous_ = code;
    if (nextCode_ >= 1u << codeBits_ && codeBits_ < MostCodeBits) {
        ++codeBits_;
    }
    return true;
}

void GifPixels::Clear() {
    nextCode_ = clearCode_ + 2;
    codeBits_ = pixelBits_ + 1;
    previous_ = NoCode;
}

// Once all codes are taken the table stays as it is until it is cleared.
void GifPixels::Add(unsigned prefix, std::uint8_t last) {
    if (nextCode_ == Codes) {
        return;
    }
    prefixes_[nextCode_] = static_cast<std::uint16_t>(prefix);
    lengths_[nextCode_] = static_cast<std::uint16_t>(lengths_[prefix] + 1);
    firsts_[nextCode_] = firsts_[prefix];
    lasts_[nextCode_] = last;
    ++nextCode_;
}

void GifPixels::Spell(unsigned code, std::uint8_t* to) const {
    for (std::size_t left = lengths_[code]; left > 0; code = prefixes_[code]) {
        to[--left] = lasts_[code];
    }
}

std::size_t GifPixels::DeliverWaiting(std::uint8_t* indices, std::size_t count) {
    const std::size_t given = std::min(count, waitingEnd_ - waitingStart_);
    std::copy_n(waiting_.data() + waitingStart_, given, indices);
    waitingStart_ += given;
    return given;
}

} // namespace imaginglibrary
