// Links as files, written and read by us and, directly, by the system's own shell.
#include "platform/shelllink.h"
#include "platform/shellsystem_windows.h"
#include "tests/support/ownshellfolder.h"
#include "tests/toolkit/answering.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

using namespace lumbrix;
using namespace tests;

constexpr std::int32_t NoFolder = 9999;

// What a link holds, as the shell tells it.
struct SeenLink {
    std::wstring target;
    std::wstring workingFolder;
    std::wstring arguments;
    std::wstring description;
    std::wstring iconFile;
    int iconIndex = 0;
    int showCommand = 0;
    WORD hotKey = 0;

    bool operator==(const SeenLink&) const = default;
};

// The shell's link object and its file.
class ShellsLink {
  public:
    ShellsLink() {
        CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                         reinterpret_cast<void**>(&link_));
        link_->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&file_));
    }
    ~ShellsLink() {
        file_->Release();
        link_->Release();
    }
    ShellsLink(const ShellsLink&) = delete;
    ShellsLink& operator=(const ShellsLink&) = delete;

    SeenLink Read(const std::filesystem::path& path) {
        EXPECT_EQ(file_->Load(path.c_str(), STGM_READ), S_OK);
        SeenLink seen;
        wchar_t text[1024] = L"";
        const int room = 1024;
        link_->GetPath(text, room, nullptr, 0);
        seen.target = text;
        link_->GetWorkingDirectory(text, room);
        seen.workingFolder = text;
        link_->GetArguments(text, room);
        seen.arguments = text;
        link_->GetDescription(text, room);
        seen.description = text;
        link_->GetIconLocation(text, room, &seen.iconIndex);
        seen.iconFile = text;
        link_->GetShowCmd(&seen.showCommand);
        link_->GetHotkey(&seen.hotKey);
        return seen;
    }

    void Write(const std::filesystem::path& path, const SeenLink& fields) {
        link_->SetPath(fields.target.c_str());
        link_->SetWorkingDirectory(fields.workingFolder.c_str());
        link_->SetArguments(fields.arguments.c_str());
        link_->SetDescription(fields.description.c_str());
        link_->SetIconLocation(fields.iconFile.c_str(), fields.iconIndex);
        link_->SetShowCmd(fields.showCommand);
        link_->SetHotkey(fields.hotKey);
        EXPECT_EQ(file_->Save(path.c_str(), TRUE), S_OK);
    }

  private:
    IShellLinkW* link_ = nullptr;
    IPersistFile* file_ = nullptr;
};

// A target, a current folder and one of the shell's that are the test's own.
class LinkOnDisk : public testing::Test {
  protected:
    LinkOnDisk() {
        CoInitialize(nullptr);
        WriteBytes(folder_ / "target.exe", "");
    }
    ~LinkOnDisk() override { CoUninitialize(); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    std::wstring WidePath(const std::string& name) const { return (folder_ / name).wstring(); }

    LinkFields Fields() const {
        return {Path("target.exe"), Path("work"), "-x \"y\"", "What it is", Path("icon.ico"), 3, 3, 0x641};
    }
    SeenLink Seen() const {
        return {
            WidePath("target.exe"), WidePath("work"), L"-x \"y\"", L"What it is", WidePath("icon.ico"), 3, 3, 0x641};
    }
    LinkFields Read(const std::string& path) const {
        LinkFields fields;
        EXPECT_EQ(GetShellLinkInfo(path, fields), 1);
        return fields;
    }

    // Of the file "Name.lnk". Wine's shell writes it, and does not read it.
    int ReadShowCommand() const { return ShellsLink().Read(folder_ / "Name.lnk").showCommand; }
    int WrittenShowCommand() const {
        constexpr std::size_t Place = 60;
        return ReadBytes(folder_ / "Name.lnk")[Place];
    }

    TemporaryFolder folder_;
    CurrentFolder current_{folder_.Path()};
    OwnShellFolder shells_{SendToPlace};
};

TEST_F(LinkOnDisk, OfOursIsReadByTheShell) {
    CreateLink(NoFolder, "Name", Fields());
    SeenLink expected = Seen();
    expected.hotKey = 0;
    expected.showCommand = ReadShowCommand();
    EXPECT_EQ(ShellsLink().Read(folder_ / "Name.lnk"), expected);
    EXPECT_EQ(WrittenShowCommand(), 3);
}

TEST_F(LinkOnDisk, OfTheShellIsReadByUs) {
    ShellsLink().Write(folder_ / "Name.lnk", Seen());
    LinkFields expected = Fields();
    expected.showCommand = ReadShowCommand();
    EXPECT_EQ(Read(Path("Name.lnk")), expected);
    EXPECT_EQ(ShellPathLength(), 1024);
}

TEST_F(LinkOnDisk, ObjectKeepsItsShowCommand) {
    const ShellSystem::Link link = ShellLinkFactory();
    SystemShell().SetShowCmd(link, 3);
    std::int32_t command = 0;
    SystemShell().GetShowCmd(link, command);
    EXPECT_EQ(command, 3);
    SystemShell().ReleaseLink(link);
}

TEST_F(LinkOnDisk, LiesInTheFolderOfItsNumber) {
    EXPECT_EQ(GetDestinationFolder(shells_.Number()), shells_.Path());
    CreateLink(shells_.Number(), "Name", Fields());
    EXPECT_TRUE(std::filesystem::exists(shells_.Path() + "\\Name.lnk"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "Name.lnk"));
}

TEST_F(LinkOnDisk, OfAnUnknownFolderLiesInTheCurrentOne) {
    EXPECT_EQ(GetDestinationFolder(NoFolder), "");
    CreateLink(NoFolder, "Name", Fields());
    EXPECT_TRUE(std::filesystem::exists(folder_ / "Name.lnk"));
}

TEST_F(LinkOnDisk, LongTextsAreReadWhole) {
    LinkFields fields = Fields();
    fields.arguments = std::string(1023, 'a');
    CreateLink(NoFolder, "Name", fields);
    EXPECT_EQ(Read(Path("Name.lnk")).arguments, fields.arguments);
}

TEST_F(LinkOnDisk, PathOf260BytesIsCut) {
    const std::size_t rest = 259 - Path("").size() - 4;
    CreateLink(NoFolder, std::string(rest, 'a'), Fields());
    EXPECT_TRUE(std::filesystem::exists(folder_ / (std::string(rest, 'a') + ".lnk")));
    CreateLink(NoFolder, std::string(rest + 1, 'b'), Fields());
    const std::string cut = Path(std::string(rest + 1, 'b') + ".ln");
    EXPECT_TRUE(std::filesystem::exists(cut));
    EXPECT_EQ(Read(cut + "k").target, Path("target.exe")); // the reader cuts it too
}

TEST_F(LinkOnDisk, NameMayHaveLettersOfTheCodePage) {
    CreateLink(NoFolder, "N\xE4me", Fields());
    EXPECT_TRUE(std::filesystem::exists(folder_.Path() / L"N\u00E4me.lnk"));
    EXPECT_EQ(Read(Path("") + "N\xE4me.lnk").target, Path("target.exe"));
}

TEST_F(LinkOnDisk, FileThatIsNoLinkReadsAsAnEmptyOne) {
    WriteBytes(folder_ / "broken.lnk", "no link");
    for (const char* name : {"broken.lnk", "missing.lnk"}) {
        LinkFields fields = Fields();
        EXPECT_EQ(GetShellLinkInfo(Path(name), fields), 1);
        EXPECT_EQ(fields, LinkFields()) << name;
    }
}

TEST_F(LinkOnDisk, IsGivenAnotherIcon) {
    ShellsLink().Write(folder_ / "Name.lnk", Seen());
    EXPECT_EQ(ChangeLinkIcon(Path("Name.lnk"), Path("other.ico")), Path("icon.ico"));
    SeenLink expected = Seen();
    expected.iconFile = WidePath("other.ico");
    expected.iconIndex = 0;
    expected.hotKey = 0x41;
    expected.showCommand = ReadShowCommand();
    EXPECT_EQ(ShellsLink().Read(folder_ / "Name.lnk"), expected);
}

TEST_F(LinkOnDisk, IsRemoved) {
    CreateLink(shells_.Number(), "Name", Fields());
    RemoveShortcut("Name", shells_.Number(), SystemShell(), Path(""));
    EXPECT_TRUE(std::filesystem::is_empty(shells_.Path()));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "CleanUp.txt"));
}

TEST_F(LinkOnDisk, ThatIsInUseIsListed) {
    CreateLink(shells_.Number(), "Name", Fields());
    const std::string path = shells_.Path() + "\\Name.lnk";
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    RemoveShortcut("Name", shells_.Number(), SystemShell(), Path(""));
    CloseHandle(file);
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(ReadBytes(folder_ / "CleanUp.txt"), path + "\r\n");
}

TEST_F(LinkOnDisk, IsOutOfReachOfAThreadWithoutCom) {
    std::int32_t result = -1;
    std::thread([&] {
        CreateLink(NoFolder, "Name", Fields());
        LinkFields fields;
        result = GetShellLinkInfo(Path("Name.lnk"), fields);
    }).join();
    EXPECT_EQ(result, 0);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "Name.lnk"));
}

// Interfaces have no virtual destructor, and nobody deletes them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Notes what is given back to COM's memory while it lives.
class FreeingSpy final : public IMallocSpy {
  public:
    FreeingSpy() { CoRegisterMallocSpy(this); }
    ~FreeingSpy() { CoRevokeMallocSpy(); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** found) override {
        *found = this;
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T size) override { return size; }
    void* STDMETHODCALLTYPE PostAlloc(void* memory) override { return memory; }
    void* STDMETHODCALLTYPE PreFree(void* memory, BOOL) override {
        freed.push_back(memory);
        return memory;
    }
    void STDMETHODCALLTYPE PostFree(BOOL) override {}
    SIZE_T STDMETHODCALLTYPE PreRealloc(void* memory, SIZE_T size, void** next, BOOL) override {
        *next = memory;
        return size;
    }
    void* STDMETHODCALLTYPE PostRealloc(void* memory, BOOL) override { return memory; }
    void* STDMETHODCALLTYPE PreGetSize(void* memory, BOOL) override { return memory; }
    SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T size, BOOL) override { return size; }
    void* STDMETHODCALLTYPE PreDidAlloc(void* memory, BOOL) override { return memory; }
    int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int is) override { return is; }
    void STDMETHODCALLTYPE PreHeapMinimize() override {}
    void STDMETHODCALLTYPE PostHeapMinimize() override {}

    std::vector<void*> freed;
};

#pragma GCC diagnostic pop

TEST_F(LinkOnDisk, ListOfAFolderIsFreed) {
    ShellSystem::ItemList list = 0;
    ASSERT_EQ(SystemShell().SpecialFolder(shells_.Number(), list), 0);
    FreeingSpy spy;
    SystemShell().FreeItemList(list);
    EXPECT_EQ(spy.freed, (std::vector<void*>{reinterpret_cast<void*>(list)}));
}

TEST(ShellError, IsAMessageWithoutATitleThatKeepsOtherWindowsBack) {
    const HWND other = CreateWindowA("Static", "", WS_VISIBLE, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    bool isOtherKeptBack = false;
    bool isInFront = false;
    Answering answering([&](HWND box) {
        isOtherKeptBack = !IsWindowEnabled(other);
        isInFront = GetForegroundWindow() == box;
        SendMessageA(box, WM_COMMAND, IDOK, 0);
    });
    SystemShell().ShowError("Error Number:  5");
    EXPECT_EQ(answering.Said(), ": Error Number:  5");
    EXPECT_EQ(answering.Buttons(), 1);
    EXPECT_TRUE(isOtherKeptBack);
    EXPECT_TRUE(isInFront);
    DestroyWindow(other);
}

} // namespace
