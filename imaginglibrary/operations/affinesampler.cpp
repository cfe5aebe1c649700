// What a pixel of a surface shows of a picture behind an affine map.
#include "imaginglibrary/operations/affinesampler.h"

#include "imaginglibrary/core/rowconverter.h"

#include <cstring>

namespace imaginglibrary {

namespace {

// A side that the map draws `scale` times as long, made as short as it is drawn.
std::uint32_t ShrunkSide(std::uint32_t side, double scale) {
    return scale >= 1 ? side : static_cast<std::uint32_t>(std::max(1.0, std::round(side * scale)));
}

Result<std::shared_ptr<Bitmap>> FittingCopy(const std::shared_ptr<const PixelSource>& picture, const Affine& toSurface,
                                            Resampling resampling) {
    const PictureInfo& info = picture->Info();
    const std::uint32_t width = ShrunkSide(info.width, std::hypot(toSurface.xx, toSurface.yx));
    const std::uint32_t height = ShrunkSide(info.height, std::hypot(toSurface.xy, toSurface.yy));
    if (resampling != Resampling::Nearest && (width != info.width || height != info.height)) {
        return Resample(*picture, width, height);
    }
    return Bitmap::Copy(*ConvertedTo(picture, PixelFormat::Pargb32));
}

// Weights of four neighbouring samples, the second of which is the one before the point.
void CubicWeights(double part, float* weights) {
    for (int i = 0; i < 4; ++i) {
        weights[i] = static_cast<float>(KeysCubic(part - (i - 1)));
    }
}

void LinearWeights(double part, float* weights) {
    weights[0] = weights[3] = 0;
    weights[1] = static_cast<float>(1 - part);
    weights[2] = static_cast<float>(part);
}

} // namespace

AffineSampler::AffineSampler(std::shared_ptr<const Bitmap> bitmap, const std::optional<Affine>& fromSurface,
                             Resampling resampling)
    : bitmap_(std::move(bitmap)), fromSurface_(fromSurface), resampling_(resampling) {
    if (fromSurface_) {
        stepX_ = std::hypot(fromSurface_->xx, fromSurface_->xy);
        stepY_ = std::hypot(fromSurface_->yx, fromSurface_->yy);
    }
}

Result<AffineSampler> AffineSampler::Create(const std::shared_ptr<const PixelSource>& picture, const Affine& toSurface,
                                            Resampling resampling) {
    auto bitmap = FittingCopy(picture, toSurface, resampling);
    if (!bitmap.Ok()) {
        return bitmap.GetStatus();
    }
    const PictureInfo& full = picture->Info();
    const PictureInfo& held = (*bitmap)->Info();
    const Affine toHeld =
        Affine::Scaling(static_cast<double>(held.width) / full.width, static_cast<double>(held.height) / full.height);
    auto inverse = toSurface.Inverse();
    if (inverse) {
        inverse = inverse->Then(toHeld);
    }
    return AffineSampler(std::move(*bitmap), inverse, resampling);
}

void AffineSampler::SampleAt(std::int64_t x, std::int64_t y, std::uint8_t* pixel) const {
    std::memset(pixel, 0, 4);
    if (!fromSurface_) {
        return;
    }
    const Point point = (*fromSurface_)({static_cast<double>(x) + 0.5, static_cast<double>(y) + 0.5});
    const auto coverage = static_cast<float>(CoverageAt(point));
    if (coverage <= 0) {
        return;
    }
    const Premultiplied color = Interpolated(point);
    const float alpha = std::clamp(color.channels[3], 0.0f, 255.0f);
    if (alpha <= 0) {
        return;
    }
    for (int channel = 0; channel < 3; ++channel) {
        const float straight = std::clamp(color.channels[channel] * 255 / alpha, 0.0f, 255.0f);
        pixel[channel] = static_cast<std::uint8_t>(straight + 0.5f);
    }
    pixel[3] = static_cast<std::uint8_t>(alpha * coverage + 0.5f);
}

// The part of a surface pixel that lies within the picture, by how far its centre is from each border.
double AffineSampler::CoverageAt(Point point) const {
    const PictureInfo& info = bitmap_->Info();
    const auto within = [](double distance, double step) { return std::clamp(0.5 + distance / step, 0.0, 1.0); };
    if (resampling_ == Resampling::Nearest) {
        const bool isInside = point.x >= 0 && point.y >= 0 && point.x < info.width && point.y < info.height;
        return isInside ? 1 : 0;
    }
    return within(point.x, stepX_) * within(info.width - point.x, stepX_) * within(point.y, stepY_) *
           within(info.height - point.y, stepY_);
}

const std::uint8_t* AffineSampler::PixelAt(std::int64_t x, std::int64_t y) const {
    const PictureInfo& info = bitmap_->Info();
    const auto column = std::clamp<std::int64_t>(x, 0, std::int64_t{info.width} - 1);
    const auto row = std::clamp<std::int64_t>(y, 0, std::int64_t{info.height} - 1);
    return bitmap_->Row(static_cast<std::uint32_t>(row)) + column * 4;
}

AffineSampler::Premultiplied AffineSampler::Interpolated(Point point) const {
    Premultiplied sum{};
    if (resampling_ == Resampling::Nearest) {
        const std::uint8_t* pixel =
            PixelAt(static_cast<std::int64_t>(std::floor(point.x)), static_cast<std::int64_t>(std::floor(point.y)));
        std::copy_n(pixel, 4, sum.channels);
        return sum;
    }
    const double x = point.x - 0.5;
    const double y = point.y - 0.5;
    const auto left = static_cast<std::int64_t>(std::floor(x));
    const auto top = static_cast<std::int64_t>(std::floor(y));
    float weightsX[4];
    float weightsY[4];
    const auto makeWeights = resampling_ == Resampling::Linear ? LinearWeights : CubicWeights;
    makeWeights(x - static_cast<double>(left), weightsX);
    makeWeights(y - static_cast<double>(top), weightsY);
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            const float weight = weightsX[column] * weightsY[row];
            const std::uint8_t* pixel = PixelAt(left + column - 1, top + row - 1);
            for (int channel = 0; channel < 4; ++channel) {
                sum.channels[channel] += weight * pixel[channel];
            }
        }
    }
    return sum;
}

} // namespace imaginglibrary
