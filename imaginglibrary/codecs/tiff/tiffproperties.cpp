// Adds property items to a TIFF file that is written otherwise.
#include "imaginglibrary/codecs/tiff/tiffproperties.h"

#include "imaginglibrary/codecs/metadata/colorprofile.h"
#include "imaginglibrary/codecs/metadata/exifwriter.h"
#include "imaginglibrary/codecs/metadata/photoshop.h"
#include "imaginglibrary/codecs/metadata/xmp.h"
#include "imaginglibrary/core/bytes.h"
#include "imaginglibrary/core/limits.h"

#include <algorithm>
#include <array>
#include <limits>

namespace imaginglibrary {

namespace {

constexpr std::size_t DirectoryOffsetAt = 4;

// Numbers in the file's byte order.
struct FileNumbers {
    std::endian order;

    std::uint16_t Get16(const std::uint8_t* bytes) const {
        return order == std::endian::little ? LittleEndian16(bytes) : BigEndian16(bytes);
    }
    std::uint32_t Get32(const std::uint8_t* bytes) const {
        return order == std::endian::little ? LittleEndian32(bytes) : BigEndian32(bytes);
    }
    ExifEntry EntryAt(const std::uint8_t* bytes) const {
        return {static_cast<PropertyType>(Get16(bytes + 2)), Get32(bytes + 4), {bytes + 8, bytes + 12}};
    }
};

Status ReadBack(OutputFile& file, std::uint64_t offset, std::uint8_t* to, std::size_t count) {
    const auto read = file.ReadAt(offset, to, count);
    if (!read.Ok()) {
        return read.GetStatus();
    }
    return *read == count ? Status::Ok : Status::GenericError;
}

// The only directory so far, each entry with what stands in the entry itself.
Status ReadDirectory(OutputFile& file, FileNumbers numbers, ExifDirectory& directory) {
    std::array<std::uint8_t, 4> number;
    if (const Status status = ReadBack(file, DirectoryOffsetAt, number.data(), 4); status != Status::Ok) {
        return status;
    }
    const std::uint32_t start = numbers.Get32(number.data());
    if (const Status status = ReadBack(file, start, number.data(), 2); status != Status::Ok) {
        return status;
    }
    const std::size_t entries = numbers.Get16(number.data());
    std::vector<std::uint8_t> bytes(TiffEntryBytes * entries);
    if (const Status status = ReadBack(file, start + 2, bytes.data(), bytes.size()); status != Status::Ok) {
        return status;
    }
    for (std::size_t at = 0; at < TiffEntryBytes * entries; at += TiffEntryBytes) {
        directory.emplace(numbers.Get16(&bytes[at]), numbers.EntryAt(&bytes[at]));
    }
    return Status::Ok;
}

// What an entry stands for: its own bytes, or those of the block that it points into.
const std::uint8_t* ValueOf(const ExifEntry& entry, FileNumbers numbers, std::span<const std::uint8_t> block) {
    const bool isPlace = entry.value.size() < entry.count * ElementBytes(entry.type);
    return isPlace ? &block[numbers.Get32(entry.value.data())] : entry.value.data();
}

// Whether an item may stand in place of what the picture's own description made: orientation and resolution, with a
// value that they can have. Strict readers refuse a file for any other.
bool MayReplace(std::uint16_t tag, const std::uint8_t* value, FileNumbers numbers) {
    constexpr unsigned LastOrientation = 8;
    constexpr unsigned LastUnit = 3;
    const auto isOneOf = [&](unsigned last) {
        const unsigned number = numbers.Get16(value);
        return number >= 1 && number <= last;
    };
    switch (tag) {
    case 0x0112:
        return isOneOf(LastOrientation);
    case 0x0128:
        return isOneOf(LastUnit);
    case 0x011A:
    case 0x011B:
        return numbers.Get32(value) != 0 && numbers.Get32(value + 4) != 0;
    default:
        return false;
    }
}

bool IsGrey(const ExifDirectory& written, FileNumbers numbers) {
    const auto photometric = written.find(0x0106);
    return photometric != written.end() && numbers.Get16(photometric->second.value.data()) < 2;
}

// `block` is what the items' values lie in where they are not beside them.
void RemoveWhatIsWritten(const ExifDirectory& written, FileNumbers numbers, std::span<const std::uint8_t> block,
                         ExifDirectory& items) {
    for (const auto& [tag, entry] : written) {
        const auto item = items.find(tag);
        const bool stays = item != items.end() && item->second.type == entry.type &&
                           item->second.count == entry.count &&
                           MayReplace(tag, ValueOf(item->second, numbers, block), numbers);
        if (!stays) {
            items.erase(tag);
        }
    }
    if (!items.contains(0x011A) || !items.contains(0x011B)) {
        items.erase(0x0128); // the unit of what stands there instead is another
    }
}

bool IsPacket(std::uint32_t tag) { return tag == XmpTag || tag == IptcTag || tag == ResourcesTag; }

// A blank comment of EXIF gives way to the one beside it.
std::vector<Property> ItemsFor(const PropertyList& properties) {
    std::vector<Property> items = properties.Items();
    const auto blank = std::ranges::find_if(items, IsBlankUserComment);
    if (const auto text = TextCommentOf(properties); !text.empty() && blank != items.end()) {
        *blank = UserCommentOf(text);
    }
    return items;
}

// Entries of the block that the file begins with, as they stand: what they point to is where it was. Those that no item
// tells of may be broken.
ExifDirectory EntriesOf(const ExifEditor& exif) {
    const FileNumbers numbers{exif.Order()};
    ExifDirectory entries;
    const auto bytes = exif.MainEntries();
    for (std::size_t at = 0; at < bytes.size(); at += TiffEntryBytes) {
        const std::uint16_t tag = numbers.Get16(&bytes[at]);
        ExifEntry entry = numbers.EntryAt(&bytes[at]);
        const std::uint64_t size = std::uint64_t{entry.count} * ElementBytes(entry.type);
        const bool isWhole =
            size != 0 && (size <= TiffInlineBytes || numbers.Get32(&bytes[at + 8]) + size <= exif.Block().size());
        const bool isPointer = tag == ExifPointerTag || tag == GpsPointerTag;
        const bool hasPlace = PlaceOf({tag, entry.type, {}}) != ExifPlace::Nowhere;
        if (isWhole && (isPointer || hasPlace)) {
            entries.emplace(tag, std::move(entry));
        }
    }
    return entries;
}

void SetBytes(ExifDirectory& directory, std::uint16_t tag, PropertyType type, std::span<const std::uint8_t> bytes) {
    if (!bytes.empty()) {
        directory[tag] = {type, static_cast<std::uint32_t>(bytes.size()), {bytes.begin(), bytes.end()}};
    }
}

// XMP and the like, which the block does not hold.
void SetPackets(const PropertyList& properties, ExifDirectory& directory) {
    for (const Property& item : properties.Items()) {
        if (IsPacket(item.tag) && (item.type == PropertyType::Byte || item.type == PropertyType::Undefined)) {
            SetBytes(directory, static_cast<std::uint16_t>(item.tag), item.type, item.value);
        }
    }
}

Status WriteDirectories(const std::vector<std::uint8_t>& bytes, std::uint32_t start, FileNumbers numbers,
                        OutputFile& file) {
    if (const Status status = file.WriteAt(start, bytes.data(), bytes.size()); status != Status::Ok) {
        return status;
    }
    std::array<std::uint8_t, 4> offset;
    for (std::size_t i = 0; i < offset.size(); ++i) {
        offset[numbers.order == std::endian::little ? i : 3 - i] = static_cast<std::uint8_t>(start >> 8 * i);
    }
    return file.WriteAt(DirectoryOffsetAt, offset.data(), offset.size());
}

// The new directories of a file without a block, or the main directory of one that has the others already.
std::vector<std::uint8_t> MakeDirectories(ExifBlock& block, const ExifEditor* exif, std::uint64_t start) {
    if (exif == nullptr) {
        return block.MakeDirectories(start);
    }
    if (start > std::numeric_limits<std::uint32_t>::max()) {
        return {};
    }
    auto bytes = MakeDirectory(block.Main(), static_cast<std::uint32_t>(start), exif->Order());
    return start + bytes.size() > std::numeric_limits<std::uint32_t>::max() ? std::vector<std::uint8_t>() : bytes;
}

} // namespace

std::optional<ExifEditor> ExifOfSource(const PropertyList& properties) {
    std::vector<Property> items = ItemsFor(properties);
    std::erase_if(items,
                  [](const Property& item) { return IsPacket(item.tag) || PlaceOf(item) == ExifPlace::Thumbnail; });
    auto exif = EditedExif(properties, items);
    if (exif) {
        exif->DropThumbnail();
    }
    return exif;
}

Status AddExifOfSource(const ExifEditor& exif, OutputFile& file) {
    const auto bytes = std::span(exif.Block()).subspan(TiffHeaderBytes);
    return file.WriteAt(TiffHeaderBytes, bytes.data(), bytes.size());
}

Status AddTiffProperties(const PropertyList& properties, const ExifEditor* exif, OutputFile& file) {
    const FileNumbers numbers{exif != nullptr ? exif->Order() : std::endian::little};
    ExifBlock block;
    if (exif != nullptr) {
        block.Main() = EntriesOf(*exif);
        SetPackets(properties, block.Main());
    } else {
        for (Property& item : ItemsFor(properties)) {
            block.Add(std::move(item));
        }
        block.DropThumbnail();
    }
    if (block.IsEmpty() && properties.Find(ColorProfileTag) == nullptr) {
        return Status::Ok;
    }
    ExifDirectory written;
    if (const Status status = ReadDirectory(file, numbers, written); status != Status::Ok) {
        return status;
    }
    RemoveWhatIsWritten(written, numbers, exif != nullptr ? exif->Block() : std::span<const std::uint8_t>(),
                        block.Main());
    SetBytes(block.Main(), ColorProfileTag, PropertyType::Undefined,
             IsGrey(written, numbers) ? GreyProfileOf(properties) : RgbProfileOf(properties));
    if (block.IsEmpty()) {
        return Status::Ok;
    }
    block.Main().merge(written);
    const std::uint64_t start = (file.Size() + 1) / 2 * 2;
    const auto bytes = MakeDirectories(block, exif, start);
    // Items without room below 4 GiB are left out; the picture is whole without them.
    return bytes.empty() ? Status::Ok : WriteDirectories(bytes, static_cast<std::uint32_t>(start), numbers, file);
}

} // namespace imaginglibrary
