// A stream of the caller's in the place of a file that is written.
#pragma once

#include "imaginglibrary/files/outputfile.h"
#include "imaginglibrary/files/stream.h"

namespace imaginglibrary {

// Writes from where the stream stands on, as the codec does, so a save that fails may leave a part of a picture in it.
// A stream that cannot seek is enough for codecs that only append. After Commit the stream stands behind the picture;
// what else it may want, such as a commit of its own, is the caller's to do.
std::unique_ptr<OutputFile> MakeOutputStream(Stream* stream);

} // namespace imaginglibrary
