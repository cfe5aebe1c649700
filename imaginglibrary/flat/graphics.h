// Drawing surfaces behind handles.
#pragma once

#include "imaginglibrary/core/recursivemutex.h"
#include "imaginglibrary/flat/flattypes.h"
#include "imaginglibrary/operations/blend.h"
#include "imaginglibrary/operations/drawpicture.h"

#include <functional>
#include <memory>
#include <vector>

namespace imaginglibrary {

// The platform's numbers.
enum class InterpolationMode : std::int32_t {
    Default = 0,
    LowQuality = 1,
    HighQuality = 2,
    Bilinear = 3,
    Bicubic = 4,
    NearestNeighbor = 5,
    HighQualityBilinear = 6,
    HighQualityBicubic = 7,
};

enum class SmoothingMode : std::int32_t {
    Default = 0,
    HighSpeed = 1,
    HighQuality = 2,
    None = 3,
    AntiAlias = 4,
};

// What is drawn on.
class Surface {
  public:
    virtual ~Surface() = default;

    // Whether what is drawn on exists no more.
    virtual bool IsGone() const { return false; }

    // The pixels that can be drawn on.
    virtual PixelRect Area() const = 0;

    virtual double DotsPerInch() const = 0;

    // Whether this very picture is what the surface consists of.
    virtual bool Shows(const PixelSource& /*picture*/) const { return false; }

    // Lets `paint` draw on the pixels of `area`, which lies within Area() and is not empty.
    virtual Status Paint(const PixelRect& area, const std::function<Status(Canvas&)>& paint) = 0;
};

// How to draw: what a saved state keeps.
struct DrawingState {
    Affine world; // from the caller's coordinates to the surface's
    InterpolationMode interpolation = InterpolationMode::Bilinear;
    // Enlarging is by cubic convolution unless a mode is chosen that says otherwise.
    Resampling resampling = Resampling::Smooth;
    SmoothingMode smoothing = SmoothingMode::None;
};

// What a graphics handle stands for. Used by one thread at a time; another one waits.
struct Graphics {
    explicit Graphics(std::unique_ptr<Surface> drawnOn) : surface(std::move(drawnOn)) {}

    RecursiveMutex mutex; // a watcher of what is drawn may ask for the surface
    std::unique_ptr<Surface> surface;
    DrawingState state;
    std::vector<DrawingState> saved; // a state's number is its place, from 1 on
};

// Null for a handle that is zero, foreign or deleted, or whose image was disposed of.
std::shared_ptr<Graphics> FindGraphics(GpGraphics* handle);

GpGraphics* AddGraphics(std::unique_ptr<Surface> surface);

// Draws on the part of the surface that `area` covers; a drawing that falls outside is no failure.
Status PaintOn(Graphics& graphics, const PixelRect& area, const std::function<Status(Canvas&)>& paint);

} // namespace imaginglibrary
