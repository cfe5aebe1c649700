// Backgrounds, and metadata that are left out, as programs ask for them.
#include "imaginglibrary/codecs/metadata/xmp.h"
#include "imaginglibrary/core/rowconverter.h"
#include "tests/imaging/editingfixture.h"
#include "tests/support/exifmaker.h"
#include "tests/support/properties.h"

namespace {

using namespace tests;

using namespace std::string_literals;

constexpr Color Orange = MakeColor(0xFF, 0x80, 0x00);

// Opaque, half there, and not there.
Color ColorOfThree(std::uint32_t x, std::uint32_t /*y*/) {
    const Color colors[] = {MakeColor(10, 20, 30), MakeColor(10, 20, 30, 128), MakeColor(0, 0, 0, 0)};
    return colors[x];
}

// Over FF8000: (10 * 128 + 255 * 127) / 255 = 132.02, (20 * 128 + 128 * 127) / 255 = 73.8, 30 * 128 / 255 = 15.06.
const std::vector<Color> ThreeOverOrange = {MakeColor(10, 20, 30), MakeColor(132, 74, 15), Orange};

class Backgrounds : public Editing {
  protected:
    Backgrounds() { job_.background = "Ff8000"; }

    void ExpectOverOrange(int32_t status, const std::string& name) const {
        ASSERT_EQ(status, 0) << job_.message;
        EXPECT_FALSE(MayBeTransparent(Open(name)->Info())) << name;
        EXPECT_EQ(Pixels(name), ThreeOverOrange) << name;
    }

    lumbrix_job job_ = LUMBRIX_JOB_INIT;
};

TEST_F(Backgrounds, AreBelowThePictureInEveryFormat) {
    const std::string source = Make("a.png", *MakePictureOf(3, 1, ColorOfThree));
    for (const std::string name : {"b.png", "b.bmp", "b.tif", "b.gif"}) {
        ExpectOverOrange(lumbrix_convert(source.c_str(), Path(name).c_str(), &job_), name);
    }
}

TEST_F(Backgrounds, AreBelowThePictureInEveryOperation) {
    const std::string source = Make("a.png", *MakePictureOf(3, 1, ColorOfThree));
    const std::string target = Path("b.png");
    ExpectOverOrange(lumbrix_resize(source.c_str(), target.c_str(), 1, &job_), "b.png");
    ExpectOverOrange(lumbrix_thumb(source.c_str(), target.c_str(), 1, &job_), "b.png");
    const lumbrix_rectangle whole = {0, 0, 3, 1};
    ExpectOverOrange(lumbrix_crop(source.c_str(), target.c_str(), &whole, &job_), "b.png");
    const lumbrix_turn none = {sizeof(lumbrix_turn), 180, "HV"};
    ExpectOverOrange(lumbrix_rotate(source.c_str(), target.c_str(), &none, &job_), "b.png");
    const lumbrix_annotation blank = {sizeof(lumbrix_annotation), 0, 0, " ", "Arial", 10, 0, 0, 0, 0, 255, 0, 0, 0};
    ExpectOverOrange(lumbrix_annotate(source.c_str(), target.c_str(), &blank, &job_), "b.png");
    const std::string stamp = MakeWhite("stamp.png", 1, 1);
    const lumbrix_stamp_place outside = {sizeof(lumbrix_stamp_place), stamp.c_str(), 100, 100};
    ExpectOverOrange(lumbrix_stamp(source.c_str(), target.c_str(), &outside, &job_), "b.png");
    job_.only_shrink = 1;
    ExpectOverOrange(lumbrix_resize(source.c_str(), target.c_str(), 9, &job_), "b.png");
}

TEST_F(Backgrounds, ShowThroughWhereAPictureIsMadeSmaller) {
    const std::string source =
        Make("a.png", *MakePictureOf(64, 64, [](auto, auto) { return MakeColor(10, 20, 30, 128); }));
    for (const auto operate : {lumbrix_resize, lumbrix_thumb}) {
        ASSERT_EQ(operate(source.c_str(), Path("b.png").c_str(), 8, &job_), 0);
        EXPECT_FALSE(MayBeTransparent(Open("b.png")->Info()));
        EXPECT_LE(GreatestDifference(Pixels("b.png"), std::vector<Color>(64, ThreeOverOrange[1])), 1);
    }
}

TEST_F(Backgrounds, LeavePicturesWithoutTransparencyAsTheyAre) {
    const std::string grey = Make("grey.jpg", *MakePicture(PixelFormat::Indexed8, 20, 10), BmpCodec());
    ASSERT_EQ(lumbrix_convert(grey.c_str(), Path("b.png").c_str(), &job_), 0);
    EXPECT_EQ(Open("b.png")->Info().format, PixelFormat::Indexed8);
    const std::string plain = MakeWhite("white.png", 5, 5);
    ASSERT_EQ(lumbrix_convert(plain.c_str(), Path("with.jpg").c_str(), &job_), 0);
    ASSERT_EQ(lumbrix_convert(plain.c_str(), Path("without.jpg").c_str(), nullptr), 0);
    EXPECT_EQ(ReadBytes(folder_ / "with.jpg"), ReadBytes(folder_ / "without.jpg"));
}

TEST_F(Backgrounds, WithoutOneAlphaStaysOrGoesOverWhite) {
    const std::string source = Make("a.png", *MakePictureOf(3, 1, ColorOfThree));
    ASSERT_EQ(lumbrix_convert(source.c_str(), Path("b.png").c_str(), nullptr), 0);
    EXPECT_EQ(Pixels("b.png"), Pixels("a.png"));
    ASSERT_EQ(lumbrix_convert(source.c_str(), Path("b.bmp").c_str(), nullptr), 0);
    EXPECT_EQ(Pixels("b.bmp").back(), White);
}

TEST_F(Backgrounds, ThatAreNoColorsAreRefused) {
    const std::string source = MakeWhite("a.png", 3, 3);
    for (const char* text :
         {"", "fff", "0000000", "00000g", "#00000", "0x0000", "-00001", "+00001", " 00001", "white"}) {
        job_.background = text;
        EXPECT_EQ(lumbrix_convert(source.c_str(), Path("b.png").c_str(), &job_), LUMBRIX_INVALID_PARAMETER) << text;
        EXPECT_STREQ(job_.message, "the background is no colour of six hexadecimal digits, RRGGBB");
        EXPECT_EQ(lumbrix_date_stamp(source.c_str(), Path("b.jpg").c_str(), "now", &job_), LUMBRIX_INVALID_PARAMETER);
    }
    EXPECT_FALSE(Exists("b.png"));
    EXPECT_FALSE(Exists("b.jpg"));
}

// A colour profile of red, green and blue, as far as a writer looks at it.
std::string Profile() {
    std::string profile(132, '\0');
    profile.replace(0, 4, tests::NumberBytes(true, profile.size(), 4));
    profile.replace(16, 4, "RGB ");
    profile.replace(36, 4, "acsp");
    return profile;
}

class Stripping : public Editing {
  protected:
    void SetUp() override {
        Editing::SetUp();
        const auto properties =
            ListOf({AsciiProperty(0x010F, "maker"), AsciiProperty(0x9286, "a comment"), ShortProperty(0x8827, 100),
                    AsciiProperty(0x0132, "then"), XmpProperty("<x:xmpmeta/>"),
                    BytesProperty(33723, PropertyType::Byte, "\x1C\2\5\0\1a"s),
                    BytesProperty(34377, PropertyType::Byte, "8BIM\4\x0A\0\0\0\0\0\1\1\0"s),
                    BytesProperty(0x8773, PropertyType::Byte, Profile())});
        auto file = OutputFile::Create((folder_ / "source.jpg").u16string().c_str());
        EXPECT_EQ(JpegCodec().write(*WhitePicture(30, 20), properties, {}, **file), Status::Ok);
        EXPECT_EQ((*file)->Commit(), Status::Ok);
        source_ = Path("source.jpg");
        job_.strip = 1;
    }

    // What a file tells, but for what its format needs.
    std::vector<std::uint32_t> TagsIn(const std::string& name) const {
        std::vector<std::uint32_t> tags;
        const PropertyList properties = Open(name)->Properties();
        for (const Property& item : properties.Items()) {
            for (const std::uint32_t tag : {0x010F, 0x9286, 0x8827, 0x0132, 700, 33723, 34377, 0x8773}) {
                if (item.tag == tag) {
                    tags.push_back(tag);
                }
            }
        }
        return tags;
    }

    lumbrix_job job_ = LUMBRIX_JOB_INIT;
    std::string source_;
};

TEST_F(Stripping, LeavesNothingInAnyFormat) {
    ASSERT_EQ(TagsIn("source.jpg").size(), 8u);
    for (const std::string name : {"b.jpg", "b.png", "b.tif", "b.gif", "b.bmp"}) {
        ASSERT_EQ(lumbrix_convert(source_.c_str(), Path(name).c_str(), &job_), 0);
        EXPECT_EQ(TagsIn(name), std::vector<std::uint32_t>()) << name;
        EXPECT_EQ(ReadBytes(folder_ / name).find("maker"), std::string::npos) << name;
    }
}

TEST_F(Stripping, LeavesNothingInAnyOperation) {
    const std::string target = Path("b.jpg");
    const auto expectNothing = [&](int32_t status) {
        EXPECT_EQ(status, 0);
        EXPECT_EQ(TagsIn("b.jpg"), std::vector<std::uint32_t>());
    };
    expectNothing(lumbrix_resize(source_.c_str(), target.c_str(), 10, &job_));
    expectNothing(lumbrix_thumb(source_.c_str(), target.c_str(), 10, &job_));
    const lumbrix_rectangle part = {1, 2, 3, 4};
    expectNothing(lumbrix_crop(source_.c_str(), target.c_str(), &part, &job_));
    const lumbrix_turn turn = {sizeof(lumbrix_turn), 90, nullptr};
    expectNothing(lumbrix_rotate(source_.c_str(), target.c_str(), &turn, &job_));
    const lumbrix_annotation blank = {sizeof(lumbrix_annotation), 0, 0, " ", "Arial", 10, 0, 0, 0, 0, 255, 0, 0, 0};
    expectNothing(lumbrix_annotate(source_.c_str(), target.c_str(), &blank, &job_));
    const std::string stamp = MakeWhite("stamp.png", 1, 1);
    const lumbrix_stamp_place place = {sizeof(lumbrix_stamp_place), stamp.c_str(), 1, 1};
    expectNothing(lumbrix_stamp(source_.c_str(), target.c_str(), &place, &job_));
    job_.only_shrink = 1;
    expectNothing(lumbrix_resize(source_.c_str(), target.c_str(), 50, &job_));
}

TEST_F(Stripping, LeavesTheProfileWhereThatIsWanted) {
    job_.keep_profile = 1;
    for (const std::string name : {"b.jpg", "b.tif"}) {
        ASSERT_EQ(lumbrix_convert(source_.c_str(), Path(name).c_str(), &job_), 0);
        EXPECT_EQ(TagsIn(name), std::vector<std::uint32_t>{0x8773}) << name;
    }
}

TEST_F(Stripping, ProfileThatIsKeptAloneTakesNothingOut) {
    job_.strip = 0;
    job_.keep_profile = 1;
    ASSERT_EQ(lumbrix_convert(source_.c_str(), Path("b.jpg").c_str(), &job_), 0);
    EXPECT_EQ(TagsIn("b.jpg").size(), 8u);
}

TEST_F(Stripping, LeavesTheResolution) {
    auto made = Bitmap::Create(
        {.width = 3, .height = 2, .format = PixelFormat::Rgb24, .palette = {}, .resolution = {300, 150}});
    const std::string source = Make("fine.jpg", **made, JpegCodec());
    ASSERT_EQ(lumbrix_convert(source.c_str(), Path("b.jpg").c_str(), &job_), 0);
    EXPECT_EQ(Open("b.jpg")->Info().resolution.horizontal, 300);
    EXPECT_EQ(Open("b.jpg")->Info().resolution.vertical, 150);
}

TEST_F(Stripping, LeavesTheDateThatIsSet) {
    ASSERT_EQ(lumbrix_date_stamp(source_.c_str(), Path("b.jpg").c_str(), "now", &job_), 0);
    EXPECT_EQ(TagsIn("b.jpg"), std::vector<std::uint32_t>{0x0132});
    ExpectItems(Open("b.jpg")->Properties(), {AsciiProperty(0x0132, "now")});
}

} // namespace
