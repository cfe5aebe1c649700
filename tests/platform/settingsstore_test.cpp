// The user's settings as the system keeps them: the registry, or the file in its place.
#include "platform/registry.h"
#include "tests/support/ownsettings.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

constexpr SettingsRoot UsersRoot = 0x80000001;

class SystemStore : public testing::Test {
  protected:
    std::string Key(const std::string& below = "") const { return own_.Key() + below; }

    void Set(const std::string& name, const std::string& data) { SetRegValue(UsersRoot, Key(), name, data); }
    std::string Get(const std::string& name) const { return GetRegValue(UsersRoot, Key(), name); }

    // A value as it stands: its status, or its bytes and its type.
    struct Read {
        std::int32_t status;
        std::string bytes;
        std::uint32_t type = 1;
        bool operator==(const Read&) const = default;
    };
    Read ReadValue(const std::string& name) const {
        SettingsStore::Key key = 0;
        EXPECT_EQ(SystemSettings().OpenKey(UsersRoot, Key().c_str(), 0xF003F, key), 0);
        std::string bytes(100, 'x');
        std::uint32_t type = 99;
        std::uint32_t length = 100;
        const std::int32_t status = SystemSettings().QueryValue(key, name.c_str(), type, bytes.data(), length);
        SystemSettings().CloseKey(key);
        return status == 0 ? Read{0, bytes.substr(0, length), type} : Read{status, "", type};
    }

    std::int32_t StatusOfOpening(SettingsRoot root, const std::string& path) const {
        SettingsStore::Key key = 0;
        const std::int32_t status = SystemSettings().OpenKey(root, path.c_str(), 0xF003F, key);
        SystemSettings().CloseKey(key);
        return status;
    }

    OwnSettings own_;
};

TEST_F(SystemStore, KeepsWhatWasWritten) {
    Set("Name", "C:\\a b\\c.bmp|\"d\" 100%");
    Set("Other", "other");
    EXPECT_EQ(Get("Name"), "C:\\a b\\c.bmp|\"d\" 100%");
    Set("Name", "new");
    EXPECT_EQ(Get("Name"), "new");
    EXPECT_EQ(Get("Other"), "other");
}

TEST_F(SystemStore, KeyThatIsMissingReadsAsEmpty) { EXPECT_EQ(Get("Name"), ""); }

TEST_F(SystemStore, EmptyTextIsAValueOfOneZero) {
    Set("Name", "");
    EXPECT_EQ(ReadValue("Name"), (Read{0, std::string(1, '\0')}));
    EXPECT_EQ(ReadValue("Missing"), (Read{2, "", 99}));
}

TEST_F(SystemStore, PassesOverLetterCase) {
    Set("Name", "text");
    std::string other = Key();
    other.replace(0, 8, "software");
    EXPECT_EQ(GetRegValue(UsersRoot, other, "nAME"), "text");
    SetRegValue(UsersRoot, other, "NAME", "new");
    EXPECT_EQ(Get("Name"), "new");
    EXPECT_EQ(DeleteRegValue(UsersRoot, other, "nAmE"), 0);
    EXPECT_EQ(ReadValue("Name"), (Read{2, "", 99}));
}

TEST_F(SystemStore, LongValueReadsAsEmpty) {
    Set("Name", std::string(255, 'x'));
    EXPECT_EQ(Get("Name"), std::string(255, 'x'));
    Set("Name", std::string(256, 'x'));
    EXPECT_EQ(Get("Name"), "");
}

TEST_F(SystemStore, LongValueLeavesTheCallersTypeAndBytes) {
    Set("Name", "text");
    SettingsStore::Key key = 0;
    ASSERT_EQ(SystemSettings().OpenKey(UsersRoot, Key().c_str(), 0xF003F, key), 0);
    std::string bytes = "abcd";
    std::uint32_t type = 99;
    std::uint32_t length = 4;
    EXPECT_EQ(SystemSettings().QueryValue(key, "Name", type, bytes.data(), length), 234);
    EXPECT_EQ(type, 99u);
    EXPECT_EQ(bytes, "abcd");
    EXPECT_EQ(length, 5u);
    SystemSettings().CloseKey(key);
}

TEST_F(SystemStore, DeletesAValueOnce) {
    Set("Name", "text");
    Set("Other", "other");
    EXPECT_EQ(DeleteRegValue(UsersRoot, Key(), "Name"), 0);
    EXPECT_EQ(DeleteRegValue(UsersRoot, Key(), "Name"), 2);
    EXPECT_EQ(Get("Name"), "");
    EXPECT_EQ(Get("Other"), "other");
    EXPECT_EQ(DeleteRegValue(UsersRoot, Key("\\none"), "Name"), 2);
}

TEST_F(SystemStore, StarIsTheDefaultValue) {
    Set("*", "default");
    EXPECT_EQ(ReadValue(""), (Read{0, std::string("default\0", 8)}));
    EXPECT_EQ(Get("*"), "default");
    EXPECT_EQ(DeleteRegValue(UsersRoot, Key(), "*"), 0);
    EXPECT_EQ(ReadValue(""), (Read{2, "", 99}));
}

TEST_F(SystemStore, NonTextReadsAsItsBytesUpToTheFirstZero) {
    SettingsStore::Key key = 0;
    ASSERT_EQ(SystemSettings().CreateKey(UsersRoot, Key().c_str(), 0xF003F, key), 0);
    ASSERT_EQ(SystemSettings().SetValue(key, "Number", 4, "\x41\x42\0\0", 4), 0);
    ASSERT_EQ(SystemSettings().SetValue(key, "Bytes", 3, "\x43", 1), 0);
    SystemSettings().CloseKey(key);
    EXPECT_EQ(Get("Number"), "AB");
    EXPECT_EQ(Get("Bytes"), "C");
    EXPECT_EQ(ReadValue("Bytes"), (Read{0, "C", 3}));
    EXPECT_EQ(ReadValue("Number"), (Read{0, std::string("AB\0\0", 4), 4}));
}

TEST_F(SystemStore, MakesTheKeysAboveToo) {
    SetRegValue(UsersRoot, Key("\\a\\b"), "Name", "text");
    EXPECT_EQ(StatusOfOpening(UsersRoot, Key("\\a")), 0);
    EXPECT_EQ(StatusOfOpening(UsersRoot, Key("\\b")), 2);
    EXPECT_EQ(StatusOfOpening(UsersRoot, ""), 0);
}

TEST_F(SystemStore, DeletesAKeyWithItsValuesAndNotTheOneAbove) {
    SetRegValue(UsersRoot, Key("\\a\\b"), "Name", "text");
    EXPECT_EQ(DeleteRegKey(UsersRoot, Key("\\a\\b")), 0);
    EXPECT_EQ(StatusOfOpening(UsersRoot, Key("\\a\\b")), 2);
    EXPECT_EQ(StatusOfOpening(UsersRoot, Key("\\a")), 0);
    SetRegValue(UsersRoot, Key("\\a\\b"), "Other", "");
    EXPECT_EQ(GetRegValue(UsersRoot, Key("\\a\\b"), "Name"), "");
}

TEST_F(SystemStore, KeyWithKeysBelowIsNotDeleted) {
    SetRegValue(UsersRoot, Key("\\a\\b"), "Name", "text");
    SetRegValue(UsersRoot, Key("\\a b"), "Name", "beside");
    EXPECT_EQ(DeleteRegKey(UsersRoot, Key("\\a")), 5);
    EXPECT_EQ(GetRegValue(UsersRoot, Key("\\a\\b"), "Name"), "text");
    EXPECT_EQ(DeleteRegKey(UsersRoot, Key("\\a b")), 0);
    EXPECT_EQ(SystemSettings().DeleteKey(UsersRoot, Key("\\none").c_str()), 2);
}

TEST_F(SystemStore, KeyDeletedWhileOpenIsWrittenNoMore) {
    SettingsStore::Key key = 0;
    ASSERT_EQ(SystemSettings().CreateKey(UsersRoot, Key().c_str(), 0xF003F, key), 0);
    ASSERT_EQ(SystemSettings().DeleteKey(UsersRoot, Key().c_str()), 0);
    EXPECT_EQ(SystemSettings().SetValue(key, "Name", 1, "", 1), 1018);
    EXPECT_EQ(StatusOfOpening(UsersRoot, Key()), 2);
    SystemSettings().CloseKey(key);
}

TEST_F(SystemStore, RefusesWhatIsNoRootAndWhatIsNotOpen) {
    constexpr SettingsRoot NoRoot = 0x12345678;
    SettingsStore::Key key = 7;
    EXPECT_EQ(SystemSettings().OpenKey(NoRoot, "A", 0xF003F, key), 6);
    EXPECT_EQ(SystemSettings().CreateKey(NoRoot, "A", 0xF003F, key), 6);
    EXPECT_EQ(key, 7u);
    EXPECT_EQ(SystemSettings().DeleteKey(NoRoot, "A"), 6);
    EXPECT_EQ(SystemSettings().CloseKey(0), 6);
    EXPECT_EQ(SystemSettings().SetValue(0, "Name", 1, "", 1), 6);
    EXPECT_EQ(SystemSettings().DeleteValue(0, "Name"), 6);
    std::uint32_t type = 0;
    std::uint32_t length = 0;
    EXPECT_EQ(SystemSettings().QueryValue(0, "Name", type, nullptr, length), 6);
}

TEST_F(SystemStore, ClosesAKeyOnce) {
    SettingsStore::Key key = 0;
    ASSERT_EQ(SystemSettings().CreateKey(UsersRoot, Key().c_str(), 0xF003F, key), 0);
    EXPECT_EQ(SystemSettings().CloseKey(key), 0);
    EXPECT_EQ(SystemSettings().CloseKey(key), 6);
}

} // namespace
