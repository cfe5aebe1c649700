// Drawing surfaces on images: making and deleting them, their modes and their world transform.
#include "imaginglibrary/flat/graphics.h"

#include "imaginglibrary/flat/guard.h"
#include "imaginglibrary/flat/handles.h"
#include "imaginglibrary/flat/images.h"

#include <numbers>

namespace imaginglibrary {

namespace {

using AllGraphics = Handles<GpGraphics, Graphics>;

// Does not keep its image: callers may leave a surface behind, and the image's file must be free all the same.
class ImageSurface : public Surface {
  public:
    explicit ImageSurface(const std::shared_ptr<Image>& image) : image_(image) {}

    bool IsGone() const override { return image_.expired(); }

    PixelRect Area() const override {
        const auto image = image_.lock();
        if (image == nullptr) {
            return {};
        }
        const auto picture = image->Picture();
        return {0, 0, std::int64_t{picture->Info().width}, std::int64_t{picture->Info().height}};
    }

    double DotsPerInch() const override {
        const auto image = image_.lock();
        return DotsPerInchOrAssumed(image != nullptr ? image->Picture()->Info().resolution.vertical : 0);
    }

    bool Shows(const PixelSource& picture) const override {
        const auto image = image_.lock();
        return image != nullptr && image->Picture().get() == &picture;
    }

    Status Paint(const PixelRect& /*area*/, const std::function<Status(Canvas&)>& paint) override {
        const auto image = image_.lock();
        if (image == nullptr) {
            return Status::InvalidParameter;
        }
        return image->Paint([&](Bitmap& bitmap) {
            Canvas canvas{bitmap};
            return paint(canvas);
        });
    }

  private:
    std::weak_ptr<Image> image_;
};

// Does `work` with the graphics behind a handle, which no other thread uses meanwhile.
template <class Work> Status WithGraphics(GpGraphics* handle, Work work) {
    return Guarded([&] {
        const auto graphics = FindGraphics(handle);
        if (graphics == nullptr) {
            return Status::InvalidParameter;
        }
        const std::lock_guard lock(graphics->mutex);
        return work(*graphics);
    });
}

template <class Answer, class Ask> Status AskGraphics(GpGraphics* handle, Answer* answer, Ask ask) {
    return WithGraphics(handle, [&](Graphics& graphics) {
        if (answer == nullptr) {
            return Status::InvalidParameter;
        }
        *answer = ask(graphics);
        return Status::Ok;
    });
}

Status ChangeWorld(GpGraphics* handle, const Affine& change, MatrixOrder order) {
    return WithGraphics(handle, [&](Graphics& graphics) {
        if (order != MatrixOrder::Prepend && order != MatrixOrder::Append) {
            return Status::InvalidParameter;
        }
        Affine& world = graphics.state.world;
        world = order == MatrixOrder::Prepend ? change.Then(world) : world.Then(change);
        return Status::Ok;
    });
}

// What the modes that only ask for more or less effort stand for.
InterpolationMode Settled(InterpolationMode mode) {
    switch (mode) {
    case InterpolationMode::Default:
    case InterpolationMode::LowQuality:
        return InterpolationMode::Bilinear;
    case InterpolationMode::HighQuality:
        return InterpolationMode::HighQualityBicubic;
    default:
        return mode;
    }
}

Resampling ResamplingFor(InterpolationMode chosen) {
    switch (chosen) {
    case InterpolationMode::NearestNeighbor:
        return Resampling::Nearest;
    case InterpolationMode::LowQuality:
    case InterpolationMode::Bilinear:
    case InterpolationMode::HighQualityBilinear:
        return Resampling::Linear;
    default:
        return Resampling::Smooth;
    }
}

SmoothingMode Settled(SmoothingMode mode) {
    return mode == SmoothingMode::HighQuality || mode == SmoothingMode::AntiAlias ? SmoothingMode::AntiAlias
                                                                                  : SmoothingMode::None;
}

} // namespace

std::shared_ptr<Graphics> FindGraphics(GpGraphics* handle) {
    auto graphics = AllGraphics::Find(handle);
    return graphics == nullptr || graphics->surface->IsGone() ? nullptr : graphics;
}

GpGraphics* AddGraphics(std::unique_ptr<Surface> surface) {
    return AllGraphics::Add(std::make_shared<Graphics>(std::move(surface)));
}

Status PaintOn(Graphics& graphics, const PixelRect& area, const std::function<Status(Canvas&)>& paint) {
    const PixelRect visible = Intersection(area, graphics.surface->Area());
    return visible.IsEmpty() ? Status::Ok : graphics.surface->Paint(visible, paint);
}

// Indexed pictures, those of one bit of alpha, and metafiles cannot be drawn on.
FLAT_EXPORT Status FLAT_CALL GdipGetImageGraphicsContext(GpImage* handle, GpGraphics** graphics) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr || graphics == nullptr) {
            return Status::InvalidParameter;
        }
        if (image->IsMetafile() || !IsDrawable(image->Picture()->Info().format)) {
            return Status::OutOfMemory; // the platform's answer
        }
        *graphics = AddGraphics(std::make_unique<ImageSurface>(image));
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL GdipDeleteGraphics(GpGraphics* graphics) {
    return Guarded([&] { return AllGraphics::Remove(graphics); });
}

// States are numbered from 1 on.
FLAT_EXPORT Status FLAT_CALL GdipSaveGraphics(GpGraphics* handle, std::uint32_t* number) {
    return AskGraphics(handle, number, [](Graphics& graphics) {
        graphics.saved.push_back(graphics.state);
        return static_cast<std::uint32_t>(graphics.saved.size());
    });
}

FLAT_EXPORT Status FLAT_CALL GdipGetInterpolationMode(GpGraphics* handle, InterpolationMode* mode) {
    return AskGraphics(handle, mode, [](const Graphics& graphics) { return graphics.state.interpolation; });
}

FLAT_EXPORT Status FLAT_CALL GdipSetInterpolationMode(GpGraphics* handle, InterpolationMode mode) {
    return WithGraphics(handle, [&](Graphics& graphics) {
        if (mode < InterpolationMode::Default || mode > InterpolationMode::HighQualityBicubic) {
            return Status::InvalidParameter;
        }
        graphics.state.interpolation = Settled(mode);
        graphics.state.resampling = ResamplingFor(mode);
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL GdipGetSmoothingMode(GpGraphics* handle, SmoothingMode* mode) {
    return AskGraphics(handle, mode, [](const Graphics& graphics) { return graphics.state.smoothing; });
}

FLAT_EXPORT Status FLAT_CALL GdipSetSmoothingMode(GpGraphics* handle, SmoothingMode mode) {
    return WithGraphics(handle, [&](Graphics& graphics) {
        if (mode < SmoothingMode::Default || mode > SmoothingMode::AntiAlias) {
            return Status::InvalidParameter;
        }
        graphics.state.smoothing = Settled(mode);
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL GdipTranslateWorldTransform(GpGraphics* handle, float dx, float dy, MatrixOrder order) {
    return ChangeWorld(handle, Affine::Translation(dx, dy), order);
}

// In degrees, clockwise.
FLAT_EXPORT Status FLAT_CALL GdipRotateWorldTransform(GpGraphics* handle, float degrees, MatrixOrder order) {
    return ChangeWorld(handle, Affine::Rotation(degrees * std::numbers::pi / 180), order);
}

} // namespace imaginglibrary
