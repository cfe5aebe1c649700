// The preview of the file picker, drawn on a window of the test's own.
#include "toolkit/previewpicture.h"

#include "tests/support/bmpfiles.h"
#include "tests/support/temporaryfolder.h"
#include "tests/toolkit/ownwindow.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

constexpr int PaneSize = 170;

class PreviewPicture : public testing::Test {
  protected:
    // What the pane shows at a place once a picture is drawn on it.
    COLORREF DrawnAt(int width, int height, const RgbAt& colorAt, int x, int y) {
        WriteBytes(folder_ / "picture.bmp", MakeBmp(width, height, colorAt));
        const OwnedInterface<IPicture> picture = LoadPreviewPicture((folder_ / "picture.bmp").string());
        EXPECT_NE(picture, nullptr);
        ClearPreviewPane(pane_.Handle());
        DrawPreview(pane_.Handle(), *picture);
        return pane_.PixelAt(x, y);
    }

    OwnWindow pane_{PaneSize, PaneSize};
    TemporaryFolder folder_;
};

// Windows mixes what it leaves out, Wine takes one of the two.
TEST_F(PreviewPicture, ShrunkColorIsOneOfThePicturesOrBetweenThem) {
    const auto stripes = [](int x, int) { return x % 2 == 0 ? Rgb{200, 40, 0} : Rgb{40, 200, 0}; };
    const COLORREF seen = DrawnAt(4 * PaneSize, 4 * PaneSize, stripes, PaneSize / 2, PaneSize / 2);
    EXPECT_NEAR(GetRValue(seen) + GetGValue(seen), 240, 5);
    EXPECT_EQ(GetBValue(seen), 0);
}

TEST_F(PreviewPicture, StandsUprightAndIsNotMirrored) {
    const auto quarters = [](int x, int y) { return y < 20 ? (x < 20 ? tests::Red : Green) : (x < 20 ? Blue : White); };
    EXPECT_EQ(DrawnAt(40, 40, quarters, 30, 30), RGB(255, 0, 0));
    EXPECT_EQ(DrawnAt(40, 40, quarters, 140, 30), RGB(0, 255, 0));
    EXPECT_EQ(DrawnAt(40, 40, quarters, 30, 140), RGB(0, 0, 255));
    EXPECT_EQ(DrawnAt(40, 40, quarters, 140, 140), RGB(255, 255, 255));
}

TEST_F(PreviewPicture, EveryShadeKeepsItsOwn) {
    const auto shades = [](int x, int) { return Rgb{static_cast<std::uint8_t>(x / 3), 100, 50}; };
    for (const int x : {20, 60, 90, 140}) {
        const COLORREF seen = DrawnAt(765, 765, shades, x, PaneSize / 2);
        EXPECT_NEAR(GetRValue(seen), (x - 10) * 255.0 / 150, 3) << x;
        EXPECT_EQ(GetGValue(seen), 100) << x;
        EXPECT_EQ(GetBValue(seen), 50) << x;
    }
}

} // namespace
