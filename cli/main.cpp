// lumbrix-cli: the exported procedures from a shell. Ends with 0 when the work was done, 1 when a file stood in the
// way, 2 when it was called wrongly, 130 when it was interrupted.
#include "cli/commands.h"
#include "cli/help.h"
#include "cli/interrupt.h"
#include "cli/options.h"
#include "cli/text.h"
#include "imaging/exports/lumbrix.h"

#include <cstdio>
#include <exception>
#include <new>
#include <string>
#include <vector>

namespace {

using namespace lumbrix::cli;

constexpr int Failed = 1;
constexpr int CalledWrongly = 2;

void Tell(const std::string& message) { std::fputs(MessageLine(message).c_str(), stderr); }

bool IsHelp(const std::string& word) { return word == HelpOption.name || word == "-h"; }

bool IsVersion(const std::string& word) { return word == "--version" || word == "-V"; }

void Print(const std::string& text) { std::fputs(text.c_str(), stdout); }

// What was printed may be held back until now, and a part of it may have failed before.
bool IsAllPrinted() { return std::fflush(stdout) == 0 && std::ferror(stdout) == 0; }

int RunCommand(const Command& command, const Arguments& arguments) {
    ExpectArguments(command, arguments);
    StopWhenInterrupted();
    LoadImagingLibrary();
    const int status = command.run(arguments);
    UnloadImagingLibrary();
    return WasInterrupted() ? InterruptedStatus : status;
}

// "help" and "help COMMAND", as some programs have it.
int RunHelp(const std::vector<std::string>& words) {
    Print(words.size() > 1 ? HelpOn(FindCommand(words[1])) : Help());
    return 0;
}

int Run(const std::vector<std::string>& words) {
    if (words.empty()) {
        throw WrongUsage{"no command was given"};
    }
    if (IsHelp(words[0]) || words[0] == "help") {
        return RunHelp(words);
    }
    if (IsVersion(words[0])) {
        Print(std::string("lumbrix-cli ") + lumbrix_version() + "\n");
        return 0;
    }
    const Command& command = FindCommand(words[0]);
    if (words.size() > 1 && IsHelp(words[1])) {
        Print(HelpOn(command));
        return 0;
    }
    const Arguments arguments({words.begin() + 1, words.end()}, OptionsOf(command));
    if (arguments.Has(HelpOption.name)) {
        Print(HelpOn(command));
        return 0;
    }
    return RunCommand(command, arguments);
}

} // namespace

int main(int count, char** words) {
    try {
        const int status = Run({words + 1, words + count});
        if (!IsAllPrinted()) {
            throw Failure{"cannot write to the standard output"};
        }
        return status;
    } catch (const WrongUsage& usage) {
        Tell(usage.text + (usage.text.ends_with('?') ? " See" : "; see") + " lumbrix-cli --help");
        return CalledWrongly;
    } catch (const Stopped&) {
        return InterruptedStatus;
    } catch (const Failure& failure) {
        Tell(failure.text);
        return WasInterrupted() ? InterruptedStatus : Failed;
    } catch (const std::bad_alloc&) { // there is none for a message either
        std::fputs("lumbrix-cli: there is not enough memory\n", stderr);
        return Failed;
    } catch (const std::exception& error) {
        Tell(error.what());
        return Failed;
    }
}
