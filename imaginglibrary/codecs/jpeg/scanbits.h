// The bits of a JPEG scan, read and written: behind each byte of ones stands a byte of zeros.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace imaginglibrary {

// Beyond the end there are zeros.
class ScanBitReader {
  public:
    // Goes on in other bytes, the first of which is that behind the last one taken.
    void SetBytes(std::span<const std::uint8_t> bytes) {
        first_ = next_ = bytes.data();
        end_ = first_ + bytes.size();
    }

    // How many of the bytes were taken; bits of the last ones are kept here until they are read.
    std::size_t BytesTaken() const { return static_cast<std::size_t>(next_ - first_); }

    // The next 16 bits, the first one on top. Behind them 16 more can be taken.
    std::uint32_t Peek() {
        if (count_ < 32) {
            Fill();
        }
        return static_cast<std::uint32_t>(bits_ >> 48);
    }

    // At most 16 that were looked at.
    void Skip(int count) {
        bits_ <<= count;
        count_ -= count;
    }

    // Up to 16, the last one at the bottom.
    std::uint32_t Take(int count) {
        const auto taken = static_cast<std::uint32_t>((bits_ >> 48) >> (16 - count));
        Skip(count);
        return taken;
    }

  private:
    // At least to 32 bits.
    void Fill() {
        if (end_ - next_ >= 4) {
            std::uint32_t word = 0;
            std::memcpy(&word, next_, sizeof word);
            if (!HasOnes(word)) {
                const std::uint32_t first = std::uint32_t{next_[0]} << 24 | std::uint32_t{next_[1]} << 16 |
                                            std::uint32_t{next_[2]} << 8 | next_[3];
                bits_ |= std::uint64_t{first} << (32 - count_);
                count_ += 32;
                next_ += sizeof word;
                return;
            }
        }
        while (count_ <= 32) {
            FillByte();
        }
    }

    // Whether one of four bytes is of ones alone.
    static bool HasOnes(std::uint32_t word) { return ((~word - 0x01010101U) & word & 0x80808080U) != 0; }

    void FillByte() {
        const std::uint8_t byte = next_ != end_ ? *next_++ : 0;
        if (byte == 0xFF && next_ != end_) {
            ++next_;
        }
        bits_ |= std::uint64_t{byte} << (56 - count_);
        count_ += 8;
    }

    const std::uint8_t* first_ = nullptr;
    const std::uint8_t* next_ = nullptr;
    const std::uint8_t* end_ = nullptr;
    std::uint64_t bits_ = 0; // on top
    int count_ = 0;
};

class ScanBitWriter {
  public:
    // The lowest `count` bits of a number, up to 32, whose other bits are zeros.
    void Put(std::uint32_t bits, int count) {
        bits_ = bits_ << count | bits;
        count_ += count;
        if (count_ >= 32) {
            PutWholeBytes();
        }
    }

    // Fills the last byte with ones.
    void Finish() {
        const int missing = (8 - count_ % 8) % 8;
        Put((1U << missing) - 1, missing);
        PutWholeBytes();
    }

    // Written so far, but for the last few; whoever has used them clears them.
    std::vector<std::uint8_t>& Bytes() { return bytes_; }

  private:
    void PutWholeBytes() {
        constexpr std::size_t MostBytes = 16;
        std::array<std::uint8_t, MostBytes> bytes;
        std::size_t used = 0;
        for (; count_ >= 8; count_ -= 8) {
            const auto byte = static_cast<std::uint8_t>(bits_ >> (count_ - 8));
            bytes[used++] = byte;
            if (byte == 0xFF) {
                bytes[used++] = 0;
            }
        }
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(used));
    }

    std::uint64_t bits_ = 0; // the last `count_` at the bottom are not written yet
    int count_ = 0;
    std::vector<std::uint8_t> bytes_;
};

} // namespace imaginglibrary
