// How the words of a command that writes are told apart, with one source or several.
#pragma once

#include "cli/batchoptions.h"

#include <cstddef>
#include <string>
#include <vector>

namespace lumbrix::cli {

// The words of one call:
//     SOURCE TARGET OWN…                    one file
//     SOURCE OWN… TARGET                    the same, where the target is the last word
//     SOURCE… OWN… --into FOLDER            several files
// A lone "-" is a source or a target like any other.
struct Call {
    std::vector<std::string> sources;
    std::string target; // empty where there is a folder
    std::string folder; // empty where there is a target
    std::vector<std::string> own;

    bool IsIntoFolder() const { return target.empty(); }
};

enum class TargetPlace { BehindTheSource, AtTheEnd };

// Takes the words apart. `own` tells how many of the last words are the command's own where there is a folder;
// otherwise all but source and target are. Throws WrongUsage for words that are missing, blank names, and a target
// whose extension names no format.
Call CallFrom(const Arguments& arguments, std::size_t own, TargetPlace place = TargetPlace::BehindTheSource);

// Makes a target of each source. Gives the exit status; throws WrongUsage, Failure and Stopped.
int RunWriting(const Call& call, const Arguments& arguments, Operation operation,
               Upright upright = Upright::WhereAsked);

} // namespace lumbrix::cli
