// Loading, cloning and disposing of images, and what can be asked of one.
#include "imaginglibrary/flat/images.h"

#include "imaginglibrary/codecs/codec.h"
#include "imaginglibrary/flat/guard.h"
#include "imaginglibrary/flat/handles.h"

namespace imaginglibrary {

namespace {

HandleTable<Image>& Images() {
    static HandleTable<Image> images;
    return images;
}

Result<std::shared_ptr<const PixelSource>> OpenPicture(const char16_t* path) {
    auto file = InputFile::Open(path);
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
    return std::shared_ptr<const PixelSource>(std::move(*decoder));
}

// Answers a question about an image; `ask` gets the picture's description and the place for the answer.
template <class Answer, class Ask> Status AskImage(GpImage* handle, Answer* answer, Ask ask) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr || answer == nullptr) {
            return Status::InvalidParameter;
        }
        *answer = ask(image->picture->Info());
        return Status::Ok;
    });
}

} // namespace

std::shared_ptr<Image> FindImage(GpImage* handle) { return Images().Find(reinterpret_cast<std::uintptr_t>(handle)); }

GpImage* AddImage(std::shared_ptr<const PixelSource> picture) {
    return reinterpret_cast<GpImage*>(Images().Add(std::make_shared<Image>(Image{std::move(picture)})));
}

FLAT_EXPORT Status FLAT_CALL GdipLoadImageFromFile(const char16_t* path, GpImage** image) {
    return Guarded([&] {
        if (path == nullptr || image == nullptr) {
            return Status::InvalidParameter;
        }
        *image = nullptr;
        auto picture = OpenPicture(path);
        if (!picture.Ok()) {
            return picture.GetStatus();
        }
        *image = AddImage(std::move(*picture));
        return Status::Ok;
    });
}

FLAT_EXPORT Status FLAT_CALL GdipDisposeImage(GpImage* image) {
    return Guarded([&] {
        return Images().Remove(reinterpret_cast<std::uintptr_t>(image)) ? Status::Ok : Status::InvalidParameter;
    });
}

FLAT_EXPORT Status FLAT_CALL GdipCloneImage(GpImage* handle, GpImage** clone) {
    return Guarded([&] {
        const auto image = FindImage(handle);
        if (image == nullptr || clone == nullptr) {
            return Status::InvalidParameter;
        }
        *clone = AddImage(image->picture);
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
