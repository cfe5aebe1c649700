// What our library offers beside the platform's functions: damage of image files, word of how far a reading is,
// metadata as a whole, and a colour below a picture.
//
// Callers look these functions up by name, as they do the others, and do without where the library is not ours.
#pragma once

#include "imaginglibrary/flat/flattypes.h"

#include <cstdint>

namespace imaginglibrary {

// Told that `rowsDone` (1 to `rows`) of `rows` rows of an image's picture were read. 0 stops the reading.
using ImageWatcher = std::int32_t(FLAT_CALL*)(void* context, std::uint32_t rowsDone, std::uint32_t rows);

// All of these are InvalidParameter for a handle that is no image, and for a null answer.

// `*isDamaged` becomes 1 where the data of the image's file were met to be damaged or cut off, in whatever was decoded
// of it so far, else 0. An image shares its file's mark with those that it was cloned, cut out or made smaller from;
// turning keeps it. Only JPEG files are shown in spite of damage, what is not to be seen of them being grey, and
// run-length coded bitmaps and GIFs whose data end early.
FLAT_EXPORT Status FLAT_CALL ImagingGetImageDamage(GpImage* image, std::int32_t* isDamaged);

// From now on damaged data of the image's file are undecodable (OutOfMemory, as in the other formats), for all images
// that share the file: nothing is drawn or saved then. That holds for what was decoded before, too.
FLAT_EXPORT Status FLAT_CALL ImagingRefuseImageDamage(GpImage* image);

// While the image lives, `watcher` is told each time rows of the image's picture were read by a draw (on it, too), a
// turn, a thumbnail or a save: at every hundredth of the rows and at the last one. What reads the picture twice starts
// again; a reduced form counts as the share of the picture that it is. Where the watcher answers 0, the call ends with
// Aborted, and the target of a save stays as it was. Null for `watcher` ends the watch. An image made from this one is
// not watched with it.
//
// The watcher is called on the thread that reads. It may call the library; while a drawing goes on, other threads that
// ask for the surface, or for the image that is drawn on, wait. A call on another thread that is under way when the
// watch ends may still tell the watcher once.
FLAT_EXPORT Status FLAT_CALL ImagingWatchImage(GpImage* image, ImageWatcher watcher, void* context);

// Hands on to `target` what no property item of `source` tells: the EXIF block that its items were read from. It is
// written, with whatever differs among the items of `target`, when that is saved. To be called beside the copying of
// the items; clones and parts of an image have it already.
FLAT_EXPORT Status FLAT_CALL ImagingCarryMetadata(GpImage* source, GpImage* target);

// Makes the image's metadata true of its picture as it is now, after it was resized, cut, turned or drawn on: the items
// that tell its size get it, and thumbnails of EXIF and of image resources are taken out. Orientation stays.
FLAT_EXPORT Status FLAT_CALL ImagingFitMetadata(GpImage* image);

// Takes out what says how the picture is to be turned before it is shown, in EXIF and in XMP, for one that was turned
// that way.
FLAT_EXPORT Status FLAT_CALL ImagingClearOrientation(GpImage* image);

// Takes out all metadata, with `keepsProfile` other than 0 all but the colour profile. The resolution stays, for it is
// the picture's.
FLAT_EXPORT Status FLAT_CALL ImagingStripMetadata(GpImage* image, std::int32_t keepsProfile);

// Lays the picture over a colour (0xAARRGGBB, which counts as opaque), so that no pixel is translucent: a palette then
// has blended colours, other pictures become those of 24 bits. One that cannot be translucent stays as it is. Nothing
// is read yet.
FLAT_EXPORT Status FLAT_CALL ImagingLayOverColor(GpImage* image, std::uint32_t color);

} // namespace imaginglibrary
