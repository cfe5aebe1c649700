// Takes an icon's image and mask out of pictures in memory, and writes the file.
#pragma once

#include "draw/iconfile.h"
#include "draw/iconmonochrome.h"

#include <windows.h>

#include <string>

namespace lumbrix {

// Four bytes a colour.
using IconColors = std::array<std::uint8_t, 1024>;

// The folder, with its last backslash, of the program file that a window belongs to; cut at 255 characters.
std::string FolderOfModule(HWND window);

// Fills the head for a depth in bits a pixel and the header by which the bits of a mask are read, and makes the mask of
// the picture. The picture's context keeps the key colour as its background colour.
MonochromePicture InitIconHeaders(int bitCount, HDC picture, BITMAPINFOHEADER& maskHeader, IconHead& head);

// Reads the pixels of the bitmap in a context at a depth in bits a pixel, and puts as much of the colour table as that
// depth has into `colors`.
void GetIconBits(IconImage& image, int bitCount, HDC picture, IconColors& colors);

// Writes an icon with the image of one context and the mask of the other, in the place of a file that is there. A file
// "written.ico" in the folder of the window's program is deleted before. Raises where a file cannot be deleted or
// written.
void WriteIconFile(HWND window, const std::string& path, HDC picture, HDC maskedPicture);

} // namespace lumbrix
