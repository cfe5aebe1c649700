// Images behind handles.
#pragma once

#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/flat/flattypes.h"

#include <memory>

namespace imaginglibrary {

// What an image handle stands for. The picture is shared by clones, for it never changes; one that was loaded keeps its
// file open until the last image that shows it is gone.
struct Image {
    std::shared_ptr<const PixelSource> picture;
};

// Null for a handle that is zero, foreign or disposed of.
std::shared_ptr<Image> FindImage(GpImage* handle);

GpImage* AddImage(std::shared_ptr<const PixelSource> picture);

} // namespace imaginglibrary
