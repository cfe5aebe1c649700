// EXIF blocks in either byte order, put together byte by byte.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tests {

// An entry of a directory; the value is given in the block's byte order.
struct ExifField {
    unsigned tag;
    unsigned type;
    unsigned count;
    std::string value;
};

struct ExifSpec {
    bool isBigEndian = false;
    std::vector<ExifField> main = {};
    std::vector<ExifField> exif = {};
    std::vector<ExifField> gps = {};
    std::vector<ExifField> interop = {};
    std::vector<ExifField> thumbnail = {};
    std::string thumbnailData = {};
};

inline std::string NumberBytes(bool isBigEndian, std::uint64_t number, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) {
        const int shift = 8 * (isBigEndian ? bytes - 1 - i : i);
        text.push_back(static_cast<char>(number >> shift));
    }
    return text;
}

// The numbers one behind the other, `bytes` long each.
inline std::string NumbersBytes(bool isBigEndian, const std::vector<std::uint64_t>& numbers, int bytes) {
    std::string text;
    for (const std::uint64_t number : numbers) {
        text += NumberBytes(isBigEndian, number, bytes);
    }
    return text;
}

inline std::size_t DirectoryBytes(const std::vector<ExifField>& fields) {
    std::size_t bytes = 2 + 12 * fields.size() + 4;
    for (const ExifField& field : fields) {
        bytes += field.value.size() > 4 ? (field.value.size() + 1) / 2 * 2 : 0;
    }
    return bytes;
}

// A directory that stands at `start`, its values behind it.
inline std::string MakeDirectory(bool isBigEndian, const std::vector<ExifField>& fields, std::size_t start,
                                 std::size_t next) {
    std::string head = NumberBytes(isBigEndian, fields.size(), 2);
    std::string values;
    const std::size_t valuesStart = start + 2 + 12 * fields.size() + 4;
    for (const ExifField& field : fields) {
        head += NumberBytes(isBigEndian, field.tag, 2) + NumberBytes(isBigEndian, field.type, 2) +
                NumberBytes(isBigEndian, field.count, 4);
        if (field.value.size() <= 4) {
            head += field.value + std::string(4 - field.value.size(), '\0');
            continue;
        }
        head += NumberBytes(isBigEndian, valuesStart + values.size(), 4);
        values += field.value + std::string(field.value.size() % 2, '\0');
    }
    return head + NumberBytes(isBigEndian, next, 4) + values;
}

inline std::string MakeExif(const ExifSpec& spec) {
    const bool isBig = spec.isBigEndian;
    const auto pointer = [&](unsigned tag, std::size_t to) { return ExifField{tag, 4, 1, NumberBytes(isBig, to, 4)}; };
    auto main = spec.main;
    auto exif = spec.exif;
    auto thumbnail = spec.thumbnail;
    const bool hasExif = !exif.empty() || !spec.interop.empty();
    const bool hasThumbnail = !spec.thumbnailData.empty();
    const std::size_t mainEntries = main.size() + (hasExif ? 1 : 0) + (spec.gps.empty() ? 0 : 1);
    const std::size_t exifStart = 8 + DirectoryBytes(main) + 12 * (mainEntries - main.size());
    const std::size_t exifBytes = hasExif ? DirectoryBytes(exif) + (spec.interop.empty() ? 0 : 12) : 0;
    const std::size_t gpsStart = exifStart + exifBytes;
    const std::size_t interopStart = gpsStart + (spec.gps.empty() ? 0 : DirectoryBytes(spec.gps));
    const std::size_t thumbnailStart = interopStart + (spec.interop.empty() ? 0 : DirectoryBytes(spec.interop));
    if (hasExif) {
        main.push_back(pointer(0x8769, exifStart));
    }
    if (!spec.gps.empty()) {
        main.push_back(pointer(0x8825, gpsStart));
    }
    if (!spec.interop.empty()) {
        exif.push_back(pointer(0xA005, interopStart));
    }
    if (hasThumbnail) {
        const std::size_t dataStart = thumbnailStart + DirectoryBytes(thumbnail) + 24;
        thumbnail.push_back(pointer(0x0201, dataStart));
        thumbnail.push_back(pointer(0x0202, spec.thumbnailData.size()));
    }
    std::string block = isBig ? std::string("MM\0\x2A", 4) : std::string("II\x2A\0", 4);
    block += NumberBytes(isBig, 8, 4) + MakeDirectory(isBig, main, 8, hasThumbnail ? thumbnailStart : 0);
    block += hasExif ? MakeDirectory(isBig, exif, exifStart, 0) : "";
    block += spec.gps.empty() ? "" : MakeDirectory(isBig, spec.gps, gpsStart, 0);
    block += spec.interop.empty() ? "" : MakeDirectory(isBig, spec.interop, interopStart, 0);
    return block + (hasThumbnail ? MakeDirectory(isBig, thumbnail, thumbnailStart, 0) + spec.thumbnailData : "");
}

// The block as a JPEG file's marker has it.
inline std::string ExifMarker(const std::string& block) {
    const std::string content = std::string("Exif\0\0", 6) + block;
    return "\xFF\xE1" + NumberBytes(true, content.size() + 2, 2) + content;
}

} // namespace tests
