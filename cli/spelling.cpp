// Words that were mistyped, and which were meant.
#include "cli/spelling.h"

#include "base/lettercase.h"

#include <algorithm>

namespace lumbrix::cli {

namespace {

constexpr std::size_t FarthestNeighbour = 2;

std::string Bare(const std::string& word) {
    const std::size_t start = word.find_first_not_of('-');
    return start == std::string::npos ? "" : LowerCase(word.substr(start));
}

// The distances between the beginnings of two words, a row at a time.
class DistanceTable {
  public:
    DistanceTable(const std::string& one, const std::string& other)
        : one_(one), other_(other), before_(other.size() + 1), above_(other.size() + 1), row_(other.size() + 1) {
        for (std::size_t j = 0; j < row_.size(); ++j) {
            row_[j] = j;
        }
    }

    std::size_t Fill() {
        for (std::size_t i = 1; i <= one_.size(); ++i) {
            before_.swap(above_);
            above_.swap(row_);
            row_[0] = i;
            for (std::size_t j = 1; j < row_.size(); ++j) {
                row_[j] = Least(i, j);
            }
        }
        return row_.back();
    }

  private:
    std::size_t Least(std::size_t i, std::size_t j) const {
        const std::size_t replacement = one_[i - 1] == other_[j - 1] ? 0 : 1;
        const std::size_t least = std::min({above_[j] + 1, row_[j - 1] + 1, above_[j - 1] + replacement});
        const bool areSwapped = i > 1 && j > 1 && one_[i - 1] == other_[j - 2] && one_[i - 2] == other_[j - 1];
        return areSwapped ? std::min(least, before_[j - 2] + 1) : least;
    }

    const std::string& one_;
    const std::string& other_;
    std::vector<std::size_t> before_; // the row above the one above
    std::vector<std::size_t> above_;
    std::vector<std::size_t> row_;
};

} // namespace

std::size_t Distance(const std::string& one, const std::string& other) { return DistanceTable(one, other).Fill(); }

std::optional<std::string> NearestWord(const std::string& word, const std::vector<std::string>& candidates) {
    const std::string bare = Bare(word);
    std::optional<std::string> nearest;
    std::size_t least = FarthestNeighbour + 1;
    for (const std::string& candidate : candidates) {
        const std::size_t distance = Distance(bare, Bare(candidate));
        if (distance < least && 2 * distance < bare.size()) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

std::string Suggestion(const std::string& word, const std::vector<std::string>& candidates) {
    const auto nearest = NearestWord(word, candidates);
    return nearest ? ", did you mean '" + *nearest + "'?" : "";
}

} // namespace lumbrix::cli
