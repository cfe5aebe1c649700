// The file of a link on Linux, and the shell that reads and writes such.
#include "platform/linkfile.h"

#include "platform/shelllink.h"
#include "tests/support/environment.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

const LinkFields AnyLink = {"/bin/a", "/work", "-x = y", "What it is", "/icons/b.ico", -3, 7, 65535};
const std::string AnyLinkText = "[Link]\n"
                                "Target=/bin/a\n"
                                "WorkingFolder=/work\n"
                                "Arguments=-x = y\n"
                                "Description=What it is\n"
                                "IconFile=/icons/b.ico\n"
                                "IconIndex=-3\n"
                                "ShowCommand=7\n"
                                "HotKey=65535\n";

TEST(LinkFile, HasOneFieldALine) {
    EXPECT_EQ(LinkFileText(AnyLink), AnyLinkText);
    EXPECT_EQ(LinkFromFileText(AnyLinkText), AnyLink);
}

TEST(LinkFile, OfAnEmptyLink) {
    const std::string text = "[Link]\nTarget=\nWorkingFolder=\nArguments=\nDescription=\nIconFile=\nIconIndex=0\n"
                             "ShowCommand=1\nHotKey=0\n";
    EXPECT_EQ(LinkFileText({}), text);
    EXPECT_EQ(LinkFromFileText(text), LinkFields());
}

TEST(LinkFile, EscapesControlCharactersAndPercentSignsOnly) {
    const LinkFields fields = {.target = "a\nb\r%\x7F\x1F", .description = " \"\\\xC3\xA4\xFF~"};
    const std::string text = LinkFileText(fields);
    EXPECT_NE(text.find("\nTarget=a%0Ab%0D%25%7F%1F\n"), std::string::npos);
    EXPECT_NE(text.find("\nDescription= \"\\\xC3\xA4\xFF~\n"), std::string::npos);
    EXPECT_EQ(LinkFromFileText(text), fields);
}

TEST(LinkFile, KeepsEveryByte) {
    LinkFields fields;
    for (int byte = 1; byte < 256; ++byte) {
        fields.arguments += static_cast<char>(byte);
    }
    EXPECT_EQ(LinkFromFileText(LinkFileText(fields)), fields);
}

TEST(LinkFile, MustBeWhole) {
    for (std::size_t length = 0; length < AnyLinkText.size(); ++length) {
        EXPECT_FALSE(LinkFromFileText(AnyLinkText.substr(0, length))) << length;
    }
    EXPECT_FALSE(LinkFromFileText(AnyLinkText + "\n"));
    EXPECT_FALSE(LinkFromFileText("\n" + AnyLinkText));
}

// The text with a part of it changed.
std::string Changed(const std::string& before, const std::string& after) {
    std::string text = AnyLinkText;
    return text.replace(text.find(before), before.size(), after);
}

TEST(LinkFile, MustNotBeOfAnotherForm) {
    ASSERT_TRUE(LinkFromFileText(Changed("/bin/a", "%41%6a")));
    for (const char* target : {"%", "%4", "%4G", "% 4", "%+4", "a%"}) {
        EXPECT_FALSE(LinkFromFileText(Changed("/bin/a", target))) << target;
    }
    for (const char* number : {"65536", "-1", "", " 1", "1 ", "x"}) {
        EXPECT_FALSE(LinkFromFileText(Changed("65535", number))) << number;
    }
    EXPECT_FALSE(LinkFromFileText(Changed("[Link]", "[link]")));
    EXPECT_FALSE(LinkFromFileText(Changed("Target=", "Target:")));
    EXPECT_FALSE(LinkFromFileText(Changed("Target", "Tarhet")));
    EXPECT_FALSE(LinkFromFileText(Changed("HotKey=65535\n", "")));
}

// The user's own folder is one of the test's, with a desktop in it, and so is the current one.
class RecordedLink : public testing::Test {
  protected:
    RecordedLink() {
        std::filesystem::create_directory(folder_ / "Desktop");
        std::filesystem::create_directory(folder_ / "current");
        std::filesystem::current_path(folder_ / "current");
    }
    ~RecordedLink() override { std::filesystem::current_path(before_); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    TemporaryFolder folder_;
    std::filesystem::path before_ = std::filesystem::current_path();
    EnvironmentVariable home_{"HOME", folder_.Path().c_str()};
    EnvironmentVariable configuration_{"XDG_CONFIG_HOME", nullptr};
};

TEST_F(RecordedLink, LiesInTheFolderAsText) {
    LinkFields fields = AnyLink;
    fields.hotKey = 0;
    CreateLink(16, "Name", AnyLink);
    EXPECT_EQ(ReadBytes(Path("Desktop/Name.lnk")), LinkFileText(fields));
    LinkFields read;
    EXPECT_EQ(GetShellLinkInfo(Path("Desktop/Name.lnk"), read), 1);
    EXPECT_EQ(read, fields);
}

TEST_F(RecordedLink, ReplacesTheOneBefore) {
    CreateLink(16, "Name", AnyLink);
    CreateLink(16, "Name", {.target = "new"});
    EXPECT_EQ(ReadBytes(Path("Desktop/Name.lnk")), LinkFileText({.target = "new"}));
}

TEST_F(RecordedLink, OfAnUnknownFolderLiesInTheCurrentOne) {
    CreateLink(99, "Name", AnyLink);
    EXPECT_TRUE(std::filesystem::exists(folder_ / "current" / "Name.lnk"));
    EXPECT_EQ(GetDestinationFolder(99), "");
}

TEST_F(RecordedLink, ThatCannotBeWrittenIsPassedOver) {
    CreateLink(16, "none/Name", AnyLink);
    EXPECT_TRUE(std::filesystem::is_empty(folder_ / "Desktop"));
    EXPECT_TRUE(std::filesystem::is_empty(folder_ / "current"));
}

TEST_F(RecordedLink, KeepsWhatIsNoUtf8) {
    CreateLink(16, "\xFFn\xC3\xA4me", {.target = "/\xFE"});
    LinkFields read;
    EXPECT_EQ(GetShellLinkInfo(Path("Desktop/\xFFn\xC3\xA4me.lnk"), read), 1);
    EXPECT_EQ(read.target, "/\xFE");
}

TEST_F(RecordedLink, FileThatIsNoLinkReadsAsAnEmptyOne) {
    WriteBytes(folder_ / "broken.lnk", "[Link]\nTarget=a\n");
    for (const char* name : {"broken.lnk", "missing.lnk", "Desktop"}) {
        LinkFields read = AnyLink;
        EXPECT_EQ(GetShellLinkInfo(Path(name), read), 1) << name;
        EXPECT_EQ(read, LinkFields()) << name;
    }
}

TEST_F(RecordedLink, FileBeyondAllMeasureReadsAsAnEmptyOne) {
    const std::size_t rest = (1 << 20) - LinkFileText({}).size();
    LinkFields read;
    WriteBytes(folder_ / "a.lnk", LinkFileText({.target = std::string(rest, 'a')}));
    GetShellLinkInfo(Path("a.lnk"), read);
    EXPECT_EQ(read.target, std::string(1023, 'a'));
    WriteBytes(folder_ / "a.lnk", LinkFileText({.target = std::string(rest + 1, 'a')}));
    GetShellLinkInfo(Path("a.lnk"), read);
    EXPECT_EQ(read.target, "");
}

TEST_F(RecordedLink, TextsAreReadUpTo1023Bytes) {
    const LinkFields fields = {.target = std::string(1023, 'a'), .arguments = std::string(1024, 'b')};
    CreateLink(16, "Name", fields);
    LinkFields read;
    EXPECT_EQ(GetShellLinkInfo(Path("Desktop/Name.lnk"), read), 1);
    EXPECT_EQ(read.target, std::string(1023, 'a'));
    EXPECT_EQ(read.arguments, std::string(1023, 'b'));
}

TEST_F(RecordedLink, IsGivenAnotherIcon) {
    WriteBytes(folder_ / "a.lnk", AnyLinkText);
    EXPECT_EQ(ChangeLinkIcon(Path("a.lnk"), "new.ico"), "/icons/b.ico");
    LinkFields expected = AnyLink;
    expected.iconFile = "new.ico";
    expected.iconIndex = 0;
    expected.hotKey = 255;
    EXPECT_EQ(ReadBytes(Path("a.lnk")), LinkFileText(expected));
}

TEST_F(RecordedLink, LongFolderCountsAsNone) {
    const std::string home = "/" + std::string(250, 'h');
    {
        const EnvironmentVariable longHome("HOME", home.c_str());
        EXPECT_EQ(GetDestinationFolder(16), home + "/Desktop"); // 259 bytes
    }
    const EnvironmentVariable longerHome("HOME", (home + "h").c_str());
    EXPECT_EQ(GetDestinationFolder(16), "");
}

TEST_F(RecordedLink, ObjectIsGoneWithItsLastReference) {
    ShellSystem& shell = SystemShell();
    const ShellSystem::Link link = ShellLinkFactory();
    const ShellSystem::LinkFile file = shell.QueryLinkFile(link);
    const ShellSystem::Link other = ShellLinkFactory();
    EXPECT_NE(other, link);
    shell.SetShowCmd(link, 5);
    shell.ReleaseLinkFile(file);
    std::int32_t command = 0;
    shell.GetShowCmd(link, command);
    EXPECT_EQ(command, 5);
    shell.GetShowCmd(other, command);
    EXPECT_EQ(command, 1);
    shell.ReleaseLink(link);
    shell.GetShowCmd(link, command);
    EXPECT_EQ(command, 1);
    shell.ReleaseLink(link);
    shell.ReleaseLink(link); // one too many
    shell.ReleaseLink(other);
}

TEST_F(RecordedLink, WideNameIsCutWhereItDoesNotFit) {
    std::u16string wide(4, u'x');
    SystemShell().MakeWide("abc", wide.data(), 4);
    EXPECT_EQ(wide, std::u16string(u"abc\0", 4));
    SystemShell().MakeWide("ab\xC3\xA4"
                           "cd",
                           wide.data(), 4);
    EXPECT_EQ(wide, std::u16string(u"ab\u00E4\0", 4));
}

TEST_F(RecordedLink, DesktopHasTwoNumbers) {
    EXPECT_EQ(GetDestinationFolder(0), Path("Desktop"));
    EXPECT_EQ(GetDestinationFolder(16), Path("Desktop"));
    EXPECT_EQ(GetDestinationFolder(-1), "");
    ShellSystem::ItemList list = 0;
    EXPECT_NE(SystemShell().SpecialFolder(-1, list), 0);
    EXPECT_EQ(list, 0u);
}

} // namespace
