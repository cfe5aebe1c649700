// What a GIF file holds besides the pixels of its first image.
#pragma once

#include "imaginglibrary/core/properties.h"
#include "imaginglibrary/files/inputfile.h"

#include <cstddef>
#include <memory>

namespace imaginglibrary {

struct GifContents {
    std::size_t images = 0; // up to MaximumGifFrames
    PropertyList properties;
};

// Goes through the file from block to block, as far as it is whole. The items: for more than one image their delays and
// how often they are shown, then the palette and background of the screen, the transparent index of the first image,
// the first comment and XMP. A status only where reading fails.
Result<GifContents> ReadGifContents(std::shared_ptr<const InputFile> file);

} // namespace imaginglibrary
