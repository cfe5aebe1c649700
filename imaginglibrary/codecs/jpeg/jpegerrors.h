// How libjpeg's errors and warnings become a status.
#pragma once

#include "imaginglibrary/codecs/libraryexit.h"
#include "imaginglibrary/core/damage.h"

// libjpeg's header names FILE without declaring it.
#include <cstdio>
#include <jpeglib.h>

namespace imaginglibrary {

// The error manager of one compressor or decompressor, which must not outlive it. Errors leave the Run that is under
// way, and so do those warnings that mean lost pixels, until damage is put up with; nothing is ever printed.
struct JpegErrors : jpeg_error_mgr, LibraryExit {
    JpegErrors();
    JpegErrors(const JpegErrors&) = delete;
    JpegErrors& operator=(const JpegErrors&) = delete;

    // To be called while Run is under way, where pixels are lost.
    void MeetDamage();

    FileDamage* damage = nullptr; // what to tell of lost pixels; null while they are an error
    bool areDataBroken = false;   // whether Run was left because libjpeg could not go on with the data
};

// The error manager of a compressor or decompressor that was set up with a JpegErrors.
template <class Info> JpegErrors& ErrorsOf(Info* info) { return *static_cast<JpegErrors*>(info->err); }

} // namespace imaginglibrary
