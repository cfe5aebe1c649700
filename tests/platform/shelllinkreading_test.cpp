// Reading links, and giving them another icon, over a shell that records the calls.
#include "platform/errors.h"
#include "platform/shelllink.h"
#include "tests/support/fakeshell.h"

#include <gtest/gtest.h>

#include <new>

namespace {

using namespace lumbrix;
using namespace tests;

using ReadingCalls = std::vector<std::string>;

std::string Ys(std::size_t count) { return std::string(count, 'y'); }

FakeShell ShellWithLink() {
    FakeShell shell;
    shell.texts = {"/bin/a", "/work", "-x y", "What it is", "/icons/b.ico"};
    shell.showCommand = 7;
    shell.iconIndex = 3;
    shell.hotkey = 0x641;
    return shell;
}

// Fields as they were before a link was read.
const LinkFields FieldsBefore = {.target = "target",
                                 .workingFolder = "folder",
                                 .arguments = "arguments",
                                 .description = "description",
                                 .iconFile = "icon",
                                 .iconIndex = 11,
                                 .showCommand = 12,
                                 .hotKey = 13};

// Has a call that begins so fail with an exception.
template <class Error> void FailAt(FakeShell& shell, const std::string& start, const Error& error) {
    shell.atCall = [=](const std::string& call) {
        if (call.starts_with(start)) {
            throw error;
        }
    };
}

TEST(GetShellLinkInfo, ReadsAllFieldsAndReleasesNothing) {
    FakeShell shell = ShellWithLink();
    LinkFields fields = FieldsBefore;
    EXPECT_EQ(GetShellLinkInfo("/a.lnk", fields, shell), 1);
    EXPECT_EQ(fields, (LinkFields{"/bin/a", "/work", "-x y", "What it is", "/icons/b.ico", 3, 7, 0x641}));
    EXPECT_EQ(shell.calls,
              (ReadingCalls{"CreateLinkObject", "QueryLinkFile 7", "MakeWide 260", "Load 8 '/a.lnk' 0",
                            "GetPath 7 1024 2", "GetWorkingDirectory 7 1024", "GetArguments 7 1024",
                            "GetDescription 7 1024", "GetShowCmd 7", "GetIconLocation 7 1024", "GetHotkey 7"}));
    EXPECT_TRUE(shell.messages.empty());
}

TEST(GetShellLinkInfo, BlankPathDoesNotTouchTheShell) {
    FakeShell shell = ShellWithLink();
    LinkFields fields = FieldsBefore;
    for (const char* blank : {"", " ", "   "}) {
        EXPECT_EQ(GetShellLinkInfo(blank, fields, shell), 0);
    }
    EXPECT_TRUE(shell.calls.empty());
    EXPECT_EQ(fields, FieldsBefore);
}

TEST(GetShellLinkInfo, BlanksAroundAPathStay) {
    FakeShell shell = ShellWithLink();
    LinkFields fields;
    EXPECT_EQ(GetShellLinkInfo(" a ", fields, shell), 1);
    EXPECT_TRUE(shell.Had("Load 8 ' a ' 0"));
    EXPECT_EQ(GetShellLinkInfo("\t", fields, shell), 1);
}

TEST(GetShellLinkInfo, NeedsALinkObjectWithAFile) {
    FakeShell shell = ShellWithLink();
    LinkFields fields = FieldsBefore;
    shell.file = 0;
    EXPECT_EQ(GetShellLinkInfo("a", fields, shell), 0);
    EXPECT_EQ(shell.calls, (ReadingCalls{"CreateLinkObject", "QueryLinkFile 7"}));
    shell.calls.clear();
    shell.createCode = 1;
    EXPECT_EQ(GetShellLinkInfo("a", fields, shell), 0);
    EXPECT_EQ(shell.calls, (ReadingCalls{"CreateLinkObject"}));
    EXPECT_EQ(fields, FieldsBefore);
    EXPECT_TRUE(shell.messages.empty());
}

TEST(GetShellLinkInfo, CutsThePathAt259Bytes) {
    FakeShell shell = ShellWithLink();
    LinkFields fields;
    GetShellLinkInfo(Ys(259), fields, shell);
    EXPECT_TRUE(shell.Had("Load 8 '" + Ys(259) + "' 0"));
    shell.calls.clear();
    GetShellLinkInfo(Ys(259) + "z", fields, shell);
    EXPECT_TRUE(shell.Had("Load 8 '" + Ys(259) + "' 0"));
}

TEST(GetShellLinkInfo, AsksForAndCutsTo260BytesOnAnOldSystemButForTheDescription) {
    FakeShell shell;
    shell.version = SystemVersion{2, 4};
    shell.texts = {Ys(260) + "1", Ys(260) + "2", Ys(260) + "3", Ys(260) + "4", Ys(260) + "5"};
    LinkFields fields;
    EXPECT_EQ(GetShellLinkInfo("a", fields, shell), 1);
    EXPECT_EQ(fields.target, Ys(260));
    EXPECT_EQ(fields.workingFolder, Ys(260));
    EXPECT_EQ(fields.arguments, Ys(260));
    EXPECT_EQ(fields.iconFile, Ys(260));
    EXPECT_EQ(fields.description, Ys(260) + "4");
    for (const char* call : {"GetPath 7 260 2", "GetWorkingDirectory 7 260", "GetArguments 7 260",
                             "GetDescription 7 260", "GetIconLocation 7 260"}) {
        EXPECT_TRUE(shell.Had(call)) << call;
    }
}

TEST(GetShellLinkInfo, HoldsTextsOf1024BytesElsewhere) {
    FakeShell shell;
    shell.texts = {Ys(1024), Ys(1024), Ys(1024), Ys(1024), Ys(1024)};
    LinkFields fields;
    EXPECT_EQ(GetShellLinkInfo("a", fields, shell), 1);
    EXPECT_EQ(fields, (LinkFields{Ys(1024), Ys(1024), Ys(1024), Ys(1024), Ys(1024), 0, 0, 0}));
}

TEST(GetShellLinkInfo, ErrorEndsTheReadWithAMessage) {
    FakeShell shell = ShellWithLink();
    FailAt(shell, "GetDescription", RuntimeError(53, "no such file"));
    LinkFields fields = FieldsBefore;
    EXPECT_EQ(GetShellLinkInfo("a", fields, shell), 0);
    EXPECT_EQ(shell.messages, (ReadingCalls{"Error Number:  53\r\nError Description: no such file"}));
    EXPECT_EQ(fields, (LinkFields{"/bin/a", "/work", "-x y", "description", "icon", 11, 12, 13}));
    EXPECT_EQ(shell.calls.back(), "GetArguments 7 1024");
}

TEST(GetShellLinkInfo, ErrorWhileLoadingIsShownToo) {
    FakeShell shell = ShellWithLink();
    FailAt(shell, "Load", RuntimeError(-3, "odd"));
    LinkFields fields = FieldsBefore;
    EXPECT_EQ(GetShellLinkInfo("a", fields, shell), 0);
    EXPECT_EQ(shell.messages, (ReadingCalls{"Error Number: -3\r\nError Description: odd"}));
    EXPECT_EQ(fields, FieldsBefore);
}

TEST(GetShellLinkInfo, MemoryThatRunsOutIsAnErrorToo) {
    FakeShell shell = ShellWithLink();
    FailAt(shell, "GetHotkey", std::bad_alloc());
    LinkFields fields;
    EXPECT_EQ(GetShellLinkInfo("a", fields, shell), 0);
#ifdef _WIN32
    const std::string expected = "Error Number:  8\r\nError Description: " + SystemReason(8);
#else
    const std::string expected = "Error Number:  12\r\nError Description: Cannot allocate memory";
#endif
    EXPECT_EQ(shell.messages, (ReadingCalls{expected}));
}

TEST(ChangeLinkIcon, WritesAllFieldsBackWithTheNewIcon) {
    FakeShell shell = ShellWithLink();
    EXPECT_EQ(ChangeLinkIcon("/a.lnk", "/new.ico", shell), "/icons/b.ico");
    shell.calls.erase(shell.calls.begin() + 4, shell.calls.begin() + 11); // the getters, in the order of reading
    EXPECT_EQ(
        shell.calls,
        (ReadingCalls{"CreateLinkObject", "QueryLinkFile 7", "MakeWide 260", "Load 8 '/a.lnk' 0", "SetPath 7 '/bin/a'",
                      "SetWorkingDirectory 7 '/work'", "SetArguments 7 '-x y'", "SetDescription 7 'What it is'",
                      "SetShowCmd 7 7", "SetIconLocation 7 '/new.ico' 0", "SetHotkey 7 65", "MakeWide 260",
                      "Resolve 7 4", "Save 8 '/a.lnk' remembered", "ReleaseLinkFile 8", "ReleaseLink 7"}));
}

TEST(ChangeLinkIcon, ReleasesTheLinkThatHasNoFile) {
    FakeShell shell = ShellWithLink();
    shell.file = 0;
    EXPECT_EQ(ChangeLinkIcon("a", "b", shell), "");
    EXPECT_EQ(shell.calls, (ReadingCalls{"CreateLinkObject", "QueryLinkFile 7", "ReleaseLink 7"}));
}

TEST(ChangeLinkIcon, NeedsAPathAndALinkObject) {
    FakeShell shell = ShellWithLink();
    EXPECT_EQ(ChangeLinkIcon("  ", "b", shell), "");
    EXPECT_TRUE(shell.calls.empty());
    shell.createCode = 1;
    EXPECT_EQ(ChangeLinkIcon("a", "b", shell), "");
    EXPECT_EQ(shell.calls, (ReadingCalls{"CreateLinkObject"}));
}

TEST(ChangeLinkIcon, ErrorEndsItInSilence) {
    FakeShell shell = ShellWithLink();
    FailAt(shell, "SetPath", RuntimeError(5, "no"));
    EXPECT_EQ(ChangeLinkIcon("a", "b", shell), "/icons/b.ico");
    EXPECT_TRUE(shell.messages.empty());
    EXPECT_EQ(shell.calls[shell.calls.size() - 3], "GetHotkey 7");
    EXPECT_EQ(shell.calls[shell.calls.size() - 2], "ReleaseLinkFile 8");
    EXPECT_EQ(shell.calls.back(), "ReleaseLink 7");
}

} // namespace
