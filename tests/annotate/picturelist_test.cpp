// How a picture is put behind the icons of a list, with a list of the test's own that tells what it is sent.
#include "annotate/picturelist.h"

#include "annotate/layout.h"
#include "tests/support/picturefiles.h"
#include "tests/toolkit/ownwindow.h"
#include "toolkit/handles.h"

#include <gtest/gtest.h>

#include <commctrl.h>

namespace {

using namespace lumbrix;
using namespace tests;

// What one message said.
struct SentBackground {
    ULONG flags;
    std::string image;
    UINT longest;
    bool hasBitmap;
    COLORREF firstPixel; // of the bitmap
};

COLORREF FirstPixelOf(HBITMAP bitmap) {
    const OwnedContext context(CreateCompatibleDC(nullptr));
    const SelectedObject selected(context.Get(), bitmap);
    return GetPixel(context.Get(), 0, 0);
}

// Takes every background, or none that is given by name.
class BackgroundTaker : public ControlWatch {
  public:
    enum class Kind { Names, BitmapsOnly };

    explicit BackgroundTaker(Kind kind) : kind_(kind) {}

    std::vector<SentBackground> sent;
    int paintings = 0;

  private:
    LRESULT OnMessage(UINT message, WPARAM wordParameter, LPARAM longParameter) override {
        paintings += message == WM_PAINT ? 1 : 0;
        if (message != LVM_SETBKIMAGEA) {
            return PassOn(message, wordParameter, longParameter);
        }
        const auto& background = *reinterpret_cast<const LVBKIMAGEA*>(longParameter);
        sent.push_back({background.ulFlags, background.pszImage == nullptr ? "" : background.pszImage,
                        background.cchImageMax, background.hbm != nullptr, FirstPixelOf(background.hbm)});
        const bool isName = (background.ulFlags & LVBKIF_SOURCE_MASK) == LVBKIF_SOURCE_URL;
        if (!isName) {
            DeleteObject(background.hbm); // which is its owner's now
        }
        return isName && kind_ == Kind::BitmapsOnly ? FALSE : TRUE;
    }

    Kind kind_;
};

class PictureList : public testing::Test {
  protected:
    PictureList()
        : list_(CreateWindowExA(0, "static", "", WS_CHILD | WS_VISIBLE, 0, 0, 80, 60, window_.Handle(),
                                reinterpret_cast<HMENU>(annotatewindow::PictureControl), GetModuleHandleA(nullptr),
                                nullptr)) {
        LoadImagingLibrary();
        WriteBytes(picture_, MakeBmp(30, 20, [](int, int) { return Green; }));
    }
    ~PictureList() override { UnloadImagingLibrary(); }

    std::vector<SentBackground> Show(BackgroundTaker::Kind kind, const std::string& path) const {
        BackgroundTaker taker(kind);
        taker.Attach(list_);
        SetPreviewImage(window_.Handle(), path);
        return taker.sent;
    }

    OwnWindow window_{100, 80};
    HWND list_;
    TemporaryFolder folder_;
    std::string picture_ = (folder_ / "green.bmp").string();
};

TEST_F(PictureList, IsGivenThePathForTheControlToLoad) {
    const std::vector<SentBackground> sent = Show(BackgroundTaker::Kind::Names, picture_);
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].flags, 2u); // by name, at the top left in its own size
    EXPECT_EQ(sent[0].image, picture_);
    EXPECT_EQ(sent[0].longest, picture_.size());
    EXPECT_FALSE(sent[0].hasBitmap);
}

TEST_F(PictureList, IsGivenABitmapWhereItDoesNotTakeThePath) {
    const std::vector<SentBackground> sent = Show(BackgroundTaker::Kind::BitmapsOnly, picture_);
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_EQ(sent[0].flags, 2u);
    EXPECT_EQ(sent[0].image, picture_);
    EXPECT_EQ(sent[1].flags, 1u); // a bitmap
    EXPECT_TRUE(sent[1].hasBitmap);
}

TEST_F(PictureList, IsPaintedAnewAtOnce) {
    UpdateWindow(list_); // nothing is left to be painted
    BackgroundTaker taker(BackgroundTaker::Kind::Names);
    taker.Attach(list_);
    SetPreviewImage(window_.Handle(), picture_);
    EXPECT_EQ(taker.paintings, 1);
}

TEST_F(PictureList, BitmapShowsThePictureAndWhiteWhereThatIsClear) {
    EXPECT_EQ(Show(BackgroundTaker::Kind::BitmapsOnly, picture_).back().firstPixel, RGB(0, 255, 0));
    const std::string clear = (folder_ / "clear.gif").string();
    WriteBytes(clear, std::string("GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\0!\xF9\4\1\0\0\0\0,\0\0\0\0\1\0\1\0\0"
                                  "\2\2\x44\1\0;",
                                  43));
    EXPECT_EQ(Show(BackgroundTaker::Kind::BitmapsOnly, clear).back().firstPixel, RGB(255, 255, 255));
}

TEST_F(PictureList, IsGivenNoBitmapOfWhatCannotBeRead) {
    EXPECT_EQ(Show(BackgroundTaker::Kind::BitmapsOnly, (folder_ / "none.bmp").string()).size(), 1u);
}

} // namespace
