// Images behind handles.
#pragma once

#include "imaginglibrary/codecs/codec.h"
#include "imaginglibrary/core/bitmap.h"
#include "imaginglibrary/flat/flattypes.h"

#include <functional>
#include <memory>
#include <mutex>

namespace imaginglibrary {

// What an image handle stands for. Clones share the picture until one of them is drawn on. An image that was loaded
// keeps its file open as long as it lives, whatever became of its pixels: it can never be saved onto that file. Several
// threads may call it.
class Image {
  public:
    // `codec` is that of the file the picture comes from, null for one made in memory.
    explicit Image(std::shared_ptr<const PixelSource> picture, PropertyList properties = {},
                   const Codec* codec = nullptr);

    // The picture and the properties as they are now; later changes of the image do not show in them.
    std::shared_ptr<const PixelSource> Picture() const;
    std::shared_ptr<const PropertyList> Properties() const;

    const Codec* FileCodec() const { return codec_; }

    // Whether the file holds drawing orders rather than pixels.
    bool IsMetafile() const;

    void ReplacePicture(std::shared_ptr<const PixelSource> picture);

    void SetProperty(Property property);

    // Lets `paint` change the pixels, in a bitmap of this image's own, in the picture's pixel format.
    Status Paint(const std::function<Status(Bitmap&)>& paint);

  private:
    std::shared_ptr<const PixelSource> loaded_; // holds the file
    mutable std::mutex mutex_;
    std::shared_ptr<const PixelSource> picture_;
    std::shared_ptr<Bitmap> bitmap_; // the same as picture_ where that is a bitmap made for painting, else null
    std::shared_ptr<PropertyList> properties_; // shared with those who asked for it, so copied before it changes
    const Codec* codec_;
};

// Null for a handle that is zero, foreign or disposed of.
std::shared_ptr<Image> FindImage(GpImage* handle);

GpImage* AddImage(std::shared_ptr<Image> image);

} // namespace imaginglibrary
