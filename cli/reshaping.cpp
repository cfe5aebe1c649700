// The commands that write a picture in another format or shape: convert, thumb, resize, crop and rotate.
#include "cli/reshaping.h"

#include "base/lettercase.h"
#include "cli/formats.h"
#include "cli/numbers.h"

#include <algorithm>
#include <array>

namespace lumbrix::cli {

namespace {

std::int32_t AngleFrom(const std::string& text) {
    const std::int32_t angle = WholeNumber(text, "angle", 0);
    if (angle % 90 != 0 || angle > 270) {
        throw WrongUsage{"invalid angle '" + text + "': use 0, 90, 180 or 270"};
    }
    return angle;
}

std::string FlipFrom(const std::string& text) {
    constexpr std::array<const char*, 4> Words{"h", "v", "hv", "vh"};
    std::string word = LowerCase(text);
    if (std::find(Words.begin(), Words.end(), word) == Words.end()) {
        throw WrongUsage{"invalid flip '" + text + "': use h, v, hv or vh"};
    }
    return word;
}

} // namespace

int RunConvert(const Arguments& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[1];
    RequireName(source);
    RequireFormat(target);
    Job job(arguments);
    job.ExpectOrWarn(lumbrix_convert(source.c_str(), target.c_str(), job.Get()));
    return 0;
}

int RunThumb(const Arguments& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[2];
    const std::int32_t height = PositiveNumber(arguments[1], "height");
    RequireName(source);
    RequireFormat(target);
    Job job(arguments, Upright::Usually);
    job.ExpectOrWarn(lumbrix_thumb(source.c_str(), target.c_str(), height, job.Get()));
    return 0;
}

int RunResize(const Arguments& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[1];
    RequireName(source);
    RequireFormat(target);
    const lumbrix_fitting size = RequiredSizeFrom(arguments, 2);
    Job job(arguments, Upright::Usually);
    job.ExpectOrWarn(lumbrix_fit(source.c_str(), target.c_str(), &size, job.Get()));
    return 0;
}

int RunCrop(const Arguments& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[1];
    RequireName(source);
    RequireFormat(target);
    const lumbrix_rectangle area{WholeNumber(arguments[2], "X", 0), WholeNumber(arguments[3], "Y", 0),
                                 PositiveNumber(arguments[4], "width"), PositiveNumber(arguments[5], "height")};
    Job job(arguments);
    job.ExpectOrWarn(lumbrix_crop(source.c_str(), target.c_str(), &area, job.Get()));
    return 0;
}

int RunRotate(const Arguments& arguments) {
    const std::string& source = arguments[0];
    const std::string& target = arguments[1];
    RequireName(source);
    RequireFormat(target);
    const std::int32_t angle = AngleFrom(arguments[2]);
    const std::string flip = arguments.Count() > 3 ? FlipFrom(arguments[3]) : "";
    const lumbrix_turn turn{.size = sizeof turn, .angle = angle, .flip = flip.c_str()};
    Job job(arguments);
    job.ExpectOrWarn(lumbrix_rotate(source.c_str(), target.c_str(), &turn, job.Get()));
    return 0;
}

} // namespace lumbrix::cli
