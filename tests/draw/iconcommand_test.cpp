// What is said where an icon is made without a window.
#include "draw/iconcommand.h"

#include "tests/draw/iconview.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

class IconCommand : public testing::Test {
  protected:
    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    void Write(const std::string& name, int width, int height) const {
        tests::WriteBytes(folder_ / name, tests::MakeBmp(width, height, [](int, int) { return tests::Green; }));
    }

    std::string CauseFor(const std::string& name) const { return lumbrix::WhyNoIcon(Path(name)).value_or("none"); }

    tests::TemporaryFolder folder_;
};

TEST_F(IconCommand, NothingIsSaidOfAnIconThatWasMade) {
    Write("picture.bmp", 50, 50);
    EXPECT_EQ(CauseFor("picture.bmp"), "none");
    const tests::IconView icon(tests::ReadBytes(folder_ / "picture.ico"));
    EXPECT_EQ(icon.Bytes(), 3266u);
    EXPECT_EQ(icon.At(16, 16), tests::Green);
}

TEST_F(IconCommand, MissingFileIsNamed) {
    EXPECT_EQ(CauseFor("none.bmp"), "cannot read " + Path("none.bmp") + ": there is no such file");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "none.bmp"));
}

TEST_F(IconCommand, FolderIsNoBitmap) {
    EXPECT_EQ(lumbrix::WhyNoIcon(folder_.Path().string()),
              "cannot read " + folder_.Path().string() + ": it is a folder");
}

TEST_F(IconCommand, OtherFilesAreNoBitmaps) {
    tests::WriteBytes(folder_ / "letter.bmp", "Dear Sir or Madam, here are my kindest regards.");
    EXPECT_EQ(CauseFor("letter.bmp"), "cannot read " + Path("letter.bmp") + ": it is not a bitmap");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "letter.ico"));
}

TEST_F(IconCommand, BitmapThatBreaksOffIsDamaged) {
    Write("broken.bmp", 32, 32);
    const std::string whole = tests::ReadBytes(folder_ / "broken.bmp");
    tests::WriteBytes(folder_ / "broken.bmp", whole.substr(0, whole.size() - 1));
    EXPECT_EQ(CauseFor("broken.bmp"), "cannot read " + Path("broken.bmp") + ": it is damaged: pixels are missing");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "broken.ico"));
}

TEST_F(IconCommand, BitmapThatTheSystemDoesNotLoadIsNotRead) {
    Write("strange.bmp", 32, 32);
    std::string bytes = tests::ReadBytes(folder_ / "strange.bmp");
    bytes[17] = 0x7F; // the size of the header
    tests::WriteBytes(folder_ / "strange.bmp", bytes);
    EXPECT_EQ(CauseFor("strange.bmp"),
              "cannot read " + Path("strange.bmp") + ": it is damaged, or a bitmap that the system does not load");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "strange.ico"));
}

TEST_F(IconCommand, PictureThatIsNotSquareIsNamedWithItsSize) {
    Write("oblong.bmp", 3, 2);
    EXPECT_EQ(CauseFor("oblong.bmp"), "cannot make an icon of " + Path("oblong.bmp") +
                                          ": The image (3 x 2) is not a square and cannot be sized to 32 x 32");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "oblong.ico"));
}

TEST_F(IconCommand, BitmapIsNotWrittenOverItself) {
    Write("picture.ico", 32, 32);
    const std::string before = tests::ReadBytes(folder_ / "picture.ico");
    EXPECT_EQ(CauseFor("picture.ico"), "cannot write " + Path("picture.ico") + ": it is the source itself");
    EXPECT_EQ(tests::ReadBytes(folder_ / "picture.ico"), before);
}

TEST_F(IconCommand, TargetThatCannotBeWrittenIsNamed) {
    Write("picture.bmp", 32, 32);
    tests::WriteBytes(folder_ / "picture.ico", "older");
    const HANDLE held = CreateFileA(Path("picture.ico").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    const std::string cause = CauseFor("picture.bmp");
    CloseHandle(held);
    EXPECT_EQ(cause.find("cannot write " + Path("picture.ico") + ": "), 0u) << cause;
    EXPECT_EQ(tests::ReadBytes(folder_ / "picture.ico"), "older");
}

TEST_F(IconCommand, BitmapThatCannotBeReadIsNamed) {
    Write("picture.bmp", 32, 32);
    const HANDLE held = CreateFileA(Path("picture.bmp").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    const std::string cause = CauseFor("picture.bmp");
    CloseHandle(held);
    EXPECT_EQ(cause.find("cannot read " + Path("picture.bmp") + ": "), 0u) << cause;
}

} // namespace
