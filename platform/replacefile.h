// Files that are replaced in one step, under names of either encoding.
#pragma once

#include "platform/text.h"

#include <string>

namespace lumbrix {

// Makes a file with this content, on the disk before it takes the place of one that is there. A failure leaves that as
// it was, and nothing beside it. Raises where it cannot be written.
void ReplaceWholeFile(const std::string& path, const std::string& bytes, TextEncoding encoding);

} // namespace lumbrix
