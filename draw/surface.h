// What the tools of the paint window draw on, and what else they ask of the window.
#pragma once

#include "base/geometry.h"
#include "draw/fillstyle.h"
#include "draw/shape.h"
#include "toolkit/layout.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// How pixels are mixed with those that are there, under the platform's numbers.
enum class RasterMix : std::int32_t {
    NotXorPen = 10, // drawn twice, it is gone again
    CopyPen = 13,
};

// A mix that there is none of is taken as copying.
constexpr std::int32_t ValidMix(std::int32_t mix) {
    constexpr std::int32_t Last = 16;
    return mix > 0 && mix <= Last ? mix : static_cast<std::int32_t>(RasterMix::CopyPen);
}

// When what is drawn is seen.
enum class Painting {
    HeldBack, // only at a repaint
    AtOnce,   // each time something is drawn
};

// A line that cannot be drawn is tried again so many times, behind a pause each.
inline constexpr int LineRetries = 100;
inline constexpr int LinePauseMilliseconds = 2;

// The canvas' picture off the screen, with a current point, a mix, and the width and type of its pen. Places are pixels
// and may lie outside. Nothing is told of what fails. The order of the calls is that of the effects.
class Surface {
  public:
    virtual ~Surface() = default;

    // Captures the mouse and takes the keyboard.
    virtual void TakeMouse() = 0;
    virtual void ReleaseMouse() = 0;

    // Begins drawing. Lasts until it is called again, also by other events of the window.
    virtual void Attach(Painting painting) = 0;

    virtual void SetMix(RasterMix mix) = 0;
    virtual void MoveTo(PixelPoint place) = 0;
    virtual void LineTo(PixelPoint place, WindowColor color) = 0; // from the current point, which it moves
    virtual void PutShape(const Shape& shape) = 0;                // the brush is BrushOf its fill
    virtual WindowColor PixelAt(PixelPoint place) = 0;

    // Fills the area of one colour around a place.
    virtual void FillArea(PixelPoint place, WindowColor area, const BrushChoice& brush) = 0;

    // Writes one line on a transparent background, which the canvas keeps from then on.
    virtual void PutText(PixelPoint place, const std::string& line, WindowColor color) = 0;
    virtual std::int32_t HeightOfLine(const std::string& line) = 0;

    // The whole canvas in one colour.
    virtual void ClearWith(WindowColor color) = 0;

    // Shows the whole canvas as it is now.
    virtual void Repaint() = 0;

    virtual void TakeSnapshot() = 0;
    virtual void ShowStatus(const std::string& text) = 0;

    // Has text placed once the mouse's message is done with.
    virtual void PostTextCommand() = 0;

    // Lets the user enter text. `text` stays as it is where that is given up.
    virtual void EnterText(std::string& text) = 0;
};

} // namespace lumbrix
