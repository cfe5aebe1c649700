// Which file becomes which, where several become several others.
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

namespace lumbrix::cli {

// A file and what it is to become: names as messages show them, and in full, so that a source can be told from a
// target.
struct Intent {
    std::filesystem::path source;
    std::filesystem::path target;
    std::filesystem::path fullSource;
    std::filesystem::path fullTarget;
};

enum class Obstacle {
    None,
    ItIsTheSource, // the file would become its own target
    OtherSource,   // another source stands where the target would be
    SameTarget,    // another source, which comes first, has the same target
};

struct PlannedFile {
    std::filesystem::path source;
    std::filesystem::path target;
    Obstacle obstacle = Obstacle::None;
    std::filesystem::path other; // the other source, if there is one in the way
};

// Two paths with the same key are the same file.
using KeyFunction = std::function<std::filesystem::path(const std::filesystem::path& path)>;

enum class Collisions {
    Refused,
    Numbered, // whatever stands in the way, the target gets a number: "a (2).png"
};

// One planned file for each intent, in their order. A number never takes a name that another file has without one.
// Looks at names only.
std::vector<PlannedFile> Plan(const std::vector<Intent>& intents, const KeyFunction& keyOf,
                              Collisions collisions = Collisions::Refused);

// The target of a source: in this folder, with the source's stem and `word` as extension.
std::filesystem::path TargetIn(const std::filesystem::path& folder, const std::filesystem::path& source,
                               const std::string& word);

} // namespace lumbrix::cli
