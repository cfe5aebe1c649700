// The parameters that callers hand to an encoder.
#pragma once

#include "imaginglibrary/codecs/writeoptions.h"
#include "imaginglibrary/core/status.h"
#include "imaginglibrary/flat/flattypes.h"

namespace imaginglibrary {

// Null for none. The quality of JPEG files and the compression are known, each one number of 32 bits; anything else is
// passed over. InvalidParameter for a known one that is no such number, and for a number without a meaning.
Result<WriteOptions> WriteOptionsOf(const EncoderParameters* parameters);

} // namespace imaginglibrary
