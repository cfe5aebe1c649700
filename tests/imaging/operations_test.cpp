// The order of calls, the statuses and the sessions left open of the operations, over the fake imaging library.
#include "imaging/convert.h"
#include "imaging/dimensions.h"
#include "imaging/thumbnail.h"
#include "tests/imaging/fakemodule.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;

using Calls = std::vector<std::string>;

StatusValue ConvertAsWished() { return ConvertImageFile("a.png", "b.jpg", "image/jpeg"); }
StatusValue Thumb(std::int32_t height = 10) { return ConvertImageFileToThumb("a.png", height, "b.jpg", "image/jpeg"); }

using Operations = tests::WithFake;

TEST_F(Operations, ConvertIsOneDecodeAndOneEncode) {
    EXPECT_EQ(ConvertAsWished(), 0);
    EXPECT_EQ(fake_.Calls(),
              (Calls{"GdiplusStartup", "GdipGetImageEncodersSize", "GdipGetImageEncoders", "GdipLoadImageFromFile",
                     "GdipSaveImageToFile 11", "GdipDisposeImage 11", "GdiplusShutdown 1"}));
}

TEST_F(Operations, ConvertOfBlankNamesDoesNothing) {
    EXPECT_EQ(ConvertImageFile("", "b.jpg", "image/jpeg"), 0);
    EXPECT_EQ(ConvertImageFile("   ", "b.jpg", "image/jpeg"), 0);
    EXPECT_EQ(ConvertImageFile("a.png", "", "image/jpeg"), 0);
    EXPECT_EQ(ConvertImageFile("a.png", "  ", "image/jpeg"), 0);
    EXPECT_EQ(fake_.Calls(), Calls{});
}

TEST_F(Operations, BlanksAloneMakeANameBlank) {
    for (const char* name : {"\t", "\n", "\r", "\v", "\f", " \t "}) {
        const std::size_t before = fake_.CountOf("GdipLoadImageFromFile");
        EXPECT_EQ(ConvertImageFile(name, "b.jpg", "image/jpeg"), 0);
        EXPECT_EQ(ConvertImageFile("a.png", name, "image/jpeg"), 0);
        EXPECT_EQ(fake_.CountOf("GdipLoadImageFromFile"), before + 2);
        EXPECT_EQ(fake_.LastSavedName(), name) << "as it was given";
    }
}

TEST_F(Operations, ConvertWithoutSessionIsRefused) {
    fake_.Answer("GdiplusStartup", 17);
    EXPECT_EQ(ConvertAsWished(), -16001);
    EXPECT_EQ(fake_.Calls(), Calls{"GdiplusStartup"});
}

TEST_F(Operations, ConvertWithoutEncoderLeavesTheSessionOpen) {
    EXPECT_EQ(ConvertImageFile("a.png", "b", "image/sgl"), -16002);
    EXPECT_EQ(fake_.Calls(), (Calls{"GdiplusStartup", "GdipGetImageEncodersSize", "GdipGetImageEncoders"}));
}

TEST_F(Operations, ConvertWithFailingEncoderListFindsNoEncoder) {
    fake_.Answer("GdipGetImageEncoders", 1);
    EXPECT_EQ(ConvertAsWished(), -16002);
}

TEST_F(Operations, ConvertOfAnUnreadableSourceLeavesTheSessionOpen) {
    fake_.Answer("GdipLoadImageFromFile", 10);
    EXPECT_EQ(ConvertAsWished(), 10);
    EXPECT_EQ(fake_.Calls().back(), "GdipLoadImageFromFile");
}

TEST_F(Operations, ConvertThatCannotSaveDisposesAndLeavesTheSessionOpen) {
    fake_.Answer("GdipSaveImageToFile", 7);
    EXPECT_EQ(ConvertAsWished(), 7);
    EXPECT_EQ(fake_.Calls().back(), "GdipDisposeImage 11");
}

TEST_F(Operations, ConvertOfNoImageSavesNothing) {
    fake_.GiveHandles(0, 0);
    EXPECT_EQ(ConvertAsWished(), 0);
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 0"), 0u);
    EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1");
}

TEST_F(Operations, ConvertTakesTheEncoderOfTheWordWhateverTheName) {
    EXPECT_EQ(ConvertImageFile("a.png", "b.gif", "image/bmp"), 0);
    EXPECT_NE(fake_.LastParameters().find("encoder 557CF400"), std::string::npos);
}

TEST_F(Operations, ConvertWithAnEmptyWordTakesTheFirstEncoder) {
    EXPECT_EQ(ConvertImageFile("a.png", "b.gif", ""), 0);
    EXPECT_NE(fake_.LastParameters().find("encoder 557CF400"), std::string::npos);
}

TEST_F(Operations, ThumbCallsInOrder) {
    EXPECT_EQ(Thumb(), 0);
    EXPECT_EQ(fake_.Calls(),
              (Calls{"GdiplusStartup", "GdipGetImageEncodersSize", "GdipGetImageEncoders", "GdipLoadImageFromFile",
                     "GdipGetImageWidth 11", "GdipGetImageHeight 11", "GdipGetImageThumbnail 11",
                     "GdipSaveImageToFile 22", "GdipDisposeImage 11", "GdipDisposeImage 22", "GdiplusShutdown 1"}));
    EXPECT_EQ(fake_.LastThumbnail(), "15 by 10");
}

TEST_F(Operations, ThumbOfBlankNamesOrHeightZeroDoesNothing) {
    EXPECT_EQ(ConvertImageFileToThumb(" ", 10, "b.jpg", "image/jpeg"), 0);
    EXPECT_EQ(ConvertImageFileToThumb("a.png", 10, "", "image/jpeg"), 0);
    EXPECT_EQ(Thumb(0), 0);
    EXPECT_EQ(fake_.Calls(), Calls{});
}

TEST_F(Operations, ThumbOfANegativeHeightGoesOn) {
    fake_.Answer("GdipGetImageThumbnail", 2);
    EXPECT_EQ(Thumb(-5), 2);
    EXPECT_EQ(fake_.LastThumbnail(), "-8 by -5");
}

TEST_F(Operations, ThumbWithoutAWidthIsLeftToTheImagingLibrary) {
    fake_.ReportSize(1, 3);
    EXPECT_EQ(Thumb(1), 0);
    EXPECT_EQ(fake_.LastThumbnail(), "0 by 1");
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 22"), 1u);
    fake_.Answer("GdipGetImageThumbnail", 2);
    EXPECT_EQ(Thumb(1), 2);
}

TEST_F(Operations, ThumbWithoutSessionOrEncoderOrSourceIsRefused) {
    fake_.Answer("GdipLoadImageFromFile", 3);
    EXPECT_EQ(Thumb(), 3);
    EXPECT_EQ(fake_.Calls().back(), "GdipLoadImageFromFile") << "the session stays open";
    EXPECT_EQ(ConvertImageFileToThumb("a.png", 10, "b", "image/sgl"), -16002);
    EXPECT_EQ(fake_.Calls().back(), "GdipGetImageEncoders") << "the session stays open";
    fake_.Answer("GdiplusStartup", 17);
    EXPECT_EQ(Thumb(), -16001);
}

TEST_F(Operations, ThumbThatIsRefusedLeavesImageAndSession) {
    fake_.Answer("GdipGetImageThumbnail", 2);
    EXPECT_EQ(Thumb(), 2);
    EXPECT_EQ(fake_.Calls().back(), "GdipGetImageThumbnail 11");
}

TEST_F(Operations, ThumbThatCannotSaveDisposesBothAndLeavesTheSession) {
    fake_.Answer("GdipSaveImageToFile", 7);
    EXPECT_EQ(Thumb(), 7);
    const Calls calls = fake_.Calls();
    EXPECT_EQ(calls[calls.size() - 2], "GdipDisposeImage 11");
    EXPECT_EQ(calls.back(), "GdipDisposeImage 22");
}

TEST_F(Operations, ThumbOfAnImageWithoutSizeEndsInOrder) {
    for (const auto& [width, height] : {std::pair(0u, 5u), std::pair(5u, 0u), std::pair(0x80000000u, 5u)}) {
        fake_.ReportSize(width, height);
        EXPECT_EQ(Thumb(), 0);
        EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1");
    }
    EXPECT_EQ(fake_.CountOf("GdipGetImageThumbnail 11"), 0u);
    EXPECT_EQ(fake_.CountOf("GdipDisposeImage 0"), 3u) << "a zero thumbnail is passed along";
}

TEST_F(Operations, ThumbOfNoImageOrNoThumbnailSavesNothing) {
    fake_.GiveHandles(11, 0);
    EXPECT_EQ(Thumb(), 0);
    fake_.GiveHandles(0, 0);
    EXPECT_EQ(Thumb(), 0);
    EXPECT_EQ(fake_.CountOf("GdipSaveImageToFile 0"), 0u);
    EXPECT_EQ(fake_.CountOf("GdiplusShutdown 1"), 2u);
}

TEST(ThumbnailWidth, KeepsTheProportionsAndRoundsTiesToEven) {
    EXPECT_EQ(ThumbnailWidth(3000, 2000, 100), 150);
    EXPECT_EQ(ThumbnailWidth(1001, 2, 1), 500);
    EXPECT_EQ(ThumbnailWidth(1003, 2, 1), 502);
    EXPECT_EQ(ThumbnailWidth(2, 3, 1), 1);
    EXPECT_EQ(ThumbnailWidth(1, 3, 1), 0);
    EXPECT_EQ(ThumbnailWidth(100, 50, 400), 800);
    EXPECT_EQ(ThumbnailWidth(65535, 65535, 2147483647), 2147483647);
}

TEST_F(Operations, DimensionsAreReadWithoutMore) {
    std::int32_t width = 0, height = 0;
    EXPECT_EQ(GetImageFileDimensions("a.png", &width, &height), 0);
    EXPECT_EQ(width, 30);
    EXPECT_EQ(height, 20);
    EXPECT_EQ(fake_.Calls(), (Calls{"GdiplusStartup", "GdipLoadImageFromFile", "GdipGetImageWidth 11",
                                    "GdipGetImageHeight 11", "GdipDisposeImage 11", "GdiplusShutdown 1"}));
}

TEST_F(Operations, DimensionsOfABlankNameDoNothing) {
    std::int32_t width = 5, height = 6;
    EXPECT_EQ(GetImageFileDimensions("  ", &width, &height), 0);
    EXPECT_EQ(width, 5);
    EXPECT_EQ(height, 6);
    EXPECT_EQ(fake_.Calls(), Calls{});
}

TEST_F(Operations, DimensionsOfAnUnreadableFileLeaveTheArgumentsAndTheSession) {
    std::int32_t width = 5, height = 6;
    fake_.Answer("GdipLoadImageFromFile", 10);
    EXPECT_EQ(GetImageFileDimensions("a.png", &width, &height), 10);
    EXPECT_EQ(width, 5);
    EXPECT_EQ(height, 6);
    EXPECT_EQ(fake_.Calls().back(), "GdipLoadImageFromFile");
    fake_.Answer("GdiplusStartup", 17);
    EXPECT_EQ(GetImageFileDimensions("a.png", &width, &height), -16001);
}

TEST_F(Operations, DimensionsOfNoImageLeaveTheArguments) {
    std::int32_t width = 5, height = 6;
    fake_.GiveHandles(0, 0);
    EXPECT_EQ(GetImageFileDimensions("a.png", &width, &height), 0);
    EXPECT_EQ(width, 5);
    EXPECT_EQ(fake_.Calls().back(), "GdiplusShutdown 1");
}

} // namespace
