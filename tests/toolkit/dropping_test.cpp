// Taking the files that are dropped on a window.
#include "toolkit/dropping.h"

#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstring>

namespace {

using namespace lumbrix;
using namespace tests;

// As the system hands it over: whoever takes the files frees it.
HDROP Dropped(const std::vector<std::string>& paths) {
    std::string names;
    for (const std::string& path : paths) {
        names += path + '\0';
    }
    DROPFILES header{};
    header.pFiles = sizeof header;
    const HGLOBAL memory = GlobalAlloc(GHND, sizeof header + names.size() + 1);
    auto* bytes = static_cast<char*>(GlobalLock(memory));
    std::memcpy(bytes, &header, sizeof header);
    std::memcpy(bytes + sizeof header, names.data(), names.size());
    GlobalUnlock(memory);
    return static_cast<HDROP>(memory);
}

TEST(DroppedFiles, AreTakenInTheirOrderWithoutPlainFolders) {
    const TemporaryFolder folder;
    WriteBytes(folder / "a", "");
    std::filesystem::create_directory(folder / "between");
    const std::string file = (folder / "a").string();
    const std::string missing = (folder / "none").string();
    const std::vector<std::string> taken = TakeDroppedFiles(Dropped({missing, (folder / "between").string(), file}));
    EXPECT_EQ(taken, (std::vector<std::string>{missing, file}));
}

TEST(DroppedFiles, AreCutBehind254Characters) {
    const std::string path = "C:\\" + std::string(251, 'a');
    EXPECT_EQ(TakeDroppedFiles(Dropped({path})), std::vector<std::string>{path});
    EXPECT_EQ(TakeDroppedFiles(Dropped({path + "b", path + std::string(46, 'b')})),
              (std::vector<std::string>{path, path}));
}

} // namespace
