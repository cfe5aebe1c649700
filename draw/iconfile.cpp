// The bytes of an icon file: one picture of 32 by 32 pixels with 24 bits each, and its mask.
#include "draw/iconfile.h"

namespace lumbrix {

namespace {

// What stands before the picture, in the order of the file. Readers go by the first five fields; the size of the image
// and the one colour of a picture that has no colour table have always been these.
struct ImageHeader {
    std::uint32_t bytes = 40;
    std::uint32_t width = IconSide;
    std::uint32_t height = 2 * IconSide; // of picture and mask together
    std::uint16_t planes = 1;
    std::uint16_t bitCount = IconBits;
    std::uint32_t compression = 0;
    std::uint32_t imageBytes = 1153;
    std::uint32_t pixelsPerMeterAcross = 0;
    std::uint32_t pixelsPerMeterDown = 0;
    std::uint32_t colorsUsed = 1;
    std::uint32_t colorsImportant = 0;
};

// The one colour, of which nothing shows.
constexpr const char* ColorTable = "    ";

constexpr std::uint32_t BytesInResource = 40 + 4 + sizeof(IconImage) + sizeof(IconMask);

template <class... Numbers> void AppendLittleEndian(std::string& bytes, Numbers... numbers) {
    const auto append = [&](auto number) {
        for (std::size_t i = 0; i < sizeof number; ++i) {
            bytes.push_back(static_cast<char>(number >> (8 * i)));
        }
    };
    (append(numbers), ...);
}

void Append(std::string& bytes, const IconHead& head) {
    AppendLittleEndian(bytes, head.reserved, head.type, head.count, head.width, head.height, head.colorCount,
                       head.entryReserved, head.planes, head.bitCount, head.bytesInResource, head.imageOffset);
}

void Append(std::string& bytes, const ImageHeader& header) {
    AppendLittleEndian(bytes, header.bytes, header.width, header.height, header.planes, header.bitCount,
                       header.compression, header.imageBytes, header.pixelsPerMeterAcross, header.pixelsPerMeterDown,
                       header.colorsUsed, header.colorsImportant);
}

} // namespace

IconHead IconHeadFor(int bitCount) {
    IconHead head;
    head.colorCount = bitCount == 4 ? 16 : 0;
    return head;
}

std::size_t ColorTableBytes(int bitCount) {
    switch (bitCount) {
    case 1:
        return 8;
    case 4:
        return 64;
    case 8:
        return 1024;
    default:
        return 0;
    }
}

std::string IconFile(IconHead head, const IconImage& image, const IconMask& mask) {
    head.bytesInResource = BytesInResource;
    std::string file;
    Append(file, head);
    Append(file, ImageHeader{});
    file += ColorTable;
    file.append(image.begin(), image.end());
    file.append(mask.begin(), mask.end());
    return file;
}

} // namespace lumbrix
