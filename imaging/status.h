// What the engine's procedures answer.
#pragma once

#include <cstdint>

namespace lumbrix {

// 0 for done (or nothing to do), a positive number of the imaging library passed up unchanged, or one of ours below.
using StatusValue = std::int32_t;

inline constexpr StatusValue Done = 0;
inline constexpr StatusValue NoSession = -16001;
inline constexpr StatusValue NoEncoder = -16002;

// A general refusal: a blank name, an unknown output type, an image that did not load, a bad size.
inline constexpr StatusValue Refused = -1;

// The answers of annotating and stamping: a bad name, an input image that did not load.
inline constexpr StatusValue BadName = -16003;
inline constexpr StatusValue NotLoaded = -16004;

} // namespace lumbrix
