// How libpng's errors become a status.
#pragma once

#include "imaginglibrary/codecs/libraryexit.h"

#include <png.h>

namespace imaginglibrary {

// For libpng's create functions, with a LibraryExit as the error pointer: errors leave the Run that is under way as
// UndecodableContent, and so do warnings that memory is short; others are passed over, nothing is ever printed.
[[noreturn]] void LeaveOnPngError(png_structp png, png_const_charp message);
void LeaveOnPngMemoryWarning(png_structp png, png_const_charp message);

} // namespace imaginglibrary
