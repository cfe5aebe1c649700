// The command that makes an icon of a picture.
#include "cli/icon.h"

#include "base/lettercase.h"
#include "cli/numbers.h"

#include <algorithm>
#include <vector>

namespace lumbrix::cli {

namespace {

constexpr std::int32_t LargestSize = 256;
constexpr const char* UsualSizes = "16,24,32,48,64,128,256";

std::vector<std::int32_t> SizesFrom(const std::string& list) {
    std::vector<std::int32_t> sizes;
    for (std::size_t start = 0; start <= list.size();) {
        const std::size_t end = std::min(list.find(',', start), list.size());
        const std::int32_t size = WholeNumber(list.substr(start, end - start), "size", 1, LargestSize);
        if (std::find(sizes.begin(), sizes.end(), size) != sizes.end()) {
            throw WrongUsage{"the size " + std::to_string(size) + " was given twice"};
        }
        sizes.push_back(size);
        start = end + 1;
    }
    return sizes;
}

void RequireIconName(const std::string& target) {
    if (!LowerCase(target).ends_with(".ico")) {
        throw WrongUsage{"'" + target + "' must end in .ico"};
    }
}

} // namespace

int RunIcon(const Arguments& arguments) {
    const std::string& source = arguments[0];
    RequireName(source);
    if (arguments.Has("--classic")) {
        if (arguments.Count() != 1) {
            throw WrongUsage{"--classic takes one name: the icon lies beside its bitmap"};
        }
        return RunClassicIcon(source);
    }
    if (arguments.Count() != 2) {
        throw WrongUsage{"the command icon takes a picture and the name of the icon"};
    }
    const std::string& target = arguments[1];
    RequireIconName(target);
    const auto sizes = SizesFrom(arguments.ValueOf("--sizes").value_or(UsualSizes));
    Job job;
    job.Get()->strict = arguments.Has(StrictOption.name) ? 1 : 0;
    job.ExpectOrWarn(
        lumbrix_icon(source.c_str(), target.c_str(), sizes.data(), static_cast<std::int32_t>(sizes.size()), job.Get()));
    return 0;
}

} // namespace lumbrix::cli
