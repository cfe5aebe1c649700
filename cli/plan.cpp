// Which file becomes which, where several become several others.
#include "cli/plan.h"

#include <algorithm>
#include <map>
#include <string>

namespace lumbrix::cli {

namespace {

namespace fs = std::filesystem;

fs::path Numbered(const fs::path& target, int number) {
    fs::path numbered = target.parent_path() / target.stem();
    numbered += " (" + std::to_string(number) + ")";
    numbered += target.extension();
    return numbered;
}

class Planner {
  public:
    Planner(const std::vector<Intent>& intents, const KeyFunction& keyOf) : intents_(intents), keyOf_(keyOf) {
        for (const Intent& intent : intents_) {
            sources_.try_emplace(keyOf_(intent.fullSource), intent.source);
        }
    }

    PlannedFile Place(const Intent& intent) {
        const fs::path key = keyOf_(intent.fullTarget);
        if (const auto standing = sources_.find(key); standing != sources_.end()) {
            const bool isItself = key == keyOf_(intent.fullSource);
            return {intent.source, intent.target, isItself ? Obstacle::ItIsTheSource : Obstacle::OtherSource,
                    standing->second};
        }
        const auto& [first, isFirst] = targets_.try_emplace(key, intent.source);
        return {intent.source, intent.target, isFirst ? Obstacle::None : Obstacle::SameTarget,
                isFirst ? fs::path() : first->second};
    }

    // The file under the first number whose name is free.
    PlannedFile PlaceNumbered(const Intent& intent) {
        for (int number = 2;; ++number) {
            const fs::path key = keyOf_(Numbered(intent.fullTarget, number));
            if (!sources_.contains(key) && targets_.try_emplace(key, intent.source).second) {
                return {intent.source, Numbered(intent.target, number)};
            }
        }
    }

  private:
    const std::vector<Intent>& intents_;
    const KeyFunction& keyOf_;
    std::map<fs::path, fs::path> sources_; // by their keys
    std::map<fs::path, fs::path> targets_; // the source that has each key's target
};

} // namespace

std::vector<PlannedFile> Plan(const std::vector<Intent>& intents, const KeyFunction& keyOf, Collisions collisions) {
    Planner planner(intents, keyOf);
    std::vector<PlannedFile> plan(intents.size());
    std::transform(intents.begin(), intents.end(), plan.begin(),
                   [&](const Intent& intent) { return planner.Place(intent); });
    for (std::size_t i = 0; i < plan.size() && collisions == Collisions::Numbered; ++i) {
        if (plan[i].obstacle != Obstacle::None) {
            plan[i] = planner.PlaceNumbered(intents[i]);
        }
    }
    return plan;
}

fs::path TargetIn(const fs::path& folder, const fs::path& source, const std::string& word) {
    fs::path target = folder / source.stem();
    target += "." + word;
    return target;
}

} // namespace lumbrix::cli
