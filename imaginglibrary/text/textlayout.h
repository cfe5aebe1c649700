// Where the glyphs of a text stand.
#pragma once

#include "imaginglibrary/text/fontface.h"

#include <string_view>
#include <vector>

namespace imaginglibrary {

struct TextStyle {
    double size = 0; // of the em, in pixels
    bool isUnderlined = false;
    bool isStruckOut = false;
};

// The outline of a text whose box has its top left corner at `corner`, in pixels; lines are not wrapped. As the
// platform lays out text without a format: a sixth of an em stands before every line, the first baseline lies one
// ascent below the corner, lines follow in the font's own line spacing. A line feed ends a line, a carriage return is
// passed over, a tab goes on to the next stop, of which there is one every eight blanks.
std::vector<Edge> TextOutline(const FontFace& face, std::u16string_view text, const TextStyle& style, Point corner,
                              const Affine& toSurface);

} // namespace imaginglibrary
