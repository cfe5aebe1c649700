// What size a command is asked to make pictures.
#pragma once

#include "cli/options.h"
#include "imaging/exports/lumbrix.h"

#include <optional>
#include <string>

namespace lumbrix::cli {

inline constexpr Option WidthOption{"--width", "N", "make it N pixels wide"};
inline constexpr Option HeightOption{"--height", "N", "make it N pixels high, as HEIGHT does"};
inline constexpr Option FitOption{"--fit", "WxH", "make it as large as fits into W by H pixels"};
inline constexpr Option PercentOption{"--percent", "P",
                                      "make both sides P percent of what they are, such as 50 or 12.5"};
inline constexpr Option OnlyShrinkOption{"--only-shrink", nullptr, "leave a picture that is small enough in its size"};

// Whether an option asks for a size.
bool HasSizeOption(const Arguments& arguments);

// What a plain word, if there is one, and the options ask for: a height, a width, a box or a percentage; nothing where
// nothing is asked for. Throws WrongUsage for more than one of them, and for numbers that are none.
std::optional<lumbrix_fitting> SizeFrom(const std::optional<std::string>& height, const Arguments& arguments);

// The same where a size must be asked for.
lumbrix_fitting RequiredSizeFrom(const std::optional<std::string>& height, const Arguments& arguments);

} // namespace lumbrix::cli
