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
}
