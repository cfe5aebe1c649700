// The bitmap files through which a picture comes into the paint window and goes back, and the message about them.
#pragma once

#include "freeedit/stepfiles.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace lumbrix {

// The file that the window opens, deletes, and names its own after: the next step beside the output.
inline std::string DrawFile(const std::string& output, std::int32_t stepCounter) {
    return StepFile(output, 1 + stepCounter);
}

// The file that the window saves. It always ends with a 3, whatever the step, in place of the last digit.
inline std::string SavedDrawing(const std::string& drawFile) {
    constexpr std::size_t Replaced = 5;
    return drawFile.substr(0, drawFile.size() - std::min(drawFile.size(), Replaced)) + "3.bmp";
}

// What is told, without a title, where the file is missing.
inline std::string MissingFileMessage(const std::string& drawFile) { return "No " + drawFile; }

} // namespace lumbrix
