// Does one file of a plan.
#include "cli/fileworker.h"

#include "cli/formats.h"
#include "cli/system.h"
#include "cli/text.h"

#include <cstdio>
#include <exception>
#include <system_error>

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
    if (target.has_parent_path()) {
        fs::create_directories(target.parent_path(), error);
    }
    if (error) {
        throw Failure{"cannot make the folder " + NameOf(target.parent_path()) + ": " + error.message()};
    }
}

void RefuseObstacle(const PlannedFile& file) {
    const std::string cannotWrite = "cannot write " + NameOf(file.target);
    const std::string from = " from " + NameOf(file.source);
    switch (file.obstacle) {
    case Obstacle::None:
        return;
    case Obstacle::ItIsTheSource:
        throw Failure{cannotWrite + ": it is the source itself"};
    case Obstacle::OtherSource:
        throw Failure{cannotWrite + from + ": it is a source as well"};
    case Obstacle::SameTarget:
        throw Failure{cannotWrite + from + ": it is made from " + NameOf(file.other)};
    }
}

const char* FormatFor(const BatchWork& work, const fs::path& target) {
    const char* format = work.format != nullptr ? work.format : FormatOfName(target);
    if (format == nullptr) {
        throw Failure{"cannot write " + NameOf(target) + ": its extension names no format that is written, use --to"};
    }
    return format;
}

bool IsOlder(const fs::path& target, const fs::path& source) {
    std::error_code error;
    const auto targetTime = fs::last_write_time(target, error);
    const auto sourceTime = fs::last_write_time(source, error);
    return !error && targetTime < sourceTime;
}

void CopyDate(const fs::path& source, const fs::path& target) {
    std::error_code error;
    const auto time = fs::last_write_time(source, error);
    if (!error) {
        fs::last_write_time(target, time, error);
    }
    if (error) {
        throw Failure{"cannot set the time of " + NameOf(target) + ": " + error.message()};
    }
}

std::string LineOf(const PlannedFile& file, const FileResult& result) {
    return Printable(NameOf(file.source) + " -> " + NameOf(file.target) + ": " + std::to_string(result.width) + " x " +
                     std::to_string(result.height) + " pixels, " + std::to_string(result.bytes) + " bytes") +
           "\n";
}

} // namespace

FileResult FileWorker::Do(const PlannedFile& file) const {
    if (file.obstacle != Obstacle::SameTarget && IsLeftAlone(file)) {
        return {Fate::Skipped};
    }
    RefuseObstacle(file);
    return work_.isDryRun ? WouldWrite(file) : Write(file);
}

FileResult FileWorker::Attempt(const PlannedFile& file) const {
    try {
        return Do(file);
    } catch (const Stopped&) {
        return {Fate::NotReached};
    } catch (const Failure& failure) {
        return FailedFor(failure.text);
    } catch (const std::exception& error) {
        return FailedFor("cannot work on " + NameOf(file.source) + ": " + error.what());
    }
}

FileResult FileWorker::Write(const PlannedFile& file) const {
    Job job = work_.job;
    const std::string source = job.From(UsableName(file.source));
    const std::string target = job.To(UsableName(file.target));
    job.SetFormat(FormatFor(work_, file.target));
    job.ReportTo(progress_);
    if (missingFolders_ == MissingFolders::Made) {
        MakeFolderOf(file.target);
    }
    job.Expect(work_.operation(source.c_str(), target.c_str(), job.Get()));
    if (work_.keepsDates) {
        CopyDate(file.source, file.target);
    }
    std::error_code error;
    const std::uintmax_t bytes = fs::file_size(file.target, error);
    FileResult result{Fate::Written, job.Width(), job.Height(), error ? job.BytesWritten() : bytes, job.Warning()};
    if (!result.message.empty() && !work_.isQuiet) {
        progress_.Tell(MessageLine(result.message));
    }
    if (work_.isVerbose && !work_.isJson) {
        progress_.Tell(LineOf(file, result), stdout);
    }
    return result;
}

FileResult FileWorker::WouldWrite(const PlannedFile& file) const {
    FormatFor(work_, file.target);
    std::error_code error;
    if (!IsStandardStream(NameOf(file.source)) && !fs::exists(file.source, error)) {
        throw Failure{"cannot read " + NameOf(file.source) + ": there is no such file"};
    }
    if (!work_.isJson && !work_.isQuiet) {
        progress_.Tell(Printable(NameOf(file.source) + " -> " + NameOf(file.target)) + "\n", stdout);
    }
    return {Fate::Written};
}

bool FileWorker::IsLeftAlone(const PlannedFile& file) const {
    std::error_code error;
    if (work_.standing == Standing::Replaced || IsStandardStream(NameOf(file.target)) ||
        !fs::exists(file.target, error)) {
        return false;
    }
    return work_.standing == Standing::Skipped || !IsOlder(file.target, file.source);
}

FileResult FileWorker::FailedFor(const std::string& reason) const {
    progress_.Tell(MessageLine(reason));
    return {Fate::Failed, 0, 0, 0, reason};
}

} // namespace lumbrix::cli
