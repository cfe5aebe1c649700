// Writes a line of text on a picture, or places another picture on it.
#pragma once

#include "imaging/gdiplus/flattypes.h"
#include "imaging/outcome.h"
#include "platform/text.h"

#include <cstdint>
#include <string>

namespace lumbrix {

// Alpha in the top byte, then red, green and blue; of each argument the low byte counts.
std::uint32_t MakeArgb(std::int32_t alpha, std::int32_t red, std::int32_t green, std::int32_t blue);

// What to write, and how.
struct Annotation {
    float x = 0; // left and top edge of the text, in pixels of the picture
    float y = 0;
    std::string text;
    std::string fontName;
    std::int32_t fontSize = 0; // pixels
    std::int32_t bold = 0;     // the four flags count as set where they are not zero
    std::int32_t italic = 0;
    std::int32_t underline = 0;
    std::int32_t strikeout = 0;
    std::int32_t alpha = 0; // 1 to 255; anything else counts as 255
    std::int32_t blue = 0;
    std::int32_t green = 0;
    std::int32_t red = 0;
    TextEncoding encoding = TextEncoding::CodePage; // of text and font name
};

// A font of so many pixels, whatever the resolution of what it is drawn on, with those styles. Its handle is 0 where
// there is no such font, and the status says why: a family that is not installed is not replaced by another.
struct MadeFont {
    FontHandle handle = nullptr;
    FlatStatus status = 0;
};
MadeFont MakeFont(const Annotation& annotation);

struct AnnotateOrder {
    std::string source;
    std::string destination;
    std::string mimeWord;
    Annotation annotation;
};

// The picture is first drawn over itself, which makes a translucent one denser. A source with a palette becomes true
// colour; as established it is written as it is.
Outcome Annotate(const AnnotateOrder& order, const Wishes& wishes);

struct StampOrder {
    std::string source;
    std::string destination;
    std::string mimeWord;
    float x; // the stamp's left and top edge, in pixels of the picture
    float y;
    std::string stamp;
};

// The stamp is placed at its natural size, blended by its own alpha; what falls outside is cut off. Otherwise as above.
Outcome Stamp(const StampOrder& order, const Wishes& wishes);

// As established: the destination's extension names the format. BadName for a blank name or an unknown extension;
// NotLoaded for a source that does not load, with font and session left open on purpose, and for one that is damaged.
// Done in every other case: a font that is not installed and a source with an indexed pixel format give a plain copy,
// and a save that fails is not seen.
StatusValue AnnotateImage(const std::string& source, const std::string& destination, const Annotation& annotation);

// As established: results as above; NotLoaded also for the stamp, with everything that was opened left open on purpose.
StatusValue StampImage(const std::string& source, const std::string& destination, float x, float y,
                       const std::string& stamp);

} // namespace lumbrix
