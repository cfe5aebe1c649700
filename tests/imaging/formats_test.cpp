// Names to MIME words, words to encoders, ids to text.
#include "imaging/formats.h"
#include "tests/imaging/fakemodule.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using tests::FakeImagingLibrary;

TEST(MimeTypeForName, KnowsEveryWordInAnyCase) {
    const std::pair<const char*, const char*> words[] = {
        {"bmp", "image/bmp"},  {"EMF", "image/x-emf"}, {"Gif", "image/gif"},  {"ico", "image/x-icon"},
        {"JPG", "image/jpeg"}, {"jpeg", "image/jpeg"}, {"tmp", "image/jpeg"}, {"pnG", "image/png"},
        {"tif", "image/tiff"}, {"TIFF", "image/tiff"}, {"wmf", "image/x-wmf"}};
    for (const auto& [word, mime] : words) {
        EXPECT_EQ(MimeTypeForName(word), mime);
        EXPECT_EQ(MimeTypeForName(std::string("C:\\folder\\name.") + word), mime);
    }
}

TEST(MimeTypeForName, OnlyWhatStandsBehindTheLastDotCounts) {
    EXPECT_EQ(MimeTypeForName("a.png.JpEg"), "image/jpeg");
    EXPECT_EQ(MimeTypeForName("C:\\a\\IMG12.tmp"), "image/jpeg");
}

TEST(MimeTypeForName, UnknownAndEmptyWordsGiveNothing) {
    EXPECT_EQ(MimeTypeForName(""), "");
    EXPECT_EQ(MimeTypeForName("name."), "");
    EXPECT_EQ(MimeTypeForName("name.sgl"), "");
    EXPECT_EQ(MimeTypeForName("name.jpgx"), "");
    EXPECT_EQ(MimeTypeForName("name.jpg "), "");
}

TEST(MimeTypeForName, FoldersAreNotSetApart) { EXPECT_EQ(MimeTypeForName("C:\\a.png\\photo"), ""); }

TEST(OutputFormats, StandInTheOrderOfferedWithSglAtTheEnd) {
    EXPECT_EQ(OutputFormat, (std::array<std::string_view, 6>{"bmp", "jpg", "gif", "tiff", "png", "sgl"}));
}

constexpr const char* JpegText = "{557CF401-1A04-11D3-9A73-0000F81EF32E}";

TEST(FindEncoderClsid, FindsPartsOfAMimeTypeInAnyCase) {
    FakeImagingLibrary fake;
    EXPECT_EQ(FindEncoderClsid("image/jpeg"), JpegText);
    EXPECT_EQ(FindEncoderClsid("IMAGE/JPEG"), JpegText);
    EXPECT_EQ(FindEncoderClsid("jpeg"), JpegText);
}

TEST(FindEncoderClsid, FindsNothingForOtherWords) {
    FakeImagingLibrary fake;
    EXPECT_EQ(FindEncoderClsid("image/x-icon"), "");
    EXPECT_EQ(FindEncoderClsid("image/sgl"), "");
    EXPECT_EQ(FindEncoderClsid("image/jpeg2"), "");
}

TEST(FindEncoderClsid, EmptyWordSelectsTheFirstEncoder) {
    FakeImagingLibrary fake;
    EXPECT_EQ(FindEncoderClsid(""), "{557CF400-1A04-11D3-9A73-0000F81EF32E}");
}

TEST(FindEncoderClsid, StatusOfTheSizeIsNotTestedThatOfTheListIs) {
    FakeImagingLibrary fake;
    fake.Answer("GdipGetImageEncodersSize", 1);
    EXPECT_EQ(FindEncoderClsid("jpeg"), JpegText);
    fake.Answer("GdipGetImageEncoders", 1);
    EXPECT_EQ(FindEncoderClsid("jpeg"), "");
}

TEST(FindEncoder, FirstStatusThatIsNotOkIsTheReason) {
    FakeImagingLibrary fake;
    std::string clsid;
    fake.Answer("GdipGetImageEncoders", 2);
    EXPECT_EQ(FindEncoder("jpeg", clsid), 2);
    fake.Answer("GdipGetImageEncodersSize", 3);
    EXPECT_EQ(FindEncoder("jpeg", clsid), 3);
    EXPECT_EQ(clsid, "");
}

TEST(FindEncoderClsid, WithoutALibraryThereIsNone) { EXPECT_EQ(FindEncoderClsid(""), ""); }

TEST(ClsidText, HasBracesAndComesBack) {
    const Clsid clsid = ClsidFromText(JpegText);
    EXPECT_EQ(clsid.data1, 0x557CF401u);
    EXPECT_EQ(clsid.data4[7], 0x2E);
    EXPECT_EQ(ClsidToText(clsid), JpegText);
}

TEST(ClsidText, EmptyTextIsSixteenZeroBytes) { EXPECT_EQ(ClsidFromText(""), Clsid{}); }

TEST(WideToNarrow, TakesLowBytesUntilOneIsZero) {
    EXPECT_EQ(WideToNarrow(nullptr), "");
    EXPECT_EQ(WideToNarrow(u""), "");
    EXPECT_EQ(WideToNarrow(u"image/png"), "image/png");
    const char16_t wide[] = {0x1241, 0x42, 0x3300, 0x43, 0};
    EXPECT_EQ(WideToNarrow(wide), "AB");
}

} // namespace
