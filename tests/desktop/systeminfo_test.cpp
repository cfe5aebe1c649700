// Where the system information tool is looked for, over settings and a launcher that keep a record.
#include "desktop/systeminfo.h"
#include "tests/support/fakelauncher.h"
#include "tests/support/fakesettings.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

using Rows = std::vector<std::string>;

constexpr SettingsRoot Machine = 0x80000002;
constexpr const char* ToolKeyRow = "open 80000002 SOFTWARE\\Microsoft\\Shared Tools\\MSINFO 000F003F";
constexpr const char* FolderKeyRow = "open 80000002 SOFTWARE\\Microsoft\\Shared Tools Location 000F003F";

std::string WithZero(const std::string& text) { return text + std::string(1, '\0'); }

class InfoValue : public testing::Test {
  protected:
    void Put(std::uint32_t type, const std::string& bytes) {
        store_.values["Name"] = bytes;
        store_.types["Name"] = type;
    }

    // The text that comes back, which is "before" before.
    std::string Read() {
        std::string text = "before";
        EXPECT_EQ(ReadInfoValue(Machine, "A\\B", "Name", text, store_), -1);
        EXPECT_TRUE(store_.openKeys.empty());
        return text;
    }

    void ExpectMissing() {
        std::string text = "before";
        EXPECT_EQ(ReadInfoValue(Machine, "A\\B", "Name", text, store_), 0);
        EXPECT_EQ(text, "");
    }

    FakeSettings store_;
};

TEST_F(InfoValue, OpensReadsAndCloses) {
    Put(1, WithZero("text"));
    EXPECT_EQ(Read(), "text");
    EXPECT_EQ(store_.calls, (Rows{"open 80000002 A\\B 000F003F", "query 1 'Name' 1024", "close 1"}));
}

TEST_F(InfoValue, RootIsTheCallers) {
    std::string text;
    ReadInfoValue(0x80000001, "A", "Name", text, store_);
    EXPECT_EQ(store_.calls[0], "open 80000001 A 000F003F");
}

TEST_F(InfoValue, TextEndsAtItsFirstZero) {
    Put(1, std::string("ab\0cd\0", 6));
    EXPECT_EQ(Read(), "ab");
    Put(1, "no zero");
    EXPECT_EQ(Read(), "no zero");
    Put(1, "");
    EXPECT_EQ(Read(), "");
}

TEST_F(InfoValue, TextOf1024BytesIsReadAndALongerOneIsMissing) {
    Put(1, std::string(1024, 'x'));
    EXPECT_EQ(Read(), std::string(1024, 'x'));
    Put(1, std::string(1025, 'x'));
    ExpectMissing();
}

TEST_F(InfoValue, NumberIsTheHexadecimalDigitsOfItsBytesFromTheLast) {
    Put(4, "\x12\x34\x56\x78");
    EXPECT_EQ(Read(), "&h78563412");
    Put(4, "\xEF\xCD\xAB\x80");
    EXPECT_EQ(Read(), "&h80ABCDEF");
}

TEST_F(InfoValue, SmallBytesOfANumberHaveOneDigit) {
    Put(4, "\x01\x0F\x10\x09");
    EXPECT_EQ(Read(), "&h910F1");
}

TEST_F(InfoValue, NumberEndsAtItsFirstZero) {
    Put(4, std::string("\x2A\0\0\0", 4));
    EXPECT_EQ(Read(), "&h2A");
    Put(4, std::string("\x02\x01\0\x03", 4));
    EXPECT_EQ(Read(), "&h12");
    Put(4, std::string("\0\x01\x02\x03", 4));
    EXPECT_EQ(Read(), "&h");
}

TEST_F(InfoValue, OtherTypeIsReadAndLeavesTheText) {
    for (const std::uint32_t type : {0u, 2u, 3u, 5u, 7u, 11u}) {
        Put(type, WithZero("text"));
        EXPECT_EQ(Read(), "before") << type;
    }
    EXPECT_EQ(store_.Count("close"), 6);
}

TEST_F(InfoValue, KeyThatCannotBeOpenedIsClosedAllTheSame) {
    Put(1, WithZero("text"));
    store_.openStatus = 5;
    ExpectMissing();
    EXPECT_EQ(store_.calls, (Rows{"open 80000002 A\\B 000F003F", "close 0"}));
}

TEST_F(InfoValue, MissingValueEmptiesTheTextAndClosesTheKey) {
    ExpectMissing();
    EXPECT_EQ(store_.calls, (Rows{"open 80000002 A\\B 000F003F", "query 1 'Name' 1024", "close 1"}));
    EXPECT_TRUE(store_.openKeys.empty());
}

TEST_F(InfoValue, KeyAndNameAreCutAt254Characters) {
    std::string text;
    ReadInfoValue(Machine, std::string(254, 'k'), std::string(254, 'n'), text, store_);
    ReadInfoValue(Machine, std::string(255, 'k'), std::string(255, 'n'), text, store_);
    const Rows once{"open 80000002 " + std::string(254, 'k') + " 000F003F",
                    "query 1 '" + std::string(254, 'n') + "' 1024", "close 1"};
    ASSERT_EQ(store_.calls.size(), 6u);
    for (std::size_t row = 0; row < 3; ++row) {
        EXPECT_EQ(store_.calls[row], once[row]);
    }
    EXPECT_EQ(store_.calls[3], once[0]);
    EXPECT_EQ(store_.calls[4], "query 2 '" + std::string(254, 'n') + "' 1024");
}

class SystemInfo : public testing::Test {
  protected:
    // The folder that the shared tools are in, with or without the tool.
    void PutFolder() { store_.values["MSINFO"] = WithZero(folder_.Path().string()); }
    void MakeTool() { WriteBytes(Tool(), ""); }
    std::string Tool() const { return folder_.Path().string() + "\\MSINFO32.EXE"; }

    void Open() { OpenSystemInfo(launcher_, store_); }

    TemporaryFolder folder_;
    FakeSettings store_;
    FakeLauncher launcher_;
};

TEST_F(SystemInfo, StartsTheProgramThatIsNamed) {
    store_.values["PATH"] = WithZero("C:\\a b\\tool.exe"); // which need not be there
    PutFolder();
    MakeTool();
    Open();
    EXPECT_EQ(launcher_.calls, (Rows{"program C:\\a b\\tool.exe"}));
    EXPECT_EQ(store_.calls, (Rows{ToolKeyRow, "query 1 'PATH' 1024", "close 1"}));
}

TEST_F(SystemInfo, StartsTheToolInItsFolderWhereNoProgramIsNamed) {
    PutFolder();
    MakeTool();
    Open();
    EXPECT_EQ(launcher_.calls, (Rows{"program " + Tool()}));
    EXPECT_EQ(store_.calls,
              (Rows{ToolKeyRow, "query 1 'PATH' 1024", "close 1", FolderKeyRow, "query 2 'MSINFO' 1024", "close 2"}));
}

TEST_F(SystemInfo, NothingStartsWhereTheToolIsNotInItsFolder) {
    PutFolder();
    Open();
    EXPECT_TRUE(launcher_.calls.empty());
}

TEST_F(SystemInfo, NothingStartsWhereNeitherIsKnown) {
    MakeTool();
    Open();
    EXPECT_TRUE(launcher_.calls.empty());
    EXPECT_EQ(store_.Count("query"), 2);
    store_.openStatus = 2;
    Open();
    EXPECT_TRUE(launcher_.calls.empty());
}

#ifndef _WIN32
TEST_F(SystemInfo, NothingStartsFromTheTopOfADriveEither) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder_.Path());
    WriteBytes("\\MSINFO32.EXE", "");
    Open();
    std::filesystem::current_path(before);
    EXPECT_TRUE(launcher_.calls.empty());
}
#endif

TEST_F(SystemInfo, ValueOfAnotherTypeCountsAsAProgramWithoutAName) {
    store_.values["PATH"] = WithZero("C:\\tool.exe");
    store_.types["PATH"] = 2;
    PutFolder();
    MakeTool();
    Open();
    EXPECT_EQ(launcher_.calls, (Rows{"program "}));
}

} // namespace
