// What happens on the pictures when the user clicks in the annotate and crop window.
#include "annotate/placing.h"

#include "annotate/rules.h"
#include "imaging/exports/lumbrix.h"
#include "imaging/paths.h"
#include "platform/errors.h"
#include "platform/files.h"

namespace lumbrix {

namespace {

constexpr std::int32_t Opaque = 255;

void Annotate(const std::string& source, const std::string& target, FloatPoint place, const std::string& text,
              const TextStyle& style) {
    AnnotateImage(source.c_str(), target.c_str(), place.x, place.y, text.c_str(), style.fontName.c_str(),
                  style.fontSize, style.bold, style.italic, style.underline, style.strikeout, Opaque, style.blue,
                  style.green, style.red);
}

// Neither of the two answers is looked at.
void AnnotateOrStamp(const std::string& source, const std::string& target, FloatPoint place, const std::string& text,
                     const TextStyle& style) {
    if (IsStampPath(text)) {
        StampImage(source.c_str(), target.c_str(), place.x, place.y, text.c_str());
    } else {
        Annotate(source, target, place, text, style);
    }
}

bool HasContent(const std::string& path) { return FileExists(path) && ShortcutSize(path) > 0; }

TextStyle FullSizeStyle(const AnnotateState& state) {
    TextStyle style = state.textStyle;
    style.fontSize = FullSizeText(style.fontSize, state.previewScale);
    return style;
}

} // namespace

void PreparePreview(AnnotateState& state, std::size_t stage, PixelSize picture, PixelSize control) {
    state.currentStage = stage;
    state.previewScale = PreviewScaleFor(picture, control);
    state.previewHeight = PreviewSize(picture, state.previewScale).height;
    const ImageStage& files = state.stages[stage];
    if (state.previewScale != 1) {
        ResizeImage(files.source.c_str(), files.previewSource.c_str(), state.previewHeight);
    } else {
        trap([&] { DuplicateFile(files.source, files.previewSource); });
    }
}

void OpenPicture(AnnotateState& state, PictureView& view, Messages& messages, std::size_t stage, PixelSize picture,
                 PixelSize control) {
    const WaitCursor wait(messages);
    PreparePreview(state, stage, picture, control);
    view.SetPreviewImage(state.stages[stage].previewSource);
}

void PlaceAnnotation(AnnotateState& state, PictureView& view, Messages& messages, const std::string& text,
                     PixelPoint click) {
    if (text.empty()) {
        if (state.mode == EditMode::Annotate) {
            messages.Show("You forgot to enter the annotation\r\nPlease also select the font you want to use.",
                          UnableTitle);
        }
        return;
    }
    const WaitCursor wait(messages);
    state.cropCorner = click;
    const ImageStage files = state.stages[state.currentStage]; // a copy: showing a picture may let other things happen
    if (!state.isKeepRequested) {
        AnnotateOrStamp(files.previewSource, files.previewResult, FullSizePoint(click, 1), text, state.textStyle);
    }
    if (!HasContent(files.previewResult)) {
        messages.Show("Unable to handle annotation image", SorryTitle);
        return;
    }
    view.SetPreviewImage(files.previewResult);
    if (!state.isKeepRequested) {
        AnnotateOrStamp(files.source, files.result, FullSizePoint(click, state.previewScale), text,
                        FullSizeStyle(state));
    }
}

void MarkFirstCorner(AnnotateState& state, PixelPoint press) {
    state.cropCorner = press;
    state.isCornerPending = true;
}

bool MarkCorner(AnnotateState& state, PixelPoint release) {
    if (!state.isCornerPending) {
        MarkFirstCorner(state, release);
        return false;
    }
    state.isCornerPending = false;
    state.cropRectangle = RectangleBetween(state.cropCorner, release, state.previewScale);
    return true;
}

} // namespace lumbrix
