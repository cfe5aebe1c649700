// The commands that draw on a picture: annotate and stamp.
#include "cli/drawing.h"

#include "cli/formats.h"
#include "cli/numbers.h"

namespace lumbrix::cli {

namespace {

constexpr const char* DefaultFont = "Arial";
constexpr std::int32_t DefaultSize = 24;
constexpr std::int32_t Opaque = 255;

struct Lettering {
    std::string font;
    std::int32_t size;
    std::int32_t alpha;
    Color color;
};

Lettering LetteringFrom(const Arguments& arguments) {
    Lettering lettering{arguments.ValueOf("--font").value_or(DefaultFont), DefaultSize, Opaque, {}};
    if (const auto size = arguments.ValueOf("--size")) {
        lettering.size = PositiveNumber(*size, "size");
    }
    if (const auto alpha = arguments.ValueOf("--alpha")) {
        lettering.alpha = WholeNumber(*alpha, "alpha", 1, Opaque);
    }
    if (const auto color = arguments.ValueOf("--color")) {
        lettering.color = ColorFrom(*color);
    }
    return lettering;
}

void RequireText(const std::string& text) {
    if (text.empty()) {
        throw WrongUsage{"an empty text was given"};
    }
}

} // namespace

int RunAnnotate(const Arguments& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[1];
    const std::string& text = arguments[4];
    RequireName(source);
    RequireFormat(target);
    const float x = Position(arguments[2], "X");
    const float y = Position(arguments[3], "Y");
    RequireText(text);
    const Lettering lettering = LetteringFrom(arguments);
    const lumbrix_annotation annotation{
        .size = sizeof annotation,
        .x = x,
        .y = y,
        .text = text.c_str(),
        .font = lettering.font.c_str(),
        .font_size = lettering.size,
        .bold = arguments.Has("--bold"),
        .italic = arguments.Has("--italic"),
        .underline = arguments.Has("--underline"),
        .strikeout = arguments.Has("--strikeout"),
        .alpha = lettering.alpha,
        .red = lettering.color.red,
        .green = lettering.color.green,
        .blue = lettering.color.blue,
    };
    Job job(arguments);
    job.ExpectOrWarn(lumbrix_annotate(source.c_str(), target.c_str(), &annotation, job.Get()));
    return 0;
}

int RunStamp(const Arguments& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[1];
    RequireName(source);
    RequireFormat(target);
    const lumbrix_stamp_place place{.size = sizeof place,
                                    .stamp = arguments[4].c_str(),
                                    .x = Position(arguments[2], "X"),
                                    .y = Position(arguments[3], "Y")};
    Job job(arguments);
    job.ExpectOrWarn(lumbrix_stamp(source.c_str(), target.c_str(), &place, job.Get()));
    return 0;
}

} // namespace lumbrix::cli
