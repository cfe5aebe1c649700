// How the words of a command that writes are told apart, with one source or several.
#include "cli/writing.h"

#include "cli/batchrun.h"
#include "cli/formats.h"
#include "cli/interrupt.h"
#include "cli/system.h"

#include <filesystem>
#include <utility>

namespace lumbrix::cli {

namespace {

namespace fs = std::filesystem;

void ExpectNoneOf(const Arguments& arguments, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        if (arguments.Has(name)) {
            throw WrongUsage{std::string(name) + " goes with --into FOLDER"};
        }
    }
}

std::vector<std::string> Words(const Arguments& arguments, std::size_t from, std::size_t to) {
    std::vector<std::string> words;
    for (std::size_t i = from; i < to; ++i) {
        words.push_back(arguments[i]);
    }
    return words;
}

Call CallIntoFolder(const Arguments& arguments, std::size_t own) {
    const auto list = arguments.ValueOf(ListOption.name);
    const std::size_t fewest = own + (list ? 0 : 1);
    if (arguments.Count() < fewest) {
        throw WrongUsage{"too few words were given: with --into all but the last " + std::to_string(own) +
                         " are sources"};
    }
    const std::size_t sources = arguments.Count() - own;
    Call call;
    call.folder = *arguments.ValueOf(IntoOption.name);
    RequireName(call.folder);
    for (const std::string& word : Words(arguments, 0, sources)) {
        RequireName(word);
        if (IsStandardStream(word)) {
            throw WrongUsage{"- goes with a TARGET, not with --into; a file of that name is ./-"};
        }
        const std::vector<std::string> files = FilesMeant(word);
        call.sources.insert(call.sources.end(), files.begin(), files.end());
    }
    call.own = Words(arguments, sources, arguments.Count());
    return call;
}

// Options that look at files, or print to where the picture goes, mean nothing for the standard input and output.
void ExpectFilesOnly(const Call& call, const Arguments& arguments) {
    for (const char* name : {KeepDatesOption.name, NewerOption.name}) {
        if (arguments.Has(name)) {
            throw WrongUsage{std::string(name) + " needs files, not -"};
        }
    }
    for (const char* name : {JsonOption.name, VerboseOption.name, DryRunOption.name}) {
        if (IsStandardStream(call.target) && arguments.Has(name)) {
            throw WrongUsage{std::string(name) + " prints to the standard output, where the picture goes"};
        }
    }
}

Call CallOnOneFile(const Arguments& arguments, TargetPlace place) {
    ExpectNoneOf(arguments, {ListOption.name, KeepBothOption.name});
    const std::size_t last = arguments.Count() - 1;
    const bool isLast = place == TargetPlace::AtTheEnd;
    Call call{{arguments[0]}, arguments[isLast ? last : 1], "", {}};
    call.own = isLast ? Words(arguments, 1, last) : Words(arguments, 2, arguments.Count());
    RequireName(call.sources.front());
    if (IsStandardStream(call.sources.front()) || IsStandardStream(call.target)) {
        ExpectFilesOnly(call, arguments);
    }
    if (FormatFrom(arguments)) {
        RequireName(call.target);
    } else if (IsStandardStream(call.target)) {
        throw WrongUsage{"where the target is - the format must be named: --to FORMAT"};
    } else {
        RequireFormat(call.target);
    }
    return call;
}

// The folder in full, whatever links lead there; a file's last part stays, for that is what is written or replaced.
fs::path InFull(const fs::path& file) {
    const fs::path absolute = fs::absolute(file);
    return fs::weakly_canonical(absolute.parent_path()) / absolute.filename();
}

std::string ExtensionFor(const Arguments& arguments, const fs::path& source) {
    const std::string extension = NameOf(source.extension());
    return FormatFrom(arguments).value_or(extension.empty() ? "" : extension.substr(1));
}

Intent IntentFor(const fs::path& source, const fs::path& folder, const Arguments& arguments) {
    const fs::path target = TargetIn(folder, source, ExtensionFor(arguments, source));
    return {source, target, InFull(source), InFull(target)};
}

std::vector<PlannedFile> PlanInto(const Call& call, const Arguments& arguments, Collisions collisions) {
    std::vector<std::string> sources = call.sources;
    if (const auto list = arguments.ValueOf(ListOption.name)) {
        const std::vector<std::string> names = NamesInList(*list);
        sources.insert(sources.end(), names.begin(), names.end());
    }
    std::vector<Intent> intents;
    intents.reserve(sources.size());
    for (const std::string& source : sources) {
        intents.push_back(IntentFor(PathOf(source), PathOf(call.folder), arguments));
    }
    return Plan(intents, FileKey, collisions);
}

void ExpectFolder(const std::string& folder) {
    std::error_code error;
    if (fs::exists(PathOf(folder), error) && !fs::is_directory(PathOf(folder), error)) {
        throw Failure{"cannot write into " + folder + ": it is not a folder"};
    }
}

} // namespace

Call CallFrom(const Arguments& arguments, std::size_t own, TargetPlace place) {
    return arguments.Has(IntoOption.name) ? CallIntoFolder(arguments, own) : CallOnOneFile(arguments, place);
}

int RunWriting(const Call& call, const Arguments& arguments, Operation operation, Upright upright) {
    const BatchWork work = BatchWorkFrom(arguments, std::move(operation), upright);
    if (!call.IsIntoFolder()) {
        return RunSingle(work, {PathOf(call.sources.front()), PathOf(call.target)});
    }
    ExpectFolder(call.folder);
    return RunPlan(work, PlanInto(call, arguments, work.collisions));
}

} // namespace lumbrix::cli
