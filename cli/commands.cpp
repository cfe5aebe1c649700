// The commands of the command line: what each is called, takes and does.
#include "cli/commands.h"

#include "cli/causes.h"
#include "imaging/exports/lumbrix.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>

namespace lumbrix::cli {

namespace {

using Convert = int32_t(LUMBRIX_CALL*)(const char* source, const char* destination);
using ConvertToThumb = int32_t(LUMBRIX_CALL*)(const char* source, int32_t height, const char* destination);

struct Format {
    const char* extension;
    Convert convert;
    ConvertToThumb convertToThumb;
};

constexpr Format Formats[] = {
    {".bmp", ConvertImageToBmp, ConvertImageToThumbBmp},    {".jpg", ConvertImageToJpeg, ConvertImageToThumbJpeg},
    {".jpeg", ConvertImageToJpeg, ConvertImageToThumbJpeg}, {".gif", ConvertImageToGif, ConvertImageToThumbGif},
    {".tif", ConvertImageToTiff, ConvertImageToThumbTiff},  {".tiff", ConvertImageToTiff, ConvertImageToThumbTiff},
    {".png", ConvertImageToPng, ConvertImageToThumbPng},
};

const Format& FormatOf(const std::string& target) {
    std::string extension = std::filesystem::path(target).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    const auto* format = std::find_if(std::begin(Formats), std::end(Formats),
                                      [&](const Format& known) { return extension == known.extension; });
    if (format == std::end(Formats)) {
        throw WrongUsage{"'" + target + "' must end in .bmp, .jpg, .jpeg, .gif, .tif, .tiff or .png"};
    }
    return *format;
}

int32_t PositiveNumber(const std::string& text, const char* what) {
    int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 1) {
        throw WrongUsage{"'" + text + "' is no " + what + ": a whole number from 1 on is needed"};
    }
    return number;
}

void RunConvert(const std::vector<std::string>& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[1];
    const Format& format = FormatOf(target);
    RequireName(source);
    ExpectWritten(format.convert(source.c_str(), target.c_str()), source, target);
}

void RunThumb(const std::vector<std::string>& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[2];
    const int32_t height = PositiveNumber(arguments[1], "height");
    const Format& format = FormatOf(target);
    RequireName(source);
    ExpectWritten(format.convertToThumb(source.c_str(), height, target.c_str()), source, target);
}

void RunSize(const std::vector<std::string>& arguments) {
    const std::string& file = arguments[0];
    RequireName(file);
    int32_t width = 0;
    int32_t height = 0;
    ExpectRead(GetImageDimensions(file.c_str(), &width, &height), file);
    std::printf("%d x %d\n", static_cast<int>(width), static_cast<int>(height));
}

constexpr Command AllCommands[] = {
    {"convert", "SOURCE TARGET", "convert a picture; the target's extension names the format", 2, RunConvert},
    {"thumb", "SOURCE HEIGHT TARGET", "write a small copy that is HEIGHT pixels high", 3, RunThumb},
    {"size", "FILE", "print width and height in pixels", 1, RunSize},
};

} // namespace

std::span<const Command> Commands() { return AllCommands; }

} // namespace lumbrix::cli
