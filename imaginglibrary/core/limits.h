// The limits that keep hostile files from taking unbounded memory or time, all in one place.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace imaginglibrary {

// Longest side of a picture, in pixels; a file that claims more is refused with InvalidParameter.
inline constexpr std::uint32_t MaximumSide = 65535;

// Most pixels of a GIF screen around an image that is much smaller; real ones are little larger than their images.
inline constexpr std::uint64_t MaximumEmptyScreenPixels = std::uint64_t{1} << 26;

// Most pixels of a JPEG that one byte of its file may stand for, where it has more than MaximumEmptyScreenPixels. The
// shortest codes there are make 512.
inline constexpr std::uint64_t MaximumJpegPixelsPerByte = 2048;

// Most memory that one picture may take where its format forces a whole picture into memory (interlaced, progressive,
// run-length coded), in bytes. A 32-bit process has 2 GiB in all.
inline constexpr std::size_t MaximumPictureBytes = sizeof(void*) == 4 ? std::size_t{512} << 20 : std::size_t{1} << 30;

// Most memory that one of those pictures takes before the length of its file says that there may be more in it, in
// bytes, and how many bytes of the picture one byte of the file may stand for then. Only what is next to blank is
// smaller.
inline constexpr std::size_t MaximumUnfoundedBytes = std::size_t{256} << 20;
inline constexpr std::size_t MaximumBytesPerFileByte = 256;

// Most memory that a picture in a file of this length may take as a whole, in bytes.
constexpr std::uint64_t MaximumPictureBytesOf(std::uint64_t fileBytes) {
    const std::uint64_t founded = std::min<std::uint64_t>(fileBytes, MaximumPictureBytes) * MaximumBytesPerFileByte;
    return std::clamp<std::uint64_t>(founded, MaximumUnfoundedBytes, MaximumPictureBytes);
}

// Most memory that a picture prepared for drawing through three points may take; a larger one is drawn from a smaller
// form.
inline constexpr std::size_t MaximumPreparedBytes = sizeof(void*) == 4 ? std::size_t{384} << 20 : std::size_t{1} << 30;

// Most scans a progressive JPEG may have; real encoders make about ten.
inline constexpr int MaximumJpegScans = 500;

// Most blocks that all scans of a progressive JPEG together may go through: those of 24 megapixels in 200 scans, or of
// the largest that is read in 15. A scan of a few bytes goes through all of them.
inline constexpr std::uint64_t MaximumJpegScanBlocks = std::uint64_t{1} << 27;

// Longest single metadata chunk or tag that is read, and most that is kept of one file's metadata, in bytes.
inline constexpr std::size_t MaximumMetadataBytes = std::size_t{16} << 20;

// Most directory entries or chunks of one file's metadata that are looked at; cameras write about a hundred.
inline constexpr std::size_t MaximumMetadataEntries = 4096;

// Most chunks that a PNG file may have before its image data.
inline constexpr std::size_t MaximumPngChunks = std::size_t{1} << 18;

// Longest list of the places of strips and tiles that is shown as a property item, in bytes.
inline constexpr std::size_t MaximumPlacesBytes = 65536;

// Longest XMP packet, and most image resources, that are carried from file to file, in bytes.
inline constexpr std::size_t MaximumCarriedBytes = std::size_t{4} << 20;

// Longest comment of a GIF file that is read, in bytes.
inline constexpr std::size_t MaximumCommentBytes = std::size_t{1} << 20;

// Most frames of a GIF file that are counted.
inline constexpr std::size_t MaximumGifFrames = 65536;

// Largest metafile that is handed to the system's player, in bytes.
inline constexpr std::size_t MaximumMetafileBytes = std::size_t{64} << 20;

// Largest TIFF strip or tile, decoded, in bytes.
inline constexpr std::size_t MaximumTileBytes = std::size_t{256} << 20;

// Whether a picture of this size is within the limits and not empty.
constexpr bool IsAcceptableSize(std::uint64_t width, std::uint64_t height) {
    return width >= 1 && height >= 1 && width <= MaximumSide && height <= MaximumSide;
}

} // namespace imaginglibrary
