// The date that a file holds about its picture, read and written. Nothing is drawn.
#pragma once

#include "imaging/outcome.h"

#include <string>

namespace lumbrix {

// The text of the date property, whatever its type. PropertyNotFound where there is none.
Outcome ReadDate(const std::string& name, std::string& date, const Wishes& wishes);

// As established: empty unless everything works. Where the load fails the session stays open on purpose.
std::string GetImageDateTime(const std::string& name);

struct DateStampOrder {
    std::string source;
    std::string destination;
    std::string date;
};

// Writes a copy in JPEG form with the date property set to the text as it stands; the file itself is not touched.
Outcome StampDate(const DateStampOrder& order, const Wishes& wishes);

// Where DateStampImage writes: the folder of the file, which ends in a backslash, its name up to the first dot,
// "_stamped" and ".jpg".
std::string StampedName(const std::string& name);

// The same for a file in a folder as this system writes them.
std::string StampedNameBeside(const std::string& name);

// As established, to StampedName: Done for a blank name and without an imaging library, Refused where no session can be
// started or the load fails (the session stays open on purpose), else the imaging library's status of setting the
// property. A save that fails is not seen.
StatusValue DateStampImage(const std::string& name, const std::string& date);

} // namespace lumbrix
