// The compressed bytes of a PNG picture, which lie in one IDAT chunk or several.
#pragma once

#include "imaginglibrary/files/inputfile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace imaginglibrary {

class PngImageChunks {
  public:
    // `offset` is that of the first chunk.
    PngImageChunks(std::shared_ptr<const InputFile> file, std::uint64_t offset);

    // Fills `to` with what comes next, from several chunks where they are short, and gives back how many bytes that
    // is: fewer where the chunks end or one of them is broken.
    std::size_t Read(std::span<std::uint8_t> to);

    // Reads the chunk at hand to its end. Whether all chunks so far are whole and have the right checksums.
    bool AreSound();

  private:
    bool BeginChunk();
    std::size_t ReadContent(std::span<std::uint8_t> to);
    void EndChunk();
    void Break();

    ByteReader bytes_;
    bool isAtEnd_ = false;
    bool isBroken_ = false;
    std::size_t left_ = 0; // of the chunk at hand
    std::uint32_t checksum_ = 0;
};

} // namespace imaginglibrary
