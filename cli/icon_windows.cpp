// The classic icon of a bitmap.
#include "cli/icon.h"

#include "cli/text.h"
#include "draw/iconcommand.h"
#include "draw/iconrules.h"

#include <cstdio>

namespace lumbrix::cli {

int RunClassicIcon(const std::string& bitmap) {
    if (const auto cause = WhyNoIcon(bitmap)) {
        throw Failure{*cause};
    }
    std::printf("%s\n", Printable(IconPath(bitmap)).c_str());
    return 0;
}

} // namespace lumbrix::cli
