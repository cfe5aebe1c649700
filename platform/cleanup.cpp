// Getting rid of temporary files.
#include "platform/cleanup.h"

#include "platform/errors.h"
#include "platform/files.h"

#include <algorithm>

namespace lumbrix {

namespace {

std::string ListPath(const std::string& folder) { return folder + "CleanUp.txt"; }

} // namespace

std::string ProgramFolder() {
    const std::string program = ProgramPath();
    return program.substr(0, program.rfind(PathSeparator) + 1);
}

void DeleteOrListFile(const std::string& path, const std::string& folder) {
    if (trap([&] { RemoveFile(path); })) {
        // A program folder that cannot be written forgets the path.
        trap([&] { AppendToCleanUpList(path, folder); });
    }
}

void AppendToCleanUpList(const std::string& path, const std::string& folder) {
    AppendToFile(ListPath(folder), path + "\r\n");
}

void SweepCleanUpList(const std::string& folder) {
    if (!FileExists(ListPath(folder))) {
        return;
    }
    trap([&] {
        const std::string list = ReadFileContent(ListPath(folder));
        for (std::size_t start = 0; start < list.size();) {
            const std::size_t end = std::min(list.find("\r\n", start), list.size());
            trap([&] { RemoveFile(list.substr(start, end - start)); });
            start = end + 2;
        }
        RemoveFile(ListPath(folder));
    });
}

void SweepWorkFolder(const std::string& folder) {
    const std::string work = folder + "Work";
    trap([&] { MakeFolders(work); });
    const std::string inside = work + PathSeparator;
    for (const std::string& name : FilesIn(work)) {
        DeleteOrListFile(inside + name, folder);
    }
    trap([&] { RemoveFolder(work); });
}

std::string TempFolderPath() { return TemporaryFolderPath(); }

std::string NewTempImageName() { return NewTemporaryFile("IMG"); }

void EnsureFileExists(const std::string& path) { WriteIntoFile(path, {}); }

} // namespace lumbrix
