// Changes a PNG file in its chunks, and mends their lengths and checksums: otherwise hardly a change would get past
// them. What is deflated is changed as it was before.
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
    content.resize(std::max({most, before, std::size_t{1}}));
    content.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(content.data()), before, content.size()));
}

constexpr std::size_t MostInflatedBytes = std::size_t{1} << 16;

// As far as it can be inflated.
std::string Inflated(const std::string& deflated) {
    std::string result(MostInflatedBytes, '\0');
    z_stream stream{};
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(deflated.data()));
    stream.avail_in = static_cast<uInt>(deflated.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    if (inflateInit(&stream) == Z_OK) {
        inflate(&stream, Z_FINISH);
        inflateEnd(&stream);
    }
    result.resize(stream.total_out);
    return result;
}

std::string Deflated(const std::string& bytes) {
    uLongf length = compressBound(bytes.size());
    std::string result(length, '\0');
    compress2(reinterpret_cast<Bytef*>(result.data()), &length, reinterpret_cast<const Bytef*>(bytes.data()),
              bytes.size(), Z_BEST_COMPRESSION);
    result.resize(length);
    return result;
}

struct Rows {
    std::size_t bytes; // of one, with its filter
    std::size_t count;
};

// What a header promises where nothing is interlaced; nothing for more than an input has the time for.
Rows RowsOf(const std::string& header) {
    constexpr std::size_t HeaderBytes = 13;
    constexpr std::size_t Channels[] = {1, 1, 3, 1, 2, 2, 4, 4};
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(header.data());
    if (header.size() != HeaderBytes || bytes[12] != 0) {
        return {};
    }
    const std::uint32_t width = Number(bytes);
    const std::uint32_t height = Number(bytes + 4);
    const std::size_t rowBytes = 1 + (std::size_t{width} * bytes[8] * Channels[bytes[9] & 7] + 7) / 8;
    return height > 0 && rowBytes <= MostInflatedBytes / height ? Rows{rowBytes, height} : Rows{};
}

// All image data, in one chunk or two, of the length that the header promises.
void MutateImageData(std::vector<Chunk>& chunks, std::minstd_rand& random, std::size_t most) {
    const auto isData = [](const Chunk& chunk) { return chunk.name == "IDAT"; };
    std::string deflated;
    for (const Chunk& chunk : chunks) {
        deflated += isData(chunk) ? chunk.content : std::string();
    }
    std::string bytes = Inflated(deflated);
    const Rows rows = RowsOf(chunks[0].content);
    if (random() % 2 == 0) {
        MutateContent(bytes, most);
    }
    if (rows.count > 0) {
        bytes.resize(rows.bytes * rows.count);
        for (std::size_t changes = random() % 4; changes > 0; --changes) {
            bytes[random() % rows.count * rows.bytes] = static_cast<char>(random() % 6); // one filter is none
        }
    }
    deflated = Deflated(bytes);
    const auto first = std::find_if(chunks.begin(), chunks.end(), isData);
    chunks.erase(std::remove_if(first + 1, chunks.end(), isData), chunks.end());
    first->content = deflated;
    if (random() % 4 == 0) {
        const std::size_t split = random() % deflated.size();
        first->content.resize(split);
        chunks.insert(first + 1, {"IDAT", deflated.substr(split)});
    }
}

// Behind a name and the number of the method.
void MutateDeflated(std::string& content, std::size_t most) {
    constexpr std::size_t MethodBytes = 1;
    const std::size_t nameEnd = content.find('\0');
    if (nameEnd == std::string::npos || content.size() - nameEnd <= 1 + MethodBytes) {
        return;
    }
    const std::size_t start = nameEnd + 1 + MethodBytes;
    std::string bytes = Inflated(content.substr(start));
    MutateContent(bytes, most);
    content = content.substr(0, start) + Deflated(bytes);
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
    case 4:
    case 5:
        MutateContent(chunks[which].content, most);
        break;
    default:
        if (chunks[which].name == "IDAT") {
            MutateImageData(chunks, random, most);
        } else if (chunks[which].name == "zTXt" || chunks[which].name == "iCCP") {
            MutateDeflated(chunks[which].content, most);
        } else {
            MutateContent(chunks[which].content, most);
        }
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
