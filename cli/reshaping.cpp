// The commands that write a picture in another format or shape: convert, thumb, resize, crop and rotate.
#include "cli/reshaping.h"

#include "base/lettercase.h"
#include "cli/numbers.h"
#include "cli/writing.h"

#include <algorithm>
#include <array>
#include <optional>

namespace lumbrix::cli {

namespace {

bool IsAngle(const std::string& word) {
    constexpr std::array<const char*, 4> Words{"0", "90", "180", "270"};
    return std::find(Words.begin(), Words.end(), word) != Words.end();
}

bool IsFlip(const std::string& word) {
    constexpr std::array<const char*, 4> Words{"h", "v", "hv", "vh"};
    return std::find(Words.begin(), Words.end(), LowerCase(word)) != Words.end();
}

std::int32_t AngleFrom(const std::string& text) {
    const std::int32_t angle = WholeNumber(text, "angle", 0);
    if (angle % 90 != 0 || angle > 270) {
        throw WrongUsage{"invalid angle '" + text + "': use 0, 90, 180 or 270"};
    }
    return angle;
}

std::string FlipFrom(const std::string& text) {
    if (!IsFlip(text)) {
        throw WrongUsage{"invalid flip '" + text + "': use h, v, hv or vh"};
    }
    return LowerCase(text);
}

// An angle and a flip where the last word is a flip behind an angle, else an angle alone.
std::size_t TurnWords(const Arguments& arguments) {
    const std::size_t count = arguments.Count();
    return count > 1 && IsFlip(arguments[count - 1]) && IsAngle(arguments[count - 2]) ? 2 : 1;
}

} // namespace

int RunConvert(const Arguments& arguments) { return RunWriting(CallFrom(arguments, 0), arguments, lumbrix_convert); }

int RunThumb(const Arguments& arguments) {
    const Call call = CallFrom(arguments, 1, TargetPlace::AtTheEnd);
    const std::int32_t height = PositiveNumber(call.own[0], "height");
    const auto makeThumb = [height](const char* source, const char* target, lumbrix_job* job) {
        return lumbrix_thumb(source, target, height, job);
    };
    return RunWriting(call, arguments, makeThumb, Upright::Usually);
}

int RunResize(const Arguments& arguments) {
    const Call call = CallFrom(arguments, HasSizeOption(arguments) ? 0 : 1);
    const lumbrix_fitting size =
        RequiredSizeFrom(call.own.empty() ? std::nullopt : std::optional(call.own[0]), arguments);
    const auto resize = [size](const char* source, const char* target, lumbrix_job* job) {
        return lumbrix_fit(source, target, &size, job);
    };
    return RunWriting(call, arguments, resize, Upright::Usually);
}

int RunCrop(const Arguments& arguments) {
    const Call call = CallFrom(arguments, 4);
    const lumbrix_rectangle area{WholeNumber(call.own[0], "X", 0), WholeNumber(call.own[1], "Y", 0),
                                 PositiveNumber(call.own[2], "width"), PositiveNumber(call.own[3], "height")};
    return RunWriting(call, arguments, [area](const char* source, const char* target, lumbrix_job* job) {
        return lumbrix_crop(source, target, &area, job);
    });
}

int RunRotate(const Arguments& arguments) {
    const Call call = CallFrom(arguments, TurnWords(arguments));
    const std::int32_t angle = AngleFrom(call.own[0]);
    const std::string flip = call.own.size() > 1 ? FlipFrom(call.own[1]) : "";
    return RunWriting(call, arguments, [angle, flip](const char* source, const char* target, lumbrix_job* job) {
        const lumbrix_turn turn{.size = sizeof turn, .angle = angle, .flip = flip.c_str()};
        return lumbrix_rotate(source, target, &turn, job);
    });
}

} // namespace lumbrix::cli
