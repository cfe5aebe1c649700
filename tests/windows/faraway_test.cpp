// The program file loaded as a library by a program that lies in another folder.
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

using namespace tests;

const std::filesystem::path Artifacts = LUMBRIX_ARTIFACTS;

template <typename Procedure> Procedure Find(HMODULE module, const char* name) {
    return reinterpret_cast<Procedure>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

// A blue pixel over a red one.
const std::string
    TwoPixels("BM\x3E\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\2\0\0\0\1\0\x18\0\0\0\0\0\x08\0\0\0\0\0\0\0"
              "\0\0\0\0\0\0\0\0\0\0\0\0\xFF\0\xFF\0\0\0",
              62);

// What stands in lumbrix.h on loading the program, in its order: one process can show it only once.
TEST(ProgramOfAnotherFolder, OffersItsNamesOnceTheEngineIsLoaded) {
    const HMODULE program = LoadLibraryW((Artifacts / "lumbrix.exe").c_str());
    ASSERT_NE(program, nullptr);
    EXPECT_EQ(GetProcAddress(program, "ConvertImageToPng"), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PROC_NOT_FOUND));

    ASSERT_NE(LoadLibraryW((Artifacts / "lumbrix.dll").c_str()), nullptr);
    ASSERT_NE(LoadLibraryW((Artifacts / "gdiplus.dll").c_str()), nullptr);
    const auto load = Find<void(WINAPI*)()>(program, "LoadImagingLibrary");
    const auto convert = Find<std::int32_t(WINAPI*)(const char*, const char*)>(program, "ConvertImageToPng");
    const auto stampedName = Find<char*(WINAPI*)(const char*)>(program, "lumbrix_stamped_name");
    const auto release = Find<void(WINAPI*)(char*)>(program, "lumbrix_free");
    ASSERT_TRUE(load && convert && stampedName && release);
    TemporaryFolder folder;
    WriteBytes(folder / "a.bmp", TwoPixels);
    load();
    EXPECT_EQ(convert((folder / "a.bmp").string().c_str(), (folder / "b.png").string().c_str()), 0);
    EXPECT_EQ(ReadBytes(folder / "b.png").substr(0, 4), "\x89PNG");
    char* text = stampedName("a.bmp");
    EXPECT_STREQ(text, "a_stamped.jpg");
    release(text);
}

} // namespace
