// The commands of the command line: what each is called, takes and does, and the help on them.
#include "cli/commands.h"

#include "cli/drawing.h"
#include "cli/folder.h"
#include "cli/icon.h"
#include "cli/reading.h"
#include "cli/reshaping.h"

#include <cstdio>
#include <string>

namespace lumbrix::cli {

namespace {

constexpr const char* DenserNote = "a picture that is translucent becomes denser: it is first drawn over itself";

constexpr Command AllCommands[] = {
    {"convert", "SOURCE TARGET", "convert a picture", 2, 2, WritingOptions, RunConvert},
    {"thumb", "SOURCE HEIGHT TARGET", "write a small copy that is HEIGHT pixels high", 3, 3, ThumbOptions, RunThumb},
    {"resize", "SOURCE TARGET [HEIGHT]",
     "write a copy that is HEIGHT pixels high, or of another size, with all properties", 2, 3, ResizeOptions, RunResize,
     "the size is HEIGHT or one of --width, --height, --fit and --percent"},
    {"crop", "SOURCE TARGET X Y WIDTH HEIGHT", "cut out a rectangle with its top left corner at (X, Y)", 6, 6,
     WritingOptions, RunCrop},
    {"rotate", "SOURCE TARGET ANGLE [FLIP]",
     "turn clockwise by 0, 90, 180 or 270 degrees, then flip: h (left to right), v, hv or vh", 3, 4, WritingOptions,
     RunRotate},
    {"annotate", "SOURCE TARGET X Y TEXT", "write TEXT on a picture, its top left corner at (X, Y)", 5, 5,
     AnnotateOptions, RunAnnotate, DenserNote},
    {"stamp", "SOURCE TARGET X Y STAMP", "place the picture STAMP on a picture, its top left corner at (X, Y)", 5, 5,
     WritingOptions, RunStamp, DenserNote},
    {"folder", "SOURCE_FOLDER TARGET_FOLDER FORMAT [HEIGHT]",
     "convert every picture of a folder to FORMAT (bmp, jpg, gif, tif, png), none higher than HEIGHT", 3, 4,
     FolderOptions, RunFolder, "a size may be given as for resize; no picture becomes larger than it is"},
    {"size", "FILE", "print width and height in pixels", 1, 1, {}, RunSize},
    {"properties",
     "FILE",
     "print what the file says about its picture, one property a line",
     1,
     1,
     {},
     RunProperties,
     "shown are texts, of several lines the first, and whole numbers; other kinds are left out"},
    {"date", "FILE [TEXT]", "print the picture's date, or write a JPEG copy NAME_stamped.jpg with TEXT as its date", 1,
     2, DateOptions, RunDate,
     "NAME ends before the file name's first dot; a copy that is there already is not replaced"},
    {"icon",
     "FILE",
     "make an icon of a square bitmap, 32 pixels wide and high, on Windows only, and print its name",
     1,
     1,
     {},
     RunIcon,
     "NAME.ico is replaced, pixels of the colour C5C5C5 become transparent, written.ico beside lumbrix-cli is deleted"},
};

void PrintOption(const Option& option) {
    const std::string words = option.value == nullptr ? option.name : std::string(option.name) + " " + option.value;
    std::printf("        %-16s  %s\n", words.c_str(), option.purpose);
}

void PrintCommand(const Command& command, const char* before = "") {
    std::printf("  %s%s %s%s\n      %s\n", before, command.name, command.arguments,
                command.options.empty() ? "" : " [OPTIONS]", command.purpose);
    if (command.note != nullptr) {
        std::printf("      %s\n", command.note);
    }
    for (const Option& option : command.options) {
        PrintOption(option);
    }
}

} // namespace

std::span<const Command> Commands() { return AllCommands; }

void PrintHelpOn(const Command& command) {
    std::printf("Usage:\n");
    PrintCommand(command, "lumbrix-cli ");
}

void PrintHelp() {
    std::printf("Usage: lumbrix-cli COMMAND ARGUMENTS [OPTIONS]\n\n");
    for (const Command& command : Commands()) {
        PrintCommand(command);
    }
    std::printf("\n  --help     print this help, behind a command the help on that one\n"
                "  --version  print the version\n\n"
                "Formats read: BMP, JPEG, PNG, GIF, TIFF, ICO (on Windows EMF and WMF too).\n"
                "Formats written: .bmp .jpg .jpeg .gif .tif .tiff .png; the target's extension names the format.\n"
                "Options may stand anywhere behind the command; -- ends them.\n"
                "Exit status: 0 done, 1 a file stood in the way, 2 called wrongly, 130 interrupted.\n");
}

} // namespace lumbrix::cli
