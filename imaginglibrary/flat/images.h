// Images behind handles.
#pragma once

#include "imaginglibrary/codecs/codec.h"
#include "imaginglibrary/core/bitmap.h"
#include "imaginglibrary/core/recursivemutex.h"
#include "imaginglibrary/core/rowwatch.h"
#include "imaginglibrary/flat/extensions.h"
#include "imaginglibrary/flat/flattypes.h"
#include "imaginglibrary/operations/picturepyramid.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace imaginglibrary {

// The file that an image's pixels came from.
struct ImageOrigin {
    const Codec* codec = nullptr;                 // null for an image that was made in memory, or as a part of another
    std::shared_ptr<FileDamage> damage = nullptr; // null where damage is always undecodable
};

// The watcher of an image, behind a lock that is not held while it is called.
class ImageWatch : public RowWatch {
  public:
    void Set(ImageWatcher watcher, void* context);
    bool Tell(std::uint32_t done, std::uint32_t rows) override;

  private:
    std::mutex mutex_;
    ImageWatcher watcher_ = nullptr;
    void* context_ = nullptr;
};

// What an image handle stands for. Clones share the picture until one of them is drawn on. An image that was loaded
// keeps its file open as long as it lives, whatever became of its pixels: it can never be saved onto that file. Several
// threads may call it.
class Image {
  public:
    explicit Image(std::shared_ptr<const PixelSource> picture, PropertyList properties = {}, ImageOrigin origin = {});

    // Of a bitmap that nobody else has, to be painted on as it is.
    explicit Image(std::shared_ptr<Bitmap> bitmap) : picture_(bitmap), bitmap_(std::move(bitmap)) {}

    // The picture and the properties as they are now; later changes of the image do not show in them.
    std::shared_ptr<const PixelSource> Picture() const;
    std::shared_ptr<const PropertyList> Properties() const;

    // The picture for one whose reading the watcher shall know of. UndecodableContent where damage that was met is
    // refused.
    Result<std::shared_ptr<const PixelSource>> PictureToRead() const;

    // The picture in a form that can be drawn many times over. It is read for the first who asks, whom alone the
    // watcher hears of, and kept until the picture changes; that it is undecodable is remembered just so.
    Result<std::shared_ptr<const PicturePyramid>> PreparedPicture();

    const ImageOrigin& Origin() const { return origin_; }

    // Whether the file holds drawing orders rather than pixels.
    bool IsMetafile() const;

    void ReplacePicture(std::shared_ptr<const PixelSource> picture);

    void SetProperty(Property property);

    // Lets `change` change the properties. It must not call the image.
    void ChangeProperties(const std::function<void(PropertyList&)>& change);

    // Lets `paint` change the pixels, in a bitmap of this image's own, in the picture's pixel format.
    Status Paint(const std::function<Status(Bitmap&)>& paint);

    // Null ends the watch.
    void WatchWith(ImageWatcher watcher, void* context) { watch_->Set(watcher, context); }

  private:
    bool OwnsBitmap() const;
    bool IsDamageRefused() const;

    std::shared_ptr<const PixelSource> loaded_; // holds the file; null for an image of a bitmap
    ImageOrigin origin_;
    std::shared_ptr<ImageWatch> watch_ = std::make_shared<ImageWatch>();
    mutable RecursiveMutex mutex_; // a watcher may ask for the image that is being drawn on
    std::shared_ptr<const PixelSource> picture_;
    std::shared_ptr<Bitmap> bitmap_; // the same as picture_ where that is a bitmap made for painting, else null
    std::optional<Result<std::shared_ptr<const PicturePyramid>>> prepared_; // of picture_ as it is now
    // Shared with those who asked for it, so copied before it changes.
    std::shared_ptr<PropertyList> properties_ = std::make_shared<PropertyList>();
};

// Null for a handle that is zero, foreign or disposed of.
std::shared_ptr<Image> FindImage(GpImage* handle);

GpImage* AddImage(std::shared_ptr<Image> image);

} // namespace imaginglibrary
