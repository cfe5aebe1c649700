// Metadata that tell of the picture itself: as established they go along as they are, truthful operations keep them
// true.
#include "tests/imaging/editingfixture.h"
#include "tests/support/exifmaker.h"
#include "tests/support/properties.h"

namespace {

using namespace tests;

using namespace std::string_literals;

constexpr std::uint32_t ThumbnailData = 0x501B;
constexpr std::uint32_t Resources = 34377;

const std::string SmallCopy = "\xFF\xD8 small copy \xFF\xD9";
const std::string OtherResource = "8BIM\4\x0A\0\0\0\0\0\1\1\0"s;
const std::string ThumbnailResource = "8BIM\4\x0C\0\0\0\0\0\2xy"s;

class Metadata : public Editing {
  protected:
    void SetUp() override {
        Editing::SetUp();
        Make("source.jpg", *MakePictureOf(60, 40, [](auto, auto) { return White; }), JpegCodec());
        const auto side = [](std::uint64_t number) { return tests::NumberBytes(false, number, 4); };
        const std::string exif = MakeExif({.main = {{0x0112, 3, 1, "\6\0"s}, {0xC000, 12, 1, "12345678"}},
                                           .exif = {{0xA002, 4, 1, side(60)}, {0xA003, 4, 1, side(40)}},
                                           .thumbnail = {{0x0103, 3, 1, "\6\0"s}},
                                           .thumbnailData = SmallCopy});
        const std::string resources = "Photoshop 3.0\0"s + ThumbnailResource + OtherResource;
        std::string bytes = ReadBytes(folder_ / "source.jpg");
        bytes.insert(2, ExifMarker(exif) + "\xFF\xED" + tests::NumberBytes(true, resources.size() + 2, 2) + resources);
        WriteBytes(folder_ / "source.jpg", bytes);
        source_ = Path("source.jpg");
        target_ = Path("target.jpg");
    }

    PropertyList Written() const { return Open("target.jpg")->Properties(); }

    void ExpectTrue(std::uint32_t width, std::uint32_t height) const {
        const PropertyList written = Written();
        ExpectItems(written, {LongProperty(0xA002, width), LongProperty(0xA003, height), ShortProperty(0x0112, 6),
                              BytesProperty(Resources, PropertyType::Byte, OtherResource)});
        EXPECT_EQ(written.Find(ThumbnailData), nullptr);
        const std::string bytes = ReadBytes(folder_ / "target.jpg");
        EXPECT_EQ(bytes.find(SmallCopy), std::string::npos);
        EXPECT_NE(bytes.find("12345678"), std::string::npos); // what no item tells
    }

    void ExpectAsItWas() const {
        ExpectItems(Written(), {LongProperty(0xA002, 60), LongProperty(0xA003, 40), ShortProperty(0x0112, 6),
                                BytesProperty(ThumbnailData, PropertyType::Byte, SmallCopy),
                                BytesProperty(Resources, PropertyType::Byte, ThumbnailResource + OtherResource)});
        EXPECT_NE(ReadBytes(folder_ / "target.jpg").find("12345678"), std::string::npos);
    }

    lumbrix_job job_ = LUMBRIX_JOB_INIT;
    std::string source_;
    std::string target_;
};

TEST_F(Metadata, TruthfulOperationsKeepThemTrue) {
    EXPECT_EQ(lumbrix_resize(source_.c_str(), target_.c_str(), 20, &job_), 0);
    ExpectTrue(30, 20);
    const lumbrix_rectangle rectangle = {5, 6, 17, 19};
    EXPECT_EQ(lumbrix_crop(source_.c_str(), target_.c_str(), &rectangle, &job_), 0);
    ExpectTrue(17, 19);
    const lumbrix_turn turn = {sizeof(lumbrix_turn), 90, nullptr};
    EXPECT_EQ(lumbrix_rotate(source_.c_str(), target_.c_str(), &turn, &job_), 0);
    ExpectTrue(40, 60);
    const lumbrix_turn mirror = {sizeof(lumbrix_turn), 0, "H"};
    EXPECT_EQ(lumbrix_rotate(source_.c_str(), target_.c_str(), &mirror, &job_), 0);
    ExpectTrue(60, 40);
}

TEST_F(Metadata, SmallCopyWithoutTheStampGoes) {
    MakeWhite("stamp.png", 4, 4);
    const std::string stamp = Path("stamp.png");
    const lumbrix_stamp_place place = {sizeof(lumbrix_stamp_place), stamp.c_str(), 3, 3};
    EXPECT_EQ(lumbrix_stamp(source_.c_str(), target_.c_str(), &place, &job_), 0);
    ExpectTrue(60, 40);
}

TEST_F(Metadata, PictureThatStaysAsItIsKeepsThem) {
    EXPECT_EQ(lumbrix_convert(source_.c_str(), target_.c_str(), &job_), 0);
    ExpectAsItWas();
    const lumbrix_turn none = {sizeof(lumbrix_turn), 0, nullptr};
    EXPECT_EQ(lumbrix_rotate(source_.c_str(), target_.c_str(), &none, &job_), 0);
    ExpectAsItWas();
    job_.only_shrink = 1;
    EXPECT_EQ(lumbrix_resize(source_.c_str(), target_.c_str(), 100, &job_), 0);
    ExpectAsItWas();
}

TEST_F(Metadata, EstablishedOperationsLeaveThemAsTheyAre) {
    EXPECT_EQ(ResizeImage(source_.c_str(), target_.c_str(), 20), 0);
    ExpectAsItWas();
    EXPECT_EQ(CropImage(source_.c_str(), target_.c_str(), 5, 6, 17, 19), 0);
    ExpectAsItWas();
    EXPECT_EQ(RotateImage(source_.c_str(), target_.c_str(), 90, ""), 0);
    ExpectAsItWas();
}

TEST_F(Metadata, DateStampLeavesTheRestOfTheBlock) {
    EXPECT_EQ(lumbrix_date_stamp(source_.c_str(), target_.c_str(), "2001:02:03 04:05:06", &job_), 0);
    ExpectAsItWas();
    ExpectItems(Written(), {AsciiProperty(0x0132, "2001:02:03 04:05:06")});
}

} // namespace
