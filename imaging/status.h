// What the engine's procedures answer.
#pragma once

#include <cstdint>

namespace lumbrix {

// 0 for done (or nothing to do), a positive number of the imaging library passed up unchanged, or one of ours below.
using StatusValue = std::int32_t;

inline constexpr StatusValue Done = 0;
inline constexpr StatusValue NoSession = -16001;
inline constexpr StatusValue NoEncoder = -16002;

} // namespace lumbrix
