// What EXIF blocks and TIFF directories are made of: their tags, their types of values, and which tag stands where.
#include "imaginglibrary/codecs/metadata/exiftags.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace imaginglibrary {

namespace {

// From the first tag to the last.
struct TagRange {
    std::uint32_t first;
    std::uint32_t last;

    bool Has(std::uint32_t tag) const { return tag >= first && tag <= last; }
};

template <std::size_t Count> bool IsIn(const TagRange (&ranges)[Count], std::uint32_t tag) {
    return std::any_of(std::begin(ranges), std::end(ranges), [=](const TagRange& range) { return range.Has(tag); });
}

struct RenamedTag {
    ExifPlace directory;
    std::uint16_t inFile;
    std::uint16_t item;
};

constexpr RenamedTag RenamedTags[] = {
    {ExifPlace::Interop, 0x0001, 0x5041},   {ExifPlace::Interop, 0x0002, 0x5042},
    {ExifPlace::Thumbnail, 0x0100, 0x5020}, {ExifPlace::Thumbnail, 0x0101, 0x5021},
    {ExifPlace::Thumbnail, 0x0103, 0x5023}, {ExifPlace::Thumbnail, 0x011A, 0x502D},
    {ExifPlace::Thumbnail, 0x011B, 0x502E}, {ExifPlace::Thumbnail, 0x0128, 0x5030},
};

constexpr TagRange GpsTags = {0x0000, 0x001F};

// The name of a program in the main directory; the GPS directory has a number under this tag.
constexpr std::uint32_t ProcessingSoftwareTag = 0x000B;

// Those of the interoperability directory that no other directory uses.
constexpr TagRange OwnInteropTags = {0x1000, 0x1002};

// The older kind of text for file managers stands among the tags of the EXIF directory, but not in it.
constexpr TagRange FileManagerTags = {0x9C9B, 0x9C9F};
constexpr TagRange ExifTags[] = {
    {0x829A, 0x829A}, {0x829D, 0x829D}, {0x8822, 0x8822}, {0x8824, 0x8824},
    {0x8827, 0x8828}, {0x8830, 0x8835}, {0x9000, 0x9FFF}, {0xA000, 0xA5FF},
};

constexpr TagRange UnwrittenTags[] = {
    // How a TIFF file lays down its pixels says nothing about another file.
    {0x00FE, 0x00FF},
    {0x0102, 0x0103},
    {0x0106, 0x010A},
    {0x0111, 0x0111},
    {0x0115, 0x0119},
    {0x011C, 0x011C},
    {0x0120, 0x0125},
    {0x013D, 0x013D},
    {0x0140, 0x0145},
    {0x014A, 0x014A},
    {0x014C, 0x014E},
    {0x0152, 0x0156},
    {0x015B, 0x015B},
    {0x0200, 0x0209},
    {0x80E3, 0x80E6},
    // The same for other formats: quantisation, animation, palette and dots per metre.
    {0x5090, 0x5091},
    {0x5100, 0x5104},
    {0x5110, 0x5113},
    // These are made when they are written.
    {ExifPointerTag, ExifPointerTag},
    {GpsPointerTag, GpsPointerTag},
    {InteropPointerTag, InteropPointerTag},
    // Each format has a place of its own for it.
    {ColorProfileTag, ColorProfileTag},
};

const RenamedTag* FindRenamed(std::uint32_t itemTag) {
    const auto* found = std::find_if(std::begin(RenamedTags), std::end(RenamedTags),
                                     [=](const RenamedTag& tag) { return tag.item == itemTag; });
    return found == std::end(RenamedTags) ? nullptr : found;
}

bool IsPointer(std::uint16_t tag) { return tag == ExifPointerTag || tag == GpsPointerTag || tag == InteropPointerTag; }

// How many bytes stand in the file's byte order together.
std::size_t NumberBytes(PropertyType type) {
    const std::size_t bytes = ElementBytes(type);
    const bool isPair = type == PropertyType::Rational || type == PropertyType::SRational;
    return isPair ? bytes / 2 : bytes;
}

} // namespace

std::size_t ElementBytes(PropertyType type) {
    constexpr std::uint8_t BytesOf[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8};
    const auto number = static_cast<std::size_t>(type);
    return number < std::size(BytesOf) ? BytesOf[number] : 0;
}

void SwapUnlessNative(std::vector<std::uint8_t>& value, PropertyType type, std::endian order) {
    const std::size_t step = NumberBytes(type);
    if (order == std::endian::native || step < 2) {
        return;
    }
    for (std::size_t at = 0; at + step <= value.size(); at += step) {
        std::reverse(value.data() + at, value.data() + at + step);
    }
}

void TerminateText(Property& property) {
    if (property.type == PropertyType::Ascii && (property.value.empty() || property.value.back() != 0)) {
        property.value.push_back(0);
    }
}

std::string_view TextOf(const Property& property) {
    const std::string_view text(reinterpret_cast<const char*>(property.value.data()), property.value.size());
    return text.substr(0, text.find('\0'));
}

bool IsTextComment(const Property& property) {
    const bool isComment = property.tag == CommentTag || property.tag == CommentTag + BesideTags;
    return isComment && property.type == PropertyType::Ascii;
}

std::string_view TextCommentOf(const PropertyList& properties) {
    for (const std::uint32_t tag : {CommentTag, CommentTag + BesideTags}) {
        const Property* item = properties.Find(tag);
        if (item != nullptr && IsTextComment(*item) && !TextOf(*item).empty()) {
            return TextOf(*item);
        }
    }
    return {};
}

Property UserCommentOf(std::string_view text) {
    using namespace std::string_view_literals;
    const bool isAscii = std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
    const std::string_view code = isAscii ? "ASCII\0\0\0"sv : "\0\0\0\0\0\0\0\0"sv;
    const std::string value = std::string(code) + std::string(text);
    return {CommentTag, PropertyType::Undefined, {value.begin(), value.end()}};
}

bool IsBlankUserComment(const Property& property) {
    constexpr std::ptrdiff_t CodeBytes = 8; // which characters follow
    if (property.tag != CommentTag || property.type != PropertyType::Undefined) {
        return false;
    }
    const auto& value = property.value;
    return std::ssize(value) <= CodeBytes || std::all_of(value.begin() + CodeBytes, value.end(),
                                                         [](std::uint8_t byte) { return byte == 0 || byte == ' '; });
}

ExifPlace PlaceOf(const Property& item) {
    const std::uint32_t itemTag = item.tag;
    if (itemTag >= BesideTags && GpsTags.Has(itemTag - BesideTags)) {
        return ExifPlace::Gps;
    }
    if (itemTag > 0xFFFF || IsIn(UnwrittenTags, itemTag)) {
        return ExifPlace::Nowhere;
    }
    if (itemTag == ProcessingSoftwareTag && item.type == PropertyType::Ascii) {
        return ExifPlace::Main;
    }
    if (const RenamedTag* renamed = FindRenamed(itemTag)) {
        return renamed->directory;
    }
    if (itemTag == ThumbnailDataTag) {
        return ExifPlace::Thumbnail;
    }
    if (GpsTags.Has(itemTag)) {
        return ExifPlace::Gps;
    }
    if (OwnInteropTags.Has(itemTag)) {
        return ExifPlace::Interop;
    }
    return IsIn(ExifTags, itemTag) && !FileManagerTags.Has(itemTag) ? ExifPlace::Exif : ExifPlace::Main;
}

std::optional<std::uint16_t> ItemTagOf(ExifPlace directory, std::uint16_t fileTag) {
    for (const RenamedTag& renamed : RenamedTags) {
        if (renamed.directory == directory && renamed.inFile == fileTag) {
            return renamed.item;
        }
    }
    if (directory == ExifPlace::Thumbnail || IsPointer(fileTag)) {
        return std::nullopt;
    }
    return fileTag;
}

std::uint16_t FileTagOf(std::uint32_t itemTag) {
    const RenamedTag* renamed = FindRenamed(itemTag);
    return renamed != nullptr ? renamed->inFile : static_cast<std::uint16_t>(itemTag);
}

} // namespace imaginglibrary
