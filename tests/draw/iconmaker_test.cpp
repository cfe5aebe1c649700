// Icons made of real bitmap files, with a window of the test's own.
#include "draw/iconmaker.h"

#include "platform/errors.h"
#include "tests/draw/iconview.h"
#include "tests/support/fakemessages.h"
#include "tests/support/resources.h"
#include "tests/support/temporaryfolder.h"
#include "tests/toolkit/ownwindow.h"
#include "toolkit/handles.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

using tests::Black; // and not a colour of windows
using tests::Red;

constexpr Rgb KeyGrey{197, 197, 197};
constexpr int GraphicId = 1234;

// A dialog without controls whose font makes its units differ across and down.
class EmptyDialog {
  public:
    EmptyDialog() {
        struct {
            DLGTEMPLATE dialog{WS_POPUP | DS_SETFONT, 0, 0, 0, 0, 100, 50};
            WORD menuClassAndTitle[3]{};
            WORD points = 12;
            wchar_t face[6] = L"Arial";
        } form;
        window_ = CreateDialogIndirectParamA(GetModuleHandleA(nullptr), &form.dialog, nullptr, nullptr, 0);
    }
    ~EmptyDialog() { DestroyWindow(window_); }
    EmptyDialog(const EmptyDialog&) = delete;
    EmptyDialog& operator=(const EmptyDialog&) = delete;

    HWND Handle() const { return window_; }

    // Of four dialog units across and eight down.
    PixelSize BaseUnits() const {
        RECT base{0, 0, 4, 8};
        MapDialogRect(window_, &base);
        return {base.right, base.bottom};
    }

  private:
    HWND window_;
};

// No two pixels are alike.
Rgb Distinct(int x, int y) {
    return {static_cast<std::uint8_t>(8 * x), static_cast<std::uint8_t>(8 * y), static_cast<std::uint8_t>(x + y)};
}

// A copy of this program in a folder of the test's, to which the window then belongs.
class ProgramCopy {
  public:
    ProgramCopy(const std::filesystem::path& copy, HWND window) {
        char self[MAX_PATH] = "";
        GetModuleFileNameA(nullptr, self, sizeof self);
        std::filesystem::copy_file(self, copy);
        module_ = OwnedModule(LoadLibraryExA(copy.string().c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES));
        SetWindowLongPtrA(window, GWLP_HINSTANCE, reinterpret_cast<LONG_PTR>(module_.Get()));
    }

    explicit operator bool() const { return static_cast<bool>(module_); }

  private:
    OwnedModule module_;
};

class IconMaker : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(program_); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    void Make(const std::string& name) { MakeIcon(window_.Handle(), Path(name), messages_); }

    void WriteSquare(const std::string& name, int side, const RgbAt& colorAt) {
        WriteBytes(folder_ / name, MakeBmp(side, side, colorAt));
    }

    // The icon of a square picture.
    IconView IconOf(int side, const RgbAt& colorAt) {
        WriteSquare("picture.bmp", side, colorAt);
        Make("picture.bmp");
        EXPECT_EQ(messages_.said, std::vector<std::string>{});
        return IconView(ReadBytes(folder_ / "picture.ico"));
    }

    bool Exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

    HWND Graphic() const { return GetDlgItem(window_.Handle(), GraphicId); }

    TemporaryFolder folder_;
    OwnWindow window_{100, 100};
    ProgramCopy program_{(std::filesystem::create_directory(folder_ / "program"), folder_ / "program/program.exe"),
                         window_.Handle()};
    FakeMessages messages_;
};

TEST_F(IconMaker, PictureOfTheIconsSizeIsTakenAsItIs) {
    const IconView icon = IconOf(32, Distinct);
    ASSERT_EQ(icon.Bytes(), 3266u);
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 32; ++x) {
            EXPECT_EQ(icon.At(x, y), Distinct(x, y)) << x << ", " << y;
        }
    }
}

TEST_F(IconMaker, PictureWithoutTheKeyColorHasAMaskOfZeros) {
    const IconView icon = IconOf(32, Distinct);
    EXPECT_EQ(icon.CountTransparent(), 0);
}

TEST_F(IconMaker, KeyColorIsBlackAndTransparent) {
    const auto hasKey = [](int x, int y) { return (y == 0 && x >= 29) || (x == 9 && y == 30); };
    const IconView icon = IconOf(32, [&](int x, int y) { return hasKey(x, y) ? KeyGrey : Distinct(x, y); });
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 32; ++x) {
            EXPECT_EQ(icon.At(x, y), hasKey(x, y) ? Black : Distinct(x, y)) << x << ", " << y;
            EXPECT_EQ(icon.IsTransparent(x, y), hasKey(x, y)) << x << ", " << y;
        }
    }
}

TEST_F(IconMaker, OnlyTheExactKeyColorCounts) {
    constexpr Rgb Near[] = {{197, 197, 196}, {197, 196, 197}, {196, 197, 197}, {198, 197, 197}, {197, 197, 198}};
    const IconView icon = IconOf(32, [&](int x, int y) { return y == 0 && x < 5 ? Near[x] : White; });
    EXPECT_EQ(icon.CountTransparent(), 0);
    for (int x = 0; x < 5; ++x) {
        EXPECT_EQ(icon.At(x, 0), Near[x]);
    }
}

TEST_F(IconMaker, LargerPictureIsStretchedAsAWhole) {
    const IconView icon = IconOf(100, [](int x, int y) { return y >= 50 ? Blue : x < 50 ? KeyGrey : Red; });
    ASSERT_EQ(icon.Bytes(), 3266u);
    for (int i = 0; i < 15; ++i) {
        EXPECT_TRUE(icon.IsTransparent(i, 0)) << i;
        EXPECT_EQ(icon.At(17 + i, i), Red) << i;
        EXPECT_FALSE(icon.IsTransparent(17 + i, i)) << i;
        EXPECT_EQ(icon.At(i, 17 + i), Blue) << i;
    }
}

TEST_F(IconMaker, ShrinkingDoesNotKeepTheDarkestPixels) {
    const IconView icon = IconOf(128, [](int x, int y) { return x % 4 == 1 && y % 4 == 2 ? Black : White; });
    for (int i = 0; i < 32; ++i) {
        EXPECT_GT(icon.At(i, i).red, 128) << i;
    }
}

TEST_F(IconMaker, SmallerPictureIsStretchedToo) {
    const IconView icon = IconOf(2, [](int x, int y) { return y == 0 ? (x == 0 ? Red : Green) : Blue; });
    EXPECT_EQ(icon.At(0, 0), Red);
    EXPECT_EQ(icon.At(31, 0), Green);
    EXPECT_EQ(icon.At(0, 31), Blue);
}

TEST_F(IconMaker, PaletteMakesNoDifference) {
    WriteBytes(folder_ / "picture.bmp", MakePaletteBmp(32, 32, KeyGrey));
    Make("picture.bmp");
    EXPECT_EQ(IconView(ReadBytes(folder_ / "picture.ico")).CountTransparent(), 1024);
}

TEST_F(IconMaker, OlderIconIsWrittenOver) {
    WriteBytes(folder_ / "picture.ico", std::string(5000, 'x'));
    const IconView icon = IconOf(32, Distinct);
    EXPECT_EQ(icon.Bytes(), 3266u);
    EXPECT_EQ(icon.At(31, 31), Distinct(31, 31));
}

TEST_F(IconMaker, ExtensionOfFourLettersKeepsItsFirst) {
    WriteSquare("picture.jpeg", 32, Distinct);
    Make("picture.jpeg");
    EXPECT_EQ(IconView(ReadBytes(folder_ / "picture.jico")).Bytes(), 3266u);
    EXPECT_FALSE(Exists("picture.ico"));
}

TEST_F(IconMaker, WrittenIconOfTheProgramIsDeletedAtEveryRunThatWrites) {
    for (int run = 0; run < 2; ++run) {
        WriteBytes(folder_ / "program/written.ico", "older");
        WriteBytes(folder_ / "program/other.ico", "other");
        IconOf(32, Distinct);
        EXPECT_FALSE(Exists("program/written.ico"));
        EXPECT_TRUE(Exists("program/other.ico"));
    }
    WriteBytes(folder_ / "written.ico", "of another folder");
    IconOf(32, Distinct);
    EXPECT_TRUE(Exists("written.ico"));
    EXPECT_FALSE(Exists("program/written.ico")) << "nothing is written under that name";
}

TEST_F(IconMaker, PictureThatIsNotSquareIsRefused) {
    WriteBytes(folder_ / "picture.bmp", MakeBmp(32, 31, Distinct));
    WriteBytes(folder_ / "picture.ico", "older");
    WriteBytes(folder_ / "program/written.ico", "older");
    Make("picture.bmp");
    EXPECT_EQ(messages_.said,
              std::vector<std::string>{"Quorvane: The image (32 x 31) is not a square and cannot be sized to 32 x 32"});
    EXPECT_EQ(ReadBytes(folder_ / "picture.ico"), "older");
    EXPECT_TRUE(Exists("program/written.ico"));
    EXPECT_EQ(Graphic(), nullptr);
}

TEST_F(IconMaker, FileThatTheSystemDoesNotLoadIsRefusedAndLeavesTheGraphic) {
    WriteBytes(folder_ / "picture.bmp", std::string(18, 'x') + std::string("\x20\0\0\0\x20\0\0\0", 8) + "no bitmap");
    WriteBytes(folder_ / "program/written.ico", "older");
    Make("picture.bmp");
    EXPECT_EQ(messages_.said, std::vector<std::string>{": Unable to BitBlt Picture."});
    EXPECT_FALSE(Exists("picture.ico"));
    EXPECT_TRUE(Exists("program/written.ico"));
    EXPECT_NE(Graphic(), nullptr);
}

TEST_F(IconMaker, FileThatIsTooShortForItsSizesIsNotLoaded) {
    WriteBytes(folder_ / "picture.bmp", "");
    Make("picture.bmp");
    EXPECT_EQ(messages_.said, std::vector<std::string>{": Unable to BitBlt Picture."});
}

TEST_F(IconMaker, GraphicThatStayedIsRemovedByALaterRun) {
    WriteBytes(folder_ / "broken.bmp", "");
    Make("broken.bmp");
    ASSERT_NE(Graphic(), nullptr);
    WriteBytes(folder_ / "oblong.bmp", MakeBmp(3, 2, Distinct));
    Make("oblong.bmp");
    EXPECT_EQ(Graphic(), nullptr);
}

TEST_F(IconMaker, GraphicIsGoneBehindAnIcon) {
    IconOf(32, Distinct);
    EXPECT_EQ(Graphic(), nullptr);
    EXPECT_EQ(GetWindow(window_.Handle(), GW_CHILD), nullptr);
}

TEST_F(IconMaker, GraphicIsAsLargeAsAnIconInWholeDialogUnits) {
    const EmptyDialog dialog;
    const PixelSize base = dialog.BaseUnits();
    ASSERT_NE(32 * 4 / base.width, 32 * 8 / base.height);
    WriteBytes(folder_ / "broken.bmp", "");
    MakeIcon(dialog.Handle(), Path("broken.bmp"), messages_);
    const HWND graphic = GetDlgItem(dialog.Handle(), GraphicId);
    ASSERT_NE(graphic, nullptr);
    RECT place{};
    GetWindowRect(graphic, &place);
    MapWindowPoints(nullptr, dialog.Handle(), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_EQ(place.left, 0);
    EXPECT_EQ(place.top, 0);
    EXPECT_EQ(place.right, MulDiv(32 * 4 / base.width, base.width, 4));
    EXPECT_EQ(place.bottom, MulDiv(32 * 8 / base.height, base.height, 8));
    EXPECT_EQ(GetWindowLongPtrA(graphic, GWL_STYLE) & SS_TYPEMASK, SS_OWNERDRAW);
}

TEST_F(IconMaker, GraphicIsAsLargeAsAnIconWhereThereAreNoDialogUnits) {
    WriteBytes(folder_ / "broken.bmp", "");
    Make("broken.bmp");
    RECT place{};
    ASSERT_TRUE(GetWindowRect(Graphic(), &place));
    EXPECT_EQ(place.right - place.left, 32);
    EXPECT_EQ(place.bottom - place.top, 32);
}

TEST_F(IconMaker, MissingFileIsRaisedAndNotMade) {
    const auto error = trap([&] { Make("none.bmp"); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(std::string(error->what()).find("cannot read " + Path("none.bmp") + ": "), 0u) << error->what();
    EXPECT_FALSE(Exists("none.bmp"));
}

TEST_F(IconMaker, IconThatCannotBeWrittenIsRaised) {
    std::filesystem::create_directory(folder_ / "picture.ico");
    WriteSquare("picture.bmp", 32, Distinct);
    WriteBytes(folder_ / "program/written.ico", "older");
    EXPECT_TRUE(trap([&] { Make("picture.bmp"); }));
    EXPECT_FALSE(Exists("program/written.ico"));
    EXPECT_NE(Graphic(), nullptr);
}

TEST_F(IconMaker, GivesBackWhatItTook) {
    IconOf(100, Distinct);
    const int before = CountGdiObjects();
    for (int i = 0; i < 30; ++i) {
        IconOf(100, Distinct);
    }
    EXPECT_LE(CountGdiObjects(), before);
}

} // namespace
