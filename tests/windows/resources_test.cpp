// What the finished files tell Windows about themselves: versions, the manifest, the icon.
#include <gtest/gtest.h>

#include <windows.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace {

const std::filesystem::path Finished = LUMBRIX_ARTIFACTS;

// Of a file loaded for its data alone, until the process ends.
std::string Resource(const char* file, const char* name, const char* type) {
    const HMODULE module = LoadLibraryExW((Finished / file).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const HRSRC found = FindResourceA(module, name, type);
    if (found == nullptr) {
        return {};
    }
    return {static_cast<const char*>(LockResource(LoadResource(module, found))), SizeofResource(module, found)};
}

std::string VersionText(const std::vector<char>& record, const char* name) {
    void* text = nullptr;
    UINT length = 0;
    const std::string path = std::string("\\StringFileInfo\\040904E4\\") + name;
    return VerQueryValueA(record.data(), path.c_str(), &text, &length) ? static_cast<const char*>(text) : "";
}

TEST(VersionRecord, StandsInEveryProgramAndLibrary) {
    for (const std::string name : {"lumbrix.exe", "lumbrix-cli.exe", "lumbrix.dll", "gdiplus.dll"}) {
        const std::string path = (Finished / name).string();
        std::vector<char> record(GetFileVersionInfoSizeA(path.c_str(), nullptr));
        ASSERT_FALSE(record.empty()) << name;
        ASSERT_TRUE(GetFileVersionInfoA(path.c_str(), 0, static_cast<DWORD>(record.size()), record.data())) << name;
        void* fixed = nullptr;
        UINT length = 0;
        ASSERT_TRUE(VerQueryValueA(record.data(), "\\", &fixed, &length)) << name;
        const auto* info = static_cast<const VS_FIXEDFILEINFO*>(fixed);
        EXPECT_EQ(info->dwFileVersionMS, DWORD{1} << 16 | 5) << name;
        EXPECT_EQ(info->dwFileVersionLS, 0u) << name;
        EXPECT_EQ(info->dwFileType, static_cast<DWORD>(name.ends_with(".exe") ? VFT_APP : VFT_DLL)) << name;
        EXPECT_EQ(VersionText(record, "FileVersion"), "1.5.0") << name;
        EXPECT_EQ(VersionText(record, "ProductVersion"), "1.5.0") << name;
        EXPECT_EQ(VersionText(record, "ProductName"), "Lumbrix") << name;
        EXPECT_EQ(VersionText(record, "OriginalFilename"), name);
        EXPECT_NE(VersionText(record, "FileDescription"), "") << name;
    }
}

TEST(Manifest, AsksForTodaysControlsNoRightsAndTheScreensOwnResolution) {
    const std::string text = Resource("lumbrix.exe", MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(24));
    EXPECT_NE(text.find("Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""), std::string::npos);
    EXPECT_NE(text.find("level=\"asInvoker\" uiAccess=\"false\""), std::string::npos);
    EXPECT_NE(text.find(">true</dpiAware>"), std::string::npos);
    const std::string path = (Finished / "lumbrix.exe").string();
    ACTCTXA request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
    request.lpSource = path.c_str();
    request.lpResourceName = MAKEINTRESOURCEA(1);
    const HANDLE context = CreateActCtxA(&request); // only where it is well formed
    EXPECT_NE(context, INVALID_HANDLE_VALUE);
    ReleaseActCtx(context);
}

// A directory of 6 bytes, then 14 bytes for each picture, the first its width, 0 for 256.
TEST(Icon, HasEverySizeThatWindowsAsksFor) {
    const std::string directory = Resource("lumbrix.exe", "PROGRAM", MAKEINTRESOURCEA(14));
    ASSERT_GT(directory.size(), 6u);
    std::set<int> widths;
    for (std::size_t at = 6; at < directory.size(); at += 14) {
        widths.insert(static_cast<unsigned char>(directory[at]));
    }
    for (const int width : {16, 24, 32, 48, 64, 0}) {
        EXPECT_TRUE(widths.contains(width)) << width;
    }
}

} // namespace
