// Draws a prepared picture through an affine map.
#include "imaginglibrary/operations/drawpyramid.h"

#include "imaginglibrary/operations/footprint.h"
#include "imaginglibrary/operations/parallel.h"
#include "imaginglibrary/operations/pixelcoverage.h"
#include "imaginglibrary/operations/sampleline.h"

#include <array>

namespace imaginglibrary {

namespace {

constexpr std::int64_t RowsPerJob = 64;

// Below this many pixels starting a thread costs more than it saves.
constexpr std::int64_t ManyPixels = 40000;

// A prepared picture on its way to a surface.
class PyramidDrawing {
  public:
    PyramidDrawing(const PicturePyramid& pyramid, const PyramidLevel& level, const Affine& fromSurface,
                   const Footprint& footprint, Resampling resampling)
        : level_(level), footprint_(footprint), samples_(resampling == Resampling::Nearest ? 1 : footprint.samples),
          isOpaque_(pyramid.IsOpaque()), hasSoftBorders_(resampling != Resampling::Nearest),
          toLevel_(fromSurface.Then(Affine::Scaling(static_cast<double>(level.Width()) / pyramid.Width(),
                                                    static_cast<double>(level.Height()) / pyramid.Height()))),
          rectangle_(toLevel_, level.Width(), level.Height()), kernel_(KernelOf(resampling)),
          // Fractions are cut off to a place that has weights; the nearest one is meant.
          rounding_(hasSoftBorders_ ? 0.5 / SampleKernel::Phases : 0),
          canStep_(IsStep(toLevel_.xx) && IsStep(toLevel_.yx)), stepX_(FixedStep(toLevel_.xx)),
          stepY_(FixedStep(toLevel_.yx)), ahead_(BytesAhead()) {}

    // The rows from `top` on, at most RowsPerJob of them.
    void DrawRows(const Canvas& canvas, std::int64_t top, std::int64_t bottom, const PixelRun& columns) const {
        std::array<PixelRun, RowsPerJob> covered;
        for (std::int64_t y = top; y < bottom; ++y) {
            covered[static_cast<std::size_t>(y - top)] = DrawBorders(canvas, y, columns);
        }
        for (std::int64_t left = columns.first; left < columns.end; left += LongestRun) {
            for (std::int64_t y = top; y < bottom; ++y) {
                const PixelRun& run = covered[static_cast<std::size_t>(y - top)];
                const PixelRun part{std::max(run.first, left), std::min(run.end, left + LongestRun)};
                if (!part.IsEmpty()) {
                    DrawCovered(canvas, y, part);
                }
            }
        }
    }

  private:
    // Pixels that are drawn at once, few enough that what steps lack in precision does not add up, and that runs one
    // below the other, across the picture's rows, find what they need in the processor's cache.
    static constexpr std::int64_t LongestRun = 192;

    // Draws what lies across the picture's borders, and gives back the pixels between.
    PixelRun DrawBorders(const Canvas& canvas, std::int64_t y, const PixelRun& row) const {
        const PixelRun covered = hasSoftBorders_ ? rectangle_.Covered(y, row) : rectangle_.Centred(y, row);
        const PixelRun touched = hasSoftBorders_ ? rectangle_.Touched(y, row) : covered;
        if (covered.IsEmpty()) {
            DrawBorder(canvas, y, touched);
            return {};
        }
        DrawBorder(canvas, y, {touched.first, covered.first});
        DrawBorder(canvas, y, {covered.end, touched.end});
        return covered;
    }

    void DrawCovered(const Canvas& canvas, std::int64_t y, const PixelRun& run) const {
        const auto count = static_cast<std::size_t>(run.end - run.first);
        if (isOpaque_ && samples_ == 1 && TakesPremultiplied(canvas.Format())) {
            SampleRun(y, run, 0, canvas.PixelAt(run.first, y));
            return;
        }
        std::uint8_t pixels[LongestRun * 4];
        SampleRun(y, run, 0, pixels);
        if (samples_ > 1) {
            AddOtherSamples(y, run, pixels);
        }
        BlendPremultipliedRow(canvas, run.first, y, pixels, count);
    }

    // One sample of each pixel of a run.
    void SampleRun(std::int64_t y, const PixelRun& run, std::size_t sample, std::uint8_t* pixels) const {
        const SampleWay way = WayFrom(PlaceOf(run.first, y, sample));
        const auto count = static_cast<std::size_t>(run.end - run.first);
        if (canStep_ && way.LiesWithin(level_, count)) {
            SampleLine(level_, kernel_, way, pixels, count);
            return;
        }
        for (std::size_t i = 0; i < count; ++i) {
            SampleNearest(run.first + static_cast<std::int64_t>(i), y, sample, pixels + i * 4);
        }
    }

    // Makes of the first samples of a run the average of all.
    void AddOtherSamples(std::int64_t y, const PixelRun& run, std::uint8_t* pixels) const {
        const auto bytes = static_cast<std::size_t>(run.end - run.first) * 4;
        std::uint16_t sums[LongestRun * 4];
        std::copy_n(pixels, bytes, sums);
        for (std::size_t sample = 1; sample < samples_; ++sample) {
            SampleRun(y, run, sample, pixels);
            for (std::size_t i = 0; i < bytes; ++i) {
                sums[i] = static_cast<std::uint16_t>(sums[i] + pixels[i]);
            }
        }
        const unsigned shift = samples_ == 4 ? 2 : 1;
        for (std::size_t i = 0; i < bytes; ++i) {
            pixels[i] = static_cast<std::uint8_t>((sums[i] + samples_ / 2) >> shift);
        }
    }

    // Pixels that lie across a border.
    void DrawBorder(const Canvas& canvas, std::int64_t y, const PixelRun& run) const {
        for (std::int64_t x = run.first; x < run.end; ++x) {
            const double coverage = hasSoftBorders_ ? rectangle_.CoverageOf(x, y) : 1;
            double sums[4] = {};
            std::uint8_t pixel[4];
            for (std::size_t sample = 0; sample < samples_; ++sample) {
                SampleNearest(x, y, sample, pixel);
                for (std::size_t channel = 0; channel < 4; ++channel) {
                    sums[channel] += pixel[channel];
                }
            }
            for (std::size_t channel = 0; channel < 4; ++channel) {
                const double average = sums[channel] / static_cast<double>(samples_);
                pixel[channel] = static_cast<std::uint8_t>(average * coverage + 0.5);
            }
            BlendPremultipliedRow(canvas, x, y, pixel, 1);
        }
    }

    // Where a sample of a pixel lies: the place of the first of the four pixels around it, for those begin one and a
    // half pixels before it.
    Point PlaceOf(std::int64_t x, std::int64_t y, std::size_t sample) const {
        constexpr double ToFirst = PyramidLevel::Padding - 1.5;
        const Point offset = samples_ == 1 ? Point() : footprint_.Offset(sample);
        const Point point =
            toLevel_({static_cast<double>(x) + 0.5 + offset.x, static_cast<double>(y) + 0.5 + offset.y});
        return {point.x + ToFirst + rounding_, point.y + ToFirst + rounding_};
    }

    SampleWay WayFrom(Point place) const { return {FixedPlace(place.x), FixedPlace(place.y), stepX_, stepY_, ahead_}; }

    // From a pixel's place in the level to that of the pixel a few rows of the surface below it.
    std::uintptr_t BytesAhead() const {
        constexpr double Rows = 8;
        const auto whole = [](double value) { return static_cast<std::intptr_t>(std::clamp(value, -1e4, 1e4)); };
        return static_cast<std::uintptr_t>(whole(toLevel_.yy * Rows) * static_cast<std::intptr_t>(level_.RowBytes()) +
                                           whole(toLevel_.xy * Rows) * 4);
    }

    // A single sample of a pixel, or where that lies beyond the picture, of the border next to it.
    void SampleNearest(std::int64_t x, std::int64_t y, std::size_t sample, std::uint8_t* pixel) const {
        const Point place = PlaceOf(x, y, sample);
        const SampleWay way{FixedPlace(std::clamp<double>(place.x, 0, level_.Width())),
                            FixedPlace(std::clamp<double>(place.y, 0, level_.Height()))};
        SampleLine(level_, kernel_, way, pixel, 1);
    }

    static std::uint32_t FixedPlace(double value) {
        return static_cast<std::uint32_t>(std::clamp(value * SampleWay::Unit + 0.5, 0.0, 4294967295.0));
    }

    // Whether a step is short enough to be told.
    static bool IsStep(double value) { return std::abs(value * SampleWay::Unit) < 2147483647.0; }

    static std::int32_t FixedStep(double value) {
        return IsStep(value) ? static_cast<std::int32_t>(std::round(value * SampleWay::Unit)) : 0;
    }

    const PyramidLevel& level_;
    const Footprint& footprint_;
    std::size_t samples_; // of every pixel
    bool isOpaque_;
    bool hasSoftBorders_;
    Affine toLevel_;
    MappedRectangle rectangle_;
    const SampleKernel& kernel_;
    double rounding_;
    bool canStep_;       // or looks for every pixel on its own
    std::int32_t stepX_; // from a pixel to the next
    std::int32_t stepY_;
    std::uintptr_t ahead_;
};

// The pixels of the canvas that the mapped picture can reach.
PixelRect ReachedArea(const Canvas& canvas, const PicturePyramid& pyramid, const Affine& toSurface) {
    const double width = pyramid.Width();
    const double height = pyramid.Height();
    const Point corners[] = {toSurface({0, 0}), toSurface({width, 0}), toSurface({0, height}),
                             toSurface({width, height})};
    const PixelRect area = canvas.Area();
    const auto bounded = [](double value, std::int64_t least, std::int64_t most) {
        return static_cast<std::int64_t>(std::clamp(value, static_cast<double>(least), static_cast<double>(most)));
    };
    const auto [left, right] = std::minmax({corners[0].x, corners[1].x, corners[2].x, corners[3].x});
    const auto [top, bottom] = std::minmax({corners[0].y, corners[1].y, corners[2].y, corners[3].y});
    return {bounded(std::floor(left), area.left, area.right), bounded(std::floor(top), area.top, area.bottom),
            bounded(std::ceil(right), area.left, area.right), bounded(std::ceil(bottom), area.top, area.bottom)};
}

} // namespace

void DrawPyramid(Canvas& canvas, const PicturePyramid& pyramid, const Affine& toSurface, Resampling resampling) {
    const auto fromSurface = toSurface.Inverse();
    const PixelRect area = ReachedArea(canvas, pyramid, toSurface);
    if (!fromSurface || area.IsEmpty()) {
        return;
    }
    const Footprint footprint(toSurface);
    const bool isSmoothed = resampling != Resampling::Nearest;
    const PyramidLevel& level = isSmoothed ? pyramid.LevelFor(footprint.scale) : *pyramid.Levels().front();
    const PyramidDrawing drawing(pyramid, level, *fromSurface, footprint, resampling);
    const auto jobs = static_cast<std::size_t>((area.Height() + RowsPerJob - 1) / RowsPerJob);
    const auto drawRows = [&](std::size_t job) {
        const std::int64_t top = area.top + static_cast<std::int64_t>(job) * RowsPerJob;
        drawing.DrawRows(canvas, top, std::min(top + RowsPerJob, area.bottom), {area.left, area.right});
    };
    if (area.Width() * area.Height() >= ManyPixels) {
        InParallel(jobs, drawRows);
        return;
    }
    for (std::size_t job = 0; job < jobs; ++job) {
        drawRows(job);
    }
}

} // namespace imaginglibrary
