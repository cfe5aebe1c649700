// Compressing by the LZW of TIFF.
#include "imaginglibrary/codecs/tiff/tifflzw.h"

#include <array>
#include <cstddef>
#include <memory>

namespace imaginglibrary {

namespace {

constexpr std::uint32_t ClearCode = 256;
constexpr std::uint32_t EndCode = 257;
constexpr std::uint32_t FirstFreeCode = 258;
constexpr std::uint32_t LastFreeCode = 4093; // the table is cleared behind it, before readers may want 13 bits
constexpr unsigned LeastBits = 9;
constexpr unsigned MostBits = 12;

// The codes of strings by that of all but their last byte, and that byte.
class StringTable {
  public:
    // One for a string that is in the table or goes in there.
    struct Slot {
        std::uint32_t code; // None where it is not in there
        std::uint32_t& entry;
        std::uint32_t string;

        void Add(std::uint32_t newCode) { entry = string << CodeBits | newCode; }
    };

    static constexpr std::uint32_t None = 0;

    void Clear() { entries_.fill(None); }

    // Codes follow each other where bytes repeat themselves, so only the byte is spread. That is known beforehand, and
    // each step waits for the code of the one before.
    Slot Find(std::uint32_t prefix, std::uint8_t last) {
        const std::uint32_t string = prefix << 8 | last;
        std::size_t place = (last * Spreading) >> (32 - SizeBits) ^ prefix;
        std::uint32_t entry = entries_[place];
        while (entry >> CodeBits != string && entry != None) {
            place = (place + 1) % entries_.size();
            entry = entries_[place];
        }
        return {entry & CodeMask, entries_[place], string};
    }

  private:
    static constexpr unsigned CodeBits = 12;
    static constexpr std::uint32_t CodeMask = (1u << CodeBits) - 1;
    static constexpr unsigned SizeBits = 14;               // four times as many as there are codes
    static constexpr std::uint32_t Spreading = 2654435769; // 2^32 divided by the golden ratio

    std::array<std::uint32_t, 1u << SizeBits> entries_{};
};

// Puts codes behind each other, the most significant bit first. There must be room.
class CodeWriter {
  public:
    explicit CodeWriter(std::uint8_t* to) : to_(to) {}

    void Put(std::uint32_t code, unsigned bits) {
        waiting_ = waiting_ << bits | code;
        waitingBits_ += bits;
        if (waitingBits_ >= 32) {
            for (int i = 0; i < 4; ++i) {
                PutByte();
            }
        }
    }

    // Fills the last byte up with zeros, and gives back where it ends.
    std::uint8_t* End() {
        const unsigned lacking = 7 - (waitingBits_ + 7) % 8;
        waiting_ <<= lacking;
        waitingBits_ += lacking;
        while (waitingBits_ != 0) {
            PutByte();
        }
        return to_;
    }

  private:
    void PutByte() {
        waitingBits_ -= 8;
        *to_++ = static_cast<std::uint8_t>(waiting_ >> waitingBits_);
    }

    std::uint8_t* to_;
    std::uint64_t waiting_ = 0; // those bits and, above them, such as are written
    unsigned waitingBits_ = 0;
};

// Counts codes as readers do, who put a string into their table for every code.
class CodeCount {
  public:
    std::uint32_t Next() const { return next_; }
    unsigned Bits() const { return bits_; }
    bool IsFull() const { return next_ > LastFreeCode; }

    void Add() {
        ++next_;
        bits_ += next_ >> bits_;
    }

    void Clear() { *this = {}; }

  private:
    std::uint32_t next_ = FirstFreeCode;
    unsigned bits_ = LeastBits;
};

} // namespace

void CompressLzw(std::span<const std::uint8_t> bytes, std::vector<std::uint8_t>& to) {
    const auto table = std::make_unique<StringTable>();
    CodeCount count;
    // At most a code for each byte, those that clear the table, and the first and the last.
    const std::size_t before = to.size();
    constexpr std::size_t CodesOfATable = LastFreeCode - FirstFreeCode + 1;
    to.resize(before + ((bytes.size() + bytes.size() / CodesOfATable + 4) * MostBits + 7) / 8);
    CodeWriter writer(to.data() + before);
    const auto endCode = [&] {
        if (count.IsFull()) {
            writer.Put(ClearCode, count.Bits());
            table->Clear();
            count.Clear();
        }
    };
    writer.Put(ClearCode, LeastBits);
    if (!bytes.empty()) {
        std::uint32_t prefix = bytes.front();
        for (const std::uint8_t byte : bytes.subspan(1)) {
            StringTable::Slot slot = table->Find(prefix, byte);
            if (slot.code != StringTable::None) {
                prefix = slot.code;
                continue;
            }
            writer.Put(prefix, count.Bits());
            slot.Add(count.Next());
            count.Add();
            endCode();
            prefix = byte;
        }
        writer.Put(prefix, count.Bits());
        count.Add();
        endCode();
    }
    writer.Put(EndCode, count.Bits());
    to.resize(static_cast<std::size_t>(writer.End() - to.data()));
}

} // namespace imaginglibrary
