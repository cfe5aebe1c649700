// What each new row or column of a resampled picture is made of.
#include "imaginglibrary/operations/resamplekernel.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace imaginglibrary {

namespace {

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

// A filter, and how far it reaches, both in the wider of old and new samples.
struct Filter {
    double (*weight)(double distance);
    double reach;
};

Filter FilterFor(bool shrinks, Resampling resampling) {
    if (shrinks) {
        return {Lanczos3, 3};
    }
    return resampling == Resampling::Linear ? Filter{Triangle, 1} : Filter{KeysCubic, 2};
}

// Old samples that follow each other, and their weights, which add up to anything but 0.
struct Span {
    std::uint32_t first;
    std::vector<double> weights;
};

std::vector<Span> NearestSpans(double extent, std::uint32_t target) {
    const auto source = static_cast<std::uint64_t>(extent);
    std::vector<Span> spans(target);
    for (std::uint32_t i = 0; i < target; ++i) {
        spans[i] = {static_cast<std::uint32_t>((std::uint64_t{i} * 2 + 1) * source / (std::uint64_t{target} * 2)), {1}};
    }
    return spans;
}

std::vector<Span> FilteredSpans(double extent, std::uint32_t target, Resampling resampling) {
    const double scale = extent / target;
    const Filter filter = FilterFor(scale > 1, resampling);
    const double widening = std::max(1.0, scale);
    const double reach = filter.reach * widening;
    const double lastOne = std::max(0.0, std::ceil(extent - 0.5) - 1);
    std::vector<Span> spans(target);
    for (std::uint32_t i = 0; i < target; ++i) {
        const double center = (i + 0.5) * scale - 0.5;
        const auto first = static_cast<std::uint32_t>(std::max(0.0, std::ceil(center - reach)));
        const auto last = static_cast<std::uint32_t>(std::min(lastOne, std::floor(center + reach)));
        spans[i].first = first;
        for (std::uint32_t at = first; at <= last; ++at) {
            spans[i].weights.push_back(filter.weight((at - center) / widening));
        }
    }
    return spans;
}

// What rounding leaves of one weight is carried to the next, so that also weights far below one count as they should.
void StoreWeights(const std::vector<double>& weights, std::int16_t* to) {
    double sum = 0;
    for (const double weight : weights) {
        sum += weight;
    }
    double reached = 0;
    long stored = 0;
    for (const double weight : weights) {
        reached += weight;
        const long wanted = std::lround(reached / sum * OneWeight);
        *to++ = static_cast<std::int16_t>(wanted - stored);
        stored = wanted;
    }
}

} // namespace

double KeysCubic(double distance) {
    const double x = std::abs(distance);
    if (x < 1) {
        return (1.5 * x - 2.5) * x * x + 1;
    }
    return x < 2 ? ((-0.5 * x + 2.5) * x - 4) * x + 2 : 0;
}

ResampleKernel::ResampleKernel(double extent, std::uint32_t target, Resampling resampling) {
    const std::vector<Span> spans =
        resampling == Resampling::Nearest ? NearestSpans(extent, target) : FilteredSpans(extent, target, resampling);
    for (const Span& span : spans) {
        taps_ = std::max(taps_, span.weights.size());
        firsts_.push_back(span.first);
        ends_.push_back(span.first + static_cast<std::uint32_t>(span.weights.size()));
    }
    taps_ = (taps_ + TapStep - 1) / TapStep * TapStep;
    weights_.resize(taps_ * target);
    for (std::size_t i = 0; i < spans.size(); ++i) {
        StoreWeights(spans[i].weights, weights_.data() + i * taps_);
    }
}

} // namespace imaginglibrary
