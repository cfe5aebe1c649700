// The Huffman codes of JPEG files: the best one for given frequencies, and the bits of each symbol.
#include "imaginglibrary/codecs/jpeg/huffmancode.h"

#include <algorithm>
#include <cstddef>

namespace imaginglibrary {

namespace {

constexpr std::size_t Symbols = std::tuple_size_v<SymbolFrequencies>;
constexpr std::size_t AllOnes = Symbols; // stands for the code that must not be given away

// By symbol, that for the code of ones alone among them; 0 for one that does not occur.
using Depths = std::array<std::size_t, Symbols + 1>;

// How many codes there are of each length, at most one for each symbol.
using Counts = std::array<int, Symbols + 2>;

struct Tree {
    std::uint64_t weight;
    std::vector<std::size_t> symbols;
};

Tree TakeLightest(std::vector<Tree>& trees) {
    const auto lightest =
        std::min_element(trees.begin(), trees.end(), [](const Tree& a, const Tree& b) { return a.weight < b.weight; });
    Tree taken = std::move(*lightest);
    trees.erase(lightest);
    return taken;
}

// How deep each symbol lies in the Huffman tree.
Depths DepthsOf(const SymbolFrequencies& frequencies) {
    std::vector<Tree> trees{{1, {AllOnes}}};
    for (std::size_t symbol = 0; symbol < Symbols; ++symbol) {
        if (frequencies[symbol] != 0) {
            trees.push_back({frequencies[symbol], {symbol}});
        }
    }
    Depths depths{};
    while (trees.size() > 1) {
        Tree joined = TakeLightest(trees);
        const Tree other = TakeLightest(trees);
        joined.weight += other.weight;
        joined.symbols.insert(joined.symbols.end(), other.symbols.begin(), other.symbols.end());
        for (const std::size_t symbol : joined.symbols) {
            ++depths[symbol];
        }
        trees.push_back(std::move(joined));
    }
    return depths;
}

// Takes two of the longest codes at a time: their prefix goes to one of them, and the other one shares the place of the
// longest code that is at least two bits shorter.
void LimitLengths(Counts& counts) {
    for (std::size_t length = counts.size() - 1; length > HuffmanCode::LongestLength; --length) {
        while (counts[length] > 0) {
            std::size_t shorter = length - 2;
            while (counts[shorter] == 0) {
                --shorter;
            }
            counts[length] -= 2;
            counts[length - 1] += 1;
            counts[shorter + 1] += 2;
            counts[shorter] -= 1;
        }
    }
}

} // namespace

HuffmanCode MakeHuffmanCode(const SymbolFrequencies& frequencies) {
    const Depths depths = DepthsOf(frequencies);
    Counts counts{};
    for (const std::size_t depth : depths) {
        counts[depth] += depth != 0 ? 1 : 0;
    }
    LimitLengths(counts);
    HuffmanCode code;
    std::size_t longest = 0;
    for (std::size_t length = 1; length <= HuffmanCode::LongestLength; ++length) {
        code.countOfLength[length] = static_cast<std::uint8_t>(counts[length]);
        longest = counts[length] != 0 ? length : longest;
    }
    --code.countOfLength[longest]; // the last code of the longest ones is that of ones alone
    for (std::size_t symbol = 0; symbol < Symbols; ++symbol) {
        if (frequencies[symbol] != 0) {
            code.symbols.push_back(static_cast<std::uint8_t>(symbol));
        }
    }
    std::stable_sort(code.symbols.begin(), code.symbols.end(),
                     [&](std::uint8_t a, std::uint8_t b) { return depths[a] < depths[b]; });
    return code;
}

std::array<SymbolBits, 256> BitsOfSymbols(const HuffmanCode& code) {
    std::array<SymbolBits, 256> table{};
    std::uint32_t next = 0;
    auto symbol = code.symbols.begin();
    for (std::size_t length = 1; length <= HuffmanCode::LongestLength; ++length, next <<= 1) {
        for (int i = 0; i < code.countOfLength[length] && symbol != code.symbols.end(); ++i) {
            table[*symbol++] = {static_cast<std::uint16_t>(next++), static_cast<std::uint8_t>(length)};
        }
    }
    return table;
}

HuffmanDecoder::HuffmanDecoder(const HuffmanCode& code) : symbols_(code.symbols) {
    std::uint32_t next = 0; // 16 bits that the next code begins
    std::size_t index = 0;
    for (int length = 1; length <= HuffmanCode::LongestLength; ++length) {
        const std::size_t count =
            std::min<std::size_t>(code.countOfLength[static_cast<std::size_t>(length)], symbols_.size() - index);
        const std::uint32_t step = 1U << (HuffmanCode::LongestLength - length);
        const auto end = static_cast<std::uint32_t>(next + count * step);
        longCodes_[static_cast<std::size_t>(length)] = {end, next, index};
        for (std::uint32_t at = next; length <= ShortLength && at < end;
             at += 1U << (HuffmanCode::LongestLength - ShortLength)) {
            ofShortCodes_[at >> (HuffmanCode::LongestLength - ShortLength)] = {symbols_[index + (at - next) / step],
                                                                               static_cast<std::uint8_t>(length)};
        }
        next = end;
        index += count;
    }
}

HuffmanDecoder::Symbol HuffmanDecoder::FindLong(std::uint32_t next16) const {
    for (int length = ShortLength + 1; length <= HuffmanCode::LongestLength; ++length) {
        const LongCodes& codes = longCodes_[static_cast<std::size_t>(length)];
        if (next16 < codes.end) {
            return {symbols_[codes.index + ((next16 - codes.first) >> (HuffmanCode::LongestLength - length))],
                    static_cast<std::uint8_t>(length)};
        }
    }
    return {};
}

} // namespace imaginglibrary
