// A picture in memory with its border pixels repeated around it, so that filters need not look where it ends.
#pragma once

#include "imaginglibrary/core/picture.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace imaginglibrary {

// Premultiplied pixels (Pargb32).
class PyramidLevel {
  public:
    // How many pixels stand around the picture on every side.
    static constexpr std::uint32_t Padding = 2;

    // How many bytes behind the last row may be read, whatever stands there.
    static constexpr std::size_t SpareBytes = 32;

    // Reads the picture, which may be of any format.
    static Result<std::shared_ptr<const PyramidLevel>> Make(const PixelSource& picture);

    std::uint32_t Width() const { return width_; }
    std::uint32_t Height() const { return height_; }
    std::size_t RowBytes() const { return rowBytes_; }

    // The first pixel of the padding's top row; Width() + 2 * Padding of them make a row.
    const std::uint8_t* Padded() const { return bytes_.get(); }

    const std::uint8_t* Row(std::uint32_t y) const {
        return bytes_.get() + rowBytes_ * (y + Padding) + std::size_t{4} * Padding;
    }

  private:
    PyramidLevel(std::uint32_t width, std::uint32_t height);
    void FillPadding();

    std::uint32_t width_;
    std::uint32_t height_;
    std::size_t rowBytes_;
    std::unique_ptr<std::uint8_t[]> bytes_;
};

} // namespace imaginglibrary
