// The commands that convert as the engine does, in one step: convert and thumb.
#include "cli/conversion.h"

#include "cli/causes.h"
#include "cli/formats.h"
#include "cli/numbers.h"

namespace lumbrix::cli {

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

} // namespace lumbrix::cli
