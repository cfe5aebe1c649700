// What the paint window knows while it is open, and what its lists and colour fields do to that.
#pragma once

#include "base/geometry.h"
#include "draw/drawlayout.h"
#include "draw/fillstyle.h"

#include <cstdint>
#include <optional>
#include <string>

namespace lumbrix {

// How text stands out.
enum class TextRelief : std::int32_t {
    Normal = 0,
    Sunken = 1,
    Raised = 2,
};

// In RubberStart, left of the canvas: no rubber band is on it.
inline constexpr PixelPoint NoRubberStart{-1, 0};

// Each opening of the window begins with a new one. Places are in pixels of the canvas.
struct DrawingState {
    int currentTool = drawwindow::LineOption; // the id of its radio button
    WindowColor penColor = drawwindow::StartPenColor;
    FillValue fillColor = FillValueOf(drawwindow::StartFillColor); // also of text and of filled areas
    FillValue savedFillColor = fillColor;                          // what comes back after Hollow
    FillStyle fillStyle = SolidFill;
    std::int32_t penWidth = 1;                                   // 1 to 10
    std::int32_t penType = 0;                                    // PS_SOLID and on
    FillValue background = FillValueOf(drawwindow::CanvasColor); // NoFill once text has been placed

    TextRelief textStyle = TextRelief::Normal;
    PixelPoint textOrigin;
    std::string enteredText; // lines separated by carriage return and line feed

    PixelPoint drawStart;
    PixelPoint rubberStart = NoRubberStart;
    PixelPoint rubberEnd;
    bool isDragging = false;
};

// A radio button of a tool was chosen; other ids change nothing.
void ChooseTool(DrawingState& state, int id);

// An item of a list was chosen, counted from 0. "Hollow" puts the fill colour aside, also where there is none already,
// so the second time in a row there is none to come back to.
void ChoosePattern(DrawingState& state, std::int32_t item);
void ChoosePenWidth(DrawingState& state, std::int32_t item);
void ChoosePenType(DrawingState& state, std::int32_t item);

// Wider pens take no type, yet keep the one that they have.
constexpr bool TakesPenType(const DrawingState& state) { return state.penWidth == 1; }

// The colour of a colour field; nothing for other controls.
constexpr std::optional<WindowColor> ColorOfField(int id) {
    if (id < drawwindow::FirstColorField || id > drawwindow::LastColorField) {
        return std::nullopt;
    }
    return PaletteColor(id - drawwindow::FirstColorField);
}

// A control was pressed with the left or the right button of the mouse. Whether it is a colour field, so that the
// colour has changed. The pattern stays: under "Hollow" only text and filled areas take a new fill colour.
bool ChoosePenColor(DrawingState& state, int id);
bool ChooseFillColor(DrawingState& state, int id);

} // namespace lumbrix
