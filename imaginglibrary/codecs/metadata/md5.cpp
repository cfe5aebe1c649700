// The MD5 digest, by which XMP names its parts (RFC 1321).
#include "imaginglibrary/codecs/metadata/md5.h"

#include "imaginglibrary/core/bytes.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

namespace imaginglibrary {

namespace {

constexpr std::size_t BlockBytes = 64;

using State = std::array<std::uint32_t, 4>;

// The whole part of the sine of each step, in 32 bits.
std::array<std::uint32_t, 64> MakeSines() {
    std::array<std::uint32_t, 64> sines{};
    for (std::size_t i = 0; i < sines.size(); ++i) {
        sines[i] = static_cast<std::uint32_t>(std::floor(std::fabs(std::sin(static_cast<double>(i + 1))) * 0x1p32));
    }
    return sines;
}

struct Mixed {
    std::uint32_t value;
    std::size_t word; // of the block
};

Mixed Mix(std::size_t step, const State& s) {
    switch (step / 16) {
    case 0:
        return {(s[1] & s[2]) | (~s[1] & s[3]), step};
    case 1:
        return {(s[3] & s[1]) | (~s[3] & s[2]), 5 * step + 1};
    case 2:
        return {s[1] ^ s[2] ^ s[3], 3 * step + 5};
    default:
        return {s[2] ^ (s[1] | ~s[3]), 7 * step};
    }
}

void AddBlock(const std::uint8_t* block, State& state) {
    static const auto Sines = MakeSines();
    constexpr int Shifts[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};
    State s = state;
    for (std::size_t step = 0; step < Sines.size(); ++step) {
        const Mixed mixed = Mix(step, s);
        const std::uint32_t sum = s[0] + mixed.value + Sines[step] + LittleEndian32(block + 4 * (mixed.word % 16));
        s = {s[3], s[1] + std::rotl(sum, Shifts[step / 16][step % 4]), s[1], s[2]};
    }
    for (std::size_t i = 0; i < state.size(); ++i) {
        state[i] += s[i];
    }
}

} // namespace

std::string Md5Digits(std::string_view data) {
    State state = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476};
    const std::size_t whole = data.size() / BlockBytes * BlockBytes;
    for (std::size_t at = 0; at < whole; at += BlockBytes) {
        AddBlock(reinterpret_cast<const std::uint8_t*>(data.data()) + at, state);
    }
    std::string rest(data.substr(whole));
    rest.push_back('\x80');
    rest.resize((rest.size() + 8 + BlockBytes - 1) / BlockBytes * BlockBytes - 8, '\0');
    const std::uint64_t bits = std::uint64_t{data.size()} * 8;
    for (int shift = 0; shift < 64; shift += 8) {
        rest.push_back(static_cast<char>(bits >> shift));
    }
    for (std::size_t at = 0; at < rest.size(); at += BlockBytes) {
        AddBlock(reinterpret_cast<const std::uint8_t*>(rest.data()) + at, state);
    }
    std::string digits;
    for (const std::uint32_t number : state) {
        for (int shift = 0; shift < 32; shift += 8) {
            constexpr char Digits[] = "0123456789ABCDEF";
            const unsigned byte = number >> shift & 0xFF;
            digits += {Digits[byte >> 4], Digits[byte & 15]};
        }
    }
    return digits;
}

} // namespace imaginglibrary
