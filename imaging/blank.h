// Names that count as not given.
#pragma once

#include <string_view>

namespace lumbrix {

// Whether nothing is left of a name once the blanks at both ends are gone.
constexpr bool IsBlank(std::string_view name) { return name.find_first_not_of(' ') == std::string_view::npos; }

} // namespace lumbrix
