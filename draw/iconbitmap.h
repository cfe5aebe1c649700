// A bitmap file as an icon is made of it: how it starts, and its picture at the size of an icon.
#pragma once

#include "toolkit/handles.h"

#include <string>

namespace lumbrix {

// The first BitmapStartBytes of a file, or what there is of them. Raises where it cannot be read.
std::string StartOfFile(const std::string& path);

// A picture for the screen with a context to copy it from.
struct LoadedPicture {
    OwnedBitmap bitmap;
    OwnedContext context; // goes first, and lets go of the bitmap with it
};

// The picture of a bitmap file, stretched to the size of an icon unless it has that; without a context where the system
// does not load the file.
LoadedPicture LoadIconPicture(const std::string& path);

} // namespace lumbrix
