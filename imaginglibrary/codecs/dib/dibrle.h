// The run-length compression of 4-bit and 8-bit device-independent bitmaps.
#pragma once

#include "imaginglibrary/codecs/dib/dib.h"
#include "imaginglibrary/core/damage.h"

#include <cstdint>
#include <memory>

namespace imaginglibrary {

// Scans the compressed rows once for where each begins, so that they can be delivered from the top although the bottom
// one is mostly stored first. Skipped pixels have index 0, and so have those that are missing where the data end before
// the picture does, which `damage` is told; UndecodableContent where it refuses that, or where no pixel is there.
Result<std::unique_ptr<RowReader>> OpenRleRows(std::shared_ptr<const InputFile> file, const Dib& dib,
                                               std::uint64_t pixels, FileDamage& damage);

} // namespace imaginglibrary
