// Changes a PNG file in its chunks, and mends their lengths and checksums: otherwise hardly a change would get past
// them.
#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* bytes, std::size_t count, std::size_t most);

namespace {

constexpr std::size_t SignatureBytes = 8;
constexpr std::size_t AroundContent = 12; // length, name and checksum

struct Chunk {
    std::string name;
    std::string content;
};

std::uint32_t Number(const std::uint8_t* bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 | bytes[3];
}

void PutNumber(std::string& to, std::uint32_t number) {
    for (const int shift : {24, 16, 8, 0}) {
        to.push_back(static_cast<char>(number >> shift));
    }
}

// One that runs over the end has what is there.
std::vector<Chunk> ChunksOf(const std::uint8_t* bytes, std::size_t count) {
    std::vector<Chunk> chunks;
    for (std::size_t at = SignatureBytes; at + AroundContent <= count;) {
        const std::size_t length = std::min<std::size_t>(Number(bytes + at), count - at - AroundContent);
        const auto* text = reinterpret_cast<const char*>(bytes + at);
        chunks.push_back({std::string(text + 4, 4), std::string(text + 8, length)});
        at += AroundContent + length;
    }
    return chunks;
}

std::string FileOf(const std::vector<Chunk>& chunks) {
    std::string file("\x89PNG\r\n\x1A\n");
    for (const Chunk& chunk : chunks) {
        const std::string named = chunk.name + chunk.content;
        PutNumber(file, static_cast<std::uint32_t>(chunk.content.size()));
        file += named;
        PutNumber(file, static_cast<std::uint32_t>(
                            crc32(0, reinterpret_cast<const Bytef*>(named.data()), static_cast<uInt>(named.size()))));
    }
    return file;
}

void MutateContent(std::string& content, std::size_t most) {
    const std::size_t before = content.size();
    content.resize(std::max(most, before));
    content.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(content.data()), before, content.size()));
}

void MutateChunks(std::vector<Chunk>& chunks, std::minstd_rand& random, std::size_t most) {
    const auto any = [&](std::size_t count) { return static_cast<std::size_t>(random()) % count; };
    const std::size_t which = any(chunks.size());
    const auto at = [&](std::size_t place) { return chunks.begin() + static_cast<std::ptrdiff_t>(place); };
    constexpr const char* Names[] = {"IDAT", "PLTE", "tRNS", "zTXt", "iTXt", "tEXt", "iCCP",
                                     "eXIf", "pHYs", "gAMA", "cHRM", "sRGB", "hIST", "sBIT"};
    switch (any(8)) {
    case 0:
        chunks.insert(at(which), chunks[any(chunks.size())]);
        break;
    case 1:
        chunks.erase(at(which));
        break;
    case 2:
        std::swap(chunks[which], chunks[any(chunks.size())]);
        break;
    case 3:
        chunks[which].name = Names[any(std::size(Names))];
        break;
    default:
        MutateContent(chunks[which].content, most);
        break;
    }
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t count, std::size_t most,
                                               unsigned seed) {
    std::minstd_rand random(seed);
    auto chunks = ChunksOf(bytes, count);
    constexpr unsigned Blind = 16; // one change in so many does not care for chunks
    if (chunks.empty() || random() % Blind == 0) {
        return LLVMFuzzerMutate(bytes, count, most);
    }
    MutateChunks(chunks, random, most - std::min(most, count));
    const std::string file = FileOf(chunks);
    const std::size_t length = std::min(file.size(), most);
    std::memcpy(bytes, file.data(), length);
    return length;
}
