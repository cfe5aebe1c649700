// Doors of lumbrix.dll for our own program; not offered to others.
#pragma once

#include "imaging/exports/lumbrix.h"

extern "C" {

// Writes the imaging library's module file into the current folder where start-up wants it there. 1, or 0 where a file
// error ended it.
LUMBRIX_EXPORT int32_t LUMBRIX_CALL DeployImagingLibrary(void);

// Draws an image file at the top left of a device context (an HDC), pixel for pixel. 0 for success; without a loaded
// imaging library nothing is drawn.
LUMBRIX_EXPORT int32_t LUMBRIX_CALL DrawImageFile(const char* file, void* context);

// Turns an image file into one of the format that the destination's extension names, as the established conversions do,
// whose numbers it gives back. Under an unknown extension it becomes a BMP file.
LUMBRIX_EXPORT int32_t LUMBRIX_CALL ConvertImageFile(const char* source, const char* destination);

// A session for a picture that stays on a canvas: 0, or the imaging library's status. The token is for the end; one of
// 0 ends nothing.
LUMBRIX_EXPORT int32_t LUMBRIX_CALL StartCanvasSession(uintptr_t* token);
LUMBRIX_EXPORT void LUMBRIX_CALL EndCanvasSession(uintptr_t token);

// Puts the image of a file in the place of `image`, which stays as it is where the file cannot be loaded; the one
// before is not disposed of. The file stays open until the session ends. `width` and `height` become those of the image
// that stands there then, 0 for none.
LUMBRIX_EXPORT void LUMBRIX_CALL LoadCanvasImage(const char* file, void** image, int32_t* width, int32_t* height);

// Draws the image on a device context (an HDC) through three points, x and y in turn: where its upper left, upper right
// and lower left corners go.
LUMBRIX_EXPORT void LUMBRIX_CALL DrawCanvasImage(void* image, const int32_t* points, void* context);
}
