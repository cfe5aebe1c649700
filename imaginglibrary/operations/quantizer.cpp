// Shows a picture of any format as one with a palette, for formats that have nothing else.
#include "imaginglibrary/operations/quantizer.h"

#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/core/rowpump.h"
#include "imaginglibrary/operations/colorhistogram.h"
#include "imaginglibrary/operations/errordiffusion.h"
#include "imaginglibrary/operations/palettechoice.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <unordered_map>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr unsigned LeastOpaqueAlpha = 128;

// Reads rows of any format as Argb32 pixels that are either opaque or, with alpha 0, holes.
class OpaqueRows : public RowReader {
  public:
    static Result<std::unique_ptr<RowReader>> Open(const PixelSource& picture) {
        auto rows = picture.OpenRows();
        if (!rows.Ok()) {
            return rows.GetStatus();
        }
        return std::unique_ptr<RowReader>(new OpaqueRows(picture.Info(), std::move(*rows)));
    }

    Status ReadRow(std::uint8_t* row) override {
        if (const Status status = rows_->ReadRow(source_.data()); status != Status::Ok) {
            return status;
        }
        toAlpha_.Convert(source_.data(), row);
        if (mayHaveHoles_) {
            toWhite_.Convert(source_.data(), overWhite_.data());
            for (std::size_t at = 0; at < overWhite_.size(); at += 4) {
                if (row[at + 3] < LeastOpaqueAlpha) {
                    row[at + 3] = 0;
                } else {
                    std::memcpy(&row[at], &overWhite_[at], 4);
                }
            }
        }
        return Status::Ok;
    }

  private:
    OpaqueRows(const PictureInfo& info, std::unique_ptr<RowReader> rows)
        : rows_(std::move(rows)), toAlpha_(info, PixelFormat::Argb32), toWhite_(info, PixelFormat::Rgb32),
          mayHaveHoles_(MayBeTransparent(info)), source_(BytesPerRow(info.format, info.width)),
          overWhite_(mayHaveHoles_ ? std::size_t{info.width} * 4 : 0) {}

    std::unique_ptr<RowReader> rows_;
    RowConverter toAlpha_;
    RowConverter toWhite_;
    bool mayHaveHoles_;
    std::vector<std::uint8_t> source_;
    std::vector<std::uint8_t> overWhite_;
};

Color OpaqueColorOf(const std::uint8_t* pixel) { return MakeColor(pixel[2], pixel[1], pixel[0]); }

// What is to be known about a picture before a palette can be chosen.
struct Survey {
    ColorHistogram colors;
    std::optional<Color> hole; // colour of the first, with alpha 0
};

Status Count(const PixelSource& picture, Survey& survey) {
    const std::size_t rowBytes = std::size_t{picture.Info().width} * 4;
    return ForEachRow(OpaqueRows::Open(picture), rowBytes, picture.Info().height,
                      [&](std::uint32_t, const std::uint8_t* row) {
                          for (const std::uint8_t* pixel = row; pixel != row + rowBytes; pixel += 4) {
                              if (pixel[3] != 0) {
                                  survey.colors.Add(OpaqueColorOf(pixel));
                              } else if (!survey.hole) {
                                  survey.hole = OpaqueColorOf(pixel) & 0x00FFFFFF;
                              }
                          }
                          return Status::Ok;
                      });
}

// How pixels become indices in one pass over the picture.
class RowMapper {
  public:
    virtual ~RowMapper() = default;
    virtual void MapRow(const std::uint8_t* row, std::uint8_t* indices) = 0;
};

// Every colour of the picture has its own entry.
class ExactMapper : public RowMapper {
  public:
    ExactMapper(const Palette& colors, std::uint32_t width, std::uint8_t hole) : width_(width), hole_(hole) {
        for (std::size_t i = 0; i < colors.size(); ++i) {
            indices_.emplace(colors[i], static_cast<std::uint8_t>(i));
        }
    }

    void MapRow(const std::uint8_t* row, std::uint8_t* indices) override {
        for (std::uint32_t x = 0; x < width_; ++x) {
            const std::uint8_t* pixel = row + 4 * std::size_t{x};
            indices[x] = pixel[3] == 0 ? hole_ : IndexOf(OpaqueColorOf(pixel));
        }
    }

  private:
    std::uint8_t IndexOf(Color color) {
        if (color != lastColor_) {
            const auto found = indices_.find(color);
            // A source that shows other pixels on a second reading gets some index, but no crash.
            lastIndex_ = found == indices_.end() ? std::uint8_t{0} : found->second;
            lastColor_ = color;
        }
        return lastIndex_;
    }

    std::unordered_map<Color, std::uint8_t> indices_;
    std::uint32_t width_;
    std::uint8_t hole_;
    Color lastColor_ = 0; // no opaque colour
    std::uint8_t lastIndex_ = 0;
};

class DiffusingMapper : public RowMapper {
  public:
    DiffusingMapper(const Palette& colors, std::uint32_t width, std::uint8_t hole)
        : diffusion_(colors, width), hole_(hole) {}

    void MapRow(const std::uint8_t* row, std::uint8_t* indices) override { diffusion_.MapRow(row, indices, hole_); }

  private:
    ErrorDiffusion diffusion_;
    std::uint8_t hole_;
};

class ReducedRows : public RowReader {
  public:
    ReducedRows(std::uint32_t width, std::unique_ptr<RowReader> rows, std::unique_ptr<RowMapper> mapper)
        : rows_(std::move(rows)), mapper_(std::move(mapper)), pixels_(std::size_t{width} * 4) {}

    Status ReadRow(std::uint8_t* row) override {
        const Status status = rows_->ReadRow(pixels_.data());
        if (status == Status::Ok) {
            mapper_->MapRow(pixels_.data(), row);
        }
        return status;
    }

  private:
    std::unique_ptr<RowReader> rows_;
    std::unique_ptr<RowMapper> mapper_;
    std::vector<std::uint8_t> pixels_;
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
        auto rows = OpaqueRows::Open(picture_);
        if (!rows.Ok()) {
            return rows.GetStatus();
        }
        return std::unique_ptr<RowReader>(std::make_unique<ReducedRows>(info_.width, std::move(*rows), MakeMapper()));
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
    Survey survey;
    if (const Status status = Count(picture, survey); status != Status::Ok) {
        return status;
    }
    const unsigned room = entries - (survey.hole ? 1 : 0);
    const bool exact = survey.colors.IsExact() && survey.colors.Size() <= room;
    Palette colors = ChoosePalette(survey.colors.Cells(), room);
    return std::unique_ptr<PixelSource>(
        std::make_unique<ReducedPicture>(picture, std::move(colors), survey.hole, exact));
}

} // namespace imaginglibrary
