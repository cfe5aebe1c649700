// Reads the header and palette of a device-independent bitmap, in all its historic lengths.
#include "imaginglibrary/codecs/dib/dib.h"
#include "imaginglibrary/core/bytes.h"
#include "imaginglibrary/core/limits.h"

#include <algorithm>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr std::uint32_t CoreHeaderBytes = 12;
constexpr std::uint32_t ShortestInfoHeaderBytes = 16;
constexpr std::uint32_t InfoHeaderBytes = 40;
constexpr std::uint32_t WithMasksHeaderBytes = 52;
constexpr std::uint32_t WithAlphaMaskHeaderBytes = 56;
constexpr std::uint32_t LongestHeaderBytes = 124;
constexpr std::uint32_t Os2HeaderBytes = 64;
constexpr double MetresPerInch = 0.0254;

struct RawHeader {
    std::uint32_t length = 0;
    std::array<std::uint8_t, LongestHeaderBytes> bytes{}; // zeros where the header is shorter

    std::uint16_t At16(std::size_t offset) const { return LittleEndian16(&bytes[offset]); }
    std::uint32_t At32(std::size_t offset) const { return LittleEndian32(&bytes[offset]); }
};

Result<RawHeader> ReadRawHeader(const InputFile& file, std::uint64_t offset) {
    RawHeader header;
    if (const Status status = file.ReadExactlyAt(offset, header.bytes.data(), 4); status != Status::Ok) {
        return status;
    }
    header.length = header.At32(0);
    if (header.length != CoreHeaderBytes &&
        (header.length < ShortestInfoHeaderBytes || header.length > LongestHeaderBytes)) {
        return UndecodableContent;
    }
    if (const Status status = file.ReadExactlyAt(offset, header.bytes.data(), header.length); status != Status::Ok) {
        return status;
    }
    return header;
}

bool IsKnownLayout(const Dib& dib) {
    switch (dib.compression) {
    case DibCompression::None:
        return dib.bitsPerPixel == 1 || dib.bitsPerPixel == 4 || dib.bitsPerPixel == 8 || dib.bitsPerPixel == 16 ||
               dib.bitsPerPixel == 24 || dib.bitsPerPixel == 32;
    case DibCompression::Rle8:
        return dib.bitsPerPixel == 8;
    case DibCompression::Rle4:
        return dib.bitsPerPixel == 4;
    case DibCompression::BitFields:
    case DibCompression::AlphaBitFields:
        return dib.bitsPerPixel == 16 || dib.bitsPerPixel == 32;
    }
    return false;
}

void ReadCoreFields(const RawHeader& header, Dib& dib) {
    dib.width = header.At16(4);
    dib.height = header.At16(6);
    dib.bitsPerPixel = header.At16(10);
}

void ReadInfoFields(const RawHeader& header, Dib& dib) {
    dib.width = header.At32(4);
    const std::uint32_t height = header.At32(8);
    dib.topDown = (height & 0x80000000) != 0;
    dib.height = dib.topDown ? 0u - height : height;
    dib.bitsPerPixel = header.At16(14);
    dib.compression = static_cast<DibCompression>(header.At32(16));
    // OS/2 gives the numbers 3 and 4 to compressions of its own.
    if (header.length == Os2HeaderBytes && header.At32(16) > static_cast<std::uint32_t>(DibCompression::Rle4)) {
        dib.compression = static_cast<DibCompression>(~0u);
    }
    dib.resolution.horizontal = header.At32(24) * MetresPerInch;
    dib.resolution.vertical = header.At32(28) * MetresPerInch;
}

// The masks stand in the header itself from its fourth form on, and behind it before.
Status ReadMasks(const InputFile& file, std::uint64_t offset, const RawHeader& header, Dib& dib) {
    if (dib.compression != DibCompression::BitFields && dib.compression != DibCompression::AlphaBitFields) {
        return Status::Ok;
    }
    if (header.length >= WithMasksHeaderBytes) {
        for (std::size_t i = 0; i < (header.length >= WithAlphaMaskHeaderBytes ? 4u : 3u); ++i) {
            dib.masks[i] = header.At32(InfoHeaderBytes + 4 * i);
        }
        return Status::Ok;
    }
    const std::size_t count = dib.compression == DibCompression::AlphaBitFields ? 4 : 3;
    std::array<std::uint8_t, 16> bytes{};
    if (const Status status = file.ReadExactlyAt(offset + header.length, bytes.data(), 4 * count);
        status != Status::Ok) {
        return status;
    }
    for (std::size_t i = 0; i < count; ++i) {
        dib.masks[i] = LittleEndian32(&bytes[4 * i]);
    }
    dib.endOfPalette += 4 * count;
    return Status::Ok;
}

// The palette is as long as the header says, wherever the pixels are said to begin: they may lie in it.
Status ReadPalette(const InputFile& file, const RawHeader& header, Dib& dib) {
    if (dib.bitsPerPixel > 8) {
        return Status::Ok;
    }
    const std::size_t entryBytes = header.length == CoreHeaderBytes ? 3 : 4;
    const std::uint32_t most = 1u << dib.bitsPerPixel;
    const std::uint32_t claimed = header.length == CoreHeaderBytes ? 0 : header.At32(32);
    const std::size_t count = claimed == 0 ? most : std::min(claimed, most);
    std::vector<std::uint8_t> bytes(count * entryBytes);
    const auto read = file.ReadAt(dib.endOfPalette, bytes.data(), bytes.size());
    if (!read.Ok()) {
        return read.GetStatus();
    }
    for (std::size_t i = 0; i < *read / entryBytes; ++i) {
        const std::uint8_t* entry = &bytes[i * entryBytes];
        dib.palette.push_back(MakeColor(entry[2], entry[1], entry[0]));
    }
    dib.endOfPalette += bytes.size();
    return Status::Ok;
}

} // namespace

Result<Dib> ReadDibHeader(const InputFile& file, std::uint64_t offset) {
    const auto header = ReadRawHeader(file, offset);
    if (!header.Ok()) {
        return header.GetStatus();
    }
    Dib dib;
    if (header->length == CoreHeaderBytes) {
        ReadCoreFields(*header, dib);
    } else {
        ReadInfoFields(*header, dib);
    }
    if (!IsKnownLayout(dib)) {
        return UndecodableContent;
    }
    if (!IsAcceptableSize(dib.width, dib.height)) {
        return Status::InvalidParameter;
    }
    dib.endOfPalette = offset + header->length;
    if (const Status status = ReadMasks(file, offset, *header, dib); status != Status::Ok) {
        return status;
    }
    if (const Status status = ReadPalette(file, *header, dib); status != Status::Ok) {
        return status;
    }
    return dib;
}

} // namespace imaginglibrary
