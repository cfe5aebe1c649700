// Makes a picture of another size.
#include "imaginglibrary/operations/resample.h"

#include "imaginglibrary/core/limits.h"
#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/core/rowpipe.h"
#include "imaginglibrary/operations/resamplerows.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace imaginglibrary {

namespace {

using UseRow = std::function<Status(std::uint32_t y, const std::uint8_t* row)>;

// A picture at the scale that it is read in.
struct Original {
    Original(const PixelSource& picture, std::uint32_t targetWidth, std::uint32_t targetHeight, Resampling resampling)
        : reduced(resampling == Resampling::Nearest ? std::nullopt : picture.ReducedTo(targetWidth, targetHeight)),
          rows(reduced ? *reduced->picture : picture), width(picture.Info().width * (reduced ? reduced->scale : 1)),
          height(picture.Info().height * (reduced ? reduced->scale : 1)) {}

    std::optional<ScaledPicture> reduced;
    const PixelSource& rows;
    double width; // in pixels of that scale; perhaps not whole
    double height;
};

// Takes a picture's rows from the top, keeps the last ones in a ring, already at the new width, and hands on the new
// ones as soon as it has all that they are made of.
class Resampler {
  public:
    Resampler(const Original& original, std::uint32_t width, std::uint32_t height, Resampling resampling,
              const UseRow& use)
        : converter_(original.rows.Info(), PixelFormat::Pargb32), sourceRows_(original.rows.Info().height),
          across_(original.width, width, resampling), down_(original.height, height, resampling), use_(use),
          narrowedLength_(RoundedUp(width) * ResampledChannels), newRow_(narrowedLength_) {
        for (std::vector<std::uint8_t>& row : wide_) {
            row.resize((original.rows.Info().width + across_.Taps()) * ResampledChannels);
        }
    }

    // Far from square shrinking needs many rows of a large width at once.
    bool IsTooLarge() const {
        return std::uint64_t{RingRows()} * narrowedLength_ * sizeof(std::int16_t) > MaximumPictureBytes;
    }

    void MakeRoom() { ring_.assign(RingRows(), std::vector<std::int16_t>(narrowedLength_)); }

    Status Take(std::uint32_t y, const std::uint8_t* row) {
        converter_.Convert(row, wide_[y % 2].data());
        const bool isLast = y + 1 == sourceRows_;
        if (y % 2 == 0 && !isLast) {
            return Status::Ok;
        }
        const std::uint32_t first = y / 2 * 2;
        NarrowRows({wide_[0].data(), wide_[1].data()}, across_,
                   {ring_[first % ring_.size()].data(), ring_[(first + 1) % ring_.size()].data()});
        return HandOnWhatIsReady(y + 1);
    }

  private:
    static std::size_t RoundedUp(std::size_t pixels) {
        return (pixels + ResamplePixelStep - 1) / ResamplePixelStep * ResamplePixelStep;
    }

    // Even, as rows come by twos; and as many more as come with the last one that is waited for.
    std::size_t RingRows() const { return down_.Taps() + 2; }

    Status HandOnWhatIsReady(std::uint32_t end) {
        for (; next_ < down_.Count() && down_.End(next_) <= end; ++next_) {
            const std::uint32_t first = down_.First(next_);
            taps_.clear();
            for (std::uint32_t y = first; y < down_.End(next_); ++y) {
                taps_.push_back(ring_[y % ring_.size()].data());
            }
            if (taps_.size() % 2 != 0) {
                taps_.push_back(taps_.back()); // weighs nothing
            }
            SumRows(taps_.data(), down_.Weights(next_), taps_.size(), newRow_.data(),
                    newRow_.size() / ResampledChannels);
            if (const Status status = use_(next_, newRow_.data()); status != Status::Ok) {
                return status;
            }
        }
        return Status::Ok;
    }

    RowConverter converter_;
    std::uint32_t sourceRows_;
    ResampleKernel across_;
    ResampleKernel down_;
    const UseRow& use_;
    std::array<std::vector<std::uint8_t>, 2> wide_;
    std::size_t narrowedLength_;
    std::vector<std::vector<std::int16_t>> ring_;
    std::vector<const std::int16_t*> taps_;
    std::vector<std::uint8_t> newRow_;
    std::uint32_t next_ = 0; // of the new rows
};

} // namespace

Status ResampleRows(const PixelSource& picture, std::uint32_t width, std::uint32_t height, Resampling resampling,
                    const UseRow& use) {
    const Original original(picture, width, height, resampling);
    Resampler resampler(original, width, height, resampling, use);
    if (resampler.IsTooLarge()) {
        return Status::OutOfMemory;
    }
    resampler.MakeRoom();
    const PictureInfo& info = original.rows.Info();
    return PipeRows(original.rows.OpenRows(), BytesPerRow(info.format, info.width), info.height,
                    [&](std::uint32_t y, std::uint8_t* row) { return resampler.Take(y, row); });
}

Result<std::shared_ptr<Bitmap>> Resample(const PixelSource& picture, std::uint32_t width, std::uint32_t height,
                                         Resampling resampling) {
    auto bitmap = Bitmap::Create({.width = width, .height = height, .format = PixelFormat::Pargb32});
    if (!bitmap.Ok()) {
        return bitmap.GetStatus();
    }
    const std::size_t rowBytes = (*bitmap)->RowBytes();
    const Status status =
        ResampleRows(picture, width, height, resampling, [&](std::uint32_t y, const std::uint8_t* row) {
            std::copy_n(row, rowBytes, (*bitmap)->Row(y));
            return Status::Ok;
        });
    if (status != Status::Ok) {
        return status;
    }
    return bitmap;
}

} // namespace imaginglibrary
