// The helpers for single settings, over a store that records the calls.
#include "platform/registry.h"
#include "tests/support/fakesettings.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

using Calls = std::vector<std::string>;

constexpr SettingsRoot User = 0x80000001;
constexpr std::int32_t NoSuchFile = 2;

std::string Letters(std::size_t count) { return std::string(count, 'x'); }

TEST(DeleteRegValue, OpensDeletesAndCloses) {
    FakeSettings store;
    EXPECT_EQ(DeleteRegValue(User, "A\\B", "Name", store), 0);
    EXPECT_EQ(store.calls, (Calls{"open 80000001 A\\B 000F003F", "delete 1 'Name'", "close 1"}));
}

TEST(DeleteRegValue, ClosesEvenWhatCouldNotBeOpened) {
    FakeSettings store;
    store.openStatus = NoSuchFile;
    EXPECT_EQ(DeleteRegValue(User, "A", "Name", store), NoSuchFile);
    EXPECT_EQ(store.calls, (Calls{"open 80000001 A 000F003F", "close 0"}));
}

TEST(DeleteRegValue, TellsTheStatusOfDeleting) {
    FakeSettings store;
    store.deleteStatus = 5;
    EXPECT_EQ(DeleteRegValue(User, "A", "Name", store), 5);
    EXPECT_TRUE(store.openKeys.empty());
}

TEST(DeleteRegValue, StarIsTheDefaultValue) {
    FakeSettings store;
    DeleteRegValue(User, "A", "*", store);
    EXPECT_EQ(store.calls[1], "delete 1 ''");
}

TEST(DeleteRegValue, CutsThePathButNotTheName) {
    FakeSettings store;
    DeleteRegValue(User, Letters(299), Letters(300), store);
    DeleteRegValue(User, Letters(300), "Name", store);
    EXPECT_EQ(store.calls[0], "open 80000001 " + Letters(299) + " 000F003F");
    EXPECT_EQ(store.calls[1], "delete 1 '" + Letters(300) + "'");
    EXPECT_EQ(store.calls[3], "open 80000001 " + Letters(299) + " 000F003F");
}

TEST(GetRegValue, OpensAndReadsAndLeavesTheKeyOpen) {
    FakeSettings store;
    store.values["Name"] = std::string("text\0", 5);
    EXPECT_EQ(GetRegValue(User, "A\\B", "Name", store), "text");
    EXPECT_EQ(store.calls, (Calls{"open 80000001 A\\B 000F003F", "query 1 'Name' 256"}));
    GetRegValue(User, "A", "Missing", store);
    EXPECT_EQ(store.openKeys.size(), 2u);
}

TEST(GetRegValue, MissingKeyReadsAsEmptyWithoutBeingAsked) {
    FakeSettings store;
    store.openStatus = NoSuchFile;
    store.values["Name"] = std::string("text\0", 5);
    EXPECT_EQ(GetRegValue(User, "A", "Name", store), "");
    EXPECT_EQ(store.calls, (Calls{"open 80000001 A 000F003F"}));
}

TEST(GetRegValue, MissingValueReadsAsEmpty) {
    FakeSettings store;
    EXPECT_EQ(GetRegValue(User, "A", "Name", store), "");
}

TEST(GetRegValue, StarIsTheDefaultValue) {
    FakeSettings store;
    store.values[""] = std::string("default\0", 8);
    store.values["*"] = std::string("star\0", 5);
    EXPECT_EQ(GetRegValue(User, "A", "*", store), "default");
    store.values["**"] = std::string("two\0", 4);
    EXPECT_EQ(GetRegValue(User, "A", "**", store), "two");
}

TEST(GetRegValue, ReadsUpToTheFirstZero) {
    FakeSettings store;
    store.values["Name"] = std::string("\x41\x42\0\x43", 4);
    EXPECT_EQ(GetRegValue(User, "A", "Name", store), "AB");
    store.values["Name"] = "no zero";
    EXPECT_EQ(GetRegValue(User, "A", "Name", store), "no zero");
}

TEST(GetRegValue, ReadsUpTo256BytesAndNothingOfALongerValue) {
    FakeSettings store;
    store.values["Name"] = Letters(256);
    EXPECT_EQ(GetRegValue(User, "A", "Name", store), Letters(256));
    store.values["Name"] = Letters(257);
    EXPECT_EQ(GetRegValue(User, "A", "Name", store), "");
}

TEST(GetRegValue, CutsPathAndName) {
    FakeSettings store;
    GetRegValue(User, Letters(300), Letters(256), store);
    EXPECT_EQ(store.calls,
              (Calls{"open 80000001 " + Letters(299) + " 000F003F", "query 1 '" + Letters(255) + "' 256"}));
    GetRegValue(User, Letters(299), Letters(255), store);
    EXPECT_EQ(store.calls[3], "query 2 '" + Letters(255) + "' 256");
}

TEST(SetRegValue, MakesTheKeyWritesATextAndCloses) {
    FakeSettings store;
    EXPECT_EQ(SetRegValue(User, "A\\B", "Name", "text", store), 0);
    EXPECT_EQ(store.calls, (Calls{"create 80000001 A\\B 000F003F", "set 1 'Name' 1 5", "close 1"}));
    EXPECT_EQ(store.values["Name"], std::string("text\0", 5));
}

TEST(SetRegValue, EmptyTextIsOneZero) {
    FakeSettings store;
    SetRegValue(User, "A", "Name", "", store);
    EXPECT_EQ(store.calls[1], "set 1 'Name' 1 1");
    EXPECT_EQ(store.values["Name"], std::string(1, '\0'));
}

TEST(SetRegValue, KeyThatCannotBeMadeIsPassedOver) {
    FakeSettings store;
    store.createStatus = 5;
    EXPECT_EQ(SetRegValue(User, "A", "Name", "text", store), 0);
    EXPECT_EQ(store.calls, (Calls{"create 80000001 A 000F003F"}));
}

TEST(SetRegValue, StarIsTheDefaultValue) {
    FakeSettings store;
    SetRegValue(User, "A", "*", "text", store);
    EXPECT_EQ(store.calls[1], "set 1 '' 1 5");
}

TEST(SetRegValue, CutsNeitherPathNorName) {
    FakeSettings store;
    SetRegValue(User, Letters(400), Letters(300), "", store);
    EXPECT_EQ(store.calls[0], "create 80000001 " + Letters(400) + " 000F003F");
    EXPECT_EQ(store.calls[1], "set 1 '" + Letters(300) + "' 1 1");
}

TEST(SetRegValue, WritesZerosForWhatGoesBeyond2047Characters) {
    FakeSettings store;
    SetRegValue(User, "A", "Name", Letters(2047), store);
    EXPECT_EQ(store.values["Name"], Letters(2047) + std::string(1, '\0'));
    SetRegValue(User, "A", "Name", Letters(2048), store);
    EXPECT_EQ(store.values["Name"], Letters(2047) + std::string(2, '\0'));
    SetRegValue(User, "A", "Name", Letters(5000), store);
    EXPECT_EQ(store.values["Name"], Letters(2047) + std::string(2954, '\0'));
    EXPECT_EQ(store.calls[7], "set 3 'Name' 1 5001");
}

TEST(DeleteRegKey, OpensDeletesAndCloses) {
    FakeSettings store;
    EXPECT_EQ(DeleteRegKey(0x80000002, "A\\B", store), 0);
    EXPECT_EQ(store.calls, (Calls{"open 80000002 A\\B 000F003F", "delete key 80000002 A\\B", "close 1"}));
}

TEST(DeleteRegKey, TellsTheStatusOfDeletingAndClosesStill) {
    FakeSettings store;
    store.deleteKeyStatus = 5;
    EXPECT_EQ(DeleteRegKey(User, "A", store), 5);
    EXPECT_TRUE(store.openKeys.empty());
}

TEST(DeleteRegKey, KeyThatCannotBeOpenedIsNoFailure) {
    FakeSettings store;
    store.openStatus = NoSuchFile;
    EXPECT_EQ(DeleteRegKey(User, "A", store), 0);
    EXPECT_EQ(store.calls, (Calls{"open 80000001 A 000F003F"}));
}

TEST(DeleteRegKey, CutsThePath) {
    FakeSettings store;
    DeleteRegKey(User, Letters(255), store);
    EXPECT_EQ(store.calls[0], "open 80000001 " + Letters(254) + " 000F003F");
    EXPECT_EQ(store.calls[1], "delete key 80000001 " + Letters(254));
    DeleteRegKey(User, Letters(254), store);
    EXPECT_EQ(store.calls[3], "open 80000001 " + Letters(254) + " 000F003F");
}

} // namespace
