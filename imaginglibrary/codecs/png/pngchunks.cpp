// The compressed bytes of a PNG picture, which lie in one IDAT chunk or several.
#include "imaginglibrary/codecs/png/pngchunks.h"

#include "imaginglibrary/core/bytes.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include <zlib.h>

namespace imaginglibrary {

namespace {

constexpr std::uint8_t Name[] = {'I', 'D', 'A', 'T'};

std::uint32_t Checksum(std::uint32_t before, std::span<const std::uint8_t> bytes) {
    return static_cast<std::uint32_t>(crc32_z(before, bytes.data(), bytes.size()));
}

} // namespace

PngImageChunks::PngImageChunks(std::shared_ptr<const InputFile> file, std::uint64_t offset)
    : bytes_(std::move(file), offset) {}

std::size_t PngImageChunks::Read(std::span<std::uint8_t> to) {
    std::size_t done = 0;
    while (done < to.size() && (left_ != 0 || BeginChunk())) {
        done += ReadContent(to.subspan(done));
    }
    return done;
}

bool PngImageChunks::AreSound() {
    std::array<std::uint8_t, 4096> passedOver;
    while (left_ != 0) {
        ReadContent(passedOver);
    }
    return !isBroken_;
}

// False where there is none. A chunk that was begun may be empty.
bool PngImageChunks::BeginChunk() {
    std::array<std::uint8_t, 8> head; // length and name
    if (isAtEnd_ || bytes_.Read(head.data(), head.size()) != head.size() ||
        !std::equal(std::begin(Name), std::end(Name), head.begin() + 4)) {
        isAtEnd_ = true;
        return false;
    }
    left_ = BigEndian32(head.data());
    checksum_ = Checksum(0, Name);
    return true;
}

std::size_t PngImageChunks::ReadContent(std::span<std::uint8_t> to) {
    const auto content = to.first(std::min(left_, to.size()));
    if (bytes_.Read(content.data(), content.size()) != content.size()) {
        Break();
        return 0;
    }
    checksum_ = Checksum(checksum_, content);
    left_ -= content.size();
    if (left_ == 0) {
        EndChunk();
    }
    return content.size();
}

void PngImageChunks::EndChunk() {
    std::array<std::uint8_t, 4> checksum;
    if (bytes_.Read(checksum.data(), checksum.size()) != checksum.size() || BigEndian32(checksum.data()) != checksum_) {
        Break();
    }
}

void PngImageChunks::Break() {
    isBroken_ = true;
    isAtEnd_ = true;
    left_ = 0;
}

} // namespace imaginglibrary
