// What can be asked for where files are written: which targets are left alone, how many files are done at a time, what
// is told of it.
#include "cli/batchoptions.h"

#include "cli/formats.h"
#include "cli/numbers.h"
#include "cli/system.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <thread>
#include <utility>

namespace lumbrix::cli {

namespace {

constexpr std::int32_t MostJobs = 256;

// Older scripts say it like this.
constexpr const char* OlderSkip = "--skip-existing";

void ExpectOneOf(const Arguments& arguments, std::initializer_list<const char*> names) {
    const char* former = nullptr;
    for (const char* name : names) {
        if (!arguments.Has(name)) {
            continue;
        }
        if (former != nullptr) {
            throw WrongUsage{std::string(former) + " and " + name + " exclude each other"};
        }
        former = name;
    }
}

Standing StandingFrom(const Arguments& arguments) {
    ExpectOneOf(arguments, {OverwriteOption.name, SkipOption.name, NewerOption.name});
    ExpectOneOf(arguments, {OverwriteOption.name, OlderSkip, NewerOption.name});
    if (arguments.Has(NewerOption.name)) {
        return Standing::SkippedUnlessOlder;
    }
    return arguments.Has(SkipOption.name) || arguments.Has(OlderSkip) ? Standing::Skipped : Standing::Replaced;
}

std::int32_t JobsFrom(const Arguments& arguments) {
    if (const auto jobs = arguments.ValueOf(JobsOption.name)) {
        return WholeNumber(*jobs, "number of jobs", 1, MostJobs);
    }
    return std::clamp(static_cast<std::int32_t>(std::thread::hardware_concurrency()), 1, MostJobs);
}

std::vector<std::string> LinesOf(std::istream& input) {
    std::vector<std::string> lines;
    for (std::string line; std::getline(input, line);) {
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        if (!line.empty()) {
            lines.push_back(line);
        }
    }
    return lines;
}

} // namespace

std::optional<std::string> FormatFrom(const Arguments& arguments) {
    const auto format = arguments.ValueOf(ToOption.name);
    return format ? format : arguments.ValueOf(FormatOption.name);
}

BatchWork BatchWorkFrom(const Arguments& arguments, Operation operation, Upright upright) {
    ExpectOneOf(arguments, {QuietOption.name, VerboseOption.name});
    BatchWork work;
    work.operation = std::move(operation);
    work.job = Job(arguments, upright);
    ExpectOneOf(arguments, {ToOption.name, FormatOption.name});
    if (const auto format = FormatFrom(arguments)) {
        work.format = FormatOfWord(*format);
    }
    work.standing = StandingFrom(arguments);
    work.collisions = arguments.Has(KeepBothOption.name) ? Collisions::Numbered : Collisions::Refused;
    work.keepsDates = arguments.Has(KeepDatesOption.name);
    work.isDryRun = arguments.Has(DryRunOption.name);
    work.isJson = arguments.Has(JsonOption.name);
    work.isQuiet = arguments.Has(QuietOption.name);
    work.isVerbose = arguments.Has(VerboseOption.name);
    work.jobs = work.isDryRun ? 1 : JobsFrom(arguments); // so that it lists them in their order
    return work;
}

std::vector<std::string> NamesInList(const std::string& file) {
    if (file == "-") {
        return LinesOf(std::cin);
    }
    std::error_code error;
    std::ifstream input(PathOf(file), std::ios::binary);
    if (!input || std::filesystem::is_directory(PathOf(file), error)) {
        throw Failure{"cannot read the list " + file};
    }
    return LinesOf(input);
}

} // namespace lumbrix::cli
