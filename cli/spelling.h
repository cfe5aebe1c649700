// Words that were mistyped, and which were meant.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace lumbrix::cli {

// How many characters must be put in, taken out, replaced or swapped with their neighbour to get from one word to the
// other. No character is changed twice.
std::size_t Distance(const std::string& one, const std::string& other);

// The candidate that is next to a word, the first of several: at a distance of at most 2 that is under half of the
// word's length. Letter case and dashes in front do not count.
std::optional<std::string> NearestWord(const std::string& word, const std::vector<std::string>& candidates);

// ", did you mean 'convert'?", or nothing where no candidate is near.
std::string Suggestion(const std::string& word, const std::vector<std::string>& candidates);

} // namespace lumbrix::cli
