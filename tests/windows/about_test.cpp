// The About box of the running program, worked by a real mouse.
#include "tests/windows/expected/about.h"
#include "tests/windows/mouse.h"
#include "tests/windows/programfixture.h"
#include "tests/windows/registryvalue.h"
#include "tests/windows/seenwindow.h"

#include <fstream>

namespace {

using namespace lumbrix;
using namespace tests;

constexpr int WebPage = 207;
constexpr int SystemInformation = 208;
constexpr int UninstallLine = 210;

constexpr const char* ToolKey = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
constexpr const char* FolderKey = "SOFTWARE\\Microsoft\\Shared Tools Location";

using Starts = std::vector<std::string>;

// The program that the system opens the maker's page with, while this lives.
class Browser {
  public:
    explicit Browser(const std::string& program)
        : command_(HKEY_CLASSES_ROOT, OpenKey() + "command", "", "\"" + program + "\" \"%1\""),
          conversation_(HKEY_CLASSES_ROOT, OpenKey() + "ddeexec", "", std::nullopt) {}

  private:
    static std::string OpenKey() {
        const std::string address = LUMBRIX_MAKER_WEB;
        return address.substr(0, address.find(':')) + "\\shell\\open\\";
    }

    RegistryValue command_;
    RegistryValue conversation_;
};

class About : public ProgramTest {
  protected:
    About() { MoveMouse({3, 3}); } // away from the box

    OpenWindow Open() const {
        program_.BeginClick(AboutButton);
        const OpenWindow box = program_.Further();
        box.Activate();
        return box;
    }

    void Close(const OpenWindow& box) const {
        box.Close();
        box.WaitUntilGone();
        WaitForTheEnd();
    }

    // Whether the pointer over the box is the system's of this number.
    static bool IsPointer(const OpenWindow& box, LPCSTR number) {
        CURSORINFO info{};
        info.cbSize = sizeof info;
        const std::uint32_t inside = box.PutInside(&info, sizeof info);
        EXPECT_NE(box.CallInside("user32.dll", "GetCursorInfo", {inside}), 0u);
        box.GetFromInside(inside, &info, sizeof info);
        box.CallInside("kernel32.dll", "GlobalFree", {inside});
        const auto standard = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(number));
        return box.CallInside("user32.dll", "LoadCursorA", {0, standard}) ==
               static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(info.hCursor));
    }
    static bool ShowsHand(const OpenWindow& box) {
        return WaitFor([&] { return IsPointer(box, IDC_HAND); }, PointerPatienceMs);
    }
    static bool ShowsArrow(const OpenWindow& box) {
        return WaitFor([&] { return IsPointer(box, IDC_ARROW); }, PointerPatienceMs);
    }

    // A place within a line, near its left end, or near the right one of those that stand there.
    static POINT On(const OpenWindow& box, int id) {
        RECT line{};
        GetClientRect(box.Item(id), &line);
        const bool isAtRight = id >= 203 && id <= 206;
        return ScreenPointOf(box.Item(id), {isAtRight ? line.right - 8 : 8, line.bottom / 2});
    }

    static void MoveOver(const OpenWindow& box, int id) {
        MoveMouse(On(box, id));
        EXPECT_TRUE(ShowsHand(box)) << id;
    }

    static void PressOn(const OpenWindow& box, int id) {
        MoveOver(box, id);
        PressMouse();
        ReleaseMouse();
    }

    // Ends the program.
    static void PressUninstall(const OpenWindow& box) {
        MoveOver(box, UninstallLine);
        PressMouse();
        ReleaseMouseOverNothing();
    }

    // A press that no move comes before.
    static void PressWithoutMoving(const OpenWindow& box, POINT client) {
        Send(box.Window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(client.x, client.y));
        Send(box.Window(), WM_LBUTTONUP, 0, MAKELPARAM(client.x, client.y));
    }
    static POINT ClientPointOn(const OpenWindow& box, int id) {
        POINT place = On(box, id);
        ScreenToClient(box.Window(), &place);
        return place;
    }

    // A program in a folder whose name has a blank, which notes how it is started.
    std::string PutProgram(const std::string& name) const {
        const std::string path = MakeFolder("shared tools") + name;
        std::filesystem::copy_file(STARTED_PROGRAM, path);
        return path;
    }
    // The notes: how the window was to be shown, and the command line.
    static Starts StartsOf(const std::string& program) {
        Starts starts;
        std::ifstream notes(program + ".started");
        for (std::string line; std::getline(notes, line);) {
            starts.push_back(line);
        }
        return starts;
    }
    static void ExpectStarts(const std::string& program, const Starts& expected) {
        EXPECT_TRUE(WaitUntilLasting([&] { return StartsOf(program) == expected; }))
            << StartsOf(program).size() << " starts, the last one "
            << (StartsOf(program).empty() ? "none" : StartsOf(program).back());
    }

    static constexpr DWORD PointerPatienceMs = 5000;
};

TEST_F(About, BoxIsAsExpected) {
    const OpenWindow box = Open();
    SeenWindow(box).Expect(ExpectedAboutBox());
    EXPECT_FALSE(IsWindowEnabled(program_.Window()));
    EXPECT_EQ(GetWindow(box.Window(), GW_OWNER), program_.Window());
    Close(box);
}

TEST_F(About, BoxHasTheProgramsIcon) {
    const OpenWindow box = Open();
    const SeenWindow seen(box);
    const std::uint32_t icon = seen.Ask(box.Window(), WM_GETICON, ICON_BIG);
    EXPECT_NE(icon, 0u);
    EXPECT_EQ(icon, seen.Ask(program_.Window(), WM_GETICON, ICON_BIG));
    Close(box);
}

TEST_F(About, ButtonRefreshesTheSizeFirst) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    EXPECT_EQ(program_.Text(SizeLabel), "");
    const OpenWindow box = Open();
    EXPECT_EQ(program_.Text(SizeLabel), "(W1 x H2)");
    Close(box);
}

TEST_F(About, OtherNotificationsOfTheButtonOpenNothing) {
    Send(program_.Window(), WM_COMMAND, MAKEWPARAM(AboutButton, BN_DBLCLK), 0);
    Send(program_.Window(), WM_COMMAND, MAKEWPARAM(AboutButton, BN_SETFOCUS), 0);
    EXPECT_TRUE(WaitUntilLasting([&] { return program_.IsQuiet(); }));
    PostMessageA(program_.Window(), WM_COMMAND, MAKEWPARAM(AboutButton, 1), 0); // by an accelerator
    Close(program_.Further());
}

TEST_F(About, EscapeAndEnterLeaveItOpen) {
    const OpenWindow box = Open();
    PressKey(VK_ESCAPE);
    PressKey(VK_RETURN);
    EXPECT_TRUE(WaitUntilLasting([&] { return IsWindowVisible(box.Window()) != 0; }));
    Close(box);
}

TEST_F(About, PointerIsAHandOverTheLinksAlone) {
    const OpenWindow box = Open();
    for (const int link : {WebPage, SystemInformation, UninstallLine}) {
        MoveMouse(On(box, link));
        EXPECT_TRUE(ShowsHand(box)) << link;
        const POINT place = On(box, link);
        MoveMouse({place.x, ScreenPointOf(box.Window(), {0, 4}).y}); // the plain box
        EXPECT_TRUE(ShowsArrow(box)) << "beside " << link;
    }
    for (const int line : {201, 202, 203, 204, 205, 206}) {
        MoveOver(box, UninstallLine);
        MoveMouse(On(box, line));
        EXPECT_TRUE(ShowsArrow(box)) << line;
    }
    Close(box);
}

TEST_F(About, HiddenAndDisabledLinksArePassedOver) {
    const OpenWindow box = Open();
    MoveOver(box, WebPage);
    EnableWindow(box.Item(SystemInformation), FALSE);
    MoveMouse(On(box, SystemInformation));
    EXPECT_TRUE(ShowsArrow(box));
    MoveOver(box, WebPage);
    ShowWindow(box.Item(UninstallLine), SW_HIDE);
    MoveMouse(On(box, UninstallLine));
    EXPECT_TRUE(ShowsArrow(box));
    Close(box);
}

TEST_F(About, SystemInformationStartsTheProgramThatIsNamed) {
    const std::string tool = PutProgram("tool.exe");
    const RegistryValue path(HKEY_LOCAL_MACHINE, ToolKey, "PATH", tool);
    const OpenWindow box = Open();
    PressOn(box, SystemInformation);
    ExpectStarts(tool, {"1 \"" + tool + "\""});
    Close(box);
}

TEST_F(About, BlankInTheNameOfTheToolDoesNotEndIt) {
    const std::string tool = PutProgram("tool.exe"); // in "shared tools"
    const std::string other = Path("shared.exe");
    std::filesystem::copy_file(STARTED_PROGRAM, other);
    const RegistryValue path(HKEY_LOCAL_MACHINE, ToolKey, "PATH", tool);
    const OpenWindow box = Open();
    PressOn(box, SystemInformation);
    ExpectStarts(tool, {"1 \"" + tool + "\""});
    ExpectStarts(other, {});
    Close(box);
}

TEST_F(About, ToolIsNotWaitedFor) {
    const std::string tool = PutProgram("tool.exe");
    WriteBytes(tool + ".linger", "");
    const RegistryValue path(HKEY_LOCAL_MACHINE, ToolKey, "PATH", tool);
    const OpenWindow box = Open();
    PressOn(box, SystemInformation);
    ExpectStarts(tool, {"1 \"" + tool + "\""});
    constexpr DWORD PromptMs = 5000;
    Send(box.Window(), WM_NULL, 0, 0, PromptMs); // fails where there is no answer
    Close(box);
    std::filesystem::remove(tool + ".linger");
    EXPECT_TRUE(WaitFor([&] { return DeleteFileA(tool.c_str()) != FALSE; })) << "the tool has not ended";
}

TEST_F(About, NothingIsHeldOfAToolThatHasEnded) {
    const std::string tool = PutProgram("tool.exe");
    const RegistryValue path(HKEY_LOCAL_MACHINE, ToolKey, "PATH", tool);
    const OpenWindow box = Open();
    PressOn(box, SystemInformation);
    ExpectStarts(tool, {"1 \"" + tool + "\""});
    DWORD process = 0, thread = 0;
    std::ifstream(tool + ".numbers") >> process >> thread;
    ASSERT_NE(thread, 0u);
    // What somebody holds can still be opened.
    const auto isGone = [](HANDLE opened) {
        CloseHandle(opened);
        return opened == nullptr;
    };
    EXPECT_TRUE(WaitFor([&] { return isGone(OpenProcess(SYNCHRONIZE, FALSE, process)); })) << "the process";
    EXPECT_TRUE(WaitFor([&] { return isGone(OpenThread(SYNCHRONIZE, FALSE, thread)); })) << "the thread";
    Close(box);
}

TEST_F(About, SystemInformationStartsTheToolOfTheSharedFolder) {
    const std::string tool = PutProgram("MSINFO32.EXE");
    const RegistryValue path(HKEY_LOCAL_MACHINE, ToolKey, "PATH", std::nullopt);
    const RegistryValue folder(HKEY_LOCAL_MACHINE, FolderKey, "MSINFO", Path("shared tools"));
    const OpenWindow box = Open();
    PressOn(box, SystemInformation);
    ExpectStarts(tool, {"1 \"" + tool + "\""});
    Close(box);
}

TEST_F(About, SystemInformationThatIsNowhereLeavesTheBoxAsItIs) {
    const std::string tool = PutProgram("tool.exe");
    const OpenWindow box = Open();
    {
        const RegistryValue path(HKEY_LOCAL_MACHINE, ToolKey, "PATH", Path("none.exe"));
        PressOn(box, SystemInformation);
        EXPECT_TRUE(WaitUntilLasting([&] { return box.IsQuiet(); }));
    }
    const RegistryValue path(HKEY_LOCAL_MACHINE, ToolKey, "PATH", std::nullopt);
    const RegistryValue folder(HKEY_LOCAL_MACHINE, FolderKey, "MSINFO", Path("shared tools"));
    PressWithoutMoving(box, {5, 5});
    const RegistryValue noFolder(HKEY_LOCAL_MACHINE, FolderKey, "MSINFO", std::nullopt);
    PressWithoutMoving(box, {5, 5});
    EXPECT_TRUE(WaitUntilLasting([&] { return box.IsQuiet() && IsWindowVisible(box.Window()); }));
    ExpectStarts(tool, {});
    Close(box);
}

TEST_F(About, PressActsOnTheLineLastSeenByAMove) {
    const std::string tool = PutProgram("tool.exe");
    const RegistryValue path(HKEY_LOCAL_MACHINE, ToolKey, "PATH", tool);
    const OpenWindow box = Open();
    PressWithoutMoving(box, ClientPointOn(box, SystemInformation)); // none seen yet
    PressWithoutMoving(box, ClientPointOn(box, UninstallLine));
    EXPECT_TRUE(WaitUntilLasting([&] { return IsWindowVisible(box.Window()) && StartsOf(tool).empty(); }));
    MoveOver(box, SystemInformation);
    PressWithoutMoving(box, ClientPointOn(box, UninstallLine));
    ExpectStarts(tool, {"1 \"" + tool + "\""});
    MoveMouse(On(box, 206));
    EXPECT_TRUE(ShowsArrow(box));
    PressWithoutMoving(box, ClientPointOn(box, SystemInformation));
    MoveMouse(ScreenPointOf(box.Window(), {4, 4}));
    PressWithoutMoving(box, ClientPointOn(box, SystemInformation));
    ExpectStarts(tool, {"1 \"" + tool + "\""});
    EXPECT_TRUE(IsWindowVisible(box.Window()));
    Close(box);
}

TEST_F(About, PressActsBeforeTheButtonIsLetGo) {
    const std::string tool = PutProgram("tool.exe");
    const RegistryValue path(HKEY_LOCAL_MACHINE, ToolKey, "PATH", tool);
    const OpenWindow box = Open();
    MoveOver(box, SystemInformation);
    PressMouse();
    ExpectStarts(tool, {"1 \"" + tool + "\""});
    ReleaseMouse();
    ExpectStarts(tool, {"1 \"" + tool + "\""});
    Close(box);
}

TEST_F(About, NothingButAPressOfTheLeftButtonActs) {
    const std::string tool = PutProgram("tool.exe");
    const RegistryValue path(HKEY_LOCAL_MACHINE, ToolKey, "PATH", tool);
    const OpenWindow box = Open();
    MoveOver(box, SystemInformation);
    const POINT place = ClientPointOn(box, SystemInformation);
    for (const UINT message : {WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDBLCLK,
                               WM_MBUTTONDOWN, WM_MBUTTONUP, WM_MBUTTONDBLCLK}) {
        Send(box.Window(), message, 0, MAKELPARAM(place.x, place.y));
    }
    ExpectStarts(tool, {});
    PressWithoutMoving(box, place); // what the others might have started would be there before
    ExpectStarts(tool, {"1 \"" + tool + "\""});
    Close(box);
}

TEST_F(About, WebAddressThatCannotBeOpenedPassesInSilence) {
    const Browser none(Path("none.exe"));
    const OpenWindow box = Open();
    MoveOver(box, WebPage);
    PressWithoutMoving(box, ClientPointOn(box, WebPage));
    ASSERT_TRUE(WaitUntilLasting([&] { return box.IsQuiet() && IsWindowVisible(box.Window()); }));
    Close(box);
}

TEST_F(About, WebAddressOpensInTheBrowser) {
    const std::string browser = PutProgram("browser.exe");
    const Browser inUse(browser);
    const OpenWindow box = Open();
    PressOn(box, WebPage);
    ExpectStarts(browser, {"1 \"" + browser + "\" \"" LUMBRIX_MAKER_WEB "\""});
    EXPECT_TRUE(IsWindowVisible(box.Window()));
    EXPECT_TRUE(box.IsQuiet());
    Close(box);
}

// Where Windows notes what it is to delete at its next start.
constexpr const char* SessionKey = "SYSTEM\\CurrentControlSet\\Control\\Session Manager";
constexpr const char* PendingValue = "PendingFileRenameOperations";

// The names there, each with an empty text behind, separated by zeros.
std::string PendingDeletions() {
    char names[4096] = "";
    DWORD length = sizeof names;
    RegGetValueA(HKEY_LOCAL_MACHINE, SessionKey, PendingValue, RRF_RT_REG_MULTI_SZ, nullptr, names, &length);
    return {names, length};
}

TEST_F(About, UninstallTakesAwayTheShortcutAndEndsTheProgram) {
    const RegistryValue pending(HKEY_LOCAL_MACHINE, SessionKey, PendingValue, std::nullopt);
    WriteBytes(program_.Folder() / "CleanUp.txt", "kept");
    ASSERT_TRUE(std::filesystem::exists(ShortcutOnDesktop()));
    const OpenWindow box = Open();
    PressUninstall(box);
    box.WaitUntilGone();
    program_.WaitUntilGone();
    EXPECT_EQ(program_.Close(), 0u);
    EXPECT_FALSE(std::filesystem::exists(ShortcutOnDesktop()));
    const std::string program = "\\??\\" + Path("lumbrix.exe");
    EXPECT_NE(PendingDeletions().find(program + std::string(2, '\0')), std::string::npos) << PendingDeletions();
    // Nothing else goes.
    for (const char* name : {"lumbrix.exe", "lumbrix.dll", "gdiplus.dll"}) {
        EXPECT_TRUE(Exists(name)) << name;
    }
    EXPECT_EQ(ReadBytes(program_.Folder() / "CleanUp.txt"), "kept");
}

TEST_F(About, UninstallListsAShortcutThatIsInUseFiftyTimes) {
    const RegistryValue pending(HKEY_LOCAL_MACHINE, SessionKey, PendingValue, std::nullopt);
    const HANDLE held =
        CreateFileW(ShortcutOnDesktop().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    const OpenWindow box = Open();
    PressUninstall(box);
    program_.WaitUntilGone();
    EXPECT_EQ(program_.Close(), 0u);
    CloseHandle(held);
    std::string expected;
    for (int i = 0; i < 50; ++i) {
        expected += ShortcutOnDesktop().string() + "\r\n";
    }
    EXPECT_EQ(ReadBytes(program_.Folder() / "CleanUp.txt"), expected);
}

TEST_F(About, OpensAnewAndRemembersNoLine) {
    const std::string tool = PutProgram("tool.exe");
    const RegistryValue path(HKEY_LOCAL_MACHINE, ToolKey, "PATH", tool);
    const OpenWindow first = Open();
    MoveOver(first, SystemInformation);
    MoveMouse({3, 3});
    Close(first);
    const OpenWindow second = Open();
    PressWithoutMoving(second, ClientPointOn(second, SystemInformation));
    ExpectStarts(tool, {});
    Close(second);
}

} // namespace
