// Decodes the samples of a TIFF picture row by row, from strips or tiles.
#pragma once

#include "imaginglibrary/codecs/tiff/tifflayout.h"

#include <array>
#include <memory>

namespace imaginglibrary {

// Where the decoded bytes of one row lie: one plane, or one per sample in use of a planar file.
using TiffPlanes = std::array<const std::uint8_t*, 5>;

// One pass over a picture. Strips are decoded a row at a time, each plane through a handle of its own; of tiles, one
// row of them is held. Belongs to one thread at a time.
class TiffSampleRows {
  public:
    // `layout` must outlive the result; its colours are not Converted.
    static Result<std::unique_ptr<TiffSampleRows>> Open(const TiffLayout& layout,
                                                        const std::shared_ptr<const InputFile>& file);
    virtual ~TiffSampleRows() = default;

    // The next row from the top, valid until the next call.
    virtual Result<TiffPlanes> ReadRow() = 0;
};

// An open and prepared handle.
Result<std::unique_ptr<TiffInput>> OpenPreparedTiff(std::shared_ptr<const InputFile> file);

// The same for a file whose layout was read before; UndecodableContent where it is another by now.
Result<std::unique_ptr<TiffInput>> ReopenTiff(const TiffLayout& layout, std::shared_ptr<const InputFile> file);

} // namespace imaginglibrary
