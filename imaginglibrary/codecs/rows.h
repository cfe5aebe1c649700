// The rows of the registry, one function per format, each defined in the format's own file.
#pragma once

#include "imaginglibrary/codecs/codec.h"

namespace imaginglibrary {

const Codec& BmpCodec();
const Codec& JpegCodec();
const Codec& GifCodec();
const Codec& TiffCodec();
const Codec& PngCodec();
const Codec& IcoCodec();
#ifdef _WIN32
const Codec& EmfCodec();
const Codec& WmfCodec();
#endif

} // namespace imaginglibrary
