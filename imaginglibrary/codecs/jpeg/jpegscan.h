// The symbols of a baseline JPEG scan, which holds all components of its picture.
#pragma once

#include "imaginglibrary/codecs/jpeg/huffmancode.h"
#include "imaginglibrary/codecs/jpeg/scanbits.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace imaginglibrary {

// One for the first symbol of each block, and one for the others.
template <class Table> struct TablePair {
    Table first;
    Table others;
};

// How a scan is put together of MCUs, and these of blocks.
struct ScanLayout {
    std::vector<std::size_t> pairs; // of the blocks of an MCU, in order: the tables that each of them uses
    std::uint64_t units = 0;        // the number of MCUs
};

// A symbol, and the bits that it has behind it.
struct ScanSymbol {
    std::size_t pair;
    bool isFirst; // of its block
    std::uint8_t value;
    std::uint32_t bits;

    int BitCount() const { return value & 15; }
};

class ScanReader {
  public:
    // No MCU takes more bytes, were it ten blocks of 64 symbols with 27 bits, and a zero behind each byte.
    static constexpr std::size_t MostUnitBytes = 8192;

    ScanReader(ScanLayout layout, const std::vector<TablePair<HuffmanCode>>& codes) : layout_(std::move(layout)) {
        for (const TablePair<HuffmanCode>& pair : codes) {
            decoders_.push_back({HuffmanDecoder(pair.first), HuffmanDecoder(pair.others)});
        }
    }

    // Reads MCUs whole and calls `use(symbol)` for each of their symbols. `bytes` go on where the last call has ended.
    // Ends behind the last MCU, and before one that the bytes may not hold whole, unless they are `all`. Gives back how
    // many of the bytes are no longer needed.
    template <class Use> std::size_t Read(std::span<const std::uint8_t> bytes, bool areAll, const Use& use) {
        ScanBitReader bits = bits_; // for the processor's registers
        bits.SetBytes(bytes);
        while (unitsRead_ < layout_.units && isSound_ && (areAll || bytes.size() - bits.BytesTaken() > MostUnitBytes)) {
            for (const std::size_t pair : layout_.pairs) {
                isSound_ = ReadBlock(bits, pair, use) && isSound_;
            }
            ++unitsRead_;
        }
        bits_ = bits;
        return bits.BytesTaken();
    }

    // False once there were bits that are no symbol.
    bool IsSound() const { return isSound_; }

  private:
    // Whether the bits are symbols.
    template <class Use> [[gnu::always_inline]] bool ReadBlock(ScanBitReader& bits, std::size_t pair, const Use& use) {
        const TablePair<HuffmanDecoder>& decoders = decoders_[pair];
        ScanSymbol symbol{pair, true, 0, 0};
        if (!ReadSymbol(bits, decoders.first, symbol)) {
            return false;
        }
        use(symbol);
        symbol.isFirst = false;
        for (int coefficient = 1; coefficient < 64;) {
            if (!ReadSymbol(bits, decoders.others, symbol)) {
                return false;
            }
            use(symbol);
            const int zeros = symbol.value >> 4;
            const bool isEndOfBlock = symbol.BitCount() == 0 && zeros != 15;
            coefficient = isEndOfBlock ? 64 : coefficient + zeros + 1;
        }
        return true;
    }

    [[gnu::always_inline]] static bool ReadSymbol(ScanBitReader& bits, const HuffmanDecoder& decoder,
                                                  ScanSymbol& symbol) {
        const auto found = decoder.Find(bits.Peek());
        bits.Skip(found.length);
        symbol.value = found.value;
        symbol.bits = bits.Take(symbol.BitCount());
        return found.length != 0;
    }

    ScanLayout layout_;
    std::vector<TablePair<HuffmanDecoder>> decoders_;
    ScanBitReader bits_;
    std::uint64_t unitsRead_ = 0;
    bool isSound_ = true;
};

} // namespace imaginglibrary
