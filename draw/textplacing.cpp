// How text comes onto the canvas, flat or standing out from it, and what it leaves behind for clearing.
#include "draw/tools.h"

#include <vector>

namespace lumbrix {

namespace {

constexpr WindowColor DarkSide = ColorOf(0, 0, 128);
constexpr WindowColor LightSide = ColorOf(255, 255, 255);

// The colours of a text's edges: above and to the left of it, and below and to the right.
struct Edges {
    WindowColor upperLeft;
    WindowColor lowerRight;
};

constexpr Edges EdgesOf(TextRelief relief) {
    return relief == TextRelief::Sunken ? Edges{DarkSide, LightSide} : Edges{LightSide, DarkSide};
}

std::vector<std::string> LinesOf(const std::string& text) {
    constexpr std::string_view Break = "\r\n";
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end = text.find(Break); end != std::string::npos; end = text.find(Break, start)) {
        lines.push_back(text.substr(start, end - start));
        start = end + Break.size();
    }
    lines.push_back(text.substr(start));
    return lines;
}

void PutLine(const DrawingState& state, Surface& surface, PixelPoint place, const std::string& line) {
    if (state.textStyle != TextRelief::Normal) {
        const Edges edges = EdgesOf(state.textStyle);
        surface.PutText({place.x - 1, place.y - 1}, line, edges.upperLeft);
        surface.PutText({place.x + 1, place.y + 1}, line, edges.lowerRight);
    }
    surface.PutText(place, line, ColorOfFillValue(state.fillColor));
}

} // namespace

void PlaceText(DrawingState& state, Surface& surface) {
    state.enteredText.clear();
    surface.Attach(Painting::AtOnce);
    surface.EnterText(state.enteredText);
    if (state.enteredText.empty()) {
        return;
    }
    surface.TakeSnapshot();
    PixelPoint place = state.textOrigin;
    for (const std::string& line : LinesOf(state.enteredText)) {
        PutLine(state, surface, place, line);
        place.y += surface.HeightOfLine(line);
    }
    state.background = NoFill; // the transparent one of the text, which stays
    surface.Repaint();
}

void ClearCanvas(const DrawingState& state, Surface& surface) {
    surface.Attach(Painting::AtOnce);
    if (state.background != NoFill) {
        surface.ClearWith(ColorOfFillValue(state.background));
    }
    surface.Repaint();
}

} // namespace lumbrix
