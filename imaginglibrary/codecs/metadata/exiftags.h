// What EXIF blocks and TIFF directories are made of: their tags, their types of values, and which tag stands where.
#pragma once

#include "imaginglibrary/core/properties.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace imaginglibrary {

// Pointers to directories. They are made when a file is written, and are no property items.
inline constexpr std::uint16_t ExifPointerTag = 0x8769;
inline constexpr std::uint16_t GpsPointerTag = 0x8825;
inline constexpr std::uint16_t InteropPointerTag = 0xA005;

// Where a thumbnail's JPEG file stands. The item of the thumbnail's bytes takes the place of both.
inline constexpr std::uint16_t ThumbnailOffsetTag = 0x0201;
inline constexpr std::uint16_t ThumbnailLengthTag = 0x0202;
inline constexpr std::uint32_t ThumbnailDataTag = 0x501B;

// Items that several formats keep in places of their own.
inline constexpr std::uint32_t CommentTag = 0x9286;
inline constexpr std::uint16_t ColorProfileTag = 0x8773;

// Added to the tag of what has no room in the list since another item has its tag: a comment beside that of EXIF, and
// an entry of the GPS directory whose number the main directory uses as well. No tag in a file is that large.
inline constexpr std::uint32_t BesideTags = 0x01000000;

// What a camera's maker writes as it likes. Offsets in it count from where its block begins.
inline constexpr std::uint16_t MakersNoteTag = 0x927C;

inline constexpr std::uint16_t TiffMagic = 42; // of the classic kind
inline constexpr std::size_t TiffHeaderBytes = 8;
inline constexpr std::size_t TiffEntryBytes = 12;
inline constexpr std::size_t TiffInlineBytes = 4; // a value that is not longer stands in its entry

// Bytes that one element of a value takes; 0 for a type that TIFF 6.0 does not know.
std::size_t ElementBytes(PropertyType type);

// Brings a value's numbers from one byte order into the machine's, or the other way round.
void SwapUnlessNative(std::vector<std::uint8_t>& value, PropertyType type, std::endian order);

// Ends a text with a NUL if it has none; other values stay.
void TerminateText(Property& property);

// The text of an item up to its NUL.
std::string_view TextOf(const Property& property);

// Whether the item is a comment in plain text, which JPEG, PNG and GIF keep outside of EXIF.
bool IsTextComment(const Property& property);

// The comment in plain text among the items, up to its NUL; empty where there is none.
std::string_view TextCommentOf(const PropertyList& properties);

// A comment as EXIF has it, its characters named in front where they are ASCII.
Property UserCommentOf(std::string_view text);

// Whether an item is such a comment without a word in it.
bool IsBlankUserComment(const Property& property);

// The directory of an EXIF block that an item is written to.
enum class ExifPlace { Nowhere, Main, Exif, Gps, Interop, Thumbnail };
ExifPlace PlaceOf(const Property& item);

// The item that an entry of a directory becomes: its own tag, but the interoperability and the thumbnail directory use
// tags of the others, so their items have tags of their own. Nothing for an entry that is none.
std::optional<std::uint16_t> ItemTagOf(ExifPlace directory, std::uint16_t fileTag);

// The tag in its directory that an item is written under. Only for tags that PlaceOf gives a place.
std::uint16_t FileTagOf(std::uint32_t itemTag);

} // namespace imaginglibrary
