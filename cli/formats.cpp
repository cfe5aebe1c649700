// The formats that are written, and the procedures that write them.
#include "cli/formats.h"

#include "cli/options.h"
#include "cli/system.h"
#include "cli/text.h"

namespace lumbrix::cli {

namespace {

constexpr Format Formats[] = {
    {"bmp", ConvertImageToBmp, ConvertImageToThumbBmp},    {"jpg", ConvertImageToJpeg, ConvertImageToThumbJpeg},
    {"jpeg", ConvertImageToJpeg, ConvertImageToThumbJpeg}, {"gif", ConvertImageToGif, ConvertImageToThumbGif},
    {"tif", ConvertImageToTiff, ConvertImageToThumbTiff},  {"tiff", ConvertImageToTiff, ConvertImageToThumbTiff},
    {"png", ConvertImageToPng, ConvertImageToThumbPng},
};

const Format* FindFormat(const std::string& word) {
    for (const Format& format : Formats) {
        if (LowerCase(word) == format.word) {
            return &format;
        }
    }
    return nullptr;
}

} // namespace

const Format& FormatOfWord(const std::string& word) {
    if (const Format* format = FindFormat(word)) {
        return *format;
    }
    throw WrongUsage{"'" + word + "' is no format: bmp, jpg, jpeg, gif, tif, tiff or png is needed"};
}

const Format& FormatOfTarget(const std::string& target) {
    const std::string extension = NameOf(PathOf(target).extension());
    const Format* format = extension.empty() ? nullptr : FindFormat(extension.substr(1));
    if (format == nullptr) {
        throw WrongUsage{"'" + target + "' must end in .bmp, .jpg, .jpeg, .gif, .tif, .tiff or .png"};
    }
    return *format;
}

} // namespace lumbrix::cli
