// Changes values of an EXIF block, and leaves everything else where it stands.
#include "imaginglibrary/codecs/metadata/exifeditor.h"

#include "imaginglibrary/codecs/metadata/exifreader.h"
#include "imaginglibrary/core/bytes.h"
#include "imaginglibrary/core/limits.h"

#include <algorithm>
#include <cstring>

namespace imaginglibrary {

namespace {

constexpr std::size_t CountBytes = 2;
constexpr std::size_t NextBytes = 4;
constexpr std::size_t MainPointerAt = 4;

// Where the parts of an entry stand in it.
constexpr std::size_t TypeAt = 2;
constexpr std::size_t ElementsAt = 4;
constexpr std::size_t FieldAt = 8;

constexpr std::size_t BytesOfDirectory(std::size_t entries) {
    return CountBytes + TiffEntryBytes * entries + NextBytes;
}

// Gamma and rendering intent, which every PNG file has: no reason to change a block.
bool IsOfPngColors(std::uint32_t tag) { return tag == 0x0301 || tag == 0x0303; }

} // namespace

std::optional<ExifEditor> ExifEditor::Open(std::vector<std::uint8_t> block) {
    ExifEditor editor(std::move(block));
    const bool isWhole = editor.ReadHeader() && editor.ReadDirectory(Main, MainPointerAt) &&
                         editor.directories_[Main].at != 0 && editor.ReadPointedTo(Main, ExifPointerTag, Exif) &&
                         editor.ReadPointedTo(Main, GpsPointerTag, Gps) &&
                         editor.ReadPointedTo(Exif, InteropPointerTag, Interop);
    return isWhole ? std::optional(std::move(editor)) : std::nullopt;
}

bool ExifEditor::ReadHeader() {
    if (block_.size() < TiffHeaderBytes || block_.size() > MaximumMetadataBytes) {
        return false;
    }
    const bool isLittle = std::memcmp(block_.data(), "II", 2) == 0;
    order_ = isLittle ? std::endian::little : std::endian::big;
    return (isLittle || std::memcmp(block_.data(), "MM", 2) == 0) && Get16(2) == TiffMagic;
}

// True also for one that is nowhere.
bool ExifEditor::ReadDirectory(Place place, std::size_t pointerAt) {
    Directory& directory = directories_[place];
    directory.pointerAt = pointerAt;
    const std::size_t at = Get32(pointerAt);
    if (at == 0) {
        return true;
    }
    if (at < TiffHeaderBytes || !IsWithin(at, CountBytes)) {
        return false;
    }
    const std::size_t entries = Get16(at);
    const std::size_t bytes = BytesOfDirectory(entries);
    if (entries > MaximumMetadataEntries || !IsWithin(at, bytes) || HoldsDirectory(at, bytes)) {
        return false;
    }
    directory.at = at;
    directory.entries = entries;
    return true;
}

bool ExifEditor::ReadPointedTo(Place from, std::uint16_t tag, Place to) {
    const std::size_t entry = FindEntry(from, tag);
    return entry == 0 || ReadDirectory(to, entry + FieldAt);
}

void ExifEditor::Set(Property item) {
    TerminateText(item);
    const auto place = PlaceIn(imaginglibrary::PlaceOf(item));
    const std::size_t element = ElementBytes(item.type);
    if (!place || element == 0 || item.value.empty() || item.value.size() % element != 0) {
        return;
    }
    SwapUnlessNative(item.value, item.type, order_);
    Entry entry{};
    const std::size_t old = FindItem(item.tag);
    std::size_t oldAt = 0;
    std::size_t room = 0;
    if (old != 0) {
        const std::uint64_t size =
            std::uint64_t{Get32(old + ElementsAt)} * ElementBytes(static_cast<PropertyType>(Get16(old + TypeAt)));
        oldAt = Get32(old + FieldAt);
        const bool isWhole =
            size > TiffInlineBytes && size <= block_.size() && IsWithin(oldAt, static_cast<std::size_t>(size));
        room = isWhole && !HoldsDirectory(oldAt, static_cast<std::size_t>(size)) ? static_cast<std::size_t>(size) : 0;
    }
    Put16(entry.data(), old != 0 ? Get16(old) : FileTagOf(item.tag));
    Put16(&entry[TypeAt], static_cast<std::uint16_t>(item.type));
    Put32(&entry[ElementsAt], item.value.size() / element);
    if (item.value.size() <= TiffInlineBytes) {
        std::ranges::copy(item.value, &entry[FieldAt]);
    } else {
        Put32(&entry[FieldAt], PutValue(item.value, oldAt, room));
    }
    if (old != 0) {
        std::ranges::copy(entry, &block_[old]);
    } else if (directories_[*place].entries + directories_[*place].more.size() < MaximumMetadataEntries) {
        directories_[*place].more.push_back(entry);
    }
}

// Gives back where the value stands now.
std::size_t ExifEditor::PutValue(const std::vector<std::uint8_t>& value, std::size_t oldAt, std::size_t room) {
    if (value.size() > room) {
        oldAt = AppendEven(value.size());
        room = value.size();
    }
    std::ranges::copy(value, &block_[oldAt]);
    Erase(oldAt + value.size(), room - value.size());
    return oldAt;
}

void ExifEditor::Remove(std::uint32_t itemTag) {
    for (std::size_t entry = FindItem(itemTag); entry != 0; entry = FindItem(itemTag)) {
        RemoveEntry(entry);
    }
}

void ExifEditor::RemoveEntry(std::size_t entry) {
    const auto holdsIt = [=](const Directory& each) {
        return each.at != 0 && each.at < entry && entry < each.at + BytesOfDirectory(each.entries);
    };
    Directory& directory = *std::ranges::find_if(directories_, holdsIt);
    const std::size_t end = directory.at + BytesOfDirectory(directory.entries);
    const auto at = [&](std::size_t place) { return block_.begin() + static_cast<std::ptrdiff_t>(place); };
    std::copy(at(entry + TiffEntryBytes), at(end), at(entry));
    std::fill_n(at(end - TiffEntryBytes), TiffEntryBytes, std::uint8_t{0});
    --directory.entries;
    Put16(&block_[directory.at], static_cast<std::uint16_t>(directory.entries));
    for (Directory& other : directories_) {
        if (other.pointerAt > entry && other.pointerAt < end) {
            other.pointerAt -= TiffEntryBytes;
        }
    }
}

void ExifEditor::DropThumbnail() {
    Directory& main = directories_[Main];
    const std::size_t nextAt = main.at + BytesOfDirectory(main.entries) - NextBytes;
    Directory thumbnail{.at = Get32(nextAt), .entries = 0, .pointerAt = 0, .more = {}};
    Put32(&block_[nextAt], 0);
    if (thumbnail.at < TiffHeaderBytes || !IsWithin(thumbnail.at, CountBytes)) {
        return;
    }
    thumbnail.entries = Get16(thumbnail.at);
    if (!IsWithin(thumbnail.at, BytesOfDirectory(thumbnail.entries))) {
        return;
    }
    std::size_t dataAt = 0;
    std::size_t dataBytes = 0;
    for (std::size_t i = 0; i < thumbnail.entries; ++i) {
        const std::size_t entry = EntryAt(thumbnail, i);
        const std::uint16_t tag = Get16(entry);
        constexpr std::uint16_t StripOffsetTag = 0x0111;
        constexpr std::uint16_t StripLengthTag = 0x0117;
        const bool isShort = Get16(entry + TypeAt) == static_cast<std::uint16_t>(PropertyType::Short);
        const std::size_t number = isShort ? Get16(entry + FieldAt) : Get32(entry + FieldAt);
        if (tag == ThumbnailOffsetTag || tag == StripOffsetTag) {
            dataAt = number;
        } else if (tag == ThumbnailLengthTag || tag == StripLengthTag) {
            dataBytes = number;
        }
    }
    Erase(dataAt, dataBytes);
    Erase(thumbnail.at, BytesOfDirectory(thumbnail.entries));
    // What ends the block need not be carried on.
    const bool isLast = IsWithin(dataAt, dataBytes) && dataBytes != 0 && block_.size() - (dataAt + dataBytes) <= 1;
    const bool holdsDirectories = std::ranges::any_of(directories_, [&](const Directory& directory) {
        return directory.at + BytesOfDirectory(directory.entries) > dataAt;
    });
    if (isLast && !holdsDirectories) {
        block_.resize(dataAt);
    }
}

// Whether a part of any directory stands there.
bool ExifEditor::HoldsDirectory(std::size_t at, std::size_t bytes) const {
    return std::ranges::any_of(directories_, [=](const Directory& directory) {
        return directory.at != 0 && at < directory.at + BytesOfDirectory(directory.entries) &&
               directory.at < at + bytes;
    });
}

// Overwrites what no directory stands in.
void ExifEditor::Erase(std::size_t at, std::size_t bytes) {
    if (at >= TiffHeaderBytes && IsWithin(at, bytes) && !HoldsDirectory(at, bytes)) {
        std::fill_n(block_.begin() + static_cast<std::ptrdiff_t>(at), bytes, std::uint8_t{0});
    }
}

void ExifEditor::Finish() {
    constexpr struct {
        Place place, parent;
        std::uint16_t tag;
    } Pointers[] = {{Interop, Exif, InteropPointerTag}, {Gps, Main, GpsPointerTag}, {Exif, Main, ExifPointerTag}};
    for (const auto& [place, parent, tag] : Pointers) {
        Directory& directory = directories_[place];
        if (directory.more.empty()) {
            continue;
        }
        const bool isNew = directory.pointerAt == 0;
        MoveToEnd(place);
        if (isNew) {
            Entry pointer{};
            Put16(pointer.data(), tag);
            Put16(&pointer[TypeAt], static_cast<std::uint16_t>(PropertyType::Long));
            Put32(&pointer[ElementsAt], 1);
            Put32(&pointer[FieldAt], directory.at);
            directories_[parent].more.push_back(pointer);
        }
    }
    if (!directories_[Main].more.empty()) {
        MoveToEnd(Main);
    }
}

// Among the old entries, whose order stays, each new one stands before the first with a higher tag.
void ExifEditor::MoveToEnd(Place place) {
    Directory& directory = directories_[place];
    const auto tagOf = [&](const auto& entry) {
        return order_ == std::endian::little ? LittleEndian16(entry.data()) : BigEndian16(entry.data());
    };
    std::ranges::stable_sort(directory.more, {}, tagOf);
    std::vector<Entry> entries;
    auto next = directory.more.begin();
    const auto putBefore = [&](std::uint32_t tag) {
        for (; next != directory.more.end() && tagOf(*next) < tag; ++next) {
            entries.push_back(*next);
        }
    };
    std::size_t following = 0;
    if (directory.at != 0) {
        for (std::size_t i = 0; i < directory.entries; ++i) {
            Entry entry;
            std::copy_n(&block_[EntryAt(directory, i)], entry.size(), entry.begin());
            putBefore(tagOf(entry));
            entries.push_back(entry);
        }
        following = Get32(EntryAt(directory, directory.entries));
    }
    putBefore(UINT32_MAX);
    directory.at = AppendEven(BytesOfDirectory(entries.size()));
    directory.entries = entries.size();
    directory.more.clear();
    Put16(&block_[directory.at], static_cast<std::uint16_t>(entries.size()));
    for (std::size_t i = 0; i < entries.size(); ++i) {
        std::ranges::copy(entries[i], &block_[EntryAt(directory, i)]);
    }
    Put32(&block_[EntryAt(directory, entries.size())], following);
    if (directory.pointerAt != 0) {
        Put32(&block_[directory.pointerAt], directory.at);
    }
}

std::span<const std::uint8_t> ExifEditor::MainEntries() const {
    const Directory& main = directories_[Main];
    return std::span(block_).subspan(EntryAt(main, 0), TiffEntryBytes * main.entries);
}

std::optional<ExifEditor::Place> ExifEditor::PlaceIn(ExifPlace place) {
    switch (place) {
    case ExifPlace::Main:
        return Main;
    case ExifPlace::Exif:
        return Exif;
    case ExifPlace::Gps:
        return Gps;
    case ExifPlace::Interop:
        return Interop;
    case ExifPlace::Nowhere:
    case ExifPlace::Thumbnail:
        break;
    }
    return std::nullopt;
}

ExifPlace ExifEditor::PlaceOf(Place place) {
    switch (place) {
    case Interop:
        return ExifPlace::Interop;
    case Gps:
        return ExifPlace::Gps;
    case Exif:
        return ExifPlace::Exif;
    default:
        return ExifPlace::Main;
    }
}

std::size_t ExifEditor::EntryAt(const Directory& directory, std::size_t index) const {
    return directory.at + CountBytes + TiffEntryBytes * index;
}

// 0 where there is none.
std::size_t ExifEditor::FindEntry(Place place, std::uint16_t tag) const {
    const Directory& directory = directories_[place];
    for (std::size_t i = 0; i < directory.entries; ++i) {
        if (Get16(EntryAt(directory, i)) == tag) {
            return EntryAt(directory, i);
        }
    }
    return 0;
}

// The entry that became the item when the block was read. 0 where there is none.
std::size_t ExifEditor::FindItem(std::uint32_t itemTag) const {
    if (itemTag >= BesideTags) {
        return FindEntry(Gps, FileTagOf(itemTag));
    }
    for (const Place place : {Main, Exif, Gps, Interop}) {
        const Directory& directory = directories_[place];
        for (std::size_t i = 0; i < directory.entries; ++i) {
            const std::size_t entry = EntryAt(directory, i);
            if (ItemTagOf(PlaceOf(place), Get16(entry)) == itemTag) {
                return entry;
            }
        }
    }
    return 0;
}

std::size_t ExifEditor::AppendEven(std::size_t bytes) {
    const std::size_t at = (block_.size() + 1) / 2 * 2;
    block_.resize(at + bytes);
    return at;
}

std::uint16_t ExifEditor::Get16(std::size_t at) const {
    return order_ == std::endian::little ? LittleEndian16(&block_[at]) : BigEndian16(&block_[at]);
}

std::uint32_t ExifEditor::Get32(std::size_t at) const {
    return order_ == std::endian::little ? LittleEndian32(&block_[at]) : BigEndian32(&block_[at]);
}

void ExifEditor::Put16(std::uint8_t* to, std::uint16_t number) const {
    for (int i = 0; i < 2; ++i) {
        to[order_ == std::endian::little ? i : 1 - i] = static_cast<std::uint8_t>(number >> 8 * i);
    }
}

void ExifEditor::Put32(std::uint8_t* to, std::size_t number) const {
    for (int i = 0; i < 4; ++i) {
        to[order_ == std::endian::little ? i : 3 - i] = static_cast<std::uint8_t>(number >> 8 * i);
    }
}

std::optional<ExifEditor> EditedExif(const PropertyList& source, std::span<const Property> items,
                                     std::span<const Property> onlyWhereKnown) {
    if (source.SourceExif() == nullptr) {
        return std::nullopt;
    }
    auto editor = ExifEditor::Open(*source.SourceExif());
    if (!editor) {
        return std::nullopt;
    }
    PropertyList known;
    for (Property& item : ReadExif(*source.SourceExif(), ExifThumbnail::Keep, known)) {
        known.Add(std::move(item));
    }
    for (const Property& item : items) {
        const Property* before = known.Find(item.tag);
        const bool isUnchanged = before != nullptr && *before == item;
        if (isUnchanged || (before == nullptr && IsOfPngColors(item.tag))) {
            continue;
        }
        if (PlaceOf(item) == ExifPlace::Thumbnail) {
            return std::nullopt;
        }
        editor->Set(item);
    }
    for (const Property& item : onlyWhereKnown) {
        const Property* before = known.Find(item.tag);
        if (before != nullptr && *before != item) {
            editor->Set(item);
        }
    }
    editor->Finish();
    return editor;
}

} // namespace imaginglibrary
