// A whole picture in memory.
#pragma once

#include "imaginglibrary/core/picture.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace imaginglibrary {

class Bitmap : public PixelSource, public std::enable_shared_from_this<Bitmap> {
  public:
    // All bytes zero. OutOfMemory where the picture would exceed MaximumPictureBytes, InvalidParameter for a size
    // beyond MaximumSide.
    static Result<std::shared_ptr<Bitmap>> Create(PictureInfo info);

    // Whether Create would not refuse the picture.
    static bool CanHold(const PictureInfo& info) { return CheckSize(info) == Status::Ok; }

    // Reads every row of `picture` into memory.
    static Result<std::shared_ptr<Bitmap>> Copy(const PixelSource& picture);

    const PictureInfo& Info() const override { return info_; }
    Result<std::unique_ptr<RowReader>> OpenRows() const override;
    bool HasRowsFromBottom() const override { return true; }
    Result<std::unique_ptr<RowReader>> OpenRowsFromBottom() const override;

    std::size_t RowBytes() const { return rowBytes_; }
    std::uint8_t* Row(std::uint32_t y) { return bytes_.get() + rowBytes_ * y; }
    const std::uint8_t* Row(std::uint32_t y) const { return bytes_.get() + rowBytes_ * y; }

  private:
    struct FreeMemory {
        void operator()(std::uint8_t* bytes) const { std::free(bytes); }
    };

    explicit Bitmap(PictureInfo info);
    static Status CheckSize(const PictureInfo& info);

    PictureInfo info_;
    std::size_t rowBytes_;
    // Zero until it is written to, and until then hardly any memory: a picture may promise more than comes.
    std::unique_ptr<std::uint8_t[], FreeMemory> bytes_;
};

} // namespace imaginglibrary
