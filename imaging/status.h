// What the engine's procedures answer, and what each answer is called.
#pragma once

#include <cstdint>

namespace lumbrix {

// 0 for done (or nothing to do), a positive number of the imaging library passed up unchanged, or one of ours below.
using StatusValue = std::int32_t;

inline constexpr StatusValue Done = 0;

// The imaging library's own, as far as something is made of them here.
inline constexpr StatusValue InvalidParameter = 2;
inline constexpr StatusValue OutOfMemory = 3; // also content that cannot be decoded
inline constexpr StatusValue Win32Error = 7;
inline constexpr StatusValue Aborted = 9;
inline constexpr StatusValue FileNotFound = 10;
inline constexpr StatusValue FontFamilyNotFound = 14;
inline constexpr StatusValue PropertyNotFound = 19;

// A general refusal: a blank name, an unknown output type, an image that did not load, a bad size.
inline constexpr StatusValue Refused = -1;

inline constexpr StatusValue NoSession = -16001;
inline constexpr StatusValue NoEncoder = -16002;

// A bad name, and an input image that did not load.
inline constexpr StatusValue BadName = -16003;
inline constexpr StatusValue NotLoaded = -16004;

// What the established procedures never answer: no imaging library is loaded, and a destination that is there already.
inline constexpr StatusValue NoLibrary = -16005;
inline constexpr StatusValue AlreadyThere = -16006;

// "Ok", "FileNotFound" and so on; "Unknown" for a number that is none of all these.
const char* StatusName(StatusValue status);

} // namespace lumbrix
