// Makes a small copy of an image file.
#pragma once

#include "imaging/source.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// The width that keeps the proportions at a height: exact product and quotient in extended precision, rounded to the
// nearest whole number, ties to the even one.
std::int32_t ThumbnailWidth(std::int32_t sourceWidth, std::int32_t sourceHeight, std::int32_t height);

// A copy of `height` pixels, without the source's properties. A height beyond the source's enlarges, unless only
// shrinking is wanted. One at which no width is left is a size that cannot be, InvalidParameter.
Outcome MakeThumbnail(const ConvertOrder& order, std::int32_t height, const Wishes& wishes);

// As established: a height of 0 and blank names give 0 and nothing is done, and so does a source without size. On
// failure the answers of ConvertImageFile, sessions left open as there.
StatusValue ConvertImageFileToThumb(const std::string& source, std::int32_t height, const std::string& destination,
                                    const std::string& mimeWord);

} // namespace lumbrix
