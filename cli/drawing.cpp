// The commands that draw on a picture: annotate and stamp.
#include "cli/drawing.h"

#include "cli/causes.h"
#include "cli/formats.h"
#include "cli/numbers.h"
#include "cli/options.h"
#include "cli/sources.h"
#include "cli/system.h"
#include "cli/writing.h"
#include "imaging/exports/lumbrix.h"

#include <filesystem>

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

void RequireFont(const std::string& font, const std::string& target) {
    if (lumbrix_has_font(font.c_str()) == 0) {
        throw Failure{"cannot write " + target + ": the font '" + font + "' is not installed"};
    }
}

void RefuseStampAsTarget(const std::string& stamp, const std::string& target) {
    std::error_code error;
    if (std::filesystem::equivalent(PathOf(stamp), PathOf(target), error)) {
        throw Failure{"cannot write " + target + ": it is the stamp itself"};
    }
}

} // namespace

int RunAnnotate(const Arguments& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[1];
    const std::string& text = arguments[4];
    FormatOfTarget(target);
    const float x = Position(arguments[2], "X");
    const float y = Position(arguments[3], "Y");
    RequireText(text);
    const Lettering lettering = LetteringFrom(arguments);
    const Color& color = lettering.color;
    SizeOf(source);
    RequireFont(lettering.font, target);
    WriteInOneStep(source, target, [&](const std::string& temporary) {
        const DrawableSource drawable(source);
        return AnnotateImage(drawable.File().c_str(), temporary.c_str(), x, y, text.c_str(), lettering.font.c_str(),
                             lettering.size, arguments.Has("--bold"), arguments.Has("--italic"),
                             arguments.Has("--underline"), arguments.Has("--strikeout"), lettering.alpha, color.blue,
                             color.green, color.red);
    });
    return 0;
}

int RunStamp(const Arguments& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[1];
    const std::string& stamp = arguments[4];
    FormatOfTarget(target);
    const float x = Position(arguments[2], "X");
    const float y = Position(arguments[3], "Y");
    SizeOf(source);
    ExpectIntact(stamp); // a damaged one would be left out in silence
    RefuseStampAsTarget(stamp, target);
    WriteInOneStep(source, target, [&](const std::string& temporary) {
        const DrawableSource drawable(source);
        return StampImage(drawable.File().c_str(), temporary.c_str(), x, y, stamp.c_str());
    });
    return 0;
}

} // namespace lumbrix::cli
