// What the command line needs of Linux.
#include "cli/system.h"

#include <unistd.h>

namespace lumbrix::cli {

std::filesystem::path PathOf(const std::string& name) { return name; }

std::string NameOf(const std::filesystem::path& path) { return path.string(); }

bool AreTextsUtf8() { return true; }

std::string Utf8Of(const std::string& text) { return text; }

std::vector<std::string> FilesMeant(const std::string& name) { return {name}; }

std::filesystem::path FileKey(const std::filesystem::path& path) { return path; }

void MakeStandardStreamsBinary() {} // they do so anyway

bool IsErrorOutputATerminal() { return isatty(STDERR_FILENO) == 1; }

} // namespace lumbrix::cli
