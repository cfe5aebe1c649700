// Reads the first image of a GIF file.
#pragma once

#include "imaginglibrary/core/picture.h"
#include "imaginglibrary/files/inputfile.h"

#include <memory>

namespace imaginglibrary {

// The picture is the file's screen with the first image on it; what of the image lies beyond the screen is not seen,
// and a screen without a side takes the image's. It is Indexed8, or Argb32 where the file has more than one image. The
// palette is as long as in the file; its transparent entry has alpha 0 and keeps its colour. Where an image does not
// cover the screen, the rest is transparent: through the transparent entry, or one appended to the palette, or, in a
// full palette without one, as Argb32.
//
// Data that end too early are undecodable where the file breaks off. Where the file itself says that they end, the
// missing pixels are transparent if the palette has a transparent entry, else its first colour, and the picture's
// Damage is known.
//
// Lines are decoded as they are asked for; an interlaced image is held in memory, a byte per pixel.
Result<std::unique_ptr<Decoder>> OpenGif(std::shared_ptr<const InputFile> file);

} // namespace imaginglibrary
