// The real program, started as a person would start it, and loaded as a library as a programmer would.
#include "tests/support/temporaryfolder.h"
#include "tests/windows/runningprogram.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <objbase.h>

#include <string>
#include <vector>

namespace {

using namespace tests;

constexpr std::uintmax_t ModuleBytes = 1706800;

const std::filesystem::path Artifacts = LUMBRIX_ARTIFACTS;

// The program in a folder of its own, with or without the imaging library beside it.
class Program : public testing::Test {
  protected:
    Program() {
        for (const char* name : {"lumbrix.exe", "lumbrix.dll"}) {
            std::filesystem::copy_file(Artifacts / name, folder_ / name);
        }
        std::filesystem::create_directory(current_);
    }

    // Starts it in the current folder, waits for its window, and closes that; its exit code.
    DWORD Run(const std::filesystem::path& currentFolder) {
        return RunningProgram(folder_.Path(), currentFolder).Close();
    }

    std::filesystem::path Module(const std::filesystem::path& folder) const { return folder / "gdiplus.dll"; }

    TemporaryFolder folder_;
    std::filesystem::path current_ = folder_ / "current";
};

TEST_F(Program, StartsAndEnds) { EXPECT_EQ(Run(current_), 0u); }

// In a folder whose module is no module, so that none can be loaded.
TEST_F(Program, OpensItsWindowWithoutAnImagingLibrary) {
    WriteBytes(Module(folder_.Path()), "no module");
    WriteBytes(folder_ / "a.bmp", "picture");
    RunningProgram program(folder_.Path(), folder_.Path());
    constexpr int SourceFileBox = 1003, TargetBox = 1004, ConvertButton = 1018;
    program.SetText(SourceFileBox, (folder_ / "a.bmp").string());
    program.SetText(TargetBox, (folder_ / "b.png").string());
    program.BeginClick(ConvertButton);
    EXPECT_EQ(program.Answer(), "Lumbrix: Faliure");
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(Program, WritesTheModuleWhereOnlyTheSystemFolderHasOne) {
    EXPECT_EQ(Run(current_), 0u);
    EXPECT_EQ(std::filesystem::file_size(Module(current_)), ModuleBytes);
}

TEST_F(Program, DoesNotWriteTheModuleAgain) {
    ASSERT_EQ(Run(current_), 0u);
    WriteBytes(Module(current_), "mine");
    EXPECT_EQ(Run(current_), 0u);
    EXPECT_EQ(ReadBytes(Module(current_)), "mine");
}

TEST_F(Program, KeepsWorkingInTheFolderWhereItWroteTheModule) {
    ASSERT_EQ(Run(folder_.Path()), 0u);
    ASSERT_EQ(std::filesystem::file_size(Module(folder_.Path())), ModuleBytes);
    EXPECT_EQ(Run(folder_.Path()), 0u);
}

TEST_F(Program, LoadsTheModuleThatItWrote) {
    const RunningProgram program(folder_.Path(), folder_.Path());
    constexpr char Name[] = "gdiplus.dll";
    char path[MAX_PATH] = "";
    const std::uint32_t inside = program.PutInside(path, sizeof path);
    const std::uint32_t module =
        program.CallInside("kernel32.dll", "GetModuleHandleA", {program.PutInside(Name, sizeof Name)});
    program.CallInside("kernel32.dll", "GetModuleFileNameA", {module, inside, sizeof path});
    program.GetFromInside(inside, path, sizeof path);
    EXPECT_EQ(std::filesystem::file_size(path), ModuleBytes) << path;
    EXPECT_TRUE(std::filesystem::equivalent(path, Module(folder_.Path()))) << path;
}

TEST_F(Program, ThreadOfItsWindowsIsAnApartmentOfItsOwn) {
    const RunningProgram program(folder_.Path(), current_);
    constexpr std::uint32_t ChangedMode = 0x80010106;
    EXPECT_EQ(program.CallInside("ole32.dll", "CoInitializeEx", {0, COINIT_MULTITHREADED}), ChangedMode);
}

TEST_F(Program, SweepsTheListOfItsFolder) {
    WriteBytes(folder_ / "left", "");
    WriteBytes(folder_ / "CleanUp.txt", (folder_ / "left").string() + "\r\n");
    EXPECT_EQ(Run(current_), 0u);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "left"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "CleanUp.txt"));
}

// What cannot be deleted from the Work folder is listed and tried once more at the same start: had the list been worked
// through first, it would be there now.
TEST_F(Program, SweepsTheWorkFolderBeforeTheList) {
    std::filesystem::create_directory(folder_ / "Work");
    WriteBytes(folder_ / "Work" / "plain", "");
    WriteBytes(folder_ / "Work" / "used", "");
    const HANDLE used = CreateFileW((folder_ / "Work" / "used").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(used, INVALID_HANDLE_VALUE);
    EXPECT_EQ(Run(current_), 0u);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "Work" / "plain"));
    EXPECT_TRUE(std::filesystem::exists(folder_ / "Work" / "used"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "CleanUp.txt"));
    CloseHandle(used);
}

// A picture of one blue pixel over a red one.
const std::string
    SmallBmp("BM\x3E\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\2\0\0\0\1\0\x18\0\0\0\0\0\x08\0\0\0\0\0\0\0"
             "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\xFF\0\xFF\0\0\0",
             62);

// Every exported name leads from the program into the engine.
TEST(LoadedProgram, OffersItsProceduresByName) {
    const HMODULE program = LoadLibraryW((Artifacts / "lumbrix.exe").c_str());
    ASSERT_NE(program, nullptr);
    for (const char* name : {"ConvertImageToBmp",
                             "ConvertImageToGif",
                             "ConvertImageToJpeg",
                             "ConvertImageToPng",
                             "ConvertImageToSgl",
                             "ConvertImageToTiff",
                             "ConvertImageToThumbBmp",
                             "ConvertImageToThumbGif",
                             "ConvertImageToThumbJpeg",
                             "ConvertImageToThumbPng",
                             "ConvertImageToThumbTiff",
                             "GetImageDimensions",
                             "ResizeImage",
                             "CropImage",
                             "RotateImage",
                             "DisplayImage",
                             "AnnotateImage",
                             "StampImage",
                             "CopyImageProperties",
                             "EnumerateImageProperties",
                             "GetImageDateTime",
                             "GetPropertyIdList",
                             "DateStampImage",
                             "DELREGKEY",
                             "CreateLink",
                             "GetShellLinkInfo",
                             "GetDestinationFolder",
                             "RemoveShortcut",
                             "lumbrix_free",
                             "lumbrix_version"}) {
        EXPECT_NE(GetProcAddress(program, name), nullptr) << name;
    }
}

TEST(LoadedProgram, ConvertsAFile) {
    using Load = void(WINAPI*)();
    using Convert = std::int32_t(WINAPI*)(const char*, const char*);
    TemporaryFolder folder;
    WriteBytes(folder / "a.bmp", SmallBmp);
    const HMODULE program = LoadLibraryW((Artifacts / "lumbrix.exe").c_str());
    ASSERT_NE(program, nullptr);
    const auto load = reinterpret_cast<Load>(reinterpret_cast<void*>(GetProcAddress(program, "LoadImagingLibrary")));
    const auto convert =
        reinterpret_cast<Convert>(reinterpret_cast<void*>(GetProcAddress(program, "ConvertImageToPng")));
    load();
    EXPECT_EQ(convert((folder / "a.bmp").string().c_str(), (folder / "b.png").string().c_str()), 0);
    EXPECT_EQ(ReadBytes(folder / "b.png").substr(0, 4), "\x89PNG");
}

TEST(LoadedProgram, DeletesAKeyOfTheRegistry) {
    using Delete = std::int32_t(WINAPI*)(const std::uint32_t*, const char*);
    constexpr std::uint32_t CurrentUser = 0x80000001;
    constexpr const char* Key = "SOFTWARE\\LumbrixTestOfTheProgram";
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, Key, &key), 0);
    RegCloseKey(key);
    const HMODULE program = LoadLibraryW((Artifacts / "lumbrix.exe").c_str());
    ASSERT_NE(program, nullptr);
    const auto deleteKey = reinterpret_cast<Delete>(reinterpret_cast<void*>(GetProcAddress(program, "DELREGKEY")));
    EXPECT_EQ(deleteKey(&CurrentUser, Key), 0);
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, Key, &key), ERROR_FILE_NOT_FOUND);
}

TEST(ProgramFile, DoesNotImportTheImagingLibrary) {
    const HMODULE program = LoadLibraryExW((Artifacts / "lumbrix.exe").c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    ASSERT_NE(program, nullptr);
    const auto* base = reinterpret_cast<const char*>(program);
    const auto* headers =
        reinterpret_cast<const IMAGE_NT_HEADERS32*>(base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const auto& place = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    std::vector<std::string> imports;
    for (const auto* entry = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + place.VirtualAddress);
         entry->Name != 0; ++entry) {
        imports.emplace_back(base + entry->Name);
        EXPECT_STRNE(_strlwr(imports.back().data()), "gdiplus.dll");
    }
    EXPECT_FALSE(imports.empty());
}

} // namespace
