// What the lists and colour fields of the paint window do to what it knows.
#include "draw/drawingstate.h"

#include <algorithm>

namespace lumbrix {

void ChooseTool(DrawingState& state, int id) {
    if (id >= drawwindow::LineOption && id <= drawwindow::RaisedTextOption) {
        state.currentTool = id;
    }
}

void ChoosePattern(DrawingState& state, std::int32_t item) {
    state.fillStyle = FillStyleOfPattern(item);
    if (state.fillStyle == HollowFill) {
        state.savedFillColor = state.fillColor;
        state.fillColor = NoFill;
    } else {
        state.fillColor = state.savedFillColor;
    }
}

void ChoosePenWidth(DrawingState& state, std::int32_t item) { state.penWidth = std::max(item + 1, 1); }

void ChoosePenType(DrawingState& state, std::int32_t item) { state.penType = item; }

bool ChoosePenColor(DrawingState& state, int id) {
    const std::optional<WindowColor> color = ColorOfField(id);
    state.penColor = color.value_or(state.penColor);
    return color.has_value();
}

bool ChooseFillColor(DrawingState& state, int id) {
    const std::optional<WindowColor> color = ColorOfField(id);
    if (color) {
        state.fillColor = FillValueOf(*color);
        state.savedFillColor = state.fillColor;
    }
    return color.has_value();
}

} // namespace lumbrix
