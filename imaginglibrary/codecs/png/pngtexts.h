// Texts in PNG files: their keywords, characters and compression.
#pragma once

#include "imaginglibrary/core/properties.h"

#include <cstddef>
#include <optional>
#include <string>

namespace imaginglibrary {

// The tag of the item that a text becomes; nothing for a keyword that has none.
std::optional<std::uint32_t> TagOfKeyword(std::string_view keyword);

// The keyword of an item that is a text; null for any other.
const char* KeywordOf(const Property& property);

// Whether a text has characters beyond ASCII and has them in UTF-8.
bool NeedsUtf8(std::string_view text);

// What was compressed; nothing where the data is broken or becomes longer than `mostBytes`. `made`
// becomes the number of bytes that were inflated, in vain too; it begins with 0.
std::optional<std::string> Inflated(std::string_view data, std::size_t mostBytes, std::size_t& made);

} // namespace imaginglibrary
