// Reads EXIF blocks and the directories of TIFF files into property items.
#include "imaginglibrary/codecs/metadata/exifreader.h"

#include "imaginglibrary/codecs/metadata/exiftags.h"
#include "imaginglibrary/codecs/metadata/exifwriter.h"
#include "imaginglibrary/codecs/metadata/photoshop.h"
#include "imaginglibrary/codecs/metadata/xmp.h"
#include "imaginglibrary/core/bytes.h"
#include "imaginglibrary/core/limits.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace imaginglibrary {

namespace {

// A block in memory, read like a file.
class MemoryBlock : public InputFile {
  public:
    explicit MemoryBlock(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::uint64_t Size() const override { return bytes_.size(); }

    Result<std::size_t> ReadAt(std::uint64_t offset, void* buffer, std::size_t count) const override {
        if (offset >= bytes_.size()) {
            return std::size_t{0};
        }
        const auto from = bytes_.subspan(static_cast<std::size_t>(offset));
        const std::size_t read = std::min(count, from.size());
        std::memcpy(buffer, from.data(), read);
        return read;
    }

  private:
    std::span<const std::uint8_t> bytes_;
};

struct Entry {
    std::uint16_t tag;
    PropertyType type;
    std::uint32_t count;
    std::array<std::uint8_t, TiffInlineBytes> field; // the value, or where it stands
};

struct Directory {
    std::vector<Entry> entries;
    std::uint32_t next = 0;
};

bool IsItemType(PropertyType type) {
    switch (type) {
    case PropertyType::Byte:
    case PropertyType::Ascii:
    case PropertyType::Short:
    case PropertyType::Long:
    case PropertyType::Rational:
    case PropertyType::Undefined:
    case PropertyType::SLong:
    case PropertyType::SRational:
        return true;
    }
    return false;
}

// The places and lengths of strips and tiles.
bool IsListOfPlaces(std::uint16_t tag) { return tag == 0x0111 || tag == 0x0117 || tag == 0x0144 || tag == 0x0145; }

// A block of the items of a file whose other data stand between them, with the maker's note at its old place. Null
// where that is too far from the start.
PropertyList::Block BlockAround(std::uint32_t noteAt, std::endian order, const PropertyList& properties) {
    ExifBlock block(order);
    for (const Property& item : properties.Items()) {
        if (item.tag != XmpTag && item.tag != IptcTag && item.tag != ResourcesTag) {
            block.Add(item);
        }
    }
    block.DropThumbnail();
    auto bytes = block.MakeBlockAround(noteAt);
    return bytes.empty() ? nullptr : std::make_shared<const std::vector<std::uint8_t>>(std::move(bytes));
}

// Every offset and count of the file is checked before it is used, and the work and memory have their limits.
class ExifReader {
  public:
    ExifReader(const InputFile& source, PropertyList& properties) : source_(source), properties_(properties) {}

    std::vector<Property> Read(ExifThumbnail thumbnail) {
        std::array<std::uint8_t, TiffHeaderBytes> header;
        if (!ReadBytes(0, header.data(), header.size()) || !ReadByteOrder(header.data())) {
            return {};
        }
        const Directory main = ReadDirectory(Number32(&header[4]));
        AddItems(main, ExifPlace::Main);
        const Directory exif = ReadDirectory(pointers_.exif);
        AddItems(exif, ExifPlace::Exif);
        AddItems(ReadDirectory(pointers_.gps), ExifPlace::Gps);
        AddItems(ReadDirectory(pointers_.interop), ExifPlace::Interop);
        if (thumbnail == ExifThumbnail::Keep) {
            AddThumbnail(ReadDirectory(main.next));
        }
        return std::move(beside_);
    }

    std::endian Order() const { return order_; }

    // Where the maker's note stands; 0 where there is none.
    std::uint32_t NoteAt() const { return noteAt_; }

  private:
    bool ReadByteOrder(const std::uint8_t* header) {
        const bool isLittle = std::memcmp(header, "II", 2) == 0;
        if (!isLittle && std::memcmp(header, "MM", 2) != 0) {
            return false;
        }
        order_ = isLittle ? std::endian::little : std::endian::big;
        return Number16(header + 2) == TiffMagic;
    }

    std::uint16_t Number16(const std::uint8_t* bytes) const {
        return order_ == std::endian::little ? LittleEndian16(bytes) : BigEndian16(bytes);
    }

    std::uint32_t Number32(const std::uint8_t* bytes) const {
        return order_ == std::endian::little ? LittleEndian32(bytes) : BigEndian32(bytes);
    }

    bool ReadBytes(std::uint64_t offset, std::uint8_t* to, std::size_t count) const {
        return source_.ReadExactlyAt(offset, to, count) == Status::Ok;
    }

    // Those of its entries that are there; none for a directory that was read before.
    Directory ReadDirectory(std::uint32_t offset) {
        Directory directory;
        std::array<std::uint8_t, 2> head;
        if (offset < TiffHeaderBytes || std::find(visited_.begin(), visited_.end(), offset) != visited_.end() ||
            !ReadBytes(offset, head.data(), head.size())) {
            return directory;
        }
        visited_.push_back(offset);
        std::uint64_t at = std::uint64_t{offset} + head.size();
        std::array<std::uint8_t, TiffEntryBytes> bytes;
        for (unsigned left = Number16(head.data()); left > 0; --left, at += bytes.size()) {
            if (entriesRead_ == MaximumMetadataEntries || !ReadBytes(at, bytes.data(), bytes.size())) {
                return directory;
            }
            ++entriesRead_;
            directory.entries.push_back(EntryOf(bytes.data()));
        }
        std::array<std::uint8_t, 4> next;
        if (ReadBytes(at, next.data(), next.size())) {
            directory.next = Number32(next.data());
        }
        return directory;
    }

    Entry EntryOf(const std::uint8_t* bytes) const {
        Entry entry{.tag = Number16(bytes),
                    .type = static_cast<PropertyType>(Number16(bytes + 2)),
                    .count = Number32(bytes + 4),
                    .field = {}};
        std::copy_n(bytes + 8, entry.field.size(), entry.field.begin());
        return entry;
    }

    void AddItems(const Directory& directory, ExifPlace place) {
        for (const Entry& entry : directory.entries) {
            KeepPointer(entry);
            if (const auto tag = ItemTagOf(place, entry.tag)) {
                AddItem(entry, *tag, place);
            }
        }
    }

    void KeepPointer(const Entry& entry) {
        std::uint32_t* const pointer = entry.tag == ExifPointerTag      ? &pointers_.exif
                                       : entry.tag == GpsPointerTag     ? &pointers_.gps
                                       : entry.tag == InteropPointerTag ? &pointers_.interop
                                                                        : nullptr;
        if (pointer != nullptr && *pointer == 0) {
            *pointer = Number32(entry.field.data());
        }
    }

    void AddItem(const Entry& entry, std::uint16_t tag, ExifPlace place) {
        const std::uint64_t size = std::uint64_t{entry.count} * ElementBytes(entry.type);
        if (!IsItemType(entry.type) || size == 0 || (IsListOfPlaces(entry.tag) && size > MaximumPlacesBytes)) {
            return;
        }
        Property property{tag, entry.type, {}};
        if (size <= TiffInlineBytes) {
            property.value.assign(entry.field.begin(), entry.field.begin() + static_cast<std::ptrdiff_t>(size));
        } else if (!ReadValue(Number32(entry.field.data()), size, property.value)) {
            return;
        }
        if (tag == MakersNoteTag && size > TiffInlineBytes && noteAt_ == 0) {
            noteAt_ = Number32(entry.field.data());
        }
        SwapUnlessNative(property.value, property.type, order_);
        TerminateText(property);
        if (place == ExifPlace::Gps && PlaceOf(property) == place && IsOfMain(tag)) {
            property.tag += BesideTags;
            beside_.push_back(std::move(property));
        } else {
            properties_.Add(std::move(property));
        }
    }

    bool IsOfMain(std::uint16_t tag) const {
        const Property* item = properties_.Find(tag);
        return item != nullptr && PlaceOf(*item) == ExifPlace::Main;
    }

    bool ReadValue(std::uint64_t offset, std::uint64_t size, std::vector<std::uint8_t>& value) {
        if (offset + size > source_.Size() || size > bytesLeft_) {
            return false;
        }
        value.resize(static_cast<std::size_t>(size));
        bytesLeft_ -= value.size();
        return ReadBytes(offset, value.data(), value.size());
    }

    void AddThumbnail(const Directory& directory) {
        AddItems(directory, ExifPlace::Thumbnail);
        const std::uint32_t offset = NumberOf(directory, ThumbnailOffsetTag);
        const std::uint32_t length = NumberOf(directory, ThumbnailLengthTag);
        Property data{ThumbnailDataTag, PropertyType::Byte, {}};
        if (offset != 0 && length != 0 && ReadValue(offset, length, data.value)) {
            properties_.Add(std::move(data));
        }
    }

    // 0 where there is no such number.
    std::uint32_t NumberOf(const Directory& directory, std::uint16_t tag) const {
        for (const Entry& entry : directory.entries) {
            if (entry.tag == tag && entry.count == 1) {
                return entry.type == PropertyType::Long    ? Number32(entry.field.data())
                       : entry.type == PropertyType::Short ? Number16(entry.field.data())
                                                           : 0;
            }
        }
        return 0;
    }

    const InputFile& source_;
    PropertyList& properties_;
    std::vector<Property> beside_;
    std::endian order_ = std::endian::little;
    std::vector<std::uint32_t> visited_; // directories
    struct {
        std::uint32_t exif, gps, interop;
    } pointers_{};
    std::size_t entriesRead_ = 0;
    std::uint32_t noteAt_ = 0;
    std::size_t bytesLeft_ = MaximumMetadataBytes;
};

} // namespace

std::vector<Property> ReadExif(std::span<const std::uint8_t> block, ExifThumbnail thumbnail, PropertyList& properties) {
    return ExifReader(MemoryBlock(block), properties).Read(thumbnail);
}

void ReadTiffProperties(const InputFile& file, PropertyList& properties) {
    ExifReader reader(file, properties);
    for (Property& item : reader.Read(ExifThumbnail::PassOver)) {
        properties.Add(std::move(item));
    }
    if (reader.NoteAt() != 0) {
        properties.SetSourceExif(BlockAround(reader.NoteAt(), reader.Order(), properties));
    }
}

} // namespace imaginglibrary
