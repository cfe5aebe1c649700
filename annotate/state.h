// What the annotate and crop window keeps between its openings, for as long as the program runs. Belongs to the main
// thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace lumbrix {

// The three jobs of the window.
enum AnnotateEditMode : std::int32_t {
    AnnotateMode = 0,
    CropMode = 1,
    CroppedMode = 2, // shows the result of a crop, no more
};

// The files of one attempt. Each Keep makes the result of one stage the source of the next.
struct ImageStage {
    std::string source;        // full size
    std::string previewSource; // temporary: the source small enough for the screen
    std::string previewResult; // temporary: the preview with the latest annotation
    std::string result;        // the source with the latest annotation; in a crop the output path
};

struct PixelPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
};

inline std::vector<ImageStage> ImageStages;

// Of the latest opening.
inline std::int32_t EditMode = AnnotateMode;
inline std::size_t CurrentStage = 0;
inline float PreviewScale = 1; // pixels of the full-size picture per pixel of the screen, at least 1
inline std::int32_t PreviewHeight = 0;

// The user ticked Keep. Stays until the window is built again, which puts the kept text back into its box.
inline bool KeepRequested = false;
inline std::string KeptText;

// The first corner of a crop, in pixels of the picture control, or the place of the latest annotation.
inline PixelPoint CropCorner;
inline bool CornerPending = false;

// How text is written.
inline std::string DefaultTextFontName = "Arial";
inline std::int32_t DefaultTextFontSize = 10; // pixels, on the preview
inline std::int32_t AnnotationBold = 0;       // the four styles are 0 or 1
inline std::int32_t AnnotationItalic = 0;
inline std::int32_t AnnotationUnderline = 0;
inline std::int32_t AnnotationStrikeout = 0;
inline std::int32_t AnnotationRed = 0; // the three colours are 0 to 255
inline std::int32_t AnnotationGreen = 0;
inline std::int32_t AnnotationBlue = 0;

} // namespace lumbrix
