// A stream of the caller's in the place of a file that is read.
#pragma once

#include "imaginglibrary/files/inputfile.h"
#include "imaginglibrary/files/stream.h"

namespace imaginglibrary {

// The bytes from where the stream stands to its end, read piece by piece when they are asked for. A reference to the
// stream is kept as long as the file is. The stream is never called by two threads at once. Win32Error for a stream
// that cannot seek.
Result<std::shared_ptr<const InputFile>> OpenInputStream(Stream* stream);

} // namespace imaginglibrary
