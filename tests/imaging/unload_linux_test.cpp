// What is left in the process when the imaging library is unloaded: nothing that the older procedures left open.
#include "imaging/exports/lumbrix.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

namespace {

std::set<std::string> OpenFiles() {
    std::set<std::string> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        files.insert(entry.path().filename().string() + " " + std::filesystem::read_symlink(entry, error).string());
    }
    std::erase_if(files, [](const std::string& file) { return file.find("/proc/") != std::string::npos; });
    return files;
}

std::set<std::string> MappedFiles() {
    std::set<std::string> files;
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        if (const std::size_t slash = line.find('/'); slash != std::string::npos) {
            files.insert(line.substr(slash));
        }
    }
    return files;
}

bool IsMapped(const std::string& name) {
    const auto files = MappedFiles();
    return std::any_of(files.begin(), files.end(),
                       [&](const std::string& file) { return file.find(name) != std::string::npos; });
}

TEST(Unloading, LeavesNothingOfWhatTheOlderProceduresLeftOpen) {
    const std::string picture = LUMBRIX_SAMPLES "/photo.jpg";
    const tests::TemporaryFolder folder;
    const std::string target = (folder / "x.png").string();
    const auto files = OpenFiles();
    const auto maps = MappedFiles();
    LoadImagingLibrary();
    EXPECT_TRUE(IsMapped("liblumbriximaging.so"));
    for (int round = 0; round < 400; ++round) {
        ASSERT_EQ(ConvertImageToPng("none.png", target.c_str()), 10);                     // leaves its session open
        ASSERT_EQ(StampImage(picture.c_str(), target.c_str(), 0, 0, "none.png"), -16004); // and the picture
    }
    EXPECT_GE(OpenFiles().size(), files.size() + 400);
    UnloadImagingLibrary();
    EXPECT_EQ(OpenFiles(), files);
    EXPECT_FALSE(IsMapped("liblumbriximaging.so"));
#ifndef __SANITIZE_ADDRESS__ // which keeps what it has once seen
    EXPECT_EQ(MappedFiles(), maps);
#endif
}

TEST(Unloading, CanBeFollowedByAnotherLoad) {
    for (int round = 0; round < 3; ++round) {
        LoadImagingLibrary();
        int32_t width = 0, height = 0;
        EXPECT_EQ(GetImageDimensions(LUMBRIX_SAMPLES "/photo.jpg", &width, &height), 0);
        EXPECT_EQ(width, 1600);
        UnloadImagingLibrary();
        EXPECT_FALSE(IsMapped("liblumbriximaging.so"));
    }
}

} // namespace
