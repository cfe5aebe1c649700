// What reading and writing files have in common on Linux.
#pragma once

#include "imaginglibrary/core/status.h"

#include <cstddef>
#include <cstdint>

namespace imaginglibrary {

// Reads up to `count` bytes, however few the system gives at a time, and tells how many; fewer only at the end.
Result<std::size_t> ReadDescriptorAt(int descriptor, std::uint64_t offset, void* buffer, std::size_t count);

} // namespace imaginglibrary
