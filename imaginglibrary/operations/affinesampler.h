// What a pixel of a surface shows of a picture behind an affine map.
#pragma once

#include "imaginglibrary/core/bitmap.h"
#include "imaginglibrary/core/geometry.h"
#include "imaginglibrary/operations/resample.h"

#include <memory>

namespace imaginglibrary {

// Holds the picture in memory, made smaller beforehand where the map shrinks, so that nothing is left out between the
// samples.
class AffineSampler {
  public:
    // A map that flattens the picture gives a sampler that shows nothing of it.
    static Result<AffineSampler> Create(const std::shared_ptr<const PixelSource>& picture, const Affine& toSurface,
                                        Resampling resampling);

    // Blue, green, red and alpha, not premultiplied, of the pixel at (x, y) of the surface. Beyond the picture alpha is
    // 0; across its border it fades over one pixel (with Nearest it does not).
    void SampleAt(std::int64_t x, std::int64_t y, std::uint8_t* pixel) const;

  private:
    struct Premultiplied {
        float channels[4];
    };

    AffineSampler(std::shared_ptr<const Bitmap> bitmap, const std::optional<Affine>& fromSurface,
                  Resampling resampling);

    double CoverageAt(Point point) const;
    Premultiplied Interpolated(Point point) const;
    const std::uint8_t* PixelAt(std::int64_t x, std::int64_t y) const;

    std::shared_ptr<const Bitmap> bitmap_; // Pargb32
    std::optional<Affine> fromSurface_;
    Resampling resampling_;
    double stepX_ = 1; // how far one pixel of the surface reaches across the picture's columns and rows
    double stepY_ = 1;
};

} // namespace imaginglibrary
