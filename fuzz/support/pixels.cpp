// Reading pictures that may claim to be of any size.
#include "fuzz/support/pixels.h"

#include "fuzz/support/choices.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <vector>

namespace fuzz {

using namespace imaginglibrary;

namespace {

constexpr std::uint64_t MostPixels = std::uint64_t{1} << 20;

// Every byte of a row counts: what was never written to is noticed where the tools can tell. The hash is the standard
// library's own and takes no time to speak of, which a loop under the sanitizers does.
volatile std::size_t seen;

} // namespace

bool ReadSomeRows(const PixelSource& picture) {
    const PictureInfo& info = picture.Info();
    auto rows = picture.OpenRows();
    if (!rows.Ok()) {
        return false;
    }
    const auto most = static_cast<std::uint32_t>(std::max<std::uint64_t>(MostPixels / info.width, 1));
    std::vector<std::uint8_t> row(BytesPerRow(info.format, info.width));
    for (std::uint32_t y = 0; y < std::min(info.height, most); ++y) {
        if ((*rows)->ReadRow(row.data()) != Status::Ok) {
            return false;
        }
        seen = std::hash<std::string_view>{}({reinterpret_cast<const char*>(row.data()), row.size()});
    }
    return true;
}

} // namespace fuzz
