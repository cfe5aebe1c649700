// Metadata that tell of the picture itself, kept true when it becomes another one.
#pragma once

#include "imaginglibrary/core/properties.h"

namespace imaginglibrary {

// Gives the items that tell how large the picture is its size, where they are there, and takes out its small copies:
// those of EXIF and of the image resources. Orientation stays: no pixel is turned because of it.
void FitToPicture(PropertyList& properties, std::uint32_t width, std::uint32_t height);

// Takes out what says how the picture is to be turned before it is shown, in EXIF and in XMP.
void RemoveOrientation(PropertyList& properties);

// What becomes of the colour profile where everything else goes.
enum class ProfileFate { Kept, Removed };

// Takes out everything that is told of the picture.
void RemoveMetadata(PropertyList& properties, ProfileFate profile);

} // namespace imaginglibrary
