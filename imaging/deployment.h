// Whether the imaging library's module file is written into the current folder at start-up.
#pragma once

#include <functional>
#include <string>

namespace lumbrix {

// The bytes of the module file that start-up may write; empty on Linux, where there is nothing to deploy.
std::string ImagingLibraryBytes();

// What the decision needs of the system.
struct DeploymentSystem {
    std::string systemFolder; // with its backslash

    // The bare name of a pattern's first match; an empty pattern goes on with the search before. Empty without one.
    std::function<std::string(const std::string& pattern)> firstMatch;

    // Writes the module file over the start of a file, which is made if it is missing. May raise RuntimeError.
    std::function<void(const std::string& name)> writeModule;
};

// The module is written to the current folder where the system folder has one and the current folder has none. Returns
// 1, or 0 where a file error ended it: a system without the module always ends so, since there is no name to write to.
int DeployImagingLibrary(const DeploymentSystem& system);

// The same with the real system.
int DeployImagingLibrary();

} // namespace lumbrix
