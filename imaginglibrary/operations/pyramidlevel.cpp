// A picture in memory with its border pixels repeated around it.
#include "imaginglibrary/operations/pyramidlevel.h"

#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/core/rowpump.h"

#include <cstring>

namespace imaginglibrary {

PyramidLevel::PyramidLevel(std::uint32_t width, std::uint32_t height)
    : width_(width), height_(height), rowBytes_((std::size_t{width} + 2 * Padding) * 4),
      bytes_(std::make_unique_for_overwrite<std::uint8_t[]>(rowBytes_ * (std::size_t{height} + 2 * Padding) +
                                                            SpareBytes)) {}

Result<std::shared_ptr<const PyramidLevel>> PyramidLevel::Make(const PixelSource& picture) {
    const PictureInfo& info = picture.Info();
    const std::shared_ptr<PyramidLevel> level(new PyramidLevel(info.width, info.height));
    const auto place = [&](std::uint32_t y) { return const_cast<std::uint8_t*>(level->Row(y)); };
    const Status status = ReadRowsInto(OpenRowsAs(picture, PixelFormat::Pargb32), info.height, place);
    if (status != Status::Ok) {
        return status;
    }
    level->FillPadding();
    return std::shared_ptr<const PyramidLevel>(level);
}

void PyramidLevel::FillPadding() {
    constexpr std::size_t Pixel = 4;
    std::uint8_t* row = bytes_.get() + rowBytes_ * Padding;
    const std::size_t width = width_;
    for (std::uint32_t y = 0; y < height_; ++y, row += rowBytes_) {
        std::uint8_t* const first = row + Pixel * Padding;
        std::uint8_t* const last = first + Pixel * (width - 1);
        for (std::size_t i = 1; i <= Padding; ++i) {
            std::memcpy(first - Pixel * i, first, Pixel);
            std::memcpy(last + Pixel * i, last, Pixel);
        }
    }
    const std::uint8_t* const top = bytes_.get() + rowBytes_ * Padding;
    const std::uint8_t* const bottom = top + rowBytes_ * (std::size_t{height_} - 1);
    for (std::size_t i = 0; i < Padding; ++i) {
        std::memcpy(bytes_.get() + rowBytes_ * i, top, rowBytes_);
        std::memcpy(bytes_.get() + rowBytes_ * (std::size_t{height_} + Padding + i), bottom, rowBytes_);
    }
}

} // namespace imaginglibrary
