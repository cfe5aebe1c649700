// Memory as a stream that the imaging library reads or writes.
#pragma once

#include "imaging/gdiplus/flatstream.h"
#include "imaging/memory.h"

#include <memory>

namespace lumbrix {

struct StreamRelease {
    void operator()(FlatStream* stream) const;
};

// One reference to a stream; the imaging library may keep others.
using OwnedStream = std::unique_ptr<FlatStream, StreamRelease>;

// Reads these bytes, which must stay where they are while anybody has a reference. Not written: that is denied.
OwnedStream ReadingStream(MemoryBytes bytes);

// Writes and reads this memory, from its beginning.
OwnedStream WritingStream(std::shared_ptr<GrowingMemory> memory);

} // namespace lumbrix
