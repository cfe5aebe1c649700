// What the annotate and crop window keeps between its openings, for as long as the program runs.
#pragma once

#include "annotate/editmode.h"
#include "base/geometry.h"

#include <cstdint>
#include <string>
#include <vector>

namespace lumbrix {

// The files of one attempt. Each Keep makes the result of one stage the source of the next.
struct ImageStage {
    std::string source;        // full size
    std::string previewSource; // temporary: the source small enough for the screen
    std::string previewResult; // temporary: the preview with the latest annotation
    std::string result;        // the source with the latest annotation; in a crop the output path
};

// How text is written.
struct TextStyle {
    std::string fontName = "Arial";
    std::int32_t fontSize = 10; // pixels, on the preview
    std::int32_t bold = 0;      // the four styles are 0 or 1
    std::int32_t italic = 0;
    std::int32_t underline = 0;
    std::int32_t strikeout = 0;
    std::int32_t red = 0; // the three colours are 0 to 255
    std::int32_t green = 0;
    std::int32_t blue = 0;
};

// There is one, the main window's, on its thread.
struct AnnotateState {
    std::vector<ImageStage> stages;

    // Of the latest opening.
    EditMode mode = EditMode::Annotate;
    std::size_t currentStage = 0;
    float previewScale = 1; // pixels of the full-size picture per pixel of the screen, at least 1
    std::int32_t previewHeight = 0;

    // The user ticked Keep. Stays until the window is built again, which puts the kept text back into its box.
    bool isKeepRequested = false;
    std::string keptText;

    // The first corner of a crop, in pixels of the picture control, or the place of the latest annotation.
    PixelPoint cropCorner;
    bool isCornerPending = false;

    // What cropping uses, batches too, in pixels of the full-size picture. All zero until something is marked or typed.
    PixelRectangle cropRectangle;

    TextStyle textStyle;
};

} // namespace lumbrix
