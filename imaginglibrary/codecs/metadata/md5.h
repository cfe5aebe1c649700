// The MD5 digest, by which XMP names its parts.
#pragma once

#include <string>
#include <string_view>

namespace imaginglibrary {

// 32 hexadecimal digits in capitals.
std::string Md5Digits(std::string_view data);

} // namespace imaginglibrary
