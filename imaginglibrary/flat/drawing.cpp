// Drawing images and outlines on a surface.
#include "imaginglibrary/core/rowconverter.h"
#include "imaginglibrary/flat/graphics.h"
#include "imaginglibrary/flat/guard.h"
#include "imaginglibrary/flat/handles.h"
#include "imaginglibrary/flat/images.h"
#include "imaginglibrary/operations/coverage.h"
#include "imaginglibrary/operations/drawpyramid.h"
#include "imaginglibrary/operations/fill.h"

#include <cmath>

namespace imaginglibrary {

namespace {

struct Pen {
    Color color;
    double width; // in the caller's units
};

using Pens = Handles<GpPen, Pen>;

// Coordinates beyond this cannot mean anything on a surface.
constexpr double FarthestCoordinate = 1e9;

template <class... Numbers> bool AreNear(Numbers... numbers) {
    const auto isNear = [](double number) { return std::isfinite(number) && std::abs(number) <= FarthestCoordinate; };
    return (isNear(static_cast<double>(numbers)) && ...);
}

PixelRect WholeOf(const PixelSource& picture) {
    return {0, 0, std::int64_t{picture.Info().width}, std::int64_t{picture.Info().height}};
}

// The map from a part of a picture to the parallelogram with these corners.
Affine MapToCorners(const PixelRect& part, Point topLeft, Point topRight, Point bottomLeft) {
    const auto width = static_cast<double>(part.Width());
    const auto height = static_cast<double>(part.Height());
    return Affine::Translation(-static_cast<double>(part.left), -static_cast<double>(part.top))
        .Then({(topRight.x - topLeft.x) / width, (topRight.y - topLeft.y) / width, (bottomLeft.x - topLeft.x) / height,
               (bottomLeft.y - topLeft.y) / height, topLeft.x, topLeft.y});
}

Affine MapToRectangle(const PixelRect& part, double x, double y, double width, double height) {
    return MapToCorners(part, {x, y}, {x + width, y}, {x, y + height});
}

// What is drawn over itself, opaque and in place, stays as it is, and need not even be decoded.
bool ChangesNothing(const PictureDrawing& drawing, const Surface& surface) {
    const Affine& map = drawing.toSurface;
    const bool isInPlace = map.xx == 1 && map.yy == 1 && map.xy == 0 && map.yx == 0 && map.dx == 0 && map.dy == 0;
    return isInPlace && !MayBeTransparent(drawing.picture->Info()) && surface.Shows(*drawing.picture);
}

// Where the pixels of what is drawn come from.
enum class Pixels {
    Read,     // from the picture, each time
    Prepared, // from the form that the image keeps
};

Status DrawFromPicture(Graphics& graphics, const Image& image, PictureDrawing& drawing) {
    auto watched = image.PictureToRead();
    if (!watched.Ok()) {
        return watched.GetStatus();
    }
    drawing.picture = std::move(*watched);
    return PaintOn(graphics, DrawnArea(drawing), [&](Canvas& canvas) { return DrawPicture(canvas, drawing); });
}

Status DrawPrepared(Graphics& graphics, Image& image, const PictureDrawing& drawing) {
    const PixelRect area = DrawnArea(drawing);
    if (Intersection(area, graphics.surface->Area()).IsEmpty()) {
        return Status::Ok;
    }
    const auto prepared = image.PreparedPicture();
    if (!prepared.Ok()) {
        return prepared.GetStatus();
    }
    return PaintOn(graphics, area, [&](Canvas& canvas) {
        DrawPyramid(canvas, **prepared, drawing.toSurface, drawing.resampling);
        return Status::Ok;
    });
}

// `choose` fills in the part to draw and its map to the caller's coordinates, for a picture given; it answers with a
// status other than Ok where its arguments are not acceptable.
template <class Choose>
Status Draw(GpGraphics* graphicsHandle, GpImage* imageHandle, Choose choose, Pixels pixels = Pixels::Read) {
    return Guarded([&] {
        const auto graphics = FindGraphics(graphicsHandle);
        const auto image = FindImage(imageHandle);
        if (graphics == nullptr || image == nullptr) {
            return Status::InvalidParameter;
        }
        const std::lock_guard lock(graphics->mutex);
        PictureDrawing drawing{image->Picture(), {}, {}, graphics->state.resampling};
        drawing.part = WholeOf(*drawing.picture);
        if (const Status status = choose(drawing); status != Status::Ok) {
            return status;
        }
        drawing.toSurface = drawing.toSurface.Then(graphics->state.world);
        if (ChangesNothing(drawing, *graphics->surface)) {
            return Status::Ok;
        }
        return pixels == Pixels::Prepared ? DrawPrepared(*graphics, *image, drawing)
                                          : DrawFromPicture(*graphics, *image, drawing);
    });
}

// The outline of an ellipse drawn with a pen: the ring between two ellipses, or the outer one where the pen fills the
// inner. Whole coordinates name the middles of pixels, so a line of one pixel covers whole ones.
std::vector<Edge> EllipseRing(const Pen& pen, Point corner, Point opposite, const Affine& world) {
    constexpr double ToPixelMiddle = 0.5;
    const auto grown = [&](Point point, double by) { return Point{point.x + by, point.y + by}; };
    const double half = pen.width / 2;
    Path path;
    path.AddEllipse(grown(corner, ToPixelMiddle - half), grown(opposite, ToPixelMiddle + half));
    if (opposite.x - corner.x > pen.width && opposite.y - corner.y > pen.width) {
        path.AddEllipse(grown(corner, ToPixelMiddle + half), grown(opposite, ToPixelMiddle - half), true);
    }
    std::vector<Edge> edges;
    path.AppendEdges(world, edges);
    return edges;
}

std::vector<Edge> EllipseLine(Point corner, Point opposite, const Affine& world) {
    Path path;
    path.AddEllipse({corner.x + 0.5, corner.y + 0.5}, {opposite.x + 0.5, opposite.y + 0.5});
    std::vector<Edge> edges;
    path.AppendEdges(world, edges);
    return edges;
}

} // namespace

// At its natural size, pixel for pixel, whatever the resolutions say; a position between pixels goes to the nearest.
FLAT_EXPORT Status FLAT_CALL GdipDrawImage(GpGraphics* graphics, GpImage* image, float x, float y) {
    return Draw(graphics, image, [&](PictureDrawing& drawing) {
        if (!AreNear(x, y)) {
            return Status::ValueOverflow;
        }
        drawing.toSurface = Affine::Translation(std::floor(x + 0.5), std::floor(y + 0.5));
        return Status::Ok;
    });
}

// A negative width or height mirrors; nothing is drawn for one of 0.
FLAT_EXPORT Status FLAT_CALL GdipDrawImageRectI(GpGraphics* graphics, GpImage* image, std::int32_t x, std::int32_t y,
                                                std::int32_t width, std::int32_t height) {
    return Draw(graphics, image, [&](PictureDrawing& drawing) {
        if (!AreNear(x, y, width, height)) {
            return Status::ValueOverflow;
        }
        drawing.toSurface = MapToRectangle(drawing.part, x, y, width, height);
        return Status::Ok;
    });
}

// Only pixels are a unit that pictures are measured in. What of the source rectangle lies outside the picture draws
// nothing, and the rest stands where it would. There are no attributes and callbacks: they must be null.
FLAT_EXPORT Status FLAT_CALL GdipDrawImageRectRectI(GpGraphics* graphics, GpImage* image, std::int32_t x,
                                                    std::int32_t y, std::int32_t width, std::int32_t height,
                                                    std::int32_t sourceX, std::int32_t sourceY,
                                                    std::int32_t sourceWidth, std::int32_t sourceHeight, Unit unit,
                                                    const void* attributes, const void* callback,
                                                    const void* /*callbackData*/) {
    return Draw(graphics, image, [&](PictureDrawing& drawing) {
        if (unit != Unit::Pixel) {
            return Status::InvalidParameter;
        }
        if (attributes != nullptr || callback != nullptr) {
            return Status::NotImplemented;
        }
        if (!AreNear(x, y, width, height, sourceX, sourceY, sourceWidth, sourceHeight)) {
            return Status::ValueOverflow;
        }
        drawing.part = {sourceX, sourceY, std::int64_t{sourceX} + sourceWidth, std::int64_t{sourceY} + sourceHeight};
        if (!drawing.part.IsEmpty()) {
            drawing.toSurface = MapToRectangle(drawing.part, x, y, width, height);
        }
        return Status::Ok;
    });
}

// Three points: where the upper left, upper right and lower left corners go. Made for windows that draw a picture anew
// at every move of a slider: the image keeps a prepared form of it from the first call on.
FLAT_EXPORT Status FLAT_CALL GdipDrawImagePointsI(GpGraphics* graphics, GpImage* image, const FlatPoint* points,
                                                  std::int32_t count) {
    const auto choose = [&](PictureDrawing& drawing) {
        constexpr std::int32_t Parallelogram = 3;
        constexpr std::int32_t Perspective = 4;
        if (points == nullptr || count < Parallelogram || count > Perspective) {
            return Status::InvalidParameter;
        }
        if (count == Perspective) {
            return Status::NotImplemented;
        }
        if (!AreNear(points[0].x, points[0].y, points[1].x, points[1].y, points[2].x, points[2].y)) {
            return Status::ValueOverflow;
        }
        const auto at = [&](int i) {
            return Point{static_cast<double>(points[i].x), static_cast<double>(points[i].y)};
        };
        drawing.toSurface = MapToCorners(drawing.part, at(0), at(1), at(2));
        return Status::Ok;
    };
    return Draw(graphics, image, choose, Pixels::Prepared);
}

// `color` is 0xAARRGGBB; the width is in pixels, whatever the unit.
FLAT_EXPORT Status FLAT_CALL GdipCreatePen1(Color color, float width, Unit unit, GpPen** pen) {
    return Guarded([&] {
        if (pen == nullptr || !AreNear(width) || (unit != Unit::World && unit != Unit::Pixel)) {
            return Status::InvalidParameter;
        }
        *pen = Pens::Add(std::make_shared<Pen>(Pen{color, std::max(1.0, double{width})}));
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL GdipDeletePen(GpPen* pen) {
    return Guarded([&] { return Pens::Remove(pen); });
}

// Nothing is drawn for a width or height below 0, and none is an error but a missing pen.
FLAT_EXPORT Status FLAT_CALL GdipDrawEllipse(GpGraphics* graphicsHandle, GpPen* penHandle, float x, float y,
                                             float width, float height) {
    return Guarded([&] {
        const auto graphics = FindGraphics(graphicsHandle);
        const auto pen = Pens::Find(penHandle);
        if (graphics == nullptr || pen == nullptr) {
            return Status::InvalidParameter;
        }
        if (!AreNear(x, y, width, height)) {
            return Status::ValueOverflow;
        }
        if (width < 0 || height < 0) {
            return Status::Ok;
        }
        const std::lock_guard lock(graphics->mutex);
        const DrawingState& state = graphics->state;
        const Point corner{x, y};
        const Point opposite{double{x} + width, double{y} + height};
        const std::vector<Edge> ring = EllipseRing(*pen, corner, opposite, state.world);
        return PaintOn(*graphics, BoundsOf(ring), [&](Canvas& canvas) {
            if (state.smoothing == SmoothingMode::AntiAlias) {
                Fill(canvas, ring, pen->color, Edges::Smooth);
            } else if (pen->width > 1) {
                Fill(canvas, ring, pen->color, Edges::Hard);
            } else {
                Trace(canvas, EllipseLine(corner, opposite, state.world), pen->color);
            }
            return Status::Ok;
        });
    });
}

} // namespace imaginglibrary
