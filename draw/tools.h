// What the tools of the paint window do while the mouse is pressed, moved and released on the canvas.
#pragma once

#include "base/geometry.h"
#include "draw/drawingstate.h"
#include "draw/shape.h"
#include "draw/surface.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// Of the keys and buttons that a message of the mouse lists.
inline constexpr std::uint32_t LeftButtonHeld = 0x0001;

// The three steps of a gesture. Places are those of the mouse's messages, as numbers with a sign; left of and above
// the canvas they are below 0.
void PressTool(DrawingState& state, Surface& surface, PixelPoint place);
void MoveTool(DrawingState& state, Surface& surface, PixelPoint place, std::uint32_t heldButtons);
void ReleaseTool(DrawingState& state, Surface& surface);

// Lets the user enter text, and writes it where the tool was pressed.
void PlaceText(DrawingState& state, Surface& surface);

// Clears the canvas with its background, and so does nothing once text has been placed. Takes no snapshot.
void ClearCanvas(const DrawingState& state, Surface& surface);

} // namespace lumbrix
