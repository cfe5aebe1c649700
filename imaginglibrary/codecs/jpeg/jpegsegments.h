// Keeps the segments of a JPEG header that hold metadata.
#pragma once

#include <array>
#include <cstdint>
// libjpeg's header names FILE without declaring it.
#include <cstdio>
#include <jpeglib.h>

namespace imaginglibrary {

// The segments of one decompressor: the first ones with EXIF, XMP and a comment, and all parts of extended XMP, a
// colour profile and image resources become the list Header().marker_list in the file's order. libjpeg's own keeping
// walks that list at every segment, of which a file may have millions; here the time is linear in the file, and the
// list is short.
class JpegSegments {
  public:
    static constexpr std::size_t Kinds = 6;

    // Has every segment that may be one of these handed to `read`, which must call Read or PassOver.
    static void Request(j_decompress_ptr info, jpeg_marker_parser_method read);

    // Reads the segment whose marker was just read, up to its end, and keeps it where it is one of those.
    void Read(j_decompress_ptr info);

    // Goes to the end of that segment.
    static void PassOver(j_decompress_ptr info);

  private:
    jpeg_marker_struct* last_ = nullptr;
    std::array<unsigned, Kinds> kept_{};
};

} // namespace imaginglibrary
