// lumbrix-cli: the exported procedures from a shell. Ends with 0 when the work was done, 1 when a file stood in the
// way, 2 when it was called wrongly, 130 when it was interrupted.
#include "cli/commands.h"
#include "cli/interrupt.h"
#include "cli/options.h"
#include "cli/text.h"
#include "imaging/exports/lumbrix.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

using namespace lumbrix::cli;

constexpr int Failed = 1;
constexpr int CalledWrongly = 2;

void Tell(const std::string& message) { std::fputs(MessageLine(message).c_str(), stderr); }

const Command& FindCommand(const std::string& name) {
    for (const Command& command : Commands()) {
        if (name == command.name) {
            return command;
        }
    }
    throw WrongUsage{"unknown command '" + name + "'"};
}

bool IsHelp(const std::string& word) { return word == HelpOption || word == "-h"; }

int RunCommand(const Command& command, const Arguments& arguments) {
    if (arguments.Count() < command.fewestArguments || arguments.Count() > command.mostArguments) {
        throw WrongUsage{std::string("usage: lumbrix-cli ") + command.name + " " + command.arguments};
    }
    StopWhenInterrupted();
    LoadImagingLibrary();
    const int status = command.run(arguments);
    UnloadImagingLibrary();
    return WasInterrupted() ? InterruptedStatus : status;
}

int Run(const std::vector<std::string>& words) {
    if (words.empty()) {
        throw WrongUsage{"no command was given"};
    }
    if (IsHelp(words[0])) {
        PrintHelp();
        return 0;
    }
    if (words[0] == "--version") {
        std::printf("lumbrix-cli %s\n", lumbrix_version());
        return 0;
    }
    const Command& command = FindCommand(words[0]);
    const Arguments arguments({words.begin() + 1, words.end()}, command.options);
    if (arguments.Has(HelpOption) || (words.size() > 1 && IsHelp(words[1]))) {
        PrintHelpOn(command);
        return 0;
    }
    return RunCommand(command, arguments);
}

} // namespace

int main(int count, char** words) {
    try {
        const int status = Run({words + 1, words + count});
        return std::fflush(stdout) == 0 ? status : Failed;
    } catch (const WrongUsage& usage) {
        Tell(usage.text + "; see lumbrix-cli --help");
        return CalledWrongly;
    } catch (const Stopped&) {
        return InterruptedStatus;
    } catch (const Failure& failure) {
        Tell(failure.text);
        return WasInterrupted() ? InterruptedStatus : Failed;
    } catch (const std::exception& error) {
        Tell(error.what());
        return Failed;
    }
}
