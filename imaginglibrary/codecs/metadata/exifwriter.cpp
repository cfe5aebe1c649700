// Puts EXIF blocks and the directories of TIFF files together from property items.
#include "imaginglibrary/codecs/metadata/exifwriter.h"

#include "imaginglibrary/core/bytes.h"

#include <algorithm>
#include <limits>

namespace imaginglibrary {

namespace {

constexpr std::size_t CountBytes = 2;
constexpr std::size_t NextBytes = 4;

constexpr std::size_t Even(std::size_t bytes) { return (bytes + 1) / 2 * 2; }

// With its values behind it; 0 for a directory that is not written.
std::size_t BytesOf(const ExifDirectory& directory) {
    if (directory.empty()) {
        return 0;
    }
    std::size_t bytes = CountBytes + TiffEntryBytes * directory.size() + NextBytes;
    for (const auto& [tag, entry] : directory) {
        bytes += entry.value.size() > TiffInlineBytes ? Even(entry.value.size()) : 0;
    }
    return bytes;
}

void Append(std::vector<std::uint8_t>& bytes, std::uint32_t number, int count, std::endian order) {
    for (int i = 0; i < count; ++i) {
        const int shift = 8 * (order == std::endian::little ? i : count - 1 - i);
        bytes.push_back(static_cast<std::uint8_t>(number >> shift));
    }
}

void Append16(std::vector<std::uint8_t>& bytes, std::uint16_t number, std::endian order) {
    Append(bytes, number, 2, order);
}

void Append32(std::vector<std::uint8_t>& bytes, std::uint32_t number, std::endian order) {
    Append(bytes, number, 4, order);
}

void AppendValue(std::vector<std::uint8_t>& bytes, const std::vector<std::uint8_t>& value, std::size_t length) {
    bytes.insert(bytes.end(), value.begin(), value.end());
    bytes.resize(bytes.size() + length - value.size());
}

// `start` is where the first of the bytes stands in the file.
void AppendDirectory(std::vector<std::uint8_t>& bytes, const ExifDirectory& directory, std::uint32_t start,
                     std::uint32_t next, std::endian order) {
    if (directory.empty()) {
        return;
    }
    auto valueAt =
        static_cast<std::uint32_t>(start + bytes.size() + CountBytes + TiffEntryBytes * directory.size() + NextBytes);
    Append16(bytes, static_cast<std::uint16_t>(directory.size()), order);
    for (const auto& [tag, entry] : directory) {
        Append16(bytes, tag, order);
        Append16(bytes, static_cast<std::uint16_t>(entry.type), order);
        Append32(bytes, entry.count, order);
        if (entry.value.size() <= TiffInlineBytes) {
            AppendValue(bytes, entry.value, TiffInlineBytes);
        } else {
            Append32(bytes, valueAt, order);
            valueAt += static_cast<std::uint32_t>(Even(entry.value.size()));
        }
    }
    Append32(bytes, next, order);
    for (const auto& [tag, entry] : directory) {
        if (entry.value.size() > TiffInlineBytes) {
            AppendValue(bytes, entry.value, Even(entry.value.size()));
        }
    }
}

// Has room for a pointer in the directory, or none.
void KeepPointer(ExifDirectory& directory, std::uint16_t tag, bool isNeeded) {
    if (isNeeded) {
        directory[tag] = {PropertyType::Long, 1, std::vector<std::uint8_t>(sizeof(std::uint32_t))};
    } else {
        directory.erase(tag);
    }
}

void SetPointer(ExifDirectory& directory, std::uint16_t tag, std::uint64_t to, std::endian order) {
    if (const auto entry = directory.find(tag); entry != directory.end()) {
        entry->second.value.clear();
        Append32(entry->second.value, static_cast<std::uint32_t>(to), order);
    }
}

bool IsPointer(ExifPlace directory, std::uint16_t tag) { return !ItemTagOf(directory, tag).has_value(); }

} // namespace

std::vector<std::uint8_t> MakeDirectory(const ExifDirectory& directory, std::uint32_t start, std::endian order) {
    std::vector<std::uint8_t> bytes;
    AppendDirectory(bytes, directory, start, 0, order);
    return bytes;
}

ExifDirectory* ExifBlock::DirectoryOf(ExifPlace place) {
    switch (place) {
    case ExifPlace::Main:
        return &main_;
    case ExifPlace::Exif:
        return &exif_;
    case ExifPlace::Gps:
        return &gps_;
    case ExifPlace::Interop:
        return &interop_;
    case ExifPlace::Thumbnail:
        return &thumbnail_;
    case ExifPlace::Nowhere:
        break;
    }
    return nullptr;
}

void ExifBlock::Add(Property property) {
    ExifDirectory* directory = DirectoryOf(PlaceOf(property));
    const std::size_t element = ElementBytes(property.type);
    TerminateText(property);
    if (directory == nullptr || element == 0 || property.value.empty() || property.value.size() % element != 0) {
        return;
    }
    if (property.tag == ThumbnailDataTag) {
        thumbnailData_ = std::move(property.value);
        return;
    }
    SwapUnlessNative(property.value, property.type, order_);
    const auto count = static_cast<std::uint32_t>(property.value.size() / element);
    directory->insert_or_assign(FileTagOf(property.tag), ExifEntry{property.type, count, std::move(property.value)});
}

bool ExifBlock::IsEmpty() const { return main_.empty() && exif_.empty() && gps_.empty() && interop_.empty(); }

void ExifBlock::DropThumbnail() {
    thumbnail_.clear();
    thumbnailData_.clear();
}

void ExifBlock::Shorten(std::size_t mostBytes) {
    if (SetPointers(TiffHeaderBytes) > mostBytes) {
        DropThumbnail();
    }
    while (!IsEmpty() && SetPointers(TiffHeaderBytes) > mostBytes) {
        DropLargest();
    }
}

void ExifBlock::DropLargest() {
    ExifDirectory* from = nullptr;
    ExifDirectory::iterator largest;
    for (const ExifPlace place : {ExifPlace::Main, ExifPlace::Exif, ExifPlace::Gps, ExifPlace::Interop}) {
        ExifDirectory& directory = *DirectoryOf(place);
        for (auto entry = directory.begin(); entry != directory.end(); ++entry) {
            if (!IsPointer(place, entry->first) &&
                (from == nullptr || entry->second.value.size() > largest->second.value.size())) {
                from = &directory;
                largest = entry;
            }
        }
    }
    if (from != nullptr) {
        from->erase(largest);
    }
}

// Lets the directories point at each other where they begin at `start`. Gives back where they end.
std::uint64_t ExifBlock::SetPointers(std::uint64_t start) {
    // Pointers take room themselves, so all of them come first, those to the innermost directory at the head.
    KeepPointer(exif_, InteropPointerTag, !interop_.empty());
    KeepPointer(main_, ExifPointerTag, !exif_.empty());
    KeepPointer(main_, GpsPointerTag, !gps_.empty());
    if (thumbnailData_.empty()) {
        thumbnail_.clear();
    } else {
        KeepPointer(thumbnail_, ThumbnailOffsetTag, true);
        KeepPointer(thumbnail_, ThumbnailLengthTag, true);
    }
    const std::uint64_t exif = start + BytesOf(main_);
    const std::uint64_t gps = exif + BytesOf(exif_);
    const std::uint64_t interop = gps + BytesOf(gps_);
    const std::uint64_t data = interop + BytesOf(interop_) + BytesOf(thumbnail_);
    SetPointer(main_, ExifPointerTag, exif, order_);
    SetPointer(main_, GpsPointerTag, gps, order_);
    SetPointer(exif_, InteropPointerTag, interop, order_);
    SetPointer(thumbnail_, ThumbnailOffsetTag, data, order_);
    SetPointer(thumbnail_, ThumbnailLengthTag, thumbnailData_.size(), order_);
    return data + thumbnailData_.size();
}

std::vector<std::uint8_t> ExifBlock::MakeDirectories(std::uint64_t start) {
    const std::uint64_t end = SetPointers(start);
    if (end > std::numeric_limits<std::uint32_t>::max()) {
        return {};
    }
    const auto at = static_cast<std::uint32_t>(start);
    const std::uint64_t thumbnail = end - thumbnailData_.size() - BytesOf(thumbnail_);
    std::vector<std::uint8_t> bytes;
    AppendDirectory(bytes, main_, at, thumbnail_.empty() ? 0 : static_cast<std::uint32_t>(thumbnail), order_);
    for (const ExifDirectory* directory : {&exif_, &gps_, &interop_, &thumbnail_}) {
        AppendDirectory(bytes, *directory, at, 0, order_);
    }
    AppendValue(bytes, thumbnailData_, thumbnailData_.size());
    return bytes;
}

std::vector<std::uint8_t> ExifBlock::MakeBlock() {
    const auto directories = MakeDirectories(TiffHeaderBytes);
    if (IsEmpty() || directories.empty()) {
        return {};
    }
    std::vector<std::uint8_t> block = MakeHeader(TiffHeaderBytes);
    block.insert(block.end(), directories.begin(), directories.end());
    return block;
}

std::vector<std::uint8_t> ExifBlock::MakeHeader(std::uint32_t main) const {
    const std::uint8_t letter = order_ == std::endian::little ? 'I' : 'M';
    std::vector<std::uint8_t> header = {letter, letter};
    Append16(header, TiffMagic, order_);
    Append32(header, main, order_);
    return header;
}

std::vector<std::uint8_t> ExifBlock::MakeBlockAround(std::uint32_t noteAt) {
    constexpr std::uint32_t MostBytesBefore = 65536;
    const auto entry = exif_.find(MakersNoteTag);
    if (entry == exif_.end() || entry->second.value.size() <= TiffInlineBytes || noteAt < TiffHeaderBytes ||
        noteAt > MostBytesBefore) {
        return {};
    }
    const auto note = std::move(entry->second.value);
    entry->second.value.clear();
    Append32(entry->second.value, noteAt, order_);
    const std::size_t behindNote = Even(noteAt + note.size());
    const std::size_t start = SetPointers(TiffHeaderBytes) <= noteAt ? TiffHeaderBytes : behindNote;
    const auto directories = MakeDirectories(start);
    std::vector<std::uint8_t> block = MakeHeader(static_cast<std::uint32_t>(start));
    block.resize(std::max(noteAt + note.size(), start + directories.size()));
    std::ranges::copy(directories, &block[start]);
    std::ranges::copy(note, &block[noteAt]);
    return block;
}

} // namespace imaginglibrary
