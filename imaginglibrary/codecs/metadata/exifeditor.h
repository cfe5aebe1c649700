// Changes values of an EXIF block, and leaves everything else where it stands.
#pragma once

#include "imaginglibrary/codecs/metadata/exiftags.h"

#include <array>
#include <span>

namespace imaginglibrary {

// Makers' notes hold offsets that count from the block's start, so nothing may be moved that nobody asked to change: a
// value that is not longer than the old one takes its place, a longer one goes to the end of the block, and so does a
// directory that gets more entries. The legal order of calls is Open, then Set as wanted, then Finish once, then the
// others; DropThumbnail and Remove at any time.
class ExifEditor {
  public:
    // Nothing for a block whose directories are not all whole, or stand in each other.
    static std::optional<ExifEditor> Open(std::vector<std::uint8_t> block);

    // Gives an item its value, whether the block has it or not. One that has no place in a block is passed over.
    void Set(Property item);

    // Takes out the entries that became an item; those behind them in their directory move up.
    void Remove(std::uint32_t itemTag);

    // Takes out the directory of the thumbnail and the picture itself.
    void DropThumbnail();

    // Puts the new entries in.
    void Finish();

    const std::vector<std::uint8_t>& Block() const { return block_; }
    std::endian Order() const { return order_; }

    // The entries of the main directory as they stand.
    std::span<const std::uint8_t> MainEntries() const;

  private:
    // In the order in which they are put in: those that others point to come first.
    enum Place : std::size_t { Interop, Gps, Exif, Main, Places };

    using Entry = std::array<std::uint8_t, TiffEntryBytes>;

    struct Directory {
        std::size_t at = 0; // 0 for one that is not there
        std::size_t entries = 0;
        std::size_t pointerAt = 0; // where its own place is written
        std::vector<Entry> more;
    };

    explicit ExifEditor(std::vector<std::uint8_t> block) : block_(std::move(block)) {}

    static std::optional<Place> PlaceIn(ExifPlace place);
    static ExifPlace PlaceOf(Place place);
    bool ReadHeader();
    bool ReadDirectory(Place place, std::size_t pointerAt);
    bool ReadPointedTo(Place from, std::uint16_t tag, Place to);
    bool IsWithin(std::size_t at, std::size_t bytes) const {
        return at <= block_.size() && bytes <= block_.size() - at;
    }
    bool HoldsDirectory(std::size_t at, std::size_t bytes) const;
    std::size_t EntryAt(const Directory& directory, std::size_t index) const;
    std::size_t FindEntry(Place place, std::uint16_t tag) const;
    std::size_t FindItem(std::uint32_t itemTag) const;
    void RemoveEntry(std::size_t entry);
    std::size_t PutValue(const std::vector<std::uint8_t>& value, std::size_t oldAt, std::size_t room);
    void MoveToEnd(Place place);
    void Erase(std::size_t at, std::size_t bytes);
    std::size_t AppendEven(std::size_t bytes);
    std::uint16_t Get16(std::size_t at) const;
    std::uint32_t Get32(std::size_t at) const;
    void Put16(std::uint8_t* to, std::uint16_t number) const;
    void Put32(std::uint8_t* to, std::size_t number) const;

    std::vector<std::uint8_t> block_;
    std::endian order_ = std::endian::little;
    std::array<Directory, Places> directories_;
};

// The block that the items of `source` were read from, with what is changed of those that are to be written. Those that
// have another place in the file are changed where the block has them, and not added to it. Nothing where there is no
// such block, or where it cannot be changed that way.
std::optional<ExifEditor> EditedExif(const PropertyList& source, std::span<const Property> items,
                                     std::span<const Property> onlyWhereKnown = {});

} // namespace imaginglibrary
