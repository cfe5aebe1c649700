// The pixels of images, read into memory of the caller's.
#include "tests/support/codecs.h"
#include "tests/support/flatfunctions.h"
#include "tests/support/pictures.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

namespace {

using namespace imaginglibrary;
using namespace tests;

constexpr std::uint32_t ReadIntoOwnMemory = 5;

class FlatPixels : public testing::Test {
  protected:
    void SetUp() override {
        const GdiplusStartupInput input{1, nullptr, 0, 0};
        ASSERT_EQ(flat::GdiplusStartup(&token_, &input, nullptr), Status::Ok);
        const auto picture = MakePictureOf(3, 2, [](auto x, auto y) {
            return MakeColor(static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(y), 7);
        });
        ASSERT_EQ(WritePicture(PngCodec(), *picture, folder_ / "a.png"), Status::Ok);
        ASSERT_EQ(flat::GdipLoadImageFromFile((folder_ / "a.png").u16string().c_str(), &image_), Status::Ok);
    }
    void TearDown() override { flat::GdiplusShutdown(token_); }

    Status Lock(const FlatRect* rectangle, std::uint32_t flags = ReadIntoOwnMemory,
                PixelFormat format = PixelFormat::Argb32) {
        return CallFlat("GdipBitmapLockBits", image_, rectangle, flags, format, &data_);
    }

    std::uint32_t pixels_[16] = {};
    BitmapData data_{.width = 0, .height = 0, .stride = 16, .format = {}, .pixels = pixels_, .reserved = 0};
    TemporaryFolder folder_;
    std::uintptr_t token_ = 0;
    GpImage* image_ = nullptr;
};

TEST_F(FlatPixels, AreThoseOfTheWholeOrOfAPart) {
    EXPECT_EQ(Lock(nullptr), Status::Ok);
    EXPECT_EQ(data_.width, 3u);
    EXPECT_EQ(data_.height, 2u);
    EXPECT_EQ(data_.format, PixelFormat::Argb32);
    EXPECT_EQ(pixels_[0], MakeColor(0, 0, 7));
    EXPECT_EQ(pixels_[2], MakeColor(2, 0, 7));
    EXPECT_EQ(pixels_[3], 0u) << "behind the row";
    EXPECT_EQ(pixels_[6], MakeColor(2, 1, 7));
    const FlatRect part{1, 1, 2, 1};
    EXPECT_EQ(Lock(&part), Status::Ok);
    EXPECT_EQ(data_.width, 2u);
    EXPECT_EQ(pixels_[0], MakeColor(1, 1, 7));
    EXPECT_EQ(CallFlat("GdipBitmapUnlockBits", image_, &data_), Status::Ok);
}

TEST_F(FlatPixels, ComeInTheFormatAndTheOrderThatIsAskedFor) {
    data_.stride = -16;
    data_.pixels = pixels_ + 4; // the last row of the memory comes first
    EXPECT_EQ(Lock(nullptr), Status::Ok);
    EXPECT_EQ(pixels_[4], MakeColor(0, 0, 7));
    EXPECT_EQ(pixels_[0], MakeColor(0, 1, 7));
    data_.stride = 16;
    data_.pixels = pixels_;
    EXPECT_EQ(Lock(nullptr, ReadIntoOwnMemory, PixelFormat::Rgb24), Status::Ok);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(pixels_);
    EXPECT_EQ(bytes[3], 7);
    EXPECT_EQ(bytes[5], 1) << "red of the second pixel";
}

TEST_F(FlatPixels, OutsideAreRefused) {
    for (const FlatRect& part : {FlatRect{1, 0, 3, 1}, {0, 1, 1, 2}, {-1, 0, 2, 1}, {0, -1, 1, 2}}) {
        EXPECT_EQ(Lock(&part), Status::OutOfMemory);
    }
    for (const FlatRect& part : {FlatRect{0, 0, 0, 1}, {0, 0, 1, 0}, {2, 0, -1, 1}}) {
        EXPECT_EQ(Lock(&part), Status::InvalidParameter);
    }
}

TEST_F(FlatPixels, OtherWaysOfLockingAreNotOffered) {
    for (const std::uint32_t flags : {0u, 1u, 3u, 4u, 6u, 7u}) {
        EXPECT_EQ(Lock(nullptr, flags), Status::NotImplemented);
    }
    EXPECT_EQ(Lock(nullptr, ReadIntoOwnMemory, PixelFormat::Indexed8), Status::NotImplemented);
}

TEST_F(FlatPixels, NullsAndShortRowsAreRefused) {
    data_.stride = 11;
    EXPECT_EQ(Lock(nullptr), Status::InvalidParameter);
    data_.stride = -11;
    EXPECT_EQ(Lock(nullptr), Status::InvalidParameter);
    data_.stride = 12;
    EXPECT_EQ(Lock(nullptr), Status::Ok);
    data_.pixels = nullptr;
    EXPECT_EQ(Lock(nullptr), Status::InvalidParameter);
    BitmapData* const none = nullptr;
    GpImage* const foreign = nullptr;
    EXPECT_EQ(CallFlat("GdipBitmapUnlockBits", image_, none), Status::InvalidParameter);
    EXPECT_EQ(CallFlat("GdipBitmapUnlockBits", foreign, &data_), Status::InvalidParameter);
}

} // namespace
