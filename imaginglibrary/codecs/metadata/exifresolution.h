// The resolution that EXIF tells of.
#pragma once

#include "imaginglibrary/core/picture.h"

namespace imaginglibrary {

// `own` is what the file says in the place that its format has for it. Where that is nothing, what the items say.
Resolution ResolutionOr(const Resolution& own, const PropertyList& properties);

} // namespace imaginglibrary
