// Loading, cloning and disposing of images, and what can be asked of one.
#include "imaginglibrary/flat/images.h"

#include "imaginglibrary/core/limits.h"
#include "imaginglibrary/files/inputstream.h"
#include "imaginglibrary/flat/guard.h"
#include "imaginglibrary/flat/handles.h"

#include <atomic>
#include <string_view>

namespace imaginglibrary {

namespace {

using Images = Handles<GpImage, Image>;

Result<std::shared_ptr<Image>> OpenImage(Result<std::shared_ptr<const InputFile>> file) {
    if (!file.Ok()) {
        return file.GetStatus();
    }
    const Codec* codec = FindCodecFor(**file);
    if (codec == nullptr) {
        return UndecodableContent;
    }
    auto decoder = codec->open(*file);
    if (!decoder.Ok()) {
        return decoder.GetStatus();
    }
    PropertyList properties = (*decoder)->Properties();
    const ImageOrigin origin{codec, (*decoder)->Damage()};
    return std::make_shared<Image>(std::move(*decoder), std::move(properties), origin);
}

// Where an image of a file is put; `open` gives the file.
template <class Open> Status LoadImage(GpImage** image, Open open) {
    *image = nullptr;
    auto opened = OpenImage(open());
    if (!opened.Ok()) {
        return opened.GetStatus();
    }
    *image = AddImage(std::move(*opened));
    return Status::Ok;
}

Status LoadImageFromStream(Stream* stream, GpImage** image) {
    return Guarded([&] {
        return stream == nullptr || image == nullptr ? Status::InvalidParameter
                                                     : LoadImage(image, [=] { return OpenInputStream(stream); });
    });
}

// Answers a question about an image; `ask` gets the picture's description and the place for the answer.
template <class Answer, class Ask> Status AskImage(GpImage* handle, Answer* answer, Ask ask) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr || answer == nullptr) {
            return Status::InvalidParameter;
        }
        *answer = ask(image->Picture()->Info());
        return Status::Ok;
    });
}

} // namespace

void ImageWatch::Set(ImageWatcher watcher, void* context) {
    const std::lock_guard lock(mutex_);
    watcher_ = watcher;
    context_ = context;
}

bool ImageWatch::Tell(std::uint32_t done, std::uint32_t rows) {
    std::unique_lock lock(mutex_);
    const ImageWatcher watcher = watcher_;
    void* const context = context_;
    lock.unlock();
    return watcher == nullptr || watcher(context, done, rows) != 0;
}

Image::Image(std::shared_ptr<const PixelSource> picture, PropertyList properties, ImageOrigin origin)
    : loaded_(picture), origin_(std::move(origin)), picture_(std::move(picture)),
      properties_(std::make_shared<PropertyList>(std::move(properties))) {}

std::shared_ptr<const PixelSource> Image::Picture() const {
    const std::lock_guard lock(mutex_);
    return picture_;
}

std::shared_ptr<const PropertyList> Image::Properties() const {
    const std::lock_guard lock(mutex_);
    return properties_;
}

bool Image::IsDamageRefused() const {
    return origin_.damage != nullptr && origin_.damage->IsRefused() && origin_.damage->IsMet();
}

Result<std::shared_ptr<const PixelSource>> Image::PictureToRead() const {
    if (IsDamageRefused()) {
        return UndecodableContent;
    }
    return WatchedBy(watch_, Picture());
}

Result<std::shared_ptr<const PicturePyramid>> Image::PreparedPicture() {
    if (IsDamageRefused()) {
        return UndecodableContent;
    }
    std::unique_lock lock(mutex_);
    if (prepared_) {
        return *prepared_;
    }
    const auto picture = picture_; // while it is held here it is not painted on
    lock.unlock();                 // reading takes its time, and tells the watcher
    auto made = PicturePyramid::Make(*WatchedBy(watch_, picture), MaximumPreparedBytes);
    lock.lock();
    if (picture_ == picture && (made.Ok() || made.GetStatus() == UndecodableContent)) {
        prepared_ = made;
    }
    return made;
}

bool Image::IsMetafile() const {
    return origin_.codec != nullptr &&
           std::u16string_view(origin_.codec->mimeType).ends_with(u"mf"); // image/x-emf, image/x-wmf
}

void Image::ReplacePicture(std::shared_ptr<const PixelSource> picture) {
    const std::lock_guard lock(mutex_);
    bitmap_.reset();
    prepared_.reset();
    picture_ = std::move(picture);
}

void Image::SetProperty(Property property) {
    ChangeProperties([&](PropertyList& properties) { properties.Set(std::move(property)); });
}

void Image::ChangeProperties(const std::function<void(PropertyList&)>& change) {
    const std::lock_guard lock(mutex_);
    if (properties_.use_count() > 1) {
        properties_ = std::make_shared<PropertyList>(*properties_);
    }
    std::atomic_thread_fence(std::memory_order_acquire); // behind the last reading of those who gave it back
    change(*properties_);
}

bool Image::OwnsBitmap() const {
    constexpr long OwnReferences = 2; // picture_ and bitmap_
    return bitmap_ != nullptr && bitmap_.use_count() == OwnReferences;
}

Status Image::Paint(const std::function<Status(Bitmap&)>& paint) {
    std::unique_lock lock(mutex_);
    while (!OwnsBitmap()) {
        const auto before = picture_;
        lock.unlock(); // reading takes its time, and tells the watcher
        const auto picture = PictureToRead();
        if (!picture.Ok()) {
            return picture.GetStatus();
        }
        auto copy = Bitmap::Copy(**picture);
        if (!copy.Ok()) {
            return copy.GetStatus();
        }
        lock.lock();
        if (picture_ == before) {
            bitmap_ = std::move(*copy);
            picture_ = bitmap_;
        }
    }
    prepared_.reset();
    std::atomic_thread_fence(std::memory_order_acquire); // behind the last reading of those who gave it back
    const std::shared_ptr<Bitmap> painted = bitmap_;     // whatever becomes of it meanwhile
    return paint(*painted);
}

std::shared_ptr<Image> FindImage(GpImage* handle) { return Images::Find(handle); }

GpImage* AddImage(std::shared_ptr<Image> image) { return Images::Add(std::move(image)); }

FLAT_EXPORT Status FLAT_CALL GdipLoadImageFromFile(const char16_t* path, GpImage** image) {
    return Guarded([&] {
        return path == nullptr || image == nullptr ? Status::InvalidParameter
                                                   : LoadImage(image, [=] { return InputFile::Open(path); });
    });
}

// The picture begins where the stream stands. The stream must be able to seek. It is read when pixels are asked for, so
// it lives as long as the image and those that share its pixels, and must not be written or moved meanwhile.
FLAT_EXPORT Status FLAT_CALL GdipLoadImageFromStream(Stream* stream, GpImage** image) {
    return LoadImageFromStream(stream, image);
}

// Colours are not corrected by the profile that a file may hold.
FLAT_EXPORT Status FLAT_CALL GdipLoadImageFromStreamICM(Stream* stream, GpImage** image) {
    return LoadImageFromStream(stream, image);
}

FLAT_EXPORT Status FLAT_CALL GdipCreateBitmapFromStream(Stream* stream, GpImage** image) {
    return LoadImageFromStream(stream, image);
}

FLAT_EXPORT Status FLAT_CALL GdipDisposeImage(GpImage* image) {
    return Guarded([&] {
        if (const auto living = FindImage(image)) {
            living->WatchWith(nullptr, nullptr); // another thread's call may keep it for a while
        }
        return Images::Remove(image);
    });
}

FLAT_EXPORT Status FLAT_CALL GdipCloneImage(GpImage* handle, GpImage** clone) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr || clone == nullptr) {
            return Status::InvalidParameter;
        }
        *clone = AddImage(std::make_shared<Image>(image->Picture(), *image->Properties(), image->Origin()));
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL GdipGetImageWidth(GpImage* image, std::uint32_t* width) {
    return AskImage(image, width, [](const PictureInfo& info) { return info.width; });
}

FLAT_EXPORT Status FLAT_CALL GdipGetImageHeight(GpImage* image, std::uint32_t* height) {
    return AskImage(image, height, [](const PictureInfo& info) { return info.height; });
}

FLAT_EXPORT Status FLAT_CALL GdipGetImagePixelFormat(GpImage* image, PixelFormat* format) {
    return AskImage(image, format, [](const PictureInfo& info) { return info.format; });
}

} // namespace imaginglibrary
