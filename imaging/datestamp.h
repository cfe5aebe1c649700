// The date that a file holds about its picture, read and written. Nothing is drawn.
#pragma once

#include "imaging/status.h"

#include <string>

namespace lumbrix {

// The text of the date property, whatever its type; empty unless everything works. Where the load fails the session
// stays open on purpose.
std::string GetImageDateTime(const std::string& name);

// Where DateStampImage writes: the folder of the file, its name up to the first dot, "_stamped" and ".jpg".
std::string StampedName(const std::string& name);

// Writes a copy in JPEG form with the date property set to the text as it stands; the file itself is not touched. Done
// for a blank name and without an imaging library, Refused where no session can be started or the load fails (the
// session stays open on purpose), else the imaging library's status of setting the property. A save that fails is not
// seen.
StatusValue DateStampImage(const std::string& name, const std::string& date);

} // namespace lumbrix
