// Adds property items to a TIFF file that is written otherwise.
#include "imaginglibrary/codecs/tiff/tiffproperties.h"

#include "imaginglibrary/codecs/metadata/colorprofile.h"
#include "imaginglibrary/codecs/metadata/exifwriter.h"
#include "imaginglibrary/core/bytes.h"

#include <array>

namespace imaginglibrary {

namespace {

constexpr std::size_t DirectoryOffsetAt = 4;

struct WrittenDirectory {
    ExifDirectory entries; // each with what stands in the entry itself
    std::uint32_t next = 0;
};

Status ReadBack(OutputFile& file, std::uint64_t offset, std::uint8_t* to, std::size_t count) {
    const auto read = file.ReadAt(offset, to, count);
    if (!read.Ok()) {
        return read.GetStatus();
    }
    return *read == count ? Status::Ok : Status::GenericError;
}

ExifEntry EntryOf(const std::uint8_t* bytes) {
    return {static_cast<PropertyType>(LittleEndian16(bytes + 2)), LittleEndian32(bytes + 4), {bytes + 8, bytes + 12}};
}

Status ReadDirectory(OutputFile& file, WrittenDirectory& directory) {
    std::array<std::uint8_t, 4> number;
    if (const Status status = ReadBack(file, DirectoryOffsetAt, number.data(), 4); status != Status::Ok) {
        return status;
    }
    const std::uint32_t start = LittleEndian32(number.data());
    if (const Status status = ReadBack(file, start, number.data(), 2); status != Status::Ok) {
        return status;
    }
    const std::size_t entries = LittleEndian16(number.data());
    std::vector<std::uint8_t> bytes(TiffEntryBytes * entries + 4);
    if (const Status status = ReadBack(file, start + 2, bytes.data(), bytes.size()); status != Status::Ok) {
        return status;
    }
    for (std::size_t at = 0; at < TiffEntryBytes * entries; at += TiffEntryBytes) {
        directory.entries.emplace(LittleEndian16(&bytes[at]), EntryOf(&bytes[at]));
    }
    directory.next = LittleEndian32(&bytes[TiffEntryBytes * entries]);
    return Status::Ok;
}

// Whether an item may stand in place of what the picture's own description made: orientation and resolution, with a
// value that they can have. Strict readers refuse a file for any other.
bool MayReplace(std::uint16_t tag, const ExifEntry& item) {
    constexpr unsigned LastOrientation = 8;
    constexpr unsigned LastUnit = 3;
    const auto isOneOf = [&](unsigned last) {
        const unsigned value = LittleEndian16(item.value.data());
        return value >= 1 && value <= last;
    };
    switch (tag) {
    case 0x0112:
        return isOneOf(LastOrientation);
    case 0x0128:
        return isOneOf(LastUnit);
    case 0x011A:
    case 0x011B:
        return LittleEndian32(item.value.data()) != 0 && LittleEndian32(item.value.data() + 4) != 0;
    default:
        return false;
    }
}

bool IsGrey(const ExifDirectory& written) {
    const auto photometric = written.find(0x0106);
    return photometric != written.end() && LittleEndian16(photometric->second.value.data()) < 2;
}

void RemoveWhatIsWritten(const ExifDirectory& written, ExifDirectory& items) {
    for (const auto& [tag, entry] : written) {
        const auto item = items.find(tag);
        const bool stays = item != items.end() && item->second.type == entry.type &&
                           item->second.count == entry.count && MayReplace(tag, item->second);
        if (!stays) {
            items.erase(tag);
        }
    }
    if (!items.contains(0x011A) || !items.contains(0x011B)) {
        items.erase(0x0128); // the unit of what stands there instead is another
    }
}

Status WriteDirectories(const std::vector<std::uint8_t>& bytes, std::uint32_t start, OutputFile& file) {
    if (const Status status = file.WriteAt(start, bytes.data(), bytes.size()); status != Status::Ok) {
        return status;
    }
    std::array<std::uint8_t, 4> offset;
    PutLittleEndian32(offset.data(), start);
    return file.WriteAt(DirectoryOffsetAt, offset.data(), offset.size());
}

} // namespace

Status AddTiffProperties(const PropertyList& properties, OutputFile& file) {
    ExifBlock block;
    for (const Property& item : properties.Items()) {
        block.Add(item);
    }
    const Property* userComment = properties.Find(CommentTag);
    if (const auto text = TextCommentOf(properties);
        !text.empty() && userComment != nullptr && IsBlankUserComment(*userComment)) {
        block.Add(AsciiProperty(CommentTag, text));
    }
    block.DropThumbnail();
    if (block.IsEmpty() && properties.Find(ColorProfileTag) == nullptr) {
        return Status::Ok;
    }
    WrittenDirectory written;
    if (const Status status = ReadDirectory(file, written); status != Status::Ok) {
        return status;
    }
    RemoveWhatIsWritten(written.entries, block.Main());
    const auto profile = IsGrey(written.entries) ? GreyProfileOf(properties) : RgbProfileOf(properties);
    if (!profile.empty()) {
        block.Main()[ColorProfileTag] = {
            PropertyType::Undefined, static_cast<std::uint32_t>(profile.size()), {profile.begin(), profile.end()}};
    }
    if (block.IsEmpty()) {
        return Status::Ok;
    }
    block.Main().merge(written.entries);
    const std::uint64_t start = (file.Size() + 1) / 2 * 2;
    const auto bytes = block.MakeDirectories(start, written.next);
    // Items without room below 4 GiB are left out; the picture is whole without them.
    return bytes.empty() ? Status::Ok : WriteDirectories(bytes, static_cast<std::uint32_t>(start), file);
}

} // namespace imaginglibrary
