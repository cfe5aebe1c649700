// ICO files, read only.
#pragma once

#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/inputfile.h"

#include <memory>

namespace imaginglibrary {

// The largest picture of the file, the deepest of that size, as Argb32 with its mask as alpha.
Result<std::unique_ptr<Decoder>> OpenIco(std::shared_ptr<const InputFile> file);

} // namespace imaginglibrary
