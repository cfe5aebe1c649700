// The user's folders by number.
#include "platform/userfolders.h"

#include "tests/support/environment.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

std::optional<std::string> DesktopIn(const std::string& file) {
    return NamedUserFolder(file, "XDG_DESKTOP_DIR", "/home/user");
}

TEST(NamedUserFolder, LiesBelowTheUsersOwnOrAnywhere) {
    EXPECT_EQ(DesktopIn("XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n"), "/home/user/Schreibtisch");
    EXPECT_EQ(DesktopIn("XDG_DESKTOP_DIR=\"/data/desk top\"\n"), "/data/desk top");
    EXPECT_EQ(DesktopIn("XDG_DESKTOP_DIR=\"$HOME/\"\n"), "/home/user");
    EXPECT_EQ(DesktopIn("XDG_DESKTOP_DIR=\"$HOME\"\n"), "/home/user");
    EXPECT_EQ(DesktopIn("XDG_DESKTOP_DIR=\"/\""), "/");
    EXPECT_EQ(DesktopIn("XDG_DESKTOP_DIR=\"/a//\""), "/a");
}

TEST(NamedUserFolder, IsTheLastOfItsName) {
    EXPECT_EQ(DesktopIn("# XDG_DESKTOP_DIR=\"/a\"\nXDG_DESKTOP_DIR=\"/b\"\nXDG_MUSIC_DIR=\"/c\"\n\n"
                        "XDG_DESKTOP_DIR=\"/d\"\nXDG_DESKTOP_DIR_OLD=\"/e\"\nXDG_DESKTOP_DIR=\"f\"\n"),
              "/d");
}

TEST(NamedUserFolder, MayHaveBlanksAndBackslashesAroundIt) {
    EXPECT_EQ(DesktopIn(" \tXDG_DESKTOP_DIR = \"/a\\\"b\\\\c\" # mine"), "/a\"b\\c");
    EXPECT_EQ(DesktopIn("XDG_DESKTOP_DIR=\"/a\\"), "/a\\");
}

TEST(NamedUserFolder, IsNoneWhereTheFileDoesNotSay) {
    for (const char* text :
         {"", "XDG_DESKTOP_DIR", "XDG_DESKTOP_DIR=", "XDG_DESKTOP_DIR=/a", "XDG_DESKTOP_DIR=\"a\"",
          "XDG_DESKTOP_DIR=\"\"", "XDG_DESKTOP_DIR=\"$HOMES/a\"", "XDG_DESKTOP_DIR\"/a\"", "XDG_MUSIC_DIR=\"/a\""}) {
        EXPECT_EQ(DesktopIn(text), std::nullopt) << text;
    }
}

// A user's own folder that says nothing at first.
class FoldersOfUser : public testing::Test {
  protected:
    void Say(const std::string& folder, const std::string& text) {
        std::filesystem::create_directories(home_ / folder);
        WriteBytes(home_ / folder / "user-dirs.dirs", text);
    }
    std::string Below(const std::string& name) const { return home_.Path().string() + "/" + name; }

    TemporaryFolder home_;
    EnvironmentVariable homeVariable_{"HOME", home_.Path().c_str()};
    EnvironmentVariable configuration_{"XDG_CONFIG_HOME", nullptr};
    EnvironmentVariable data_{"XDG_DATA_HOME", nullptr};
};

TEST_F(FoldersOfUser, HaveTheirEnglishNames) {
    EXPECT_EQ(UserFolder(0), Below("Desktop"));
    EXPECT_EQ(UserFolder(16), Below("Desktop"));
    EXPECT_EQ(UserFolder(5), Below("Documents"));
    EXPECT_EQ(UserFolder(8), Below(".local/share/RecentDocuments"));
    EXPECT_EQ(UserFolder(13), Below("Music"));
    EXPECT_EQ(UserFolder(14), Below("Videos"));
    EXPECT_EQ(UserFolder(39), Below("Pictures"));
    EXPECT_EQ(UserFolder(40), home_.Path().string());
}

TEST_F(FoldersOfUser, HaveTheNamesThatTheUserGave) {
    Say(".config",
        "XDG_DESKTOP_DIR=\"/1\"\nXDG_DOCUMENTS_DIR=\"/2\"\nXDG_MUSIC_DIR=\"/3\"\nXDG_VIDEOS_DIR=\"$HOME/4\"\n"
        "XDG_PICTURES_DIR=\"/5\"\n");
    EXPECT_EQ(UserFolder(0), "/1");
    EXPECT_EQ(UserFolder(16), "/1");
    EXPECT_EQ(UserFolder(5), "/2");
    EXPECT_EQ(UserFolder(13), "/3");
    EXPECT_EQ(UserFolder(14), Below("4"));
    EXPECT_EQ(UserFolder(39), "/5");
}

TEST_F(FoldersOfUser, AreWhereTheEnvironmentSays) {
    Say("own", "XDG_DESKTOP_DIR=\"/1\"\n");
    const EnvironmentVariable configuration("XDG_CONFIG_HOME", Below("own").c_str());
    const EnvironmentVariable data("XDG_DATA_HOME", "/data/");
    EXPECT_EQ(UserFolder(16), "/1");
    EXPECT_EQ(UserFolder(8), "/data/RecentDocuments");
    const EnvironmentVariable relative("XDG_DATA_HOME", "data");
    EXPECT_EQ(UserFolder(8), Below(".local/share/RecentDocuments"));
}

TEST_F(FoldersOfUser, FileBeyondAllMeasureSaysNothing) {
    const std::string line = "XDG_DESKTOP_DIR=\"/1\"\n";
    Say(".config", line + std::string((1 << 20) - line.size(), '\n'));
    EXPECT_EQ(UserFolder(16), "/1");
    Say(".config", line + std::string((1 << 20) + 1 - line.size(), '\n'));
    EXPECT_EQ(UserFolder(16), Below("Desktop"));
}

TEST_F(FoldersOfUser, HaveNoOtherNumbers) {
    for (const std::int32_t number : {-1, 1, 2, 4, 6, 7, 9, 12, 15, 17, 38, 41, 9999}) {
        EXPECT_EQ(UserFolder(number), std::nullopt) << number;
    }
}

TEST_F(FoldersOfUser, AreNoneWithoutAnOwnFolder) {
    for (const char* home : {static_cast<const char*>(nullptr), "", "relative"}) {
        const EnvironmentVariable none("HOME", home);
        EXPECT_EQ(UserFolder(16), std::nullopt);
        EXPECT_EQ(UserFolder(40), std::nullopt);
    }
    const EnvironmentVariable separated("HOME", "/a/");
    EXPECT_EQ(UserFolder(40), "/a");
}

} // namespace
