// The forwarding module as it is written to people's disks.
#include <gtest/gtest.h>

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

const std::filesystem::path ModulePath = FORWARDING_MODULE;

template <class Function> Function Find(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

// The names in the export table of a loaded module.
std::vector<std::string> ExportsOf(HMODULE module) {
    const auto* base = reinterpret_cast<const char*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS32*>(base + dos->e_lfanew);
    const auto& place = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    const auto* table = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + place.VirtualAddress);
    const auto* names = reinterpret_cast<const DWORD*>(base + table->AddressOfNames);
    std::vector<std::string> exports;
    for (DWORD i = 0; i < table->NumberOfNames; ++i) {
        exports.emplace_back(base + names[i]);
    }
    return exports;
}

std::string FileVersion(const std::filesystem::path& path) {
    DWORD ignored = 0;
    std::vector<char> record(GetFileVersionInfoSizeW(path.c_str(), &ignored));
    GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(record.size()), record.data());
    VS_FIXEDFILEINFO* version = nullptr;
    UINT length = 0;
    if (record.empty() || !VerQueryValueA(record.data(), "\\", reinterpret_cast<void**>(&version), &length)) {
        return {};
    }
    return std::to_string(HIWORD(version->dwFileVersionMS)) + "." + std::to_string(LOWORD(version->dwFileVersionMS)) +
           "." + std::to_string(HIWORD(version->dwFileVersionLS)) + "." +
           std::to_string(LOWORD(version->dwFileVersionLS));
}

class Forwarding : public testing::Test {
  protected:
    // Loaded once: what its loading brought along can be seen only before the first call.
    static void SetUpTestSuite() {
        if (module_ == nullptr) {
            module_ = LoadLibraryW(ModulePath.c_str());
            broughtSystemModule_ = GetModuleHandleW(L"C:\\windows\\system32\\gdiplus.dll") != nullptr;
        }
    }

    void SetUp() override { ASSERT_NE(module_, nullptr); }

    static inline HMODULE module_ = nullptr;
    static inline bool broughtSystemModule_ = false;
};

TEST_F(Forwarding, HasItsExactSize) { EXPECT_EQ(std::filesystem::file_size(ModulePath), 1706800u); }

TEST_F(Forwarding, HasItsVersionRecord) { EXPECT_EQ(FileVersion(ModulePath), "5.1.3097.0"); }

TEST_F(Forwarding, LoadsNothingByItself) { EXPECT_FALSE(broughtSystemModule_); }

TEST_F(Forwarding, ExportsTheFlatNamesUndecorated) {
    const auto exports = ExportsOf(module_);
    EXPECT_GT(exports.size(), 500u);
    for (const std::string& name : exports) {
        EXPECT_EQ(name.find('@'), std::string::npos) << name;
        EXPECT_NE(GetProcAddress(module_, name.c_str()), nullptr) << name;
    }
    EXPECT_EQ(GetProcAddress(module_, "GdipNoSuchName"), nullptr);
}

TEST_F(Forwarding, CallsReachTheSystemsLibraryAndComeBack) {
    struct StartupInput {
        UINT32 version;
        void* callback;
        BOOL suppressThread;
        BOOL suppressCodecs;
    };
    const auto startup = Find<int(WINAPI*)(ULONG_PTR*, const StartupInput*, void*)>(module_, "GdiplusStartup");
    const auto encodersSize = Find<int(WINAPI*)(UINT*, UINT*)>(module_, "GdipGetImageEncodersSize");
    const auto createBitmap =
        Find<int(WINAPI*)(int, int, int, int, BYTE*, void**)>(module_, "GdipCreateBitmapFromScan0");
    const auto width = Find<int(WINAPI*)(void*, UINT*)>(module_, "GdipGetImageWidth");
    const auto dispose = Find<int(WINAPI*)(void*)>(module_, "GdipDisposeImage");
    const auto shutdown = Find<void(WINAPI*)(ULONG_PTR)>(module_, "GdiplusShutdown");
    const StartupInput input{1, nullptr, FALSE, FALSE};
    ULONG_PTR token = 0;
    ASSERT_EQ(startup(&token, &input, nullptr), 0);
    // Each name twice: once through the binder and once straight.
    for (int round = 0; round < 2; ++round) {
        UINT count = 0, bytes = 0, pixels = 0;
        void* bitmap = nullptr;
        EXPECT_EQ(encodersSize(&count, &bytes), 0);
        EXPECT_GE(count, 5u);
        EXPECT_EQ(createBitmap(7, 5, 0, 0x26200A, nullptr, &bitmap), 0);
        EXPECT_EQ(width(bitmap, &pixels), 0);
        EXPECT_EQ(pixels, 7u);
        EXPECT_EQ(dispose(bitmap), 0);
    }
    shutdown(token);
}

} // namespace
