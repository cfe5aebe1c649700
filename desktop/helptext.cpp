// The help text, and the file that it is shown from.
#include "desktop/helptext.h"

#include "platform/cleanup.h"
#include "platform/files.h"
#include "platform/text.h"

namespace lumbrix {

namespace {

// The spelling is the established one.
constexpr const char* HelpLines[] = {
    "How to annotate images?",
    "-----------------------",
    "",
    "First you must select the image you want to annnotate and the output where you want to save the result.",
    "Annotation has two flavors:",
    "1. Text annotation",
    "   You will need to type the text and select the font you want to use. That includes the fontname, the",
    "   size, if it is bold and/or italic etc., as well as the color. Than you click on the image where the",
    "   text should appear. If you want to move the location just click again to a new location.",
    "2. Overstamp with a smaller image",
    "   You must select the source file for the smaller image. You can do that by clicking on the Stamp",
    "   button or by dragging the file from the windows explorer and drop it to the window. Once the smaller",
    "   image is determined  just click on the main image where you want it to appear. If not satisfied just",
    "   click again in another location.",
    "",
    "You can add multiple annotations, either text or stamp types. In order to add a new annotation after",
    "another click on the Keep checkbbox. You can do that as many times as you want. You can use the same",
    "stamp images or different onces and new text new font and new color as needed.",
    "",
    "How to crop images?",
    "-------------------",
    "First you must select the image you want to annnotate and the output where you want to save the result.",
    "Than click on the Crop checkbox. The image will be displayed. Click on the picture where the left upper",
    "corner of the rectangular you want to crop should reside and keep down the left mouse button while moving",
    "the mosue to draw the rectangular. When the size is as desired release the mosue button.",
};

} // namespace

std::string WriteHelpText() {
    std::string text;
    for (const char* line : HelpLines) {
        text += line;
        text += "\r\n";
    }
    std::string file = ReplaceAll(NewTempImageName(), ".tmp", ".txt");
    WriteWholeFile(file, text);
    return file;
}

} // namespace lumbrix
