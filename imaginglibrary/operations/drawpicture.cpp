// Draws a picture, or a part of it, through an affine map.
#include "imaginglibrary/operations/drawpicture.h"

#include "imaginglibrary/core/limits.h"
#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/core/rowpump.h"
#include "imaginglibrary/operations/affinesampler.h"
#include "imaginglibrary/operations/coverage.h"
#include "imaginglibrary/operations/crop.h"
#include "imaginglibrary/operations/turn.h"

#include <vector>

namespace imaginglibrary {

namespace {

// How many times larger than what is visible a resampled picture may be before pixels are worked out one by one.
constexpr std::int64_t MostHiddenParts = 4;

std::vector<Edge> OutlineOf(const PixelRect& part, const Affine& toSurface) {
    Path path;
    path.AddRectangle({static_cast<double>(part.left), static_cast<double>(part.top)},
                      {static_cast<double>(part.right), static_cast<double>(part.bottom)});
    std::vector<Edge> edges;
    path.AppendEdges(toSurface, edges);
    return edges;
}

PixelRect VisiblePart(const PictureDrawing& drawing) {
    const PictureInfo& info = drawing.picture->Info();
    return Intersection(drawing.part, {0, 0, std::int64_t{info.width}, std::int64_t{info.height}});
}

bool IsWhole(double value) { return std::abs(value - std::round(value)) < 1e-6; }

// The picture as upright pixels of the surface: mirrored perhaps, but neither slanted nor between pixels.
struct UprightTarget {
    PixelRect rect;
    bool isMirroredX;
    bool isMirroredY;
};

std::optional<UprightTarget> UprightTargetOf(const PixelRect& part, const Affine& map) {
    const Point first = map({static_cast<double>(part.left), static_cast<double>(part.top)});
    const Point last = map({static_cast<double>(part.right), static_cast<double>(part.bottom)});
    if (map.xy != 0 || map.yx != 0 || !IsWhole(first.x) || !IsWhole(first.y) || !IsWhole(last.x) || !IsWhole(last.y)) {
        return std::nullopt;
    }
    const auto whole = [](double value) { return static_cast<std::int64_t>(std::llround(value)); };
    return UprightTarget{{whole(std::min(first.x, last.x)), whole(std::min(first.y, last.y)),
                          whole(std::max(first.x, last.x)), whole(std::max(first.y, last.y))},
                         last.x < first.x,
                         last.y < first.y};
}

// Lays the rows of a picture over the canvas, its first pixel at (left, top) of the surface; what falls outside is not
// shown.
Status PlaceRows(Canvas& canvas, const std::shared_ptr<const PixelSource>& picture, std::int64_t left,
                 std::int64_t top) {
    const PictureInfo& info = picture->Info();
    const PixelRect target{left, top, left + std::int64_t{info.width}, top + std::int64_t{info.height}};
    const PixelRect visible = Intersection(target, canvas.Area());
    if (visible.IsEmpty()) {
        return Status::Ok;
    }
    const auto blend = [&](std::uint32_t row, const std::uint8_t* pixels) {
        const std::int64_t y = top + std::int64_t{row};
        if (y >= visible.top) {
            BlendRow(canvas, visible.left, y, pixels + (visible.left - left) * 4,
                     static_cast<std::size_t>(visible.Width()));
        }
        return Status::Ok;
    };
    return ForEachRow(OpenRowsAs(*picture, PixelFormat::Argb32), std::size_t{info.width} * 4,
                      static_cast<std::uint32_t>(visible.bottom - top), blend);
}

// The part of the picture that is drawn; the picture itself where that is all of it.
std::shared_ptr<const PixelSource> PartOf(const PictureDrawing& drawing, const PixelRect& part) {
    const PictureInfo& info = drawing.picture->Info();
    const bool isAll = part.Width() == std::int64_t{info.width} && part.Height() == std::int64_t{info.height};
    return isAll ? drawing.picture : CroppedTo(drawing.picture, part);
}

Status PlaceMirrored(Canvas& canvas, const std::shared_ptr<const PixelSource>& picture, const UprightTarget& target) {
    const unsigned turn = (target.isMirroredY ? 2u : 0u) | (target.isMirroredX != target.isMirroredY ? Mirror : 0u);
    const auto mirrored = Turned(picture, turn);
    return mirrored.Ok() ? PlaceRows(canvas, *mirrored, target.rect.left, target.rect.top) : mirrored.GetStatus();
}

// Lays the rows of a picture over the canvas as they come, at another size.
Status PlaceResampled(Canvas& canvas, const PixelSource& picture, const PixelRect& rect, Resampling resampling) {
    const PixelRect visible = Intersection(rect, canvas.Area());
    const auto blend = [&](std::uint32_t row, const std::uint8_t* pixels) {
        const std::int64_t y = rect.top + std::int64_t{row};
        if (y >= visible.top && y < visible.bottom) {
            BlendPremultipliedRow(canvas, visible.left, y, pixels + (visible.left - rect.left) * 4,
                                  static_cast<std::size_t>(visible.Width()));
        }
        return Status::Ok;
    };
    return ResampleRows(picture, static_cast<std::uint32_t>(rect.Width()), static_cast<std::uint32_t>(rect.Height()),
                        resampling, blend);
}

Status DrawUpright(Canvas& canvas, const PictureDrawing& drawing, const PixelRect& part, const UprightTarget& target) {
    const std::shared_ptr<const PixelSource> picture = PartOf(drawing, part);
    const PixelRect& rect = target.rect;
    const bool isResampled = rect.Width() != part.Width() || rect.Height() != part.Height();
    const bool isMirrored = target.isMirroredX || target.isMirroredY;
    if (!isResampled) {
        return isMirrored ? PlaceMirrored(canvas, picture, target) : PlaceRows(canvas, picture, rect.left, rect.top);
    }
    if (!isMirrored) {
        return PlaceResampled(canvas, *picture, rect, drawing.resampling);
    }
    const auto resampled = Resample(*picture, static_cast<std::uint32_t>(rect.Width()),
                                    static_cast<std::uint32_t>(rect.Height()), drawing.resampling);
    return resampled.Ok() ? PlaceMirrored(canvas, *resampled, target) : resampled.GetStatus();
}

// Works out every pixel of the surface from where it lies in the picture.
Status DrawSlanted(Canvas& canvas, const PictureDrawing& drawing, const PixelRect& part) {
    auto sampler = AffineSampler::Create(
        PartOf(drawing, part),
        Affine::Translation(static_cast<double>(part.left), static_cast<double>(part.top)).Then(drawing.toSurface),
        drawing.resampling);
    if (!sampler.Ok()) {
        return sampler.GetStatus();
    }
    const PixelRect area = Intersection(canvas.Area(), BoundsOf(OutlineOf(part, drawing.toSurface)));
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(std::max<std::int64_t>(area.Width(), 0)) * 4);
    for (std::int64_t y = area.top; y < area.bottom; ++y) {
        for (std::int64_t x = area.left; x < area.right; ++x) {
            sampler->SampleAt(x, y, &pixels[static_cast<std::size_t>(x - area.left) * 4]);
        }
        if (!area.IsEmpty()) {
            BlendRow(canvas, area.left, y, pixels.data(), static_cast<std::size_t>(area.Width()));
        }
    }
    return Status::Ok;
}

} // namespace

PixelRect DrawnArea(const PictureDrawing& drawing) {
    const PixelRect part = VisiblePart(drawing);
    return part.IsEmpty() ? PixelRect() : BoundsOf(OutlineOf(part, drawing.toSurface));
}

Status DrawPicture(Canvas& canvas, const PictureDrawing& drawing) {
    const PixelRect part = VisiblePart(drawing);
    if (part.IsEmpty() || Intersection(DrawnArea(drawing), canvas.Area()).IsEmpty()) {
        return Status::Ok;
    }
    const auto target = UprightTargetOf(part, drawing.toSurface);
    if (!target) {
        return DrawSlanted(canvas, drawing, part);
    }
    if (target->rect.IsEmpty()) {
        return Status::Ok;
    }
    const PixelRect visible = Intersection(target->rect, canvas.Area());
    const bool isScaled = target->rect.Width() != part.Width() || target->rect.Height() != part.Height();
    const bool isMostlyHidden = target->rect.Width() > MostHiddenParts * visible.Width() ||
                                target->rect.Height() > MostHiddenParts * visible.Height();
    const bool isTooLarge = !IsAcceptableSize(static_cast<std::uint64_t>(target->rect.Width()),
                                              static_cast<std::uint64_t>(target->rect.Height()));
    return isScaled && (isMostlyHidden || isTooLarge) ? DrawSlanted(canvas, drawing, part)
                                                      : DrawUpright(canvas, drawing, part, *target);
}

} // namespace imaginglibrary
