// A picture prepared to be drawn again and again at any size and angle.
#include "imaginglibrary/operations/picturepyramid.h"

#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/operations/parallel.h"
#include "imaginglibrary/operations/resample.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>

namespace imaginglibrary {

namespace {

constexpr int StepsPerHalving = 3;

// All levels together take so many times what the largest one does: 1 + 2^(-2/3) + 2^(-4/3) and so on.
constexpr double WholeToLargest = 2.71;

// How much larger than a level its picture may be drawn, where a smaller level would do but for this.
constexpr double MostLost = 1.08;

std::uint32_t ScaledSide(std::uint32_t side, double scale) {
    return static_cast<std::uint32_t>(std::max(1.0, std::round(side * scale)));
}

// A level as a picture to make smaller ones of.
class LevelRows : public RowReader {
  public:
    explicit LevelRows(std::shared_ptr<const PyramidLevel> level) : level_(std::move(level)) {}

    Status ReadRow(std::uint8_t* row) override {
        std::copy_n(level_->Row(next_++), std::size_t{level_->Width()} * 4, row);
        return Status::Ok;
    }

  private:
    std::shared_ptr<const PyramidLevel> level_;
    std::uint32_t next_ = 0;
};

class LevelPicture : public PixelSource {
  public:
    explicit LevelPicture(std::shared_ptr<const PyramidLevel> level)
        : level_(std::move(level)), info_{.width = level_->Width(),
                                          .height = level_->Height(),
                                          .format = PixelFormat::Pargb32} {}

    const PictureInfo& Info() const override { return info_; }
    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        return std::unique_ptr<RowReader>(std::make_unique<LevelRows>(level_));
    }

  private:
    std::shared_ptr<const PyramidLevel> level_;
    PictureInfo info_;
};

using MadeLevel = Result<std::shared_ptr<const PyramidLevel>>;

MadeLevel ReducedLevel(const PixelSource& picture, std::uint32_t width, std::uint32_t height) {
    const auto resampled = Resample(picture, width, height);
    return resampled.Ok() ? PyramidLevel::Make(**resampled) : resampled.GetStatus();
}

// The largest level, its sides `scale` times the picture's.
MadeLevel LargestLevel(const PixelSource& picture, double scale) {
    if (scale >= 1) {
        return PyramidLevel::Make(picture);
    }
    return ReducedLevel(picture, ScaledSide(picture.Info().width, scale), ScaledSide(picture.Info().height, scale));
}

} // namespace

Result<std::shared_ptr<const PicturePyramid>> PicturePyramid::Make(const PixelSource& picture, std::size_t mostBytes) {
    const PictureInfo& info = picture.Info();
    const std::shared_ptr<PicturePyramid> pyramid(new PicturePyramid);
    pyramid->width_ = info.width;
    pyramid->height_ = info.height;
    pyramid->isOpaque_ = !MayBeTransparent(info);
    const double bytes = 4.0 * info.width * info.height * WholeToLargest;
    auto largest = LargestLevel(picture, std::sqrt(static_cast<double>(mostBytes) / bytes));
    if (!largest.Ok()) {
        return largest.GetStatus();
    }
    pyramid->levels_.push_back(std::move(*largest));
    if (const Status status = pyramid->AddReducedLevels(); status != Status::Ok) {
        return status;
    }
    return std::shared_ptr<const PicturePyramid>(pyramid);
}

// Each level is made of the nearest whole halving that is at least twice its size, or of the largest level: sharp
// detail overshoots in a level little smaller than its source, and what is cut off there would be missing further on.
Status PicturePyramid::AddReducedLevels() {
    const std::uint32_t width = levels_[0]->Width();
    const std::uint32_t height = levels_[0]->Height();
    while (levels_.back()->Width() > 1 || levels_.back()->Height() > 1) {
        const std::size_t first = levels_.size();
        std::vector<std::optional<MadeLevel>> made(StepsPerHalving);
        InParallel(StepsPerHalving, [&](std::size_t i) {
            const double scale = std::exp2(-static_cast<double>(first + i) / StepsPerHalving);
            const std::size_t halvings = (first + i) / StepsPerHalving;
            const std::size_t from = halvings < 2 ? 0 : (halvings - 1) * StepsPerHalving;
            made[i] = ReducedLevel(LevelPicture(levels_[from]), ScaledSide(width, scale), ScaledSide(height, scale));
        });
        for (auto& level : made) {
            if (!level->Ok()) {
                return level->GetStatus();
            }
            levels_.push_back(std::move(**level));
        }
    }
    return Status::Ok;
}

const PyramidLevel& PicturePyramid::LevelFor(double scale) const {
    const double wantedWidth = width_ * scale;
    const double wantedHeight = height_ * scale;
    for (auto level = levels_.rbegin(); level != levels_.rend(); ++level) {
        if ((*level)->Width() * MostLost >= wantedWidth && (*level)->Height() * MostLost >= wantedHeight) {
            return **level;
        }
    }
    return *levels_.front();
}

} // namespace imaginglibrary
