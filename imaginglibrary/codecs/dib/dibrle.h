// The run-length compression of 4-bit and 8-bit device-independent bitmaps.
#pragma once

#include "imaginglibrary/codecs/dib/dib.h"

#include <cstdint>
#include <memory>

namespace imaginglibrary {

// Scans the compressed rows once for where each begins, so that they can be delivered from the top although the bottom
// one is stored first. Skipped pixels have index 0. UndecodableContent if the data end before the picture does.
Result<std::unique_ptr<RowReader>> OpenRleRows(std::shared_ptr<const InputFile> file, const Dib& dib,
                                               std::uint64_t pixels);

} // namespace imaginglibrary
