// Decodes the compressed pixels of a GIF image.
#pragma once

#include "imaginglibrary/files/inputfile.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace imaginglibrary {

// LZW in blocks of up to 255 bytes. Belongs to one thread at a time.
class GifPixels {
  public:
    static constexpr unsigned MostCodeBits = 12;

    // Why there are no more indices.
    enum class End {
        Marked, // the file says that the data end here
        Cut,    // the file ends
        Broken  // a code stands for nothing
    };

    // `reader` stands at the length of the first block, and must outlive this. A code for one pixel has `pixelBits`,
    // fewer than MostCodeBits; eight are enough, but more are met with.
    GifPixels(ByteReader& reader, unsigned pixelBits);

    // The next `count` indices, or fewer where the data end; then GetEnd tells why. Reads no further than it must.
    std::size_t Read(std::uint8_t* indices, std::size_t count);
    End GetEnd() const { return end_; }

  private:
    static constexpr std::size_t Codes = std::size_t{1} << MostCodeBits;
    static constexpr unsigned NoCode = Codes;

    bool ReadCode(unsigned& code);
    bool ReadBlock();
    bool TakeCode(unsigned code);
    void Clear();
    void Add(unsigned prefix, std::uint8_t last);
    void Spell(unsigned code, std::uint8_t* to) const;
    std::size_t DeliverWaiting(std::uint8_t* indices, std::size_t count);

    ByteReader& reader_;
    unsigned clearCode_;
    unsigned pixelBits_;

    std::array<std::uint8_t, 255> block_;
    std::size_t blockBytes_ = 0;
    std::size_t nextByte_ = 0;
    std::uint32_t bits_ = 0;
    unsigned bitCount_ = 0;
    End end_ = End::Marked;
    bool isAtEnd_ = false;

    // A code stands for the string of its prefix and one index more.
    std::array<std::uint16_t, Codes> prefixes_{}; // 0 for a single index
    std::array<std::uint16_t, Codes> lengths_;
    std::array<std::uint8_t, Codes> firsts_;
    std::array<std::uint8_t, Codes> lasts_;
    unsigned nextCode_ = 0;
    unsigned codeBits_ = 0;
    unsigned previous_ = NoCode;

    // A string that did not fit the caller's memory, and which part of it is still to be delivered.
    std::array<std::uint8_t, Codes> waiting_;
    std::size_t waitingStart_ = 0;
    std::size_t waitingEnd_ = 0;
};

} // namespace imaginglibrary
