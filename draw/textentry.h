// The window in which text for the canvas is entered.
#pragma once

#include "draw/textfont.h"
#include "toolkit/handles.h"

#include <functional>
#include <string>

namespace lumbrix {

// Runs until Exit, which puts the text of the box into `text`, or Abort, which leaves it; always 0. Change Font keeps
// what was chosen in `font`, and hands the font on at once: it stays, whichever way the window ends.
INT_PTR ShowTextEntry(HWND parent, TextFont& font, FillValue fillColor, const std::function<void(OwnedFont)>& setFont,
                      std::string& text);

// The font as the system takes it.
LOGFONTA DescriptionOf(const SlantedFont& font, int pixelsPerInch);

} // namespace lumbrix
