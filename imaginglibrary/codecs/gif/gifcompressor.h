// Turns indices into the codes of GIF, and these into the blocks of a file.
// Source: GIF89a, appendix F ("Variable-Length-Code LZW Compression").
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace imaginglibrary {

// Compresses one image: Add* Finish. After a call that gives back false, none may follow.
class GifCompressor {
  public:
    // Takes a block: its length, 1 to 255, and as many bytes. False where it cannot be written.
    using PutBlock = std::function<bool(const std::uint8_t* block)>;

    // `indexBits` (2 to 8) is what the file calls the LZW minimum code size.
    GifCompressor(unsigned indexBits, PutBlock put);

    // Compresses the next indices, each below 2^indexBits. False where a block cannot be written.
    bool Add(std::span<const std::uint8_t> indices);

    // Puts what was held back, and the end code. The empty block that closes an image is left to the caller.
    bool Finish();

  private:
    bool PutClear();
    bool Put(unsigned code);
    bool PutBlockOf(unsigned count);

    static constexpr unsigned BlockBytes = 255; // at most

    unsigned indexBits_;
    PutBlock put_;

    // Strings of pixels that have codes, found by hashing: in 20 bits the code of all pixels but the last, and the last
    // index; below them the string's own code.
    std::vector<std::uint32_t> codes_;
    unsigned next_ = 0; // code to be given out
    unsigned bits_;     // that a code takes
    bool isBegun_ = false;
    unsigned known_ = 0; // code of the pixels that were added and not put

    std::uint64_t waiting_ = 0;                            // bits, the first one lowest
    unsigned waitingBits_ = 0;                             // less than 32
    std::array<std::uint8_t, 1 + BlockBytes + 7> bytes_{}; // behind the one that is to count them
    unsigned count_ = 0;                                   // less than BlockBytes
};

} // namespace imaginglibrary
