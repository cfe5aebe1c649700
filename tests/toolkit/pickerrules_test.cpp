// What the file picker tells the platform's dialog, and where its preview stands.
#include "toolkit/pickerrules.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

TEST(PickerFilter, OffersAllAndEachOfTheFormats) {
    EXPECT_EQ(PickerFilter(), "All Images (*.bmp;*.gif;*tiff;*.jpg;*.png;*.ico;*.emf;*.wmf)|"
                              "*.bmp;*.gif;*tiff;*.jpg;*.png;*.ico;*.emf;*.wmf|"
                              "Bitmap files (*.bmp)|*.bmp|JPEG files (*.jpg)|*.jpg|"
                              "GIF files (*.gif)|*.gif|TIFF files (*.tiff)|*.tiff|"
                              "PNG files (*.png)|*.png|ICONS (*.ico)|*.ic");
}

TEST(PickerFilter, IsCutWithinItsIcons) {
    const std::string filter = PickerFilter();
    EXPECT_EQ(filter.size(), 254u);
    EXPECT_EQ(filter.substr(filter.size() - 19), "|ICONS (*.ico)|*.ic");
}

TEST(PickerFilter, FirstDescriptionAloneReachesTheDialog) {
    EXPECT_EQ(FilterInDialog(PickerFilter()), "All Images (*.bmp;*.gif;*tiff;*.jpg;*.png;*.ico;*.emf;*.wmf)");
}

TEST(PickerWildcards, AreThoseOfAllPictures) {
    EXPECT_STREQ(PickerWildcards, "*.bmp;*.gif;*.tiff;*.jpg;*.png;*.ico;*.emf;*.wmf");
}

void ExpectPlace(const PreviewPlace& place, int x, int y, int width, int height) {
    EXPECT_EQ(place.x, x);
    EXPECT_EQ(place.y, y);
    EXPECT_EQ(place.width, width);
    EXPECT_EQ(place.height, height);
}

TEST(Preview, WidePictureTouchesTheSideMargins) { ExpectPlace(PlacePreview(170, 170, 3000, 1500), 10, 47, 150, 75); }

TEST(Preview, TallPictureTouchesTheOtherMargins) { ExpectPlace(PlacePreview(170, 170, 1500, 3000), 47, 10, 75, 150); }

TEST(Preview, SquarePictureCountsAsTall) { ExpectPlace(PlacePreview(200, 170, 50, 50), 25, 10, 150, 150); }

TEST(Preview, SmallPictureIsEnlarged) { ExpectPlace(PlacePreview(170, 170, 2, 1), 10, 47, 150, 75); }

} // namespace
