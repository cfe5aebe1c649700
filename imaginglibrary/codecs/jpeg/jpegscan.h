// The symbols of a baseline JPEG scan, which holds all components of its picture.
#pragma once

#include "imaginglibrary/codecs/jpeg/huffmancode.h"
#include "imaginglibrary/codecs/jpeg/scanbits.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace imaginglibrary {

// How a scan is put together of MCUs, and these of blocks. A block uses two tables of codes: one for its first symbol,
// and the one behind it for the others.
struct ScanLayout {
    std::vector<std::uint8_t> firstTables; // of the blocks of an MCU, in order
    std::uint64_t units = 0;               // the number of MCUs
};

// A symbol, and the bits that it has behind it.
struct ScanSymbol {
    std::uint8_t table;
    std::uint8_t value;
    std::uint16_t bits;

    int BitCount() const { return value & 15; }
};

class ScanReader {
  public:
    // No MCU takes more bytes, were it ten blocks of 64 symbols with 27 bits, and a zero behind each byte.
    static constexpr std::size_t MostUnitBytes = 8192;

    ScanReader(ScanLayout layout, const std::vector<HuffmanCode>& tables)
        : layout_(std::move(layout)), decoders_(tables.begin(), tables.end()) {}

    // Reads MCUs whole and calls `use(symbol)` for each of their symbols. `bytes` go on where the last call has ended.
    // Ends behind the last MCU, and before one that the bytes may not hold whole, unless they are all. Gives back how
    // many of the bytes are no longer needed.
    template <class Use> std::size_t Read(std::span<const std::uint8_t> bytes, bool areAll, const Use& use) {
        ScanBitReader bits = bits_; // for the processor's registers
        bits.SetBytes(bytes);
        while (unitsRead_ < layout_.units && isSound_ && (areAll || bytes.size() - bits.BytesTaken() > MostUnitBytes)) {
            for (const std::uint8_t table : layout_.firstTables) {
                isSound_ = ReadBlock(bits, table, use) && isSound_;
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
    template <class Use>
    [[gnu::always_inline]] bool ReadBlock(ScanBitReader& bits, std::uint8_t firstTable, const Use& use) {
        ScanSymbol symbol{firstTable, 0, 0};
        if (!ReadSymbol(bits, symbol)) {
            return false;
        }
        use(symbol);
        ++symbol.table;
        for (int coefficient = 1; coefficient < 64;) {
            if (!ReadSymbol(bits, symbol)) {
                return false;
            }
            use(symbol);
            const int zeros = symbol.value >> 4;
            const bool isEndOfBlock = symbol.BitCount() == 0 && zeros != 15;
            coefficient = isEndOfBlock ? 64 : coefficient + zeros + 1;
        }
        return true;
    }

    [[gnu::always_inline]] bool ReadSymbol(ScanBitReader& bits, ScanSymbol& symbol) const {
        const auto found = decoders_[symbol.table].Find(bits.Peek());
        bits.Skip(found.length);
        symbol.value = found.value;
        symbol.bits = static_cast<std::uint16_t>(bits.Take(symbol.BitCount()));
        return found.length != 0;
    }

    ScanLayout layout_;
    std::vector<HuffmanDecoder> decoders_;
    ScanBitReader bits_;
    std::uint64_t unitsRead_ = 0;
    bool isSound_ = true;
};

} // namespace imaginglibrary
