// Surfaces on device contexts, of which there are none on this system.
#include "imaginglibrary/flat/flattypes.h"
#include "imaginglibrary/flat/guard.h"

namespace imaginglibrary {

FLAT_EXPORT Status FLAT_CALL GdipCreateFromHDC(void* /*context*/, GpGraphics** /*graphics*/) {
    return Guarded([] { return Status::NotImplemented; });
}

} // namespace imaginglibrary
