// The methods of link objects by their places in the tables of the interfaces, over objects whose tables are typed
// here.
#include "platform/shellsystem_windows.h"
#include "platform/text.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace lumbrix;

// One row for each call: the number of the place in the table, then the arguments.
std::vector<std::string> called;

std::string Said(const char* text) { return "'" + std::string(text) + "'"; }
std::string Said(const wchar_t* text) {
    return "'" + ToNarrow(std::u16string(reinterpret_cast<const char16_t*>(text))) + "'";
}
std::string Said(int number) { return std::to_string(number); }
std::string Said(DWORD number) { return std::to_string(number); }
std::string Said(WORD number) { return std::to_string(number); }
std::string Said(HWND window) { return window == nullptr ? "no window" : "window"; }
std::string Said(const ITEMIDLIST* list) { return "list " + std::to_string(reinterpret_cast<std::uintptr_t>(list)); }
std::string Said(const GUID* identifier) {
    std::string digits;
    for (std::size_t i = 0; i < sizeof(GUID); ++i) {
        char byte[3];
        std::snprintf(byte, sizeof byte, "%02X", reinterpret_cast<const unsigned char*>(identifier)[i]);
        digits += byte;
    }
    return digits;
}

// What a method gives out.
std::string Said(char* place) {
    std::strcpy(place, "out");
    return "text";
}
std::string Said(int* number) {
    *number = 41;
    return "number";
}
std::string Said(WORD* number) {
    *number = 42;
    return "word";
}
std::string Said(void** pointer) {
    *pointer = reinterpret_cast<void*>(43);
    return "pointer";
}
std::string Said(ITEMIDLIST** list) {
    *list = reinterpret_cast<ITEMIDLIST*>(44);
    return "list";
}
std::string Said(WIN32_FIND_DATAA* found) {
    std::memset(found, 0x5A, sizeof *found);
    return "record";
}

// A method at a place of a table. It fails, which nobody looks at.
template <int Place, class... Arguments> HRESULT STDMETHODCALLTYPE Method(void* /*self*/, Arguments... arguments) {
    std::string row = std::to_string(Place);
    ((row += " " + Said(arguments)), ...);
    called.push_back(row);
    return E_FAIL;
}

template <int Place, class... Arguments> void* Entry() { return reinterpret_cast<void*>(&Method<Place, Arguments...>); }

void* const LinkTable[] = {Entry<0, const GUID*, void**>(),
                           Entry<1>(),
                           Entry<2>(),
                           Entry<3, char*, int, WIN32_FIND_DATAA*, DWORD>(),
                           Entry<4, ITEMIDLIST**>(),
                           Entry<5, const ITEMIDLIST*>(),
                           Entry<6, char*, int>(),
                           Entry<7, const char*>(),
                           Entry<8, char*, int>(),
                           Entry<9, const char*>(),
                           Entry<10, char*, int>(),
                           Entry<11, const char*>(),
                           Entry<12, WORD*>(),
                           Entry<13, WORD>(),
                           Entry<14, int*>(),
                           Entry<15, int>(),
                           Entry<16, char*, int, int*>(),
                           Entry<17, const char*, int>(),
                           Entry<18, const char*, DWORD>(),
                           Entry<19, HWND, DWORD>(),
                           Entry<20, const char*>()};

void* const FileTable[] = {Entry<100>(),
                           Entry<101>(),
                           Entry<102>(),
                           Entry<103>(),
                           Entry<104>(),
                           Entry<105, const wchar_t*, DWORD>(),
                           Entry<106, const wchar_t*, int>(),
                           Entry<107>(),
                           Entry<108>()};

// An object is a pointer to its table; the rows of a file's begin at 100.
class ShellSlots : public testing::Test {
  protected:
    ShellSlots() { called.clear(); }

    void ExpectCalled(const std::string& row) const { EXPECT_EQ(called, (std::vector<std::string>{row})); }

    void* const* linkObject_ = LinkTable;
    void* const* fileObject_ = FileTable;
    ShellSystem::Link link_ = reinterpret_cast<ShellSystem::Link>(&linkObject_);
    ShellSystem::LinkFile file_ = reinterpret_cast<ShellSystem::LinkFile>(&fileObject_);
    WindowsShell shell_;
    char text_[8] = "";
};

TEST_F(ShellSlots, QueryForTheFile) {
    EXPECT_EQ(shell_.QueryLinkFile(link_), 43u);
    ExpectCalled("0 0B010000000000"
                 "00C000000000000046 pointer");
}

TEST_F(ShellSlots, QueryForTheLink) {
    EXPECT_EQ(shell_.QueryLink(link_), 43u);
    ExpectCalled("0 EE140200000000"
                 "00C000000000000046 pointer");
}

TEST_F(ShellSlots, AddReference) {
    shell_.AddLinkReference(link_);
    ExpectCalled("1");
}

TEST_F(ShellSlots, Release) {
    shell_.ReleaseLink(link_);
    ExpectCalled("2");
}

TEST_F(ShellSlots, GetPathHandsTheRecordBack) {
    FoundFileRecord found{};
    shell_.GetPath(link_, text_, 1024, found, 2);
    ExpectCalled("3 text 1024 record 2");
    EXPECT_STREQ(text_, "out");
    EXPECT_EQ(found.size(), 318u);
    EXPECT_EQ(found.front(), 0x5A);
    EXPECT_EQ(found.back(), 0x5A);
}

TEST_F(ShellSlots, GetItemList) {
    EXPECT_EQ(shell_.GetIDList(link_), 44u);
    ExpectCalled("4 list");
}

TEST_F(ShellSlots, SetItemList) {
    shell_.SetIDList(link_, 45);
    ExpectCalled("5 list 45");
}

TEST_F(ShellSlots, GetDescription) {
    shell_.GetDescription(link_, text_, 260);
    ExpectCalled("6 text 260");
    EXPECT_STREQ(text_, "out");
}

TEST_F(ShellSlots, SetDescription) {
    shell_.SetDescription(link_, "a");
    ExpectCalled("7 'a'");
}

TEST_F(ShellSlots, GetWorkingDirectory) {
    shell_.GetWorkingDirectory(link_, text_, 260);
    ExpectCalled("8 text 260");
}

TEST_F(ShellSlots, SetWorkingDirectory) {
    shell_.SetWorkingDirectory(link_, "a");
    ExpectCalled("9 'a'");
}

TEST_F(ShellSlots, GetArguments) {
    shell_.GetArguments(link_, text_, 260);
    ExpectCalled("10 text 260");
}

TEST_F(ShellSlots, SetArguments) {
    shell_.SetArguments(link_, "a");
    ExpectCalled("11 'a'");
}

TEST_F(ShellSlots, GetHotkey) {
    std::uint16_t key = 0;
    shell_.GetHotkey(link_, key);
    ExpectCalled("12 word");
    EXPECT_EQ(key, 42);
}

TEST_F(ShellSlots, SetHotkey) {
    shell_.SetHotkey(link_, 0x641);
    ExpectCalled("13 1601");
}

TEST_F(ShellSlots, GetShowCommand) {
    std::int32_t command = 0;
    shell_.GetShowCmd(link_, command);
    ExpectCalled("14 number");
    EXPECT_EQ(command, 41);
}

TEST_F(ShellSlots, SetShowCommand) {
    shell_.SetShowCmd(link_, -7);
    ExpectCalled("15 -7");
}

TEST_F(ShellSlots, GetIconLocation) {
    std::int32_t index = 0;
    shell_.GetIconLocation(link_, text_, 260, index);
    ExpectCalled("16 text 260 number");
    EXPECT_EQ(index, 41);
}

TEST_F(ShellSlots, SetIconLocation) {
    shell_.SetIconLocation(link_, "a", -3);
    ExpectCalled("17 'a' -3");
}

TEST_F(ShellSlots, SetRelativePath) {
    shell_.SetRelativePath(link_, "a");
    ExpectCalled("18 'a' 0");
}

TEST_F(ShellSlots, Resolve) {
    shell_.Resolve(link_, 4);
    ExpectCalled("19 no window 4");
}

TEST_F(ShellSlots, SetPath) {
    shell_.SetPath(link_, "a");
    ExpectCalled("20 'a'");
}

TEST_F(ShellSlots, AddReferenceOfTheFile) {
    shell_.AddLinkFileReference(file_);
    ExpectCalled("101");
}

TEST_F(ShellSlots, ReleaseTheFile) {
    shell_.ReleaseLinkFile(file_);
    ExpectCalled("102");
}

TEST_F(ShellSlots, Load) {
    shell_.Load(file_, u"a", 0);
    ExpectCalled("105 'a' 0");
}

TEST_F(ShellSlots, Save) {
    shell_.Save(file_, u"a", true);
    shell_.Save(file_, u"b", false);
    EXPECT_EQ(called, (std::vector<std::string>{"106 'a' 1", "106 'b' 0"}));
}

} // namespace
