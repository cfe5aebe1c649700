// Makes a picture of another size.
#include "imaginglibrary/operations/resample.h"

#include "imaginglibrary/core/limits.h"
#include "imaginglibrary/core/rowconverter.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace imaginglibrary {

namespace {

constexpr std::size_t Channels = 4;

double Lanczos3(double x) {
    x = std::abs(x);
    if (x >= 3) {
        return 0;
    }
    if (x < 1e-9) {
        return 1;
    }
    const double angle = std::numbers::pi * x;
    return 3 * std::sin(angle) * std::sin(angle / 3) / (angle * angle);
}

double Triangle(double x) { return std::max(0.0, 1 - std::abs(x)); }

// A kernel, and how far it reaches, both in the wider of old and new pixels.
struct Kernel {
    double (*weight)(double distance);
    double reach;
};

Kernel KernelFor(bool shrinks, Resampling resampling) {
    if (shrinks) {
        return {Lanczos3, 3};
    }
    return resampling == Resampling::Linear ? Kernel{Triangle, 1} : Kernel{KeysCubic, 2};
}

// The source positions that make up one target position, and their weights.
struct Span {
    std::uint32_t first;
    std::vector<float> weights;

    std::uint32_t End() const { return first + static_cast<std::uint32_t>(weights.size()); }
};

std::vector<Span> NearestSpans(std::uint32_t source, std::uint32_t target) {
    std::vector<Span> spans(target);
    for (std::uint32_t i = 0; i < target; ++i) {
        spans[i] = {static_cast<std::uint32_t>((std::uint64_t{i} * 2 + 1) * source / (std::uint64_t{target} * 2)), {1}};
    }
    return spans;
}

std::vector<Span> MakeSpans(std::uint32_t source, std::uint32_t target, Resampling resampling) {
    if (resampling == Resampling::Nearest) {
        return NearestSpans(source, target);
    }
    const double scale = static_cast<double>(source) / target;
    const Kernel kernel = KernelFor(scale > 1, resampling);
    const double widening = std::max(1.0, scale);
    const double reach = kernel.reach * widening;
    std::vector<Span> spans(target);
    std::vector<double> weights;
    for (std::uint32_t i = 0; i < target; ++i) {
        const double center = (i + 0.5) * scale - 0.5;
        const auto first = static_cast<std::uint32_t>(std::max(0.0, std::ceil(center - reach)));
        const auto last = static_cast<std::uint32_t>(std::min<double>(source - 1, std::floor(center + reach)));
        double sum = 0;
        weights.clear();
        for (std::uint32_t at = first; at <= last; ++at) {
            weights.push_back(kernel.weight((at - center) / widening));
            sum += weights.back();
        }
        spans[i].first = first;
        for (const double weight : weights) {
            spans[i].weights.push_back(static_cast<float>(weight / sum));
        }
    }
    return spans;
}

std::size_t LongestSpan(const std::vector<Span>& spans) {
    std::size_t longest = 0;
    for (const Span& span : spans) {
        longest = std::max(longest, span.weights.size());
    }
    return longest;
}

void ResampleRow(const std::vector<float>& row, const std::vector<Span>& spans, float* to) {
    for (const Span& span : spans) {
        float sums[Channels] = {};
        const float* from = row.data() + Channels * span.first;
        for (const float weight : span.weights) {
            for (std::size_t channel = 0; channel < Channels; ++channel) {
                sums[channel] += weight * from[channel];
            }
            from += Channels;
        }
        to = std::copy_n(sums, Channels, to);
    }
}

// The kernel's negative lobes can overshoot; a premultiplied colour must not exceed its alpha.
void StoreRow(const std::vector<float>& sums, std::uint8_t* row) {
    const auto clamped = [](float value, float most) {
        return static_cast<std::uint8_t>(std::clamp(value, 0.0f, most) + 0.5f);
    };
    for (std::size_t i = 0; i < sums.size(); i += Channels) {
        row[i + 3] = clamped(sums[i + 3], 255);
        for (std::size_t channel = 0; channel < 3; ++channel) {
            row[i + channel] = clamped(sums[i + channel], row[i + 3]);
        }
    }
}

// Reads the source from the top and keeps the last rows, already at the new width, in a ring.
class NarrowedRows {
  public:
    // `rows` are Pargb32.
    NarrowedRows(std::uint32_t sourceWidth, std::unique_ptr<RowReader> rows, std::uint32_t width, std::size_t kept,
                 Resampling resampling)
        : rows_(std::move(rows)), spans_(MakeSpans(sourceWidth, width, resampling)),
          premultiplied_(Channels * sourceWidth), wide_(Channels * sourceWidth),
          ring_(kept, std::vector<float>(Channels * width)) {}

    // Reads on until all rows before `end` are in the ring or have passed through it.
    Status ReadUntil(std::uint32_t end) {
        for (; next_ < end; ++next_) {
            if (const Status status = rows_->ReadRow(premultiplied_.data()); status != Status::Ok) {
                return status;
            }
            std::copy(premultiplied_.begin(), premultiplied_.end(), wide_.begin());
            ResampleRow(wide_, spans_, ring_[next_ % ring_.size()].data());
        }
        return Status::Ok;
    }

    const std::vector<float>& Row(std::uint32_t y) const { return ring_[y % ring_.size()]; }

  private:
    std::unique_ptr<RowReader> rows_;
    std::vector<Span> spans_;
    std::vector<std::uint8_t> premultiplied_;
    std::vector<float> wide_;
    std::vector<std::vector<float>> ring_;
    std::uint32_t next_ = 0;
};

} // namespace

double KeysCubic(double distance) {
    const double x = std::abs(distance);
    if (x < 1) {
        return (1.5 * x - 2.5) * x * x + 1;
    }
    return x < 2 ? ((-0.5 * x + 2.5) * x - 4) * x + 2 : 0;
}

Result<std::shared_ptr<Bitmap>> Resample(const PixelSource& picture, std::uint32_t width, std::uint32_t height,
                                         Resampling resampling) {
    const PictureInfo& info = picture.Info();
    auto bitmap = Bitmap::Create({.width = width, .height = height, .format = PixelFormat::Pargb32});
    if (!bitmap.Ok()) {
        return bitmap.GetStatus();
    }
    auto rows = OpenRowsAs(picture, PixelFormat::Pargb32);
    if (!rows.Ok()) {
        return rows.GetStatus();
    }
    const std::vector<Span> spans = MakeSpans(info.height, height, resampling);
    // Far from square shrinking needs many rows of a large width at once.
    if (std::uint64_t{LongestSpan(spans)} * width * Channels * sizeof(float) > MaximumPictureBytes) {
        return Status::OutOfMemory;
    }
    NarrowedRows narrowed(info.width, std::move(*rows), width, LongestSpan(spans), resampling);
    std::vector<float> sums(Channels * width);
    for (std::uint32_t y = 0; y < height; ++y) {
        const Span& span = spans[y];
        if (const Status status = narrowed.ReadUntil(span.End()); status != Status::Ok) {
            return status;
        }
        std::fill(sums.begin(), sums.end(), 0.0f);
        for (std::uint32_t at = span.first; at < span.End(); ++at) {
            const float weight = span.weights[at - span.first];
            const std::vector<float>& row = narrowed.Row(at);
            for (std::size_t i = 0; i < sums.size(); ++i) {
                sums[i] += weight * row[i];
            }
        }
        StoreRow(sums, (*bitmap)->Row(y));
    }
    return bitmap;
}

} // namespace imaginglibrary
