// What differs between the systems: patterns for names, which shells resolve on Linux, and code pages.
#include "cli/system.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix::cli;

class FilesOfAPattern : public testing::Test {
  protected:
    FilesOfAPattern() {
        for (const char* name : {"b.jpg", "a.jpg", "c.png"}) {
            tests::WriteBytes(folder_ / name, "");
        }
        std::filesystem::create_directory(folder_ / "d.jpg");
    }

    std::string Name(const std::string& name) const { return NameOf(folder_.Path() / name); }

    tests::TemporaryFolder folder_;
};

TEST_F(FilesOfAPattern, NameWithoutOneIsItself) {
    EXPECT_EQ(FilesMeant(Name("a.jpg")), std::vector{Name("a.jpg")});
    EXPECT_EQ(FilesMeant("-"), std::vector<std::string>{"-"});
    EXPECT_EQ(FilesMeant(Name("none.jpg")), std::vector{Name("none.jpg")});
}

#ifdef _WIN32
TEST_F(FilesOfAPattern, FilesAreSortedAndFoldersLeftOut) {
    EXPECT_EQ(FilesMeant(Name("*.jpg")), (std::vector{Name("a.jpg"), Name("b.jpg")}));
    EXPECT_EQ(FilesMeant(Name("?.png")), std::vector{Name("c.png")});
}

TEST_F(FilesOfAPattern, PatternThatFitsNothingIsItself) {
    EXPECT_EQ(FilesMeant(Name("*.gif")), std::vector{Name("*.gif")});
    EXPECT_EQ(FilesMeant(Name("d*.jpg")), std::vector{Name("d*.jpg")});
}

TEST(CodePage, NamesBecomeUtf8) { EXPECT_EQ(Utf8Of(NameOf(L"\u00E4.jpg")), "\xC3\xA4.jpg"); }
#else
TEST_F(FilesOfAPattern, ShellsResolveThem) { EXPECT_EQ(FilesMeant(Name("*.jpg")), std::vector{Name("*.jpg")}); }

TEST(CodePage, NamesStayAsTheyAre) { EXPECT_EQ(Utf8Of("\xC3\xA4\xFF"), "\xC3\xA4\xFF"); }
#endif

} // namespace
