// The help text, and the file that it is shown from.
#pragma once

#include <string>

namespace lumbrix {

// Writes the help text to a new file and gives back its name: that of a new temporary file, with ".txt" wherever it has
// ".tmp". Both files stay. Raises RuntimeError where one of them cannot be made.
std::string WriteHelpText();

} // namespace lumbrix
