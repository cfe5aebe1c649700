// Shows a picture of any format as one with a palette, for formats that have nothing else.
#include "imaginglibrary/operations/quantizer.h"

#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/core/rowpipe.h"
#include "imaginglibrary/operations/colorhistogram.h"
#include "imaginglibrary/operations/errordiffusion.h"
#include "imaginglibrary/operations/palettechoice.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr unsigned LeastOpaqueAlpha = 128;

// Makes rows of any format Argb32 pixels that are either opaque or, with alpha 0, holes.
class OpaqueConverter {
  public:
    explicit OpaqueConverter(const PictureInfo& info)
        : toAlpha_(info, PixelFormat::Argb32), toWhite_(info, PixelFormat::Rgb32),
          mayHaveHoles_(MayBeTransparent(info)), overWhite_(mayHaveHoles_ ? std::size_t{info.width} * 4 : 0) {}

    bool MayHaveHoles() const { return mayHaveHoles_; }

    void Convert(const std::uint8_t* source, std::uint8_t* row) {
        toAlpha_.Convert(source, row);
        if (mayHaveHoles_) {
            toWhite_.Convert(source, overWhite_.data());
            for (std::size_t at = 0; at < overWhite_.size(); at += 4) {
                if (row[at + 3] < LeastOpaqueAlpha) {
                    row[at + 3] = 0;
                } else {
                    std::memcpy(&row[at], &overWhite_[at], 4);
                }
            }
        }
    }

  private:
    RowConverter toAlpha_;
    RowConverter toWhite_;
    bool mayHaveHoles_;
    std::vector<std::uint8_t> overWhite_;
};

Color OpaqueColorOf(const std::uint8_t* pixel) { return MakeColor(pixel[2], pixel[1], pixel[0]); }

// What is to be known about a picture before a palette can be chosen. Told all rows, in order.
class Survey {
  public:
    explicit Survey(const PictureInfo& info)
        : converter_(info), row_(std::size_t{info.width} * 4),
          step_(static_cast<std::uint32_t>(std::uint64_t{info.width} * info.height / PixelsThatSuffice + 1)) {}

    void Add(std::uint32_t y, const std::uint8_t* source) {
        converter_.Convert(source, row_.data());
        if (converter_.MayHaveHoles() && !hole_) {
            FindHole();
        }
        // The pixels of a sample must not lie above each other, for pictures have edges and patterns that do.
        const std::uint32_t step = colors_.Size() > FewColors ? step_ : 1;
        const std::size_t first = (y * 2654435761u >> 16) % step;
        for (std::size_t at = 4 * first; at < row_.size(); at += 4 * std::size_t{step}) {
            if (row_[at + 3] != 0) {
                colors_.Add(OpaqueColorOf(&row_[at]), step);
            }
        }
    }

    const ColorHistogram& Colors() const { return colors_; }

    // The colour of the first one, with alpha 0.
    std::optional<Color> Hole() const { return hole_; }

  private:
    // Of pictures with few colours, which a palette holds or nearly holds, every pixel is counted. Once there are more,
    // a sample of this size tells as much as the whole.
    static constexpr std::size_t FewColors = 1024;
    static constexpr std::uint32_t PixelsThatSuffice = 1 << 20;

    void FindHole() {
        for (std::size_t at = 0; at < row_.size() && !hole_; at += 4) {
            if (row_[at + 3] == 0) {
                hole_ = OpaqueColorOf(&row_[at]) & 0x00FFFFFF;
            }
        }
    }

    OpaqueConverter converter_;
    std::vector<std::uint8_t> row_;
    std::uint32_t step_;
    ColorHistogram colors_;
    std::optional<Color> hole_;
};

// How pixels become indices in one pass over the picture, two rows at a time. Below the last of an odd number of rows
// come holes.
class RowMapper {
  public:
    virtual ~RowMapper() = default;
    virtual void MapTwoRows(const std::uint8_t* rows, std::uint8_t* indices) = 0;
};

// Every colour of the picture has its own entry.
class ExactMapper : public RowMapper {
  public:
    ExactMapper(const Palette& colors, std::uint32_t width, std::uint8_t hole)
        : nearest_(colors), pixels_(2 * std::size_t{width}), hole_(hole) {}

    void MapTwoRows(const std::uint8_t* rows, std::uint8_t* indices) override {
        for (std::size_t i = 0; i < pixels_; ++i) {
            const std::uint8_t* pixel = rows + 4 * i;
            indices[i] = pixel[3] == 0 ? hole_ : nearest_.Find(pixel[2], pixel[1], pixel[0]);
        }
    }

  private:
    NearestColor nearest_; // at no distance
    std::size_t pixels_;
    std::uint8_t hole_;
};

class DiffusingMapper : public RowMapper {
  public:
    DiffusingMapper(const Palette& colors, std::uint32_t width, std::uint8_t hole)
        : diffusion_(colors, width), hole_(hole) {}

    void MapTwoRows(const std::uint8_t* rows, std::uint8_t* indices) override {
        diffusion_.MapTwoRows(rows, indices, hole_);
    }

  private:
    ErrorDiffusion diffusion_;
    std::uint8_t hole_;
};

class ReducedRows : public RowReader {
  public:
    ReducedRows(const PictureInfo& source, std::unique_ptr<RowReader> rows, std::unique_ptr<RowMapper> mapper)
        : rows_(std::move(rows)), converter_(source), mapper_(std::move(mapper)), rowsLeft_(source.height),
          source_(BytesPerRow(source.format, source.width)), pixels_(std::size_t{source.width} * 2 * 4),
          indices_(std::size_t{source.width} * 2) {}

    Status ReadRow(std::uint8_t* row) override {
        const std::size_t width = indices_.size() / 2;
        if (!hasLower_) {
            if (const Status status = MapNextRows(); status != Status::Ok) {
                return status;
            }
        }
        std::copy_n(indices_.data() + (hasLower_ ? width : 0), width, row);
        hasLower_ = !hasLower_;
        return Status::Ok;
    }

  private:
    Status MapNextRows() {
        std::fill(pixels_.begin(), pixels_.end(), std::uint8_t{0});
        for (std::uint8_t* row : {pixels_.data(), pixels_.data() + pixels_.size() / 2}) {
            if (rowsLeft_ > 0) {
                if (const Status status = rows_->ReadRow(source_.data()); status != Status::Ok) {
                    return status;
                }
                converter_.Convert(source_.data(), row);
                --rowsLeft_;
            }
        }
        mapper_->MapTwoRows(pixels_.data(), indices_.data());
        return Status::Ok;
    }

    std::unique_ptr<RowReader> rows_;
    OpaqueConverter converter_;
    std::unique_ptr<RowMapper> mapper_;
    std::uint32_t rowsLeft_; // to be read
    std::vector<std::uint8_t> source_;
    std::vector<std::uint8_t> pixels_; // of two rows
    std::vector<std::uint8_t> indices_;
    bool hasLower_ = false; // whether the second row of indices comes next
};

class ReducedPicture : public PixelSource {
  public:
    ReducedPicture(const PixelSource& picture, Palette colors, std::optional<Color> hole, bool exact)
        : picture_(picture), info_(picture.Info()), colors_(std::move(colors)), exact_(exact) {
        info_.format = PixelFormat::Indexed8;
        info_.palette = colors_;
        if (hole) {
            info_.palette.push_back(*hole);
        }
    }

    const PictureInfo& Info() const override { return info_; }

    Result<std::unique_ptr<RowReader>> OpenRows() const override {
        auto rows = picture_.OpenRows();
        if (!rows.Ok()) {
            return rows.GetStatus();
        }
        return std::unique_ptr<RowReader>(
            std::make_unique<ReducedRows>(picture_.Info(), std::move(*rows), MakeMapper()));
    }

  private:
    std::unique_ptr<RowMapper> MakeMapper() const {
        const auto hole = static_cast<std::uint8_t>(info_.palette.size() - 1);
        if (exact_) {
            return std::make_unique<ExactMapper>(colors_, info_.width, hole);
        }
        return std::make_unique<DiffusingMapper>(colors_, info_.width, hole);
    }

    const PixelSource& picture_;
    PictureInfo info_;
    Palette colors_; // without the entry for holes
    bool exact_;
};

} // namespace

Result<std::unique_ptr<PixelSource>> ReducedToPalette(const PixelSource& picture, unsigned entries) {
    const PictureInfo& info = picture.Info();
    Survey survey(info);
    const Status status = PipeRows(picture.OpenRows(), BytesPerRow(info.format, info.width), info.height,
                                   [&](std::uint32_t y, const std::uint8_t* row) {
                                       survey.Add(y, row);
                                       return Status::Ok;
                                   });
    if (status != Status::Ok) {
        return status;
    }
    const unsigned room = entries - (survey.Hole() ? 1 : 0);
    const bool exact = survey.Colors().IsExact() && survey.Colors().Size() <= room;
    Palette colors = ChoosePalette(survey.Colors().Cells(), room);
    return std::unique_ptr<PixelSource>(
        std::make_unique<ReducedPicture>(picture, std::move(colors), survey.Hole(), exact));
}

} // namespace imaginglibrary
