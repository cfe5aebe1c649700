// How libjpeg's errors and warnings become a status.
#include "imaginglibrary/codecs/jpeg/jpegerrors.h"

#include <jerror.h>

namespace imaginglibrary {

namespace {

// Files of real cameras and programs have these, and no pixel is lost by them: padding or leftovers before a marker,
// an Adobe or JFIF version that libjpeg does not know, and baseline scans whose progression fields are all zero.
// Every other warning means that libjpeg goes on with pixels it made up.
bool IsHarmless(int warning) {
    return warning == JWRN_EXTRANEOUS_DATA || warning == JWRN_ADOBE_XFORM || warning == JWRN_JFIF_MAJOR ||
           warning == JWRN_NOT_SEQUENTIAL;
}

void ExitOnError(j_common_ptr info) {
    JpegErrors& errors = ErrorsOf(info);
    errors.areDataBroken = errors.msg_code != JERR_OUT_OF_MEMORY;
    errors.Leave(errors.msg_code == JERR_IMAGE_TOO_BIG ? Status::InvalidParameter : UndecodableContent);
}

void JudgeMessage(j_common_ptr info, int level) {
    JpegErrors& errors = ErrorsOf(info);
    const bool isWarning = level < 0;
    if (isWarning && !IsHarmless(errors.msg_code)) {
        errors.MeetDamage();
    }
}

void PrintNothing(j_common_ptr) {}

} // namespace

JpegErrors::JpegErrors() : jpeg_error_mgr() {
    jpeg_std_error(this);
    error_exit = ExitOnError;
    emit_message = JudgeMessage;
    output_message = PrintNothing;
}

void JpegErrors::MeetDamage() {
    if (damage == nullptr || damage->Meet() != Status::Ok) {
        Leave(UndecodableContent);
    }
}

} // namespace imaginglibrary
