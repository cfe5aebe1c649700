// When the imaging library's module file is written.
#include "imaging/deployment.h"
#include "platform/errors.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

using namespace lumbrix;

// A system with a system folder and a current folder, and the record of what was written.
struct MadeUpSystem {
    std::set<std::string> files;
    std::vector<std::string> patterns;
    std::vector<std::string> written;

    int Deploy() {
        return DeployImagingLibrary({
            .systemFolder = "C:\\windows\\system32\\",
            .firstMatch = [this](const std::string& pattern) -> std::string {
                patterns.push_back(pattern);
                return files.contains(pattern) ? pattern.substr(pattern.rfind('\\') + 1) : std::string();
            },
            .writeModule =
                [this](const std::string& name) {
                    if (name.empty()) {
                        throw RuntimeError(75, "path error");
                    }
                    written.push_back(name);
                },
        });
    }
};

constexpr const char* InSystemFolder = "C:\\windows\\system32\\gdiplus.dll";

TEST(Deployment, NothingIsWrittenWhereBothFoldersHoldTheModule) {
    MadeUpSystem system{.files = {InSystemFolder, "gdiplus.dll"}};
    EXPECT_EQ(system.Deploy(), 1);
    EXPECT_TRUE(system.written.empty());
}

TEST(Deployment, ModuleIsWrittenWhereOnlyTheSystemFolderHoldsIt) {
    MadeUpSystem system{.files = {InSystemFolder}};
    EXPECT_EQ(system.Deploy(), 1);
    EXPECT_EQ(system.written, std::vector<std::string>{"gdiplus.dll"});
}

TEST(Deployment, NothingIsWrittenWhereTheSystemFolderLacksIt) {
    MadeUpSystem system{.files = {}};
    EXPECT_EQ(system.Deploy(), 0);
    EXPECT_TRUE(system.written.empty());
    EXPECT_EQ(system.patterns, (std::vector<std::string>{InSystemFolder, ""})) << "the second search goes on";
    MadeUpSystem withOwn{.files = {"gdiplus.dll"}};
    EXPECT_EQ(withOwn.Deploy(), 0);
}

TEST(Deployment, FileErrorEndsInZero) {
    const auto failing = [](const std::string&) -> std::string { throw RuntimeError(57, "device error"); };
    EXPECT_EQ(DeployImagingLibrary({"x\\", failing, [](const std::string&) {}}), 0);
}

} // namespace
