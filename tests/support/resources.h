// What the test's own process holds of the system's resources.
#pragma once

#include <cstdint>

namespace tests {

// Pens, brushes, fonts, bitmaps, device contexts and the like. Wine's GetGuiResources tells of none, so there the
// system's own table of them is gone through.
int CountGdiObjects();

// Windows, menus, icons, hooks and the like; under Wine those of all processes of the session.
int CountUserObjects();

// Files, keys, threads, events and the like.
int CountHandles();

std::int64_t CountPrivateBytes();

// Of what is allocated, to the byte.
std::int64_t CountHeapBytes();

} // namespace tests
