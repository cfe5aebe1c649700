// The size that a picture gets where a side, a box or a percentage is asked for.
#include "imaging/fitting.h"

#include "base/numbers.h"

#include <algorithm>
#include <cmath>

namespace lumbrix {

namespace {

float Proportions(PixelSize size) { return static_cast<float>(static_cast<double>(size.width) / size.height); }

std::int32_t ShareOf(std::int32_t side, double percent) {
    return RoundToEven(static_cast<long double>(side) * percent / 100);
}

PixelSize AtHeight(PixelSize picture, std::int32_t height) {
    return {ResizedWidth(picture.width, picture.height, height), height};
}

PixelSize AtWidth(PixelSize picture, std::int32_t width) {
    return {width, ResizedWidth(picture.height, picture.width, width)};
}

// Single precision may round the other side beyond the box where that is very large.
PixelSize InBox(PixelSize picture, PixelSize box) {
    const bool isWide =
        std::int64_t{picture.width} * box.height > std::int64_t{picture.height} * box.width; // wider than the box
    const PixelSize size = isWide ? AtWidth(picture, box.width) : AtHeight(picture, box.height);
    return {std::min(size.width, box.width), std::min(size.height, box.height)};
}

PixelSize ExactlyFitted(PixelSize picture, const Fitting& fitting) {
    if (fitting.percent > 0) {
        return {ShareOf(picture.width, fitting.percent), ShareOf(picture.height, fitting.percent)};
    }
    if (fitting.width == 0) {
        return AtHeight(picture, fitting.height);
    }
    return fitting.height == 0 ? AtWidth(picture, fitting.width) : InBox(picture, {fitting.width, fitting.height});
}

} // namespace

std::int32_t ResizedWidth(std::int32_t sourceWidth, std::int32_t sourceHeight, std::int32_t height) {
    return RoundToEven(static_cast<long double>(Proportions({sourceWidth, sourceHeight})) * height);
}

bool IsMeaningful(const Fitting& fitting) {
    const bool hasSides = fitting.width != 0 || fitting.height != 0;
    const bool hasPercent = fitting.percent != 0;
    return hasSides != hasPercent && fitting.width >= 0 && fitting.height >= 0 && fitting.percent >= 0 &&
           std::isfinite(fitting.percent);
}

PixelSize FittedSize(PixelSize picture, const Fitting& fitting) {
    const PixelSize size = ExactlyFitted(picture, fitting);
    return {std::max(size.width, 1), std::max(size.height, 1)};
}

bool IsSmallEnough(PixelSize picture, const Fitting& fitting) {
    if (fitting.percent > 0) {
        return fitting.percent >= 100;
    }
    return (fitting.width == 0 || picture.width <= fitting.width) &&
           (fitting.height == 0 || picture.height <= fitting.height);
}

} // namespace lumbrix
