// Whether the imaging library's module file is written into the current folder at start-up.
#include "imaging/deployment.h"

#include "imaging/paths.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/modules.h"

namespace lumbrix {

namespace {
constexpr int ImagingLibraryResource = 1;

// Half a module would be taken for a whole one at the next start.
void WriteModule(const std::string& name) {
    const std::string bytes = ImagingLibraryBytes(); // fetched only now that they are needed
    if (const auto error = trap([&] { WriteIntoFile(name, bytes); })) {
        TryToRemoveFile(name);
        throw *error;
    }
}
} // namespace

std::string ImagingLibraryBytes() { return ModuleResource(ImagingLibraryResource); }

int DeployImagingLibrary(const DeploymentSystem& system) {
    const auto error = trap([&] {
        // Where the first search finds nothing, the second one is its continuation, which finds nothing either; the
        // write then fails on the empty name. That outcome is wanted: nothing is written where the system has no such
        // module.
        const std::string found = system.firstMatch(system.systemFolder + "gdiplus.dll");
        const std::string probe = system.firstMatch(found);
        if (probe.empty()) {
            system.writeModule(found);
        }
    });
    return error ? 0 : 1;
}

int DeployImagingLibrary() {
    FileSearch search;
    return DeployImagingLibrary({
        .systemFolder = SystemFolderPath(),
        .firstMatch = [&](const std::string& pattern) { return search.FirstMatch(pattern); },
        .writeModule = WriteModule,
    });
}

} // namespace lumbrix
