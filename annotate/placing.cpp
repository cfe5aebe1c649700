// What happens on the pictures when the user clicks in the annotate and crop window.
#include "annotate/placing.h"

#include "annotate/rules.h"
#include "batch/order.h"
#include "imaging/exports/lumbrix.h"
#include "imaging/paths.h"
#include "platform/errors.h"
#include "platform/files.h"

namespace lumbrix {

namespace {

constexpr std::int32_t Opaque = 255;

void Annotate(const std::string& source, const std::string& target, PicturePoint place, const std::string& text,
              std::int32_t fontSize) {
    AnnotateImage(source.c_str(), target.c_str(), place.x, place.y, text.c_str(), DefaultTextFontName.c_str(), fontSize,
                  AnnotationBold, AnnotationItalic, AnnotationUnderline, AnnotationStrikeout, Opaque, AnnotationBlue,
                  AnnotationGreen, AnnotationRed);
}

// Neither of the two answers is looked at.
void AnnotateOrStamp(const std::string& source, const std::string& target, PicturePoint place, const std::string& text,
                     std::int32_t fontSize) {
    if (IsStampPath(text)) {
        StampImage(source.c_str(), target.c_str(), place.x, place.y, text.c_str());
    } else {
        Annotate(source, target, place, text, fontSize);
    }
}

bool HasContent(const std::string& path) { return FileExists(path) && ShortcutSize(path) > 0; }

} // namespace

void PreparePreview(std::size_t stage, std::int32_t width, std::int32_t height, std::int32_t controlWidth,
                    std::int32_t controlHeight) {
    CurrentStage = stage;
    PreviewScale = PreviewScaleFor({width, height}, {controlWidth, controlHeight});
    PreviewHeight = PreviewSize({width, height}, PreviewScale).height;
    const ImageStage& files = ImageStages[stage];
    if (PreviewScale != 1) {
        ResizeImage(files.source.c_str(), files.previewSource.c_str(), PreviewHeight);
    } else {
        trap([&] { DuplicateFile(files.source, files.previewSource); });
    }
}

void PlaceAnnotation(PictureView& view, const std::string& text) {
    if (text.empty()) {
        if (EditMode == AnnotateMode) {
            view.Show("You forgot to enter the annotation\r\nPlease also select the font you want to use.",
                      "Unable to proceed");
        }
        return;
    }
    CropCorner = view.CursorPoint();
    const PicturePoint onScreen{static_cast<float>(CropCorner.x), static_cast<float>(CropCorner.y)};
    const ImageStage files = ImageStages[CurrentStage]; // a copy: showing a picture may let other things happen
    if (!KeepRequested) {
        AnnotateOrStamp(files.previewSource, files.previewResult, onScreen, text, DefaultTextFontSize);
    }
    if (!HasContent(files.previewResult)) {
        view.Show("Unable to handle annotation image", SorryTitle);
        return;
    }
    view.SetPreviewImage(files.previewResult);
    if (!KeepRequested) {
        AnnotateOrStamp(files.source, files.result, FullSizePoint(CropCorner, PreviewScale), text,
                        FullSizeText(DefaultTextFontSize, PreviewScale));
    }
}

void MarkFirstCorner(const PictureView& view) {
    CropCorner = view.CursorPoint();
    CornerPending = true;
}

bool MarkCorner(const PictureView& view) {
    if (!CornerPending) {
        MarkFirstCorner(view);
        return false;
    }
    CornerPending = false;
    CropRect = RectangleBetween(CropCorner, view.CursorPoint(), PreviewScale);
    return true;
}

} // namespace lumbrix
