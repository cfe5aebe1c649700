// How samples along a row of a picture share the work on its columns.
#pragma once

#include "imaginglibrary/operations/sampleline.h"

#include <algorithm>
#include <cstdlib>

namespace imaginglibrary {

// The first samples of a way along a row, as many as lie between columns that fit into a buffer.
struct ColumnsAtOnce {
    // Columns that a buffer must have room for; some behind the last are worked out for nothing.
    static constexpr std::size_t Most = 512;
    static constexpr std::size_t Room = Most + 8;

    ColumnsAtOnce(const SampleWay& way, std::size_t wanted) {
        const auto step = static_cast<std::size_t>(std::abs(way.stepX));
        const std::size_t reachable = step == 0 ? wanted : ((Most - 5) << SampleWay::UnitBits) / step + 1;
        samples = std::min(wanted, reachable);
        const std::uint32_t last =
            way.x + static_cast<std::uint32_t>(way.stepX) * static_cast<std::uint32_t>(samples - 1);
        first = SampleWay::WholeOf(std::min(way.x, last));
        count = SampleWay::WholeOf(std::max(way.x, last)) + 4 - first;
    }

    // Whether that is the shorter way; with long steps most columns would be for nothing.
    static bool Suit(const SampleWay& way, std::size_t count) {
        constexpr std::int32_t LongStep = 2 << SampleWay::UnitBits;
        return way.stepY == 0 && count > 1 && std::abs(way.stepX) <= LongStep;
    }

    std::size_t first;   // column
    std::size_t count;   // of columns
    std::size_t samples; // between them
};

} // namespace imaginglibrary
