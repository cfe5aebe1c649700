// The Huffman codes of JPEG files.
#include "imaginglibrary/codecs/jpeg/huffmancode.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

namespace {

using namespace imaginglibrary;

HuffmanCode CodeFor(std::initializer_list<std::pair<int, std::uint32_t>> frequencies) {
    SymbolFrequencies table{};
    for (const auto& [symbol, frequency] : frequencies) {
        table.at(static_cast<std::size_t>(symbol)) = frequency;
    }
    return MakeHuffmanCode(table);
}

// From one bit on.
std::vector<int> CountsOf(const HuffmanCode& code) {
    return {code.countOfLength.begin() + 1, code.countOfLength.end()};
}

using Bytes = std::vector<std::uint8_t>;

// The table of first coefficients of luminance that the standard suggests (table K.3).
HuffmanCode SuggestedCode() {
    HuffmanCode code;
    code.countOfLength = {0, 0, 1, 5, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0};
    code.symbols = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    return code;
}

TEST(HuffmanCodes, SymbolAloneHasOneBit) {
    const HuffmanCode code = CodeFor({{0xF0, 1}});
    EXPECT_EQ(code.symbols, Bytes{0xF0});
    EXPECT_EQ(CountsOf(code), (std::vector<int>{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(HuffmanCodes, FrequentSymbolsHaveShorterCodes) {
    const HuffmanCode code = CodeFor({{3, 1}, {7, 100}, {200, 2}, {255, 30}});
    EXPECT_EQ(code.symbols, (Bytes{7, 255, 200, 3}));
    EXPECT_EQ(CountsOf(code), (std::vector<int>{1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(HuffmanCodes, SymbolsOfOneFrequencyShareALengthAndStandInOrder) {
    const HuffmanCode code = CodeFor({{9, 50}, {2, 50}, {5, 50}});
    EXPECT_EQ(code.symbols, (Bytes{2, 5, 9}));
    EXPECT_EQ(code.countOfLength[1] + code.countOfLength[2], 3);
}

TEST(HuffmanCodes, AllSymbolsAlikeLeaveTheCodeOfOnesOut) {
    SymbolFrequencies table;
    table.fill(1000);
    const HuffmanCode code = MakeHuffmanCode(table);
    EXPECT_EQ(code.symbols.size(), 256u);
    EXPECT_EQ(CountsOf(code), (std::vector<int>{0, 0, 0, 0, 0, 0, 0, 255, 1, 0, 0, 0, 0, 0, 0, 0}));
}

// Each symbol is twice as frequent as the one before, so the tree has one leaf at each depth, down to 30.
TEST(HuffmanCodes, NoCodeHasMoreThan16Bits) {
    SymbolFrequencies table{};
    for (std::size_t symbol = 0; symbol < 30; ++symbol) {
        table.at(symbol) = 1u << symbol;
    }
    const HuffmanCode code = MakeHuffmanCode(table);
    ASSERT_EQ(code.symbols.size(), 30u);
    EXPECT_EQ(code.symbols.front(), 29u);
    EXPECT_EQ(code.symbols.back(), 0u);
    EXPECT_EQ(CountsOf(code), (std::vector<int>{1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0, 1, 1, 2, 15}));
}

TEST(HuffmanCodes, BitsAreThoseOfTheStandard) {
    const auto bits = BitsOfSymbols(SuggestedCode());
    EXPECT_EQ(bits[0].bits, 0b00);
    EXPECT_EQ(bits[0].length, 2);
    EXPECT_EQ(bits[1].bits, 0b010);
    EXPECT_EQ(bits[5].bits, 0b110);
    EXPECT_EQ(bits[5].length, 3);
    EXPECT_EQ(bits[6].bits, 0b1110);
    EXPECT_EQ(bits[11].bits, 0b111111110);
    EXPECT_EQ(bits[11].length, 9);
    EXPECT_EQ(bits[12].length, 0);
}

TEST(HuffmanCodes, SymbolsAreFoundByTheirBits) {
    const HuffmanDecoder decoder(SuggestedCode());
    for (const std::uint32_t rest : {0u, 0xFFFFu}) {
        EXPECT_EQ(decoder.Find(rest >> 2).value, 0);
        EXPECT_EQ(decoder.Find(rest >> 2).length, 2);
        EXPECT_EQ(decoder.Find(0xC000 | rest >> 3).value, 5);
        EXPECT_EQ(decoder.Find(0xFF00 | rest >> 9).value, 11);
        EXPECT_EQ(decoder.Find(0xFF00 | rest >> 9).length, 9);
    }
    EXPECT_EQ(decoder.Find(0xFF80).length, 0);
    EXPECT_EQ(decoder.Find(0xFFFF).length, 0);
}

TEST(HuffmanCodes, CodesOf16BitsAreFound) {
    SymbolFrequencies table{};
    for (std::size_t symbol = 0; symbol < 20; ++symbol) {
        table.at(symbol) = 1u << symbol;
    }
    const HuffmanCode code = MakeHuffmanCode(table);
    const auto bits = BitsOfSymbols(code);
    const HuffmanDecoder decoder(code);
    for (std::size_t symbol = 0; symbol < 20; ++symbol) {
        const auto found =
            decoder.Find(static_cast<std::uint32_t>(bits.at(symbol).bits) << (16 - bits.at(symbol).length));
        EXPECT_EQ(found.value, symbol);
        EXPECT_EQ(found.length, bits.at(symbol).length);
    }
    EXPECT_EQ(bits[0].length, 16);
}

} // namespace
