// The commands of the command line: what each is called, takes and does.
#include "cli/commands.h"

#include "cli/conversion.h"
#include "cli/date.h"
#include "cli/drawing.h"
#include "cli/folder.h"
#include "cli/reading.h"
#include "cli/reshaping.h"

namespace lumbrix::cli {

namespace {

constexpr const char* DenserNote = "a picture that is translucent becomes denser: it is first drawn over itself";

constexpr Command AllCommands[] = {
    {"convert", "SOURCE TARGET", "convert a picture", 2, 2, {}, RunConvert},
    {"thumb", "SOURCE HEIGHT TARGET", "write a small copy that is HEIGHT pixels high", 3, 3, {}, RunThumb},
    {"resize",
     "SOURCE TARGET HEIGHT",
     "write a copy that is HEIGHT pixels high, with all properties",
     3,
     3,
     {},
     RunResize},
    {"crop",
     "SOURCE TARGET X Y WIDTH HEIGHT",
     "cut out a rectangle with its top left corner at (X, Y)",
     6,
     6,
     {},
     RunCrop},
    {"rotate",
     "SOURCE TARGET ANGLE [FLIP]",
     "turn clockwise by 0, 90, 180 or 270 degrees, then flip: h (left to right), v, hv or vh",
     3,
     4,
     {},
     RunRotate},
    {"annotate", "SOURCE TARGET X Y TEXT", "write TEXT on a picture, its top left corner at (X, Y)", 5, 5,
     AnnotateOptions, RunAnnotate, DenserNote},
    {"stamp",
     "SOURCE TARGET X Y STAMP",
     "place the picture STAMP on a picture, its top left corner at (X, Y)",
     5,
     5,
     {},
     RunStamp,
     DenserNote},
    {"folder", "SOURCE_FOLDER TARGET_FOLDER FORMAT [HEIGHT]",
     "convert every picture of a folder to FORMAT (bmp, jpg, gif, tif, png), none higher than HEIGHT", 3, 4,
     FolderOptions, RunFolder},
    {"size", "FILE", "print width and height in pixels", 1, 1, {}, RunSize},
    {"properties",
     "FILE",
     "print what the file says about its picture, one property a line",
     1,
     1,
     {},
     RunProperties,
     "shown are texts, of several lines the first, and whole numbers; other kinds are left out"},
    {"date",
     "FILE [TEXT]",
     "print the picture's date, or write a JPEG copy NAME_stamped.jpg with TEXT as its date",
     1,
     2,
     {},
     RunDate,
     "NAME ends before the file name's first dot; a copy that is there already is not replaced"},
};

} // namespace

std::span<const Command> Commands() { return AllCommands; }

} // namespace lumbrix::cli
