// The commands of the command line: what each is called, takes and does. The one table behind parsing, help, manual and
// the completion of shells.
#include "cli/commands.h"

#include "cli/batchoptions.h"
#include "cli/drawing.h"
#include "cli/folder.h"
#include "cli/icon.h"
#include "cli/reading.h"
#include "cli/reshaping.h"
#include "cli/spelling.h"

namespace lumbrix::cli {

namespace {

constexpr OptionGroup Encoding{"How pictures are written", EncodingOptions};
constexpr OptionGroup Adjusting{"What else becomes of pictures", AdjustingOptions};
constexpr OptionGroup ThumbSize{"The size", ThumbOptions};
constexpr OptionGroup Size{"The size", SizeOptions};
constexpr OptionGroup Several{"Several sources", SeveralOptions};
constexpr OptionGroup Run{"What is written and told", RunOptions};
constexpr OptionGroup Lettering{"The letters", AnnotateOptions};
constexpr OptionGroup Folder{"Which pictures", FolderOptions};
constexpr OptionGroup Icon{"The icon", IconOptions};
constexpr OptionGroup Reading{"What is printed", ReadingOptions};

constexpr OptionGroup WritingGroups[] = {Encoding, Adjusting, Several, Run};
constexpr OptionGroup ThumbGroups[] = {ThumbSize, Encoding, Adjusting, Several, Run};
constexpr OptionGroup ResizeGroups[] = {Size, Encoding, Adjusting, Several, Run};
constexpr OptionGroup AnnotateGroups[] = {Lettering, Encoding, Adjusting, Several, Run};
constexpr OptionGroup FolderGroups[] = {Folder, Size, Encoding, Adjusting, Run};
constexpr OptionGroup DateGroups[] = {Encoding};
constexpr OptionGroup ReadingGroups[] = {Reading};
constexpr OptionGroup IconGroups[] = {Icon};

constexpr Example ConvertExamples[] = {
    {"convert photo.jpg photo.png", "the same picture as a PNG"},
    {"convert photo.png photo.jpg --quality 90", "a JPEG that loses little"},
    {"convert *.jpg --to png --into converted", "every JPEG here as a PNG in the folder converted"},
};
constexpr Example ThumbExamples[] = {
    {"thumb photo.jpg 120 small.jpg", "a small copy that is 120 pixels high"},
    {"thumb *.jpg 120 --into small", "one of every JPEG here, in the folder small"},
};
constexpr Example ResizeExamples[] = {
    {"resize photo.jpg smaller.jpg 600", "a copy that is 600 pixels high"},
    {"resize photo.jpg smaller.jpg --fit 800x600", "as large as fits into 800 by 600 pixels"},
    {"resize *.jpg 600 --into web --newer", "copies of what has changed since the last time"},
};
constexpr Example CropExamples[] = {
    {"crop photo.jpg face.jpg 250 80 300 400", "300 by 400 pixels, 250 from the left and 80 from the top"},
    {"crop page*.png 0 0 800 1100 --into cut", "the same part of every page"},
};
constexpr Example RotateExamples[] = {
    {"rotate photo.jpg upright.jpg 90", "a quarter turn clockwise"},
    {"rotate photo.jpg mirrored.jpg 0 h", "left and right exchanged"},
    {"rotate scan*.tif 180 --into upright", "every scan upside down"},
};
constexpr Example AnnotateExamples[] = {
    {"annotate photo.jpg named.jpg 20 20 \"By the lake\"", "in black letters of 24 pixels"},
    {"annotate photo.jpg named.jpg 20 20 Lake --size 60 --color FFFFFF --bold", "large and white"},
    {"annotate *.jpg 5 5 Draft --into drafts", "on every JPEG here"},
};
constexpr Example StampExamples[] = {
    {"stamp photo.jpg marked.jpg 10 10 logo.png", "a logo near the top left corner"},
    {"stamp *.jpg -5 0 logo.png --into marked", "on every JPEG here, the logo cut off at the left"},
};
constexpr Example FolderExamples[] = {
    {"folder photos web jpg 1200", "every picture of photos as a JPEG in web, at most 1200 pixels high"},
    {"folder photos web png --recursive --newer", "only what has changed, with all subfolders"},
    {"folder photos web png --dry-run", "print what would be written"},
};
constexpr Example SizeExamples[] = {
    {"size photo.jpg", "prints 1600 x 1067"},
    {"size *.jpg --json", "those of many files, for another program"},
};
constexpr Example PropertiesExamples[] = {
    {"properties photo.jpg", "maker, type of the camera, date and more"},
    {"properties photo.jpg --json", "the same for another program"},
};
constexpr Example DateExamples[] = {
    {"date photo.jpg", "prints 2026:11:21 09:30:00"},
    {"date photo.jpg \"2026:11:21 09:30:00\"", "writes photo_stamped.jpg with that date"},
};
constexpr Example IconExamples[] = {
    {"icon logo.png logo.ico", "an icon of seven sizes, from 16 to 256 pixels"},
    {"icon logo.png small.ico --sizes 16,32", "one of these two sizes"},
    {"icon logo.bmp --classic", "writes logo.ico, on Windows only"},
};

constexpr const char* DenserNote = "a picture that is translucent becomes denser: it is first drawn over itself";

constexpr Command AllCommands[] = {
    {"convert", "SOURCE TARGET", "convert a picture", 2, 2, WritingGroups, RunConvert, ConvertExamples,
     "SOURCE... --into FOLDER"},
    {"thumb", "SOURCE HEIGHT TARGET", "write a small copy that is HEIGHT pixels high", 3, 3, ThumbGroups, RunThumb,
     ThumbExamples, "SOURCE... HEIGHT --into FOLDER"},
    {"resize", "SOURCE TARGET [HEIGHT]",
     "write a copy that is HEIGHT pixels high, or of another size, with all properties", 2, 3, ResizeGroups, RunResize,
     ResizeExamples, "SOURCE... [HEIGHT] --into FOLDER",
     "the size is HEIGHT or one of --width, --height, --fit and --percent"},
    {"crop", "SOURCE TARGET X Y WIDTH HEIGHT", "cut out a rectangle with its top left corner at (X, Y)", 6, 6,
     WritingGroups, RunCrop, CropExamples, "SOURCE... X Y WIDTH HEIGHT --into FOLDER"},
    {"rotate", "SOURCE TARGET ANGLE [FLIP]",
     "turn clockwise by 0, 90, 180 or 270 degrees, then flip: h (left to right), v, hv or vh", 3, 4, WritingGroups,
     RunRotate, RotateExamples, "SOURCE... ANGLE [FLIP] --into FOLDER"},
    {"annotate", "SOURCE TARGET X Y TEXT", "write TEXT on a picture, its top left corner at (X, Y)", 5, 5,
     AnnotateGroups, RunAnnotate, AnnotateExamples, "SOURCE... X Y TEXT --into FOLDER", DenserNote},
    {"stamp", "SOURCE TARGET X Y STAMP", "place the picture STAMP on a picture, its top left corner at (X, Y)", 5, 5,
     WritingGroups, RunStamp, StampExamples, "SOURCE... X Y STAMP --into FOLDER", DenserNote},
    {"folder", "SOURCE_FOLDER TARGET_FOLDER FORMAT [HEIGHT]",
     "convert every picture of a folder to FORMAT (bmp, jpg, gif, tif, png), none higher than HEIGHT", 3, 4,
     FolderGroups, RunFolder, FolderExamples, nullptr,
     "a size may be given as for resize; no picture becomes larger than it is"},
    {"size", "FILE...", "print width and height in pixels, of several files a line each with the name", 1, AnyNumber,
     ReadingGroups, RunSize, SizeExamples},
    {"properties", "FILE", "print what the file says about its picture, one property a line", 1, 1, ReadingGroups,
     RunProperties, PropertiesExamples, nullptr,
     "shown are texts, of several lines the first, and whole numbers; other kinds are left out"},
    {"date", "FILE [TEXT]", "print the picture's date, or write a JPEG copy NAME_stamped.jpg with TEXT as its date", 1,
     2, DateGroups, RunDate, DateExamples, nullptr,
     "NAME ends before the file name's first dot; a copy that is there already is not replaced"},
    {"icon", "SOURCE TARGET.ico", "make an icon of a picture in several sizes, each in its proportions and centred", 1,
     2, IconGroups, RunIcon, IconExamples, "FILE --classic",
     "with --classic NAME.ico is replaced and its name printed, pixels of the colour C5C5C5 become transparent, "
     "written.ico beside lumbrix-cli is deleted"},
};

std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const Command& command : AllCommands) {
        names.emplace_back(command.name);
    }
    return names;
}

} // namespace

std::span<const Command> Commands() { return AllCommands; }

const Command& FindCommand(const std::string& name) {
    for (const Command& command : Commands()) {
        if (name == command.name) {
            return command;
        }
    }
    throw WrongUsage{"unknown command '" + name + "'" + Suggestion(name, Names())};
}

std::vector<Option> OptionsOf(const Command& command) {
    std::vector<Option> options;
    for (const OptionGroup& group : command.groups) {
        options.insert(options.end(), group.options.begin(), group.options.end());
    }
    return options;
}

void ExpectArguments(const Command& command, const Arguments& arguments) {
    if (arguments.Has(IntoOption.name) ||
        (arguments.Count() >= command.fewestArguments && arguments.Count() <= command.mostArguments)) {
        return;
    }
    std::string usage = std::string("usage: lumbrix-cli ") + command.name + " " + command.arguments;
    if (command.several != nullptr) {
        usage += std::string(", or lumbrix-cli ") + command.name + " " + command.several;
    }
    throw WrongUsage{usage};
}

} // namespace lumbrix::cli
