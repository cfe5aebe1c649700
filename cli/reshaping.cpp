// The commands that write a picture in another format or shape: convert, thumb, resize, crop and rotate.
#include "cli/reshaping.h"

#include "cli/causes.h"
#include "cli/formats.h"
#include "cli/numbers.h"
#include "cli/options.h"
#include "cli/sources.h"
#include "cli/text.h"
#include "cli/writing.h"
#include "imaging/exports/lumbrix.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumbrix::cli {

namespace {

constexpr std::int64_t LongestSide = 65535;

// The width that a resized picture comes to have.
std::int64_t ResizedWidth(PictureSize size, std::int32_t height) {
    const auto proportions = static_cast<float>(static_cast<double>(size.width) / size.height);
    return std::llrint(static_cast<long double>(proportions) * height);
}

void ExpectAcceptable(std::int64_t width, std::int64_t height, const std::string& target) {
    if (std::min(width, height) < 1 || std::max(width, height) > LongestSide) {
        throw Failure{"cannot write " + target + ": it would be of the size " + std::to_string(width) + " x " +
                      std::to_string(height) + ", and sides go from 1 to " + std::to_string(LongestSide) + " pixels"};
    }
}

struct Rectangle {
    std::int32_t x;
    std::int32_t y;
    std::int32_t width;
    std::int32_t height;
};

void ExpectWithin(PictureSize size, const Rectangle& area, const std::string& source) {
    if (std::int64_t{area.x} + area.width > size.width || std::int64_t{area.y} + area.height > size.height) {
        throw Failure{"cannot crop " + source + ": the rectangle reaches beyond the picture, whose size is " +
                      TextOf(size)};
    }
}

std::int32_t AngleFrom(const std::string& text) {
    const std::int32_t angle = WholeNumber(text, "angle", 0);
    if (angle % 90 != 0 || angle > 270) {
        throw WrongUsage{"'" + text + "' is no angle: 0, 90, 180 or 270 is needed"};
    }
    return angle;
}

std::string FlipFrom(const std::string& text) {
    constexpr std::array<const char*, 4> Words{"h", "v", "hv", "vh"};
    std::string word = LowerCase(text);
    if (std::find(Words.begin(), Words.end(), word) == Words.end()) {
        throw WrongUsage{"'" + text + "' is no flip: h, v, hv or vh is needed"};
    }
    return word;
}

} // namespace

void WriteResized(const std::string& source, const std::string& target, std::int32_t height) {
    ExpectAcceptable(ResizedWidth(SizeOf(source), height), height, target);
    ExpectIntact(source); // a damaged one would give an empty picture
    WriteInOneStep(source, target, [&](const std::string& temporary) {
        const DrawableSource drawable(source);
        return ResizeImage(drawable.File().c_str(), temporary.c_str(), height);
    });
}

int RunConvert(const Arguments& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[1];
    const Format& format = FormatOfTarget(target);
    RequireName(source);
    ExpectWritten(format.convert(source.c_str(), target.c_str()), source, target);
    return 0;
}

int RunThumb(const Arguments& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[2];
    const int32_t height = PositiveNumber(arguments[1], "height");
    const Format& format = FormatOfTarget(target);
    RequireName(source);
    ExpectWritten(format.convertToThumb(source.c_str(), height, target.c_str()), source, target);
    return 0;
}

int RunResize(const Arguments& arguments) {
    const std::string& target = arguments[1];
    FormatOfTarget(target);
    const std::int32_t height = PositiveNumber(arguments[2], "height");
    WriteResized(arguments[0], target, height);
    return 0;
}

int RunCrop(const Arguments& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[1];
    FormatOfTarget(target);
    const Rectangle area{WholeNumber(arguments[2], "X", 0), WholeNumber(arguments[3], "Y", 0),
                         PositiveNumber(arguments[4], "width"), PositiveNumber(arguments[5], "height")};
    ExpectWithin(SizeOf(source), area, source);
    WriteInOneStep(source, target, [&](const std::string& temporary) {
        return CropImage(source.c_str(), temporary.c_str(), area.x, area.y, area.width, area.height);
    });
    return 0;
}

int RunRotate(const Arguments& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[1];
    FormatOfTarget(target);
    const std::int32_t angle = AngleFrom(arguments[2]);
    const std::string flip = arguments.Count() > 3 ? FlipFrom(arguments[3]) : "";
    WriteInOneStep(source, target, [&](const std::string& temporary) {
        return RotateImage(source.c_str(), temporary.c_str(), angle, flip.c_str());
    });
    return 0;
}

} // namespace lumbrix::cli
