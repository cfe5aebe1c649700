// Icons made by lumbrix-cli as a process, in a folder of its own.
#include "tests/draw/iconview.h"
#include "tests/support/temporaryfolder.h"
#include "toolkit/handles.h"

#include <gtest/gtest.h>

namespace {

struct Ended {
    DWORD status = ~0u;
    std::string output;
    std::string errors;
};

class IconCommandLine : public testing::Test {
  protected:
    IconCommandLine() {
        for (const char* name : {"lumbrix-cli.exe", "lumbrix.dll", "gdiplus.dll"}) {
            std::filesystem::copy_file(std::filesystem::path(LUMBRIX_ARTIFACTS) / name, folder_ / name);
        }
    }

    // A file that takes what a process prints.
    lumbrix::OwnedFile Sink(const std::string& name) const {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        return lumbrix::OwnedFile(CreateFileW((folder_ / name).c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                              CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    }

    Ended Run(const std::wstring& arguments) const {
        constexpr DWORD PatienceMs = 30000;
        const auto output = Sink("stdout");
        const auto errors = Sink("stderr");
        STARTUPINFOW start{};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdOutput = output.Get();
        start.hStdError = errors.Get();
        std::wstring command = L"lumbrix-cli.exe " + arguments;
        PROCESS_INFORMATION process{};
        if (!CreateProcessW((folder_ / "lumbrix-cli.exe").c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                            folder_.Path().c_str(), &start, &process)) {
            ADD_FAILURE() << "not started, error " << GetLastError();
            return {};
        }
        const lumbrix::OwnedFile thread(process.hThread);
        const lumbrix::OwnedFile ended(process.hProcess);
        if (WaitForSingleObject(process.hProcess, PatienceMs) != WAIT_OBJECT_0) {
            TerminateProcess(process.hProcess, 1);
            ADD_FAILURE() << "not ended";
        }
        Ended result;
        GetExitCodeProcess(process.hProcess, &result.status);
        result.output = tests::ReadBytes(folder_ / "stdout");
        result.errors = tests::ReadBytes(folder_ / "stderr");
        return result;
    }

    void Write(const std::string& name, int width, int height) const {
        tests::WriteBytes(folder_ / name, tests::MakeBmp(width, height, [](int, int) { return tests::Green; }));
    }

    tests::TemporaryFolder folder_;
};

TEST_F(IconCommandLine, MakesAnIconAndPrintsItsName) {
    Write("picture.bmp", 100, 100);
    tests::WriteBytes(folder_ / "written.ico", "older");
    const Ended ended = Run(L"icon --classic picture.bmp");
    EXPECT_EQ(ended.status, 0u);
    EXPECT_EQ(ended.output, "picture.ico\r\n");
    EXPECT_EQ(ended.errors, "");
    EXPECT_EQ(tests::IconView(tests::ReadBytes(folder_ / "picture.ico")).At(31, 31), tests::Green);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "written.ico"));
}

TEST_F(IconCommandLine, SaysWhyThereIsNoneAndEndsWith1) {
    Write("oblong.bmp", 32, 33);
    const Ended ended = Run(L"icon oblong.bmp --classic");
    EXPECT_EQ(ended.status, 1u);
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(ended.errors, "lumbrix-cli: cannot make an icon of oblong.bmp: The image (32 x 33) is not a square and "
                            "cannot be sized to 32 x 32\r\n");
}

TEST_F(IconCommandLine, NamesAreRequired) {
    EXPECT_EQ(Run(L"icon").status, 2u);
    EXPECT_EQ(Run(L"icon --classic a.bmp b.bmp").status, 2u);
    EXPECT_EQ(Run(L"icon \" \"").errors, "lumbrix-cli: an empty file name was given; see lumbrix-cli --help\r\n");
}

TEST_F(IconCommandLine, HelpNamesTheCommand) {
    EXPECT_NE(Run(L"--help").output.find("  icon FILE --classic\r\n"), std::string::npos);
}

} // namespace
