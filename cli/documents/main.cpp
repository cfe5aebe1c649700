// Writes the page of the manual and the completion of shells into a folder: man/lumbrix-cli.1 and files in completion.
#include "cli/documents/documents.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

bool Write(const std::filesystem::path& file, const std::string& text) {
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    std::ofstream output(file, std::ios::binary);
    output << text;
    output.close();
    if (!output) {
        std::fprintf(stderr, "cannot write %s\n", file.c_str());
    }
    return static_cast<bool>(output);
}

} // namespace

int main(int count, char** words) {
    using namespace lumbrix::cli;
    if (count != 2) {
        std::fputs("usage: lumbrix-documents FOLDER\n", stderr);
        return 2;
    }
    const std::filesystem::path folder = words[1];
    const bool isWritten = Write(folder / "man/lumbrix-cli.1", ManualPage()) &&
                           Write(folder / "completion/lumbrix-cli", BashCompletion()) &&
                           Write(folder / "completion/_lumbrix-cli", ZshCompletion()) &&
                           Write(folder / "completion/lumbrix-cli.fish", FishCompletion());
    return isWritten ? 0 : 1;
}
