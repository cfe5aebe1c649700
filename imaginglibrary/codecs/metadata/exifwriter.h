// Puts EXIF blocks and the directories of TIFF files together from property items.
#pragma once

#include "imaginglibrary/codecs/metadata/exiftags.h"

#include <map>

namespace imaginglibrary {

// An entry of a directory; the value is in the file's byte order. One of up to four bytes is what stands
// in the entry itself, whatever the count says.
struct ExifEntry {
    PropertyType type;
    std::uint32_t count;
    std::vector<std::uint8_t> value;
};

// By tag, in the order that files must have.
using ExifDirectory = std::map<std::uint16_t, ExifEntry>;

// The bytes of a directory that stands at `start` in a file of this byte order, its values behind it. It is the last of
// its kind.
std::vector<std::uint8_t> MakeDirectory(const ExifDirectory& directory, std::uint32_t start, std::endian order);

// All directories of a block.
class ExifBlock {
  public:
    explicit ExifBlock(std::endian order = std::endian::little) : order_(order) {}

    // Puts an item in its place. One that has none, or whose value is not made of whole elements, is passed over.
    void Add(Property property);

    // Whether there is nothing to write; a thumbnail alone is nothing.
    bool IsEmpty() const;

    void DropThumbnail();

    // Leaves out what is largest, the thumbnail first, until MakeBlock's result is not longer than this.
    void Shorten(std::size_t mostBytes);

    // For TIFF files, which have entries of their own in it.
    ExifDirectory& Main() { return main_; }

    // All directories for a file that has them at `start`, which is even. Empty where the file would be longer than its
    // offsets can tell.
    std::vector<std::uint8_t> MakeDirectories(std::uint64_t start);

    // A block of its own, with its header.
    std::vector<std::uint8_t> MakeBlock();

    // The same with the maker's note at `noteAt`, whatever that leaves empty. Empty where there is no note, or the
    // place is none for it.
    std::vector<std::uint8_t> MakeBlockAround(std::uint32_t noteAt);

  private:
    ExifDirectory* DirectoryOf(ExifPlace place);
    std::uint64_t SetPointers(std::uint64_t start);
    void DropLargest();

    std::vector<std::uint8_t> MakeHeader(std::uint32_t main) const;

    std::endian order_;
    ExifDirectory main_;
    ExifDirectory exif_;
    ExifDirectory gps_;
    ExifDirectory interop_;
    ExifDirectory thumbnail_;
    std::vector<std::uint8_t> thumbnailData_;
};

} // namespace imaginglibrary
