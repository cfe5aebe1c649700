// Makes rows of pixels from the decoded samples of a TIFF picture.
#pragma once

#include "imaginglibrary/codecs/tiff/tiffsamples.h"

#include <vector>

namespace imaginglibrary {

// Belongs to one thread at a time.
class TiffPixels {
  public:
    // `layout` must outlive this; its colours are not Converted.
    explicit TiffPixels(const TiffLayout& layout);

    // Fills one row in the layout's pixel format.
    void MakeRow(const TiffPlanes& planes, std::uint8_t* row);

  private:
    // Samples lie `step` apart, counted in samples, from the first of a row on.
    struct Lane {
        const std::uint8_t* bytes;
        std::size_t first;
        std::size_t step;
    };

    Lane LaneOf(const TiffPlanes& planes, unsigned sample) const;
    void CopyIndices(const std::uint8_t* from, std::uint8_t* row) const;
    void PackIndices(std::uint8_t* row) const;
    void MakeRgb48(const TiffPlanes& planes, std::uint8_t* row) const;
    void MakeColors(std::uint8_t* row) const;
    void MakeCmyk(std::uint8_t* row) const;
    void MakeLab(const TiffPlanes& planes, std::uint8_t* row);
    Color LabColor(const std::array<unsigned, 3>& samples) const;

    // Reads one sample of every pixel, as it is for indices, else widened or narrowed to 8 bits.
    void ReadSamples(const Lane& lane, std::vector<std::uint8_t>& values) const;
    void ReadPackedSamples(const Lane& lane, std::vector<std::uint8_t>& values) const;

    const TiffLayout& layout_;
    bool keepsValues_;                              // samples become indices unscaled
    std::vector<std::vector<std::uint8_t>> values_; // one row of each used sample
};

} // namespace imaginglibrary
