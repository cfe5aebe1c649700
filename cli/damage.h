// Whether a picture can be decoded to its end, which several operations do not tell.
#pragma once

#include <string>

namespace lumbrix::cli {

// Throws Failure for a picture that is damaged behind its header. Takes as long as decoding it.
void ExpectIntact(const std::string& file);

} // namespace lumbrix::cli
