// Tells somebody how far the reading of a picture has come, and stops it when asked to.
#pragma once

#include "imaginglibrary/core/picture.h"

#include <cstdint>
#include <memory>

namespace imaginglibrary {

// Called by whoever reads, on that thread. Several threads may read at once.
class RowWatch {
  public:
    virtual ~RowWatch() = default;

    // `done` of `rows` were read. False to have the reading stopped.
    virtual bool Tell(std::uint32_t done, std::uint32_t rows) = 0;
};

// The same picture, of whose rows `watch` is told as they are read: each time another hundredth is done, and at the
// end. Reading that it stops is Aborted. Rows of a reduced form count as the share of the picture's that they are.
std::shared_ptr<const PixelSource> WatchedBy(std::shared_ptr<RowWatch> watch,
                                             std::shared_ptr<const PixelSource> picture);

} // namespace imaginglibrary
