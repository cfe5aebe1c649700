// The commands that draw on a picture: annotate and stamp.
#include "cli/drawing.h"

#include "cli/numbers.h"
#include "cli/writing.h"

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
    bool isBold;
    bool isItalic;
    bool isUnderlined;
    bool isStruckOut;
};

Lettering LetteringFrom(const Arguments& arguments) {
    Lettering lettering{arguments.ValueOf("--font").value_or(DefaultFont),
                        DefaultSize,
                        Opaque,
                        {},
                        arguments.Has("--bold"),
                        arguments.Has("--italic"),
                        arguments.Has("--underline"),
                        arguments.Has("--strikeout")};
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
    const Call call = CallFrom(arguments, 3);
    const float x = Position(call.own[0], "X");
    const float y = Position(call.own[1], "Y");
    const std::string text = call.own[2];
    RequireText(text);
    const auto annotate = [=, lettering = LetteringFrom(arguments)](const char* source, const char* target,
                                                                    lumbrix_job* job) {
        const lumbrix_annotation annotation{
            .size = sizeof annotation,
            .x = x,
            .y = y,
            .text = text.c_str(),
            .font = lettering.font.c_str(),
            .font_size = lettering.size,
            .bold = lettering.isBold,
            .italic = lettering.isItalic,
            .underline = lettering.isUnderlined,
            .strikeout = lettering.isStruckOut,
            .alpha = lettering.alpha,
            .red = lettering.color.red,
            .green = lettering.color.green,
            .blue = lettering.color.blue,
        };
        return lumbrix_annotate(source, target, &annotation, job);
    };
    return RunWriting(call, arguments, annotate);
}

int RunStamp(const Arguments& arguments) {
    const Call call = CallFrom(arguments, 3);
    const float x = Position(call.own[0], "X");
    const float y = Position(call.own[1], "Y");
    const std::string stamp = call.own[2];
    return RunWriting(call, arguments, [=](const char* source, const char* target, lumbrix_job* job) {
        const lumbrix_stamp_place place{.size = sizeof place, .stamp = stamp.c_str(), .x = x, .y = y};
        return lumbrix_stamp(source, target, &place, job);
    });
}

} // namespace lumbrix::cli
