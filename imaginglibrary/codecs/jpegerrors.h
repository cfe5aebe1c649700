// How libjpeg's errors and warnings become a status.
#pragma once

#include "imaginglibrary/codecs/libraryexit.h"

// libjpeg's header names FILE without declaring it.
#include <cstdio>
#include <jpeglib.h>

namespace imaginglibrary {

// The error manager of one compressor or decompressor, which must not outlive it. Errors, and those warnings that
// mean lost pixels, leave the Run that is under way; nothing is ever printed.
struct JpegErrors : jpeg_error_mgr, LibraryExit {
    JpegErrors();
    JpegErrors(const JpegErrors&) = delete;
    JpegErrors& operator=(const JpegErrors&) = delete;
};

// The error manager of a compressor or decompressor that was set up with a JpegErrors.
template <class Info> JpegErrors& ErrorsOf(Info* info) { return *static_cast<JpegErrors*>(info->err); }

} // namespace imaginglibrary
