// What a job may want of any picture besides the operation: that it is upright, that it is opaque, that nothing is told
// of it. Established operations want none of these.
#pragma once

#include "imaging/course.h"

#include <cstdint>
#include <optional>

namespace lumbrix {

// The turn that an image is to be given first, where that is wanted and it stores one; 0 for one that is upright.
std::optional<std::int32_t> WantedTurn(const Course& course, ImageHandle image);

// Gives an image such a turn, and takes out the orientation, so that no reader turns it once more. False where the
// operation ends.
bool TurnUpright(Course& course, ImageHandle image, std::optional<std::int32_t> turn);

// Lays an image over the background, where one is wanted. False where the operation ends.
bool LayOverBackground(Course& course, ImageHandle image);

// Both, for a source as it was loaded.
bool Adjust(Course& course, ImageHandle source);

// Takes the metadata out of an image that is about to be written, where that is wanted.
void StripAsWanted(const Course& course, ImageHandle image);

} // namespace lumbrix
