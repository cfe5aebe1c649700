// How the main window's texts follow from each other.
#pragma once

#include <cstdint>
#include <string>

namespace lumbrix {

// The target for a new source: folder and extension of the old target, the name of the source up to its first dot. A
// target without a backslash has no folder, and one without an extension ends in a dot.
std::string Retargeted(const std::string& source, const std::string& target);

// The target for a chosen folder: the name of the source up to its first dot, with the word of the output type.
std::string TargetInFolder(const std::string& folder, const std::string& source, const std::string& outputWord);

// The target with its extension, and every other place where the same letters stand behind a dot, replaced by the word
// of the output type. A target without an extension stays.
std::string WithOutputType(const std::string& target, const std::string& outputWord);

// "(W640 x H480)"; empty unless both are above 0. In pixels.
std::string SizeText(std::int32_t width, std::int32_t height);

} // namespace lumbrix
