// Carries out what was planned for a folder, several files at a time.
#include "cli/folderrun.h"

#include "cli/causes.h"
#include "cli/errors.h"
#include "cli/interrupt.h"
#include "cli/progress.h"
#include "cli/reshaping.h"
#include "cli/system.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <system_error>
#include <thread>

namespace lumbrix::cli {

namespace {

namespace fs = std::filesystem;

// A name that the operations can be given; throws Failure for one with characters that the code page lacks.
std::string UsableName(const fs::path& path) {
    std::string name = NameOf(path);
    if (PathOf(name) != path) {
        throw Failure{"cannot work on " + name + ": its name has characters that the system's code page lacks"};
    }
    return name;
}

void MakeFolderOf(const fs::path& target) {
    std::error_code error;
    fs::create_directories(target.parent_path(), error);
    if (error) {
        throw Failure{"cannot make the folder " + NameOf(target.parent_path()) + ": " + error.message()};
    }
}

class FolderWorker {
  public:
    explicit FolderWorker(const FolderWork& work) : work_(work) {}

    Outcome Attempt(const PlannedFile& file) const {
        try {
            return {DoFile(file), {}};
        } catch (const Failure& failure) {
            return {Fate::Failed, failure.text};
        } catch (const std::exception& error) {
            return {Fate::Failed, "cannot work on " + NameOf(work_.sourceFolder / file.source) + ": " + error.what()};
        }
    }

  private:
    Fate DoFile(const PlannedFile& file) const {
        std::error_code error;
        if (file.obstacle != Obstacle::SameTarget && work_.skipsExisting &&
            fs::exists(work_.targetFolder / file.target, error)) {
            return Fate::Skipped;
        }
        RefuseObstacle(file);
        const std::string source = UsableName(work_.sourceFolder / file.source);
        const std::string target = UsableName(work_.targetFolder / file.target);
        const bool isTooHigh = work_.height > 0 && SizeOf(source).height > work_.height;
        MakeFolderOf(work_.targetFolder / file.target);
        if (isTooHigh) {
            WriteResized(source, target, work_.height);
        } else {
            ExpectWritten(work_.format->convert(source.c_str(), target.c_str()), source, target);
        }
        return Fate::Written;
    }

    void RefuseObstacle(const PlannedFile& file) const {
        const std::string cannotWrite = "cannot write " + NameOf(work_.targetFolder / file.target);
        const std::string from = " from " + NameOf(work_.sourceFolder / file.source);
        switch (file.obstacle) {
        case Obstacle::None:
            return;
        case Obstacle::ItIsTheSource:
            throw Failure{cannotWrite + ": it is the source itself"};
        case Obstacle::OtherSource:
            throw Failure{cannotWrite + from + ": it is a source as well"};
        case Obstacle::SameTarget:
            throw Failure{cannotWrite + from + ": it is made from " + NameOf(work_.sourceFolder / file.other)};
        }
    }

    const FolderWork& work_;
};

// Runs a function on several threads, this one among them.
template <class Function> void RunSideBySide(std::size_t count, const Function& function) {
    std::vector<std::jthread> helpers;
    try {
        while (helpers.size() + 1 < count) {
            helpers.emplace_back(function);
        }
    } catch (const std::system_error&) { // those that could be started will do
    }
    function();
}

} // namespace

std::vector<Outcome> WorkThrough(const FolderWork& work, const std::vector<PlannedFile>& plan) {
    std::vector<Outcome> outcomes(plan.size());
    std::atomic<std::size_t> next{0};
    const FolderWorker worker(work);
    Progress progress(plan.size(), IsErrorOutputATerminal());
    RunSideBySide(std::min(static_cast<std::size_t>(work.jobs), plan.size()), [&] {
        while (!WasInterrupted()) {
            const std::size_t i = next++;
            if (i >= plan.size()) {
                return;
            }
            outcomes[i] = worker.Attempt(plan[i]);
            progress.Step();
        }
    });
    return outcomes;
}

} // namespace lumbrix::cli
