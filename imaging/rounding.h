// How numbers with fractions become whole ones.
#pragma once

#include <cmath>
#include <cstdint>

namespace lumbrix {

// The nearest whole number, ties to the even one. Beyond 32 bits it is the nearest that fits; what is no number becomes
// the lowest.
inline std::int32_t RoundToEven(long double value) {
    const long double rounded = std::nearbyint(value);
    if (rounded >= INT32_MAX) {
        return INT32_MAX;
    }
    return rounded > INT32_MIN ? static_cast<std::int32_t>(rounded) : INT32_MIN;
}

} // namespace lumbrix
