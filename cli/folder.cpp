// The command that converts every picture of a folder, several files at a time.
#include "cli/folder.h"

#include "cli/folderplan.h"
#include "cli/formats.h"
#include "cli/interrupt.h"
#include "cli/job.h"
#include "cli/numbers.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "cli/system.h"
#include "cli/text.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <exception>
#include <system_error>
#include <thread>

namespace lumbrix::cli {

namespace {

namespace fs = std::filesystem;

constexpr std::int32_t MostJobs = 256;

struct FolderWork {
    fs::path sourceFolder; // as they were given, for messages to name files that way
    fs::path targetFolder;
    const char* format = nullptr;
    std::optional<lumbrix_fitting> size; // pictures larger than this are made smaller
    bool skipsExisting = false;
    Job job; // that of each file
    std::int32_t jobs = 1;
};

enum class Fate { NotReached, Written, Skipped, Failed };

std::int32_t JobsFrom(const Arguments& arguments) {
    if (const auto jobs = arguments.ValueOf("--jobs")) {
        return WholeNumber(*jobs, "number of jobs", 1, MostJobs);
    }
    return std::clamp(static_cast<std::int32_t>(std::thread::hardware_concurrency()), 1, MostJobs);
}

FolderWork WorkFrom(const Arguments& arguments) {
    RequireName(arguments[0]);
    RequireName(arguments[1]);
    FolderWork work;
    work.sourceFolder = PathOf(arguments[0]);
    work.targetFolder = PathOf(arguments[1]);
    work.format = FormatOfWord(arguments[2]);
    work.size = SizeFrom(arguments, 3);
    work.skipsExisting = arguments.Has("--skip-existing");
    work.job = Job(arguments, work.size ? Upright::Usually : Upright::WhereAsked);
    work.job.SetFormat(work.format);
    work.job.OnlyShrink();
    work.jobs = JobsFrom(arguments);
    return work;
}

void ExpectFolders(const FolderWork& work) {
    std::error_code error;
    if (!fs::exists(work.sourceFolder, error)) {
        throw Failure{"cannot read " + NameOf(work.sourceFolder) + ": there is no such folder"};
    }
    if (!fs::is_directory(work.sourceFolder, error)) {
        throw Failure{"cannot read " + NameOf(work.sourceFolder) + ": it is not a folder"};
    }
    if (fs::exists(work.targetFolder, error) && !fs::is_directory(work.targetFolder, error)) {
        throw Failure{"cannot write into " + NameOf(work.targetFolder) + ": it is not a folder"};
    }
}

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

    // Does one file, or tells why it cannot.
    Fate Attempt(const PlannedFile& file, Progress& progress) const {
        try {
            return DoFile(file, progress);
        } catch (const Stopped&) {
            return Fate::NotReached;
        } catch (const Failure& failure) {
            progress.Tell(MessageLine(failure.text));
        } catch (const std::exception& error) {
            const std::string source = NameOf(work_.sourceFolder / file.source);
            progress.Tell(MessageLine("cannot work on " + source + ": " + error.what()));
        }
        return Fate::Failed;
    }

  private:
    Fate DoFile(const PlannedFile& file, Progress& progress) const {
        std::error_code error;
        if (file.obstacle != Obstacle::SameTarget && work_.skipsExisting &&
            fs::exists(work_.targetFolder / file.target, error)) {
            return Fate::Skipped;
        }
        RefuseObstacle(file);
        const std::string source = UsableName(work_.sourceFolder / file.source);
        const std::string target = UsableName(work_.targetFolder / file.target);
        MakeFolderOf(work_.targetFolder / file.target);
        Job job = work_.job;
        job.Expect(work_.size ? lumbrix_fit(source.c_str(), target.c_str(), &*work_.size, job.Get())
                              : lumbrix_convert(source.c_str(), target.c_str(), job.Get()));
        if (const std::string warning = job.Warning(); !warning.empty()) {
            progress.Tell(MessageLine(warning));
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

// One fate for each planned file. Once somebody asks to stop, the files under way are finished and no other is begun.
std::vector<Fate> WorkThrough(const FolderWork& work, const std::vector<PlannedFile>& plan) {
    std::vector<Fate> fates(plan.size());
    std::atomic<std::size_t> next{0};
    const FolderWorker worker(work);
    Progress progress(plan.size(), IsErrorOutputATerminal());
    RunSideBySide(std::min(static_cast<std::size_t>(work.jobs), plan.size()), [&] {
        while (!WasInterrupted()) {
            const std::size_t i = next++;
            if (i >= plan.size()) {
                return;
            }
            fates[i] = worker.Attempt(plan[i], progress);
            progress.Step();
        }
    });
    return fates;
}

struct Counts {
    std::size_t written = 0;
    std::size_t skipped = 0;
    std::size_t failed = 0;
    std::size_t passedOver = 0;
    std::size_t notReached = 0;
};

Counts CountsOf(const FoundFiles& found, const std::vector<Fate>& fates) {
    const auto with = [&](Fate fate) { return static_cast<std::size_t>(std::count(fates.begin(), fates.end(), fate)); };
    return {with(Fate::Written), with(Fate::Skipped), with(Fate::Failed) + found.failures.size(), found.others,
            with(Fate::NotReached)};
}

void PrintCounts(const Counts& counts) {
    std::printf("%zu written, %zu skipped, %zu failed", counts.written, counts.skipped, counts.failed);
    if (counts.passedOver > 0) {
        std::printf(", %zu passed over", counts.passedOver);
    }
    if (WasInterrupted()) {
        std::printf(", %zu not reached", counts.notReached);
    }
    std::printf("\n");
}

fs::path InFull(const fs::path& folder) { return fs::weakly_canonical(fs::absolute(folder)); }

} // namespace

int RunFolder(const Arguments& arguments) {
    const FolderWork work = WorkFrom(arguments);
    ExpectFolders(work);
    FinishWhenInterrupted();
    const FoundFiles found = SearchFolder(work.sourceFolder, arguments.Has("--recursive"), work.targetFolder);
    for (const std::string& failure : found.failures) {
        std::fputs(MessageLine(failure).c_str(), stderr);
    }
    const FolderOrder order{InFull(work.sourceFolder), InFull(work.targetFolder), arguments[2]};
    const std::vector<Fate> fates = WorkThrough(work, PlanFolder(order, found.pictures, FileKey));
    if (MustStop()) {
        throw Stopped{};
    }
    const Counts counts = CountsOf(found, fates);
    PrintCounts(counts);
    return counts.failed == 0 ? 0 : 1;
}

} // namespace lumbrix::cli
