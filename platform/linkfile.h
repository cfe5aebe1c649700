// The file of a link on Linux: a text that a person can read, one field a line behind a first line that says what it
// is.
//
//     [Link]
//     Target=/usr/bin/lumbrix-cli
//     WorkingFolder=/home/user/pictures
//     Arguments=size 100%25.png
//     Description=
//     IconFile=
//     IconIndex=0
//     ShowCommand=1
//     HotKey=0
//
// In texts a percent sign with two hexadecimal digits stands for a control character or a percent sign.
#pragma once

#include "platform/shelllink.h"

#include <optional>
#include <string>

namespace lumbrix {

std::string LinkFileText(const LinkFields& fields);

// Nothing where the text is not wholly what stands above: all fields, in this order, and nothing else.
std::optional<LinkFields> LinkFromFileText(const std::string& text);

} // namespace lumbrix
