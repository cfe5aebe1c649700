// What each status is called.
#include "imaging/status.h"

#include <iterator>

namespace lumbrix {

namespace {

// The imaging library's, by their numbers from 0 on.
constexpr const char* FlatStatusNames[] = {
    "Ok",
    "GenericError",
    "InvalidParameter",
    "OutOfMemory",
    "ObjectBusy",
    "InsufficientBuffer",
    "NotImplemented",
    "Win32Error",
    "WrongState",
    "Aborted",
    "FileNotFound",
    "ValueOverflow",
    "AccessDenied",
    "UnknownImageFormat",
    "FontFamilyNotFound",
    "FontStyleNotFound",
    "NotTrueTypeFont",
    "UnsupportedGdiplusVersion",
    "GdiplusNotInitialized",
    "PropertyNotFound",
    "PropertyNotSupported",
    "ProfileNotFound",
};

} // namespace

const char* StatusName(StatusValue status) {
    switch (status) {
    case Refused:
        return "Refused";
    case NoSession:
        return "NoSession";
    case NoEncoder:
        return "NoEncoder";
    case BadName:
        return "BadName";
    case NotLoaded:
        return "NotLoaded";
    case NoLibrary:
        return "NoLibrary";
    case AlreadyThere:
        return "AlreadyThere";
    default:
        return status >= 0 && status < std::ssize(FlatStatusNames) ? FlatStatusNames[status] : "Unknown";
    }
}

} // namespace lumbrix
