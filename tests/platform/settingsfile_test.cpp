// The file that keeps the settings on Linux: its form, its place, and what becomes of a damaged one.
#include "platform/registry.h"
#include "platform/settingsfile.h"
#include "tests/support/ownsettings.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace lumbrix;
using namespace tests;

constexpr SettingsRoot RootOfUser = 0x80000001;

// The values of key A\B in a text; none where the text is damaged.
std::vector<Setting> ValuesIn(const std::string& lines) {
    auto settings = Settings::FromText("[HKEY_CURRENT_USER\\A\\B]\n" + lines);
    return settings ? settings->Find(RootOfUser, "A\\B")->values : std::vector<Setting>();
}

bool IsDamaged(const std::string& text) { return !Settings::FromText(text).has_value(); }

TEST(SettingsText, IsForPeopleToRead) {
    Settings settings;
    settings.Add(RootOfUser, "SOFTWARE\\Lumbrix").values = {
        {"Delete", 1, std::string("C:\\a.bmp|C:\\b.bmp\0", 18)},
        {"", 1, std::string(1, '\0')},
        {"Number", 4, std::string("\0\x1A\xFF\x20", 4)},
        {"Nothing", 3, ""},
        {"Open", 1, "AB"},
        {"Zeros", 1, std::string("A\0\0", 3)},
    };
    settings.Add(0x80000005, "");
    EXPECT_EQ(settings.Text(), "# Settings of Lumbrix\n"
                               "\n"
                               "[HKEY_CURRENT_USER\\SOFTWARE\\Lumbrix]\n"
                               "\"Delete\" = \"C:\\a.bmp|C:\\b.bmp\"\n"
                               "\"\" = \"\"\n"
                               "\"Number\" = 4: 00 1A FF 20\n"
                               "\"Nothing\" = 3:\n"
                               "\"Open\" = 1: 41 42\n"
                               "\"Zeros\" = 1: 41 00 00\n"
                               "\n"
                               "[HKEY_CURRENT_CONFIG]\n");
}

TEST(SettingsText, IsReadAsItWasWritten) {
    std::string all;
    for (int byte = 1; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    const std::vector<Setting> values = {{all, 1, all + '\0'}, {"Bytes", 7, '\0' + all}, {"Nothing", 0xFFFFFFFF, ""}};
    Settings settings;
    settings.Add(0x80000002, "a\n]%\"\\[b").values = values;
    auto read = Settings::FromText(settings.Text());
    ASSERT_TRUE(read);
    ASSERT_NE(read->Find(0x80000002, "a\n]%\"\\[b"), nullptr);
    EXPECT_EQ(read->Find(0x80000002, "a\n]%\"\\[b")->values, values);
}

TEST(SettingsText, EscapesWhatCannotStandAsItIs) {
    EXPECT_EQ(ValuesIn("\"a\" = \"%22%25%0a%0A%7Fz\"\n"),
              (std::vector<Setting>{{"a", 1, "\"%\n\n\x7Fz" + std::string(1, '\0')}}));
    Settings settings;
    settings.Add(RootOfUser, "A%\n").values = {{"\x1F ~\x7F", 1, std::string("\"\xC3\xA4\0", 4)}};
    EXPECT_EQ(settings.Text(), "# Settings of Lumbrix\n\n[HKEY_CURRENT_USER\\A%25%0A]\n"
                               "\"%1F ~%7F\" = \"%22\xC3\xA4\"\n");
}

TEST(SettingsText, MayBeEmptyOrWithoutALastLineFeed) {
    EXPECT_FALSE(IsDamaged(""));
    EXPECT_FALSE(IsDamaged("\n# \"anything\n\n"));
    EXPECT_EQ(ValuesIn("\"a\" = \"b\""), (std::vector<Setting>{{"a", 1, std::string("b\0", 2)}}));
}

TEST(SettingsText, NamesOfRootsAreReadInAnyLetterCase) {
    auto settings = Settings::FromText("[hkey_users\\a]\n[HKEY_CLASSES_ROOT]\n");
    ASSERT_TRUE(settings);
    EXPECT_NE(settings->Find(0x80000003, "A"), nullptr);
    EXPECT_NE(settings->Find(0x80000000, ""), nullptr);
}

TEST(SettingsText, IsDamagedWhereAnyLineIs) {
    for (const std::string line : {"x",
                                   "[",
                                   "]",
                                   "[]",
                                   "[HKEY_CURRENT_USER",
                                   "[HKEY_NOBODY\\A]",
                                   "[HKEY_CURRENT_USER\\%2]",
                                   "\"a\"",
                                   "\"a",
                                   "\"a\" = ",
                                   "\"a\"= \"b\"",
                                   "\"a\" = \"b",
                                   "\"a\" = \"b\"c",
                                   "\"a\" = \"%G0\"",
                                   "\"a\" = \"%2\"",
                                   "\"%\" = \"\"",
                                   "\"a\" = x: 00",
                                   "\"a\" = 3",
                                   "\"a\" = 3 00",
                                   "\"a\" = 3: 0",
                                   "\"a\" = 3: 00 ",
                                   "\"a\" = 3:00",
                                   "\"a\" = 3: G0",
                                   "\"a\" = 3: 000",
                                   "\"a\" = 4294967296: 00",
                                   "a = \"b\"",
                                   "xa\" = \"b\""}) {
        EXPECT_TRUE(IsDamaged("[HKEY_CURRENT_USER\\A]\n\"ok\" = \"ok\"\n" + line + "\n")) << line;
    }
    EXPECT_TRUE(IsDamaged("\"a\" = \"of no key\"\n"));
}

TEST(SettingsText, NoTextIsTooBrokenToBeRead) {
    const std::string whole = "[HKEY_CURRENT_USER\\A]\n\"a%41\" = \"b%42\"\n\"c\" = 3: 00 01\n";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        Settings::FromText(whole.substr(0, length));
        std::string broken = whole;
        broken[length] = '\0';
        Settings::FromText(broken);
    }
}

TEST(SettingsKeys, EmptyPartsOfPathsCountForNothing) {
    Settings settings;
    settings.Add(RootOfUser, "\\A\\\\b\\");
    EXPECT_TRUE(settings.Has(RootOfUser, "a\\B"));
    EXPECT_EQ(settings.Find(RootOfUser, "A\\B")->path, "A\\b");
    EXPECT_EQ(&settings.Add(RootOfUser, "a\\b"), settings.Find(RootOfUser, "A\\B"));
}

TEST(SettingsKeys, AreBelowThosePartsOnly) {
    Settings settings;
    settings.Add(RootOfUser, "A\\B\\C");
    EXPECT_TRUE(settings.HasKeysBelow(RootOfUser, ""));
    EXPECT_TRUE(settings.HasKeysBelow(RootOfUser, "a"));
    EXPECT_FALSE(settings.HasKeysBelow(RootOfUser, "A\\B\\C"));
    EXPECT_FALSE(settings.HasKeysBelow(RootOfUser, "A\\B\\"
                                                   "D"));
    EXPECT_FALSE(settings.Has(RootOfUser, "A\\"
                                          "BB"));
    EXPECT_FALSE(settings.HasKeysBelow(0x80000000, ""));
    EXPECT_FALSE(settings.HasKeysBelow(0x80000002, ""));
    EXPECT_FALSE(settings.Has(0x80000002, "A"));
    settings.Add(RootOfUser, "A\\B\\CC");
    EXPECT_FALSE(settings.HasKeysBelow(RootOfUser, "A\\B\\C"));
    EXPECT_TRUE(settings.Has(0x80000002, ""));
    EXPECT_FALSE(settings.Has(0x80000004, ""));
}

TEST(SettingsKeys, RemovedOneLeavesTheOneAbove) {
    Settings settings;
    settings.Add(RootOfUser, "A\\B\\C");
    settings.Remove(RootOfUser, "a\\b\\c\\");
    EXPECT_FALSE(settings.Has(RootOfUser, "A\\B\\C"));
    EXPECT_NE(settings.Find(RootOfUser, "A\\B"), nullptr);
    settings.Add(RootOfUser, "X");
    settings.Remove(RootOfUser, "X");
    EXPECT_FALSE(settings.Has(RootOfUser, "X"));
}

class SettingsFileOnDisk : public testing::Test {
  protected:
    std::filesystem::path File() const { return own_.Folder() / "settings"; }
    static void Set(const std::string& name, const std::string& data) { SetRegValue(RootOfUser, "A\\B", name, data); }
    static std::string Get(const std::string& name) { return GetRegValue(RootOfUser, "A\\B", name); }

    // Puts a file of this content in the settings' place.
    void Put(const std::string& bytes) const {
        std::filesystem::create_directories(own_.Folder());
        WriteBytes(File(), bytes);
    }

    OwnSettings own_;
};

const std::string ValidFile = "[HKEY_CURRENT_USER\\A\\B]\n\"Name\" = \"text\"\n";

TEST_F(SettingsFileOnDisk, LiesInTheFolderForConfiguration) {
    Set("Name", "text");
    EXPECT_EQ(ReadBytes(File()), "# Settings of Lumbrix\n\n[HKEY_CURRENT_USER\\A\\B]\n\"Name\" = \"text\"\n");
    struct stat facts {};
    ASSERT_EQ(stat(File().c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777, 0600u);
}

TEST_F(SettingsFileOnDisk, LiesBelowTheHomeFolderWithoutOne) {
    TemporaryFolder home;
    const EnvironmentVariable asHome("HOME", home.Path().c_str());
    for (const char* noFullPath : {static_cast<const char*>(nullptr), "", "somewhere"}) {
        const EnvironmentVariable none("XDG_CONFIG_HOME", noFullPath);
        std::filesystem::remove_all(home / ".config");
        Set("Name", "text");
        EXPECT_EQ(Get("Name"), "text");
        EXPECT_TRUE(std::filesystem::exists(home / ".config" / "lumbrix" / "settings"));
    }
    EXPECT_FALSE(std::filesystem::exists(File()));
}

TEST_F(SettingsFileOnDisk, UserWithoutAHomeHasNoSettings) {
    const EnvironmentVariable none("XDG_CONFIG_HOME", nullptr);
    const EnvironmentVariable noHome("HOME", nullptr);
    EXPECT_EQ(SetRegValue(RootOfUser, "A\\B", "Name", "text"), 0);
    EXPECT_EQ(Get("Name"), "");
    EXPECT_EQ(DeleteRegValue(RootOfUser, "A\\B", "Name"), 2);
    SettingsStore::Key key = 0;
    EXPECT_EQ(SystemSettings().CreateKey(RootOfUser, "A", 0xF003F, key), 1013);
    EXPECT_EQ(key, 0u);
}

TEST_F(SettingsFileOnDisk, LeavesNoOtherFiles) {
    TemporaryFolder temporary;
    const TemporaryFilesIn there(temporary.Path());
    Set("Name", "text");
    Set("Name", "new");
    EXPECT_TRUE(std::filesystem::is_empty(temporary.Path()));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(own_.Folder()), {}), 1);
}

TEST_F(SettingsFileOnDisk, ReadingMakesNone) {
    Get("Name");
    DeleteRegValue(RootOfUser, "A\\B", "Name");
    DeleteRegKey(RootOfUser, "A\\B");
    EXPECT_FALSE(std::filesystem::exists(own_.Folder()));
}

TEST_F(SettingsFileOnDisk, MayBeWrittenByHand) {
    Put("# mine\n[hkey_current_user\\a]\n[HKEY_CURRENT_USER\\A\\B]\n\"NAME\" = \"first\"\n\"Name\" = \"second\"\n");
    EXPECT_EQ(Get("Name"), "first");
    EXPECT_EQ(DeleteRegValue(RootOfUser, "A\\B", "Name"), 0);
    EXPECT_EQ(Get("Name"), "");
}

TEST_F(SettingsFileOnDisk, DamagedOneReadsAsEmptyAndIsReplaced) {
    Put(ValidFile + "damaged\n");
    EXPECT_EQ(Get("Name"), "");
    Set("Other", "other");
    EXPECT_EQ(Get("Other"), "other");
    EXPECT_EQ(Get("Name"), "");
}

TEST_F(SettingsFileOnDisk, FileOfMoreThanAMegabyteReadsAsEmpty) {
    Put(ValidFile + std::string((1 << 20) - ValidFile.size(), '\n'));
    EXPECT_EQ(Get("Name"), "text");
    Put(ValidFile + std::string((1 << 20) - ValidFile.size() + 1, '\n'));
    EXPECT_EQ(Get("Name"), "");
}

TEST_F(SettingsFileOnDisk, WhatIsNoFileReadsAsEmpty) {
    std::filesystem::create_directories(File());
    EXPECT_EQ(Get("Name"), "");
    EXPECT_EQ(SetRegValue(RootOfUser, "A\\B", "Name", "text"), 0);
    EXPECT_EQ(Get("Name"), "");
    std::filesystem::remove(File());
    ASSERT_EQ(mkfifo(File().c_str(), 0600), 0);
    EXPECT_EQ(Get("Name"), ""); // and is not waited for
}

// No file may grow while this lives, as on a full disk.
class FullDisk {
  public:
    FullDisk() : signalBefore_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit none{0, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signalBefore_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    rlimit before_{};
    void (*signalBefore_)(int);
};

TEST_F(SettingsFileOnDisk, FailureToWriteIsTold) {
    Put(ValidFile);
    SettingsStore::Key key = 0;
    ASSERT_EQ(SystemSettings().OpenKey(RootOfUser, "A\\B", 0xF003F, key), 0);
    {
        const FullDisk full;
        EXPECT_EQ(SystemSettings().SetValue(key, "Name", 1, "new", 4), 1013);
        EXPECT_EQ(SystemSettings().DeleteValue(key, "Name"), 1013);
        EXPECT_EQ(SystemSettings().DeleteKey(RootOfUser, "A\\B"), 1013);
    }
    SystemSettings().CloseKey(key);
    EXPECT_EQ(ReadBytes(File()), ValidFile);
}

TEST_F(SettingsFileOnDisk, ValueWrittenAgainHasItsNewType) {
    SettingsStore::Key key = 0;
    ASSERT_EQ(SystemSettings().CreateKey(RootOfUser, "A\\B", 0xF003F, key), 0);
    ASSERT_EQ(SystemSettings().SetValue(key, "Name", 1, "text", 5), 0);
    ASSERT_EQ(SystemSettings().SetValue(key, "NAME", 3, "AB", 2), 0);
    SystemSettings().CloseKey(key);
    EXPECT_EQ(ReadBytes(File()), "# Settings of Lumbrix\n\n[HKEY_CURRENT_USER\\A\\B]\n\"Name\" = 3: 41 42\n");
}

TEST_F(SettingsFileOnDisk, RootIsNotDeleted) {
    Set("Name", "text");
    EXPECT_EQ(DeleteRegKey(RootOfUser, ""), 5);
    EXPECT_EQ(DeleteRegKey(0x80000002, "\\\\"), 5);
}

// What processes write at the same time is all there in the end.
TEST_F(SettingsFileOnDisk, ProcessesDoNotUndoEachOthersChanges) {
    constexpr int Processes = 4, Writes = 25;
    std::vector<pid_t> children;
    for (int process = 0; process < Processes; ++process) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int i = 0; i < Writes; ++i) {
                Set(std::to_string(process) + "-" + std::to_string(i), "text");
            }
            _exit(0);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(Settings::FromText(ReadBytes(File()))->Find(RootOfUser, "A\\B")->values.size(), 100u);
}

} // namespace
