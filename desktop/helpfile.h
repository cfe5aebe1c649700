// The whole help of the program: a text, opened with the system's viewer.
#pragma once

namespace lumbrix {

// Writes the help text to a temporary file and opens it, without waiting. A failure passes in silence.
void WriteHelpFile();

} // namespace lumbrix
