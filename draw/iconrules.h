// Which bitmap files become icons, under what name, and what is said of those that do not.
#pragma once

#include "base/geometry.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace lumbrix {

// The title over a picture that is not square.
inline constexpr const char* IconTitle = "Quorvane";

// How much of a bitmap file must be known to judge it.
inline constexpr std::size_t BitmapStartBytes = 34;

// Width and height as they stand in the start of a bitmap file; what is missing counts as zeros. The kind of file is
// not looked at.
PixelSize SizeInBitmapFile(std::string_view start);

// Whether a file starts like a bitmap whose sizes stand where SizeInBitmapFile reads them.
bool IsBitmapFile(std::string_view start);

// Whether a bitmap file of so many bytes has all of its pixels; one that is compressed, whether it has any.
bool HasAllPixels(std::string_view start, std::uint64_t fileBytes);

// The icon's path: the bitmap's with its last three characters replaced, whatever they are.
std::string IconPath(const std::string& bitmapPath);

std::string NotSquareText(PixelSize size);

} // namespace lumbrix
