// The Huffman codes of JPEG files: the best one for given frequencies, and the bits of each symbol.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace imaginglibrary {

// As a DHT segment has it. Codes of one length follow each other as numbers, and the shorter ones come first.
struct HuffmanCode {
    static constexpr int LongestLength = 16;

    std::array<std::uint8_t, LongestLength + 1> countOfLength{}; // how many codes have this many bits; none has 0
    std::vector<std::uint8_t> symbols;                           // in the order of their codes
};

// How often each symbol occurs; all of it together fits in 32 bits.
using SymbolFrequencies = std::array<std::uint32_t, 256>;

// A code for the symbols that occur, of which there must be one: those that occur more often have shorter codes. No
// code is longer than 16 bits or consists of ones alone. The procedure of the JPEG standard, ISO/IEC 10918-1, K.2.
HuffmanCode MakeHuffmanCode(const SymbolFrequencies& frequencies);

struct SymbolBits {
    std::uint16_t bits = 0;
    std::uint8_t length = 0; // 0 for a symbol without a code
};

// The bits of every symbol.
std::array<SymbolBits, 256> BitsOfSymbols(const HuffmanCode& code);

// Finds the symbol that bits begin with.
class HuffmanDecoder {
  public:
    struct Symbol {
        std::uint8_t value = 0;
        std::uint8_t length = 0; // of its code; 0 where no code fits
    };

    explicit HuffmanDecoder(const HuffmanCode& code);

    // `next16` are the next 16 bits, the first one on top.
    Symbol Find(std::uint32_t next16) const {
        const Symbol symbol = ofShortCodes_[next16 >> (HuffmanCode::LongestLength - ShortLength)];
        return symbol.length != 0 ? symbol : FindLong(next16);
    }

  private:
    static constexpr int ShortLength = 10;

    struct LongCodes {
        std::uint32_t end = 0;   // the least 16 bits that are above all codes of a length and the shorter ones
        std::uint32_t first = 0; // what its first code begins 16 bits with
        std::size_t index = 0;   // of its first symbol
    };

    Symbol FindLong(std::uint32_t next16) const;

    // By the first bits, for these tables stay in the nearest cache; length 0 where there are more, or no code at all.
    std::array<Symbol, 1 << ShortLength> ofShortCodes_{};
    std::array<LongCodes, HuffmanCode::LongestLength + 1> longCodes_{}; // by length, from ShortLength + 1 on
    std::vector<std::uint8_t> symbols_;
};

} // namespace imaginglibrary
