// What our own imaging library offers beyond the flat functions that all have. Where the loaded library lacks one,
// nothing is called and the answer is that of a library which has nothing to tell.
#pragma once

#include "imaging/gdiplus/flattypes.h"

#include <cstdint>

namespace lumbrix {

// Told how many rows of an image were read; 0 stops the reading, which then ends with the status Aborted.
using RowWatcher = std::int32_t(LUMBRIX_FLAT_CALL*)(void* context, std::uint32_t rowsDone, std::uint32_t rows);

// Whether damage was met in what was decoded of an image's file so far.
bool IsImageDamaged(ImageHandle image);

// From now on damaged data of the image's file cannot be decoded. Otherwise some formats show what they have.
void RefuseImageDamage(ImageHandle image);

// The watcher is told of every reading of the image's rows, by a draw or a save, for as long as the image lives.
void WatchImage(ImageHandle image, RowWatcher watcher, void* context);

// What no property item tells of the source's metadata goes along with the target's items.
void CarryMetadata(ImageHandle source, ImageHandle target);

// Makes the metadata of an image true of its picture as it is now: sizes are set, thumbnails taken out.
void FitMetadata(ImageHandle image);

// Takes out what says how the picture is to be turned before it is shown; from another library's images the item.
void ClearOrientation(ImageHandle image);

enum class ColorProfile { Kept, Removed };

// Takes out all metadata; from another library's images all items.
void StripMetadata(ImageHandle image, ColorProfile profile);

// Lays the picture over a colour, 0xAARRGGBB, which makes it opaque; one that is opaque stays as it is. NotImplemented
// where the library cannot.
FlatStatus LayOverColor(ImageHandle image, std::uint32_t color);

} // namespace lumbrix
