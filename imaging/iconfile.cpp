// The bytes of a Windows icon file.
#include "imaging/iconfile.h"

namespace lumbrix {

namespace {

constexpr std::size_t DirectoryBytes = 6;
constexpr std::size_t EntryBytes = 16;
constexpr std::uint32_t BitmapHeaderBytes = 40;
constexpr std::uint32_t BytesPerPixel = 4;

void Put16(std::string& bytes, std::uint32_t number) {
    bytes.push_back(static_cast<char>(number & 0xFF));
    bytes.push_back(static_cast<char>(number >> 8 & 0xFF));
}

void Put32(std::string& bytes, std::uint32_t number) {
    Put16(bytes, number & 0xFFFF);
    Put16(bytes, number >> 16);
}

// One bit for each pixel, in rows of whole 32-bit words.
std::string MaskRow(std::uint32_t side, const std::uint8_t* pixels) {
    constexpr std::uint8_t HalfOpaque = 128;
    std::string row((side + 31) / 32 * 4, '\0');
    for (std::uint32_t x = 0; x < side; ++x) {
        if (pixels[x * BytesPerPixel + 3] < HalfOpaque) {
            row[x / 8] = static_cast<char>(static_cast<unsigned char>(row[x / 8]) | 0x80u >> x % 8);
        }
    }
    return row;
}

} // namespace

std::string BitmapOfIcon(std::int32_t side, const std::vector<std::uint8_t>& pixels) {
    const auto width = static_cast<std::uint32_t>(side);
    const std::size_t rowBytes = std::size_t{width} * BytesPerPixel;
    std::string colors;
    std::string mask;
    for (std::uint32_t y = width; y-- > 0;) { // from the bottom
        const std::uint8_t* row = pixels.data() + y * rowBytes;
        colors.append(reinterpret_cast<const char*>(row), rowBytes);
        mask += MaskRow(width, row);
    }
    std::string bytes;
    Put32(bytes, BitmapHeaderBytes);
    Put32(bytes, width);
    Put32(bytes, 2 * width); // both, one above the other
    Put16(bytes, 1);
    Put16(bytes, 8 * BytesPerPixel);
    Put32(bytes, 0); // not compressed
    Put32(bytes, static_cast<std::uint32_t>(colors.size() + mask.size()));
    bytes.resize(BitmapHeaderBytes, '\0');
    return bytes + colors + mask;
}

std::string IconFile(const std::vector<IconPicture>& pictures) {
    std::string bytes;
    Put16(bytes, 0);
    Put16(bytes, 1); // an icon
    Put16(bytes, static_cast<std::uint32_t>(pictures.size()));
    std::size_t offset = DirectoryBytes + EntryBytes * pictures.size();
    for (const IconPicture& picture : pictures) {
        const char side = static_cast<char>(picture.side & 0xFF); // 0 for 256
        bytes += {side, side, '\0', '\0'};
        Put16(bytes, 1);
        Put16(bytes, 8 * BytesPerPixel);
        Put32(bytes, static_cast<std::uint32_t>(picture.bytes.size()));
        Put32(bytes, static_cast<std::uint32_t>(offset));
        offset += picture.bytes.size();
    }
    for (const IconPicture& picture : pictures) {
        bytes += picture.bytes;
    }
    return bytes;
}

} // namespace lumbrix
