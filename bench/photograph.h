// A photograph to draw, made up.
#pragma once

#include <cstdint>
#include <string>

namespace bench {

// Writes a JPEG file with coarse and fine detail everywhere. False where that fails.
bool WritePhotograph(const std::string& path, std::uint32_t width, std::uint32_t height);

} // namespace bench
