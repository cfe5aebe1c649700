// What can be asked for where files are written: which targets are left alone, how many files are done at a time, what
// is told of it.
#pragma once

#include "cli/job.h"
#include "cli/options.h"
#include "cli/plan.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace lumbrix::cli {

inline constexpr Option IntoOption{"--into", "FOLDER",
                                   "write one file for each SOURCE into FOLDER, which is made where it is missing", 'o',
                                   Offer::Folders};
inline constexpr Option ToOption{"--to", "FORMAT",       "the format to write (that of each target's extension)",
                                 't',    Offer::Nothing, "bmp jpg jpeg gif tif tiff png"};
inline constexpr Option FormatOption{"--format", "FORMAT",       "another name of --to",
                                     0,          Offer::Nothing, "bmp jpg jpeg gif tif tiff png"};
inline constexpr Option ListOption{"--list", "FILE",
                                   "read names of sources from FILE, one a line, from the standard input where it is -",
                                   0, Offer::Files};
inline constexpr Option OverwriteOption{"--overwrite", nullptr, "replace targets that are there (the default)", 'f'};
inline constexpr Option SkipOption{"--skip", nullptr, "leave targets that are there as they are"};
inline constexpr Option NewerOption{"--newer", nullptr, "replace only targets that are older than their sources", 'u'};
inline constexpr Option KeepBothOption{
    "--keep-both", nullptr, "where two sources have one target, name the second one NAME (2) (it is refused)"};
inline constexpr Option KeepDatesOption{"--keep-dates", nullptr, "give targets their sources' time of modification",
                                        'p'};
inline constexpr Option DryRunOption{"--dry-run", nullptr, "print what would be written, and write nothing", 'n'};
inline constexpr Option JobsOption{"--jobs", "N", "how many files are worked on at a time (one for each processor)",
                                   'j'};
inline constexpr Option JsonOption{"--json", nullptr, "print the results as JSON"};
inline constexpr Option QuietOption{"--quiet", nullptr, "print errors only", 'q'};
inline constexpr Option VerboseOption{"--verbose", nullptr, "print a line for each file that is written", 'v'};

// For commands that take several sources.
inline constexpr Option SeveralOptions[] = {IntoOption, ToOption, FormatOption, ListOption};

// For every command that writes.
inline constexpr Option RunOptions[] = {OverwriteOption, SkipOption, NewerOption, KeepBothOption, KeepDatesOption,
                                        DryRunOption,    JobsOption, JsonOption,  QuietOption,    VerboseOption};

// Which targets that are there already are left alone.
enum class Standing { Replaced, Skipped, SkippedUnlessOlder };

// Makes a target of a source; gives the engine's status.
using Operation = std::function<std::int32_t(const char* source, const char* target, lumbrix_job* job)>;

// How files are to be written.
struct BatchWork {
    Operation operation;
    Job job;                      // that of each file
    const char* format = nullptr; // of the targets; null for that of each one's extension
    Standing standing = Standing::Replaced;
    Collisions collisions = Collisions::Refused;
    bool keepsDates = false;
    bool isDryRun = false;
    bool isJson = false;
    bool isQuiet = false;
    bool isVerbose = false;
    std::int32_t jobs = 1;
};

// The format that is asked for by either name.
std::optional<std::string> FormatFrom(const Arguments& arguments);

// Throws WrongUsage, also for options that exclude each other.
BatchWork BatchWorkFrom(const Arguments& arguments, Operation operation, Upright upright = Upright::WhereAsked);

// The names in a list, one a line: of a file, or of the standard input for "-". Throws Failure where it cannot be read.
std::vector<std::string> NamesInList(const std::string& file);

} // namespace lumbrix::cli
