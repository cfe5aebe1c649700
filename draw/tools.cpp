// What the tools of the paint window do while the mouse is pressed, moved and released on the canvas.
#include "draw/tools.h"

#include "draw/drawlayout.h"
#include "draw/statustext.h"
#include "toolkit/layout.h"

#include <algorithm>

namespace lumbrix {

namespace {

using namespace drawwindow;

constexpr CornerValue RoundedCorner = 20;
constexpr CornerValue SquareCorner = 0;

// How far the mouse may lead a shape.
enum class Sides {
    Free,
    Equal,
};

// What goes on between the press and the release.
enum class Gesture {
    Line,     // a rubber band
    Freehand, // each line begins where the last one ended
    Beams,    // all lines begin at the same place
    Shape,    // a rubber band
    FillArea, // all is done at the press
    Text,     // all is done behind the message of the press
};

struct Tool {
    int id;
    Gesture gesture;
    CornerValue corner = SquareCorner;
    Sides sides = Sides::Free;
    TextRelief relief = TextRelief::Normal;
};

constexpr Tool Tools[] = {
    {LineOption, Gesture::Line},
    {FreehandOption, Gesture::Freehand},
    {BeamsOption, Gesture::Beams},
    {RoundedBoxOption, Gesture::Shape, RoundedCorner},
    {SquareBoxOption, Gesture::Shape, SquareCorner},
    {CircleOption, Gesture::Shape, EllipseCorner, Sides::Equal},
    {OvalOption, Gesture::Shape, EllipseCorner},
    {FillAreaOption, Gesture::FillArea},
    {NormalTextOption, Gesture::Text, SquareCorner, Sides::Free, TextRelief::Normal},
    {SunkenTextOption, Gesture::Text, SquareCorner, Sides::Free, TextRelief::Sunken},
    {RaisedTextOption, Gesture::Text, SquareCorner, Sides::Free, TextRelief::Raised},
};

const Tool& CurrentTool(const DrawingState& state) { return *FindRow(Tools, state.currentTool); }

bool HasRubberBand(const DrawingState& state) { return state.rubberStart.x > NoRubberStart.x; }

void DrawLine(const DrawingState& state, Surface& surface, PixelPoint from, PixelPoint to) {
    surface.MoveTo(from);
    surface.LineTo(to, state.penColor);
}

void DrawOutline(const DrawingState& state, Surface& surface, CornerValue corner, PixelPoint from, PixelPoint to) {
    surface.PutShape({from, to, corner, state.penColor, NoFill, SolidFill});
}

void BeginDrawing(Surface& surface, RasterMix mix) {
    surface.TakeSnapshot();
    surface.SetMix(mix);
}

void PressLine(const DrawingState& state, Surface& surface, RasterMix mix) {
    BeginDrawing(surface, mix);
    DrawLine(state, surface, state.drawStart, state.drawStart);
    surface.Repaint();
}

// Without a fill colour nothing is painted, yet there is something to undo.
void PressFillArea(const DrawingState& state, Surface& surface) {
    surface.TakeSnapshot();
    const WindowColor area = surface.PixelAt(state.drawStart);
    const BrushChoice brush = BrushOf(state.fillColor, state.fillStyle);
    if (brush.kind != BrushKind::None) {
        surface.FillArea(state.drawStart, area, brush);
    }
    surface.Repaint();
}

void PressText(DrawingState& state, Surface& surface, TextRelief relief) {
    state.textOrigin = state.drawStart;
    state.textStyle = relief;
    surface.PostTextCommand();
}

void MoveLine(DrawingState& state, Surface& surface, PixelPoint place) {
    if (HasRubberBand(state)) {
        DrawLine(state, surface, state.rubberStart, state.rubberEnd);
    }
    DrawLine(state, surface, state.drawStart, place);
    state.rubberStart = state.drawStart;
    state.rubberEnd = place;
}

// With sides that are equal the greater difference decides, not the longer side.
PixelPoint EndOfShape(PixelPoint start, PixelPoint place, Sides sides) {
    if (sides == Sides::Free) {
        return place;
    }
    const std::int32_t across = place.x - start.x;
    const std::int32_t down = place.y - start.y;
    const std::int32_t side = std::max(across, down);
    return {start.x + side, start.y + side};
}

// Gives back where the shape ends.
PixelPoint MoveShape(DrawingState& state, Surface& surface, const Tool& tool, PixelPoint place) {
    if (HasRubberBand(state)) {
        DrawOutline(state, surface, tool.corner, state.rubberStart, state.rubberEnd);
    }
    const PixelPoint end = EndOfShape(state.drawStart, place, tool.sides);
    DrawOutline(state, surface, tool.corner, state.drawStart, end);
    state.rubberStart = state.drawStart;
    state.rubberEnd = end;
    return end;
}

// What the label says once the mouse has been moved.
std::string Drag(DrawingState& state, Surface& surface, const Tool& tool, PixelPoint place) {
    switch (tool.gesture) {
    case Gesture::Line:
        MoveLine(state, surface, place);
        break;
    case Gesture::Freehand:
        DrawLine(state, surface, state.drawStart, place);
        state.drawStart = place;
        return PlaceStatus(state.drawStart);
    case Gesture::Beams:
        DrawLine(state, surface, state.drawStart, place);
        break;
    case Gesture::Shape:
        return SizeStatus(state.drawStart, MoveShape(state, surface, tool, place));
    case Gesture::FillArea:
    case Gesture::Text:
        break;
    }
    return EndsStatus(state.drawStart, place);
}

} // namespace

void PressTool(DrawingState& state, Surface& surface, PixelPoint place) {
    surface.TakeMouse();
    surface.Attach(Painting::HeldBack);
    const PixelPoint start{std::max(place.x, 0), std::max(place.y, 0)};
    state.drawStart = start;
    state.rubberStart = start;
    state.rubberEnd = start;
    const Tool& tool = CurrentTool(state);
    switch (tool.gesture) {
    case Gesture::Line:
        PressLine(state, surface, RasterMix::NotXorPen);
        break;
    case Gesture::Freehand:
    case Gesture::Beams:
        PressLine(state, surface, RasterMix::CopyPen);
        break;
    case Gesture::Shape:
        BeginDrawing(surface, RasterMix::NotXorPen);
        break;
    case Gesture::FillArea:
        PressFillArea(state, surface);
        break;
    case Gesture::Text:
        PressText(state, surface, tool.relief);
        break;
    }
    state.isDragging = true;
    surface.ShowStatus(PlaceStatus(start));
}

void MoveTool(DrawingState& state, Surface& surface, PixelPoint place, std::uint32_t heldButtons) {
    if (!state.isDragging || (heldButtons & LeftButtonHeld) == 0) {
        surface.ShowStatus(PlaceStatus(place));
        return;
    }
    const Tool& tool = CurrentTool(state);
    if (tool.gesture == Gesture::FillArea) {
        return;
    }
    const std::string status = Drag(state, surface, tool, place);
    surface.Repaint();
    surface.ShowStatus(status);
}

// What stays is drawn where the rubber band was last, not where the mouse was released.
void ReleaseTool(DrawingState& state, Surface& surface) {
    if (!state.isDragging) {
        return;
    }
    state.isDragging = false;
    const Tool& tool = CurrentTool(state);
    if (tool.gesture == Gesture::Line) {
        surface.SetMix(RasterMix::CopyPen);
        DrawLine(state, surface, state.rubberStart, state.rubberEnd);
        surface.Repaint();
    } else if (tool.gesture == Gesture::Shape) {
        surface.SetMix(RasterMix::CopyPen);
        surface.PutShape({state.rubberStart, state.rubberEnd, tool.corner, state.penColor,
                          state.fillStyle < SolidFill ? NoFill : state.fillColor,
                          std::max(state.fillStyle, SolidFill)});
        surface.Repaint();
    }
    state.rubberStart = NoRubberStart;
    state.rubberEnd = {};
    surface.ReleaseMouse();
}

} // namespace lumbrix
