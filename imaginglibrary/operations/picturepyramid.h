// A picture prepared to be drawn again and again at any size and angle.
#pragma once

#include "imaginglibrary/operations/pyramidlevel.h"

#include <memory>
#include <vector>

namespace imaginglibrary {

// The picture at its full size and at ever smaller ones, three to each halving, down to a single pixel; each averages
// all that its pixels stand for. Where the full size would take too much memory the largest form is a smaller one.
class PicturePyramid {
  public:
    // Reads the picture once from the top, and not again. `mostBytes` is about the memory that all forms may take.
    static Result<std::shared_ptr<const PicturePyramid>> Make(const PixelSource& picture, std::size_t mostBytes);

    // Of the picture itself.
    std::uint32_t Width() const { return width_; }
    std::uint32_t Height() const { return height_; }

    // Whether no pixel lets through what lies below.
    bool IsOpaque() const { return isOpaque_; }

    // The form to draw from where the sides shall be `scale` times the picture's, 1 being its full size: the smallest
    // one that loses next to nothing.
    const PyramidLevel& LevelFor(double scale) const;

    const std::vector<std::shared_ptr<const PyramidLevel>>& Levels() const { return levels_; }

  private:
    PicturePyramid() = default;
    Status AddReducedLevels();

    std::uint32_t width_ = 0;
    std::uint32_t height_ = 0;
    bool isOpaque_ = false;
    std::vector<std::shared_ptr<const PyramidLevel>> levels_; // from the largest
};

} // namespace imaginglibrary
