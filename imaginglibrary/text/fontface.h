// A font of one family and style, as outlines and measures.
#pragma once

#include "imaginglibrary/core/status.h"
#include "imaginglibrary/operations/path.h"

#include <memory>
#include <string>

namespace imaginglibrary {

// All measures are parts of the em, the size of the font; y grows downwards from the baseline.
struct FontMeasures {
    double ascent;      // from the baseline up to the top of a line
    double descent;     // from the baseline down to its bottom
    double lineSpacing; // from one baseline to the next
    double underlineTop;
    double underlineThickness;
    double strikeoutTop;
    double strikeoutThickness;
};

struct Glyph {
    double advance; // to the place of the next character
    Path outline;   // its origin on the baseline
};

// Several threads may call it.
class FontFace {
  public:
    virtual ~FontFace() = default;

    virtual FontMeasures Measures() const = 0;

    // The glyph of a character, or the font's sign for a missing one.
    virtual Glyph GlyphOf(char32_t character) const = 0;
};

// Whether a family of this name is installed, in any letter case, or one of the same measures that the system puts in
// its place.
bool HasFontFamily(const std::u16string& name);

// The face of a family that is there; a bold or italic one that it lacks is made from the plain one. FontFamilyNotFound
// or FontStyleNotFound where none can be opened. All who have the same one open share it.
Result<std::shared_ptr<const FontFace>> OpenFontFace(const std::u16string& family, bool isBold, bool isItalic);

// The same, for no one else.
Result<std::shared_ptr<const FontFace>> OpenUnsharedFontFace(const std::u16string& family, bool isBold, bool isItalic);

} // namespace imaginglibrary
