// Pictures that are turned as their stored orientation says before anything else is done with them.
#include "imaginglibrary/codecs/metadata/xmp.h"
#include "tests/imaging/editingfixture.h"
#include "tests/support/exifmaker.h"
#include "tests/support/properties.h"

namespace {

using namespace tests;

using namespace std::string_literals;

constexpr std::uint32_t Width = 4;
constexpr std::uint32_t Height = 3;

// What a viewer shows of the pixel at (x, y) of a stored picture of so many columns and rows.
struct Shown {
    std::uint32_t x, y;
};
Shown PlaceShown(unsigned orientation, std::uint32_t x, std::uint32_t y) {
    const std::uint32_t right = Width - 1 - x;
    const std::uint32_t below = Height - 1 - y;
    const Shown places[] = {{x, y}, {right, y}, {right, below}, {x, below},
                            {y, x}, {below, x}, {below, right}, {y, right}};
    return places[orientation - 1];
}

Color ColorAt(std::uint32_t x, std::uint32_t y) {
    return MakeColor(static_cast<std::uint8_t>(40 * x), static_cast<std::uint8_t>(60 * y), 200);
}

class Orientation : public Editing {
  protected:
    // A PNG file of 4 by 3 squares, each `scale` pixels wide, that are stored turned.
    std::string MakeTurned(std::uint16_t orientation, std::uint32_t scale = 1) const {
        const auto picture =
            MakePictureOf(Width * scale, Height * scale, [=](auto x, auto y) { return ColorAt(x / scale, y / scale); });
        const auto path = folder_ / ("turned" + std::to_string(orientation) + ".png");
        auto file = OutputFile::Create(path.u16string().c_str());
        EXPECT_EQ(PngCodec().write(*picture, ListOf({ShortProperty(0x0112, orientation), ShortProperty(0x8827, 100)}),
                                   {}, **file),
                  Status::Ok);
        EXPECT_EQ((*file)->Commit(), Status::Ok);
        return path.string();
    }

    // The picture as it shall be shown.
    static std::vector<Color> Upright(unsigned orientation) {
        const bool isOnItsSide = orientation > 4;
        std::vector<Color> colors(Width * Height);
        for (std::uint32_t y = 0; y < Height; ++y) {
            for (std::uint32_t x = 0; x < Width; ++x) {
                const Shown place = PlaceShown(orientation, x, y);
                colors[place.y * (isOnItsSide ? Height : Width) + place.x] = ColorAt(x, y);
            }
        }
        return colors;
    }

    // That the target shows the picture upright, tells so in the job, and has no orientation any more.
    void ExpectUpright(int32_t status, const std::string& name, unsigned orientation) const {
        ASSERT_EQ(status, 0) << job_.message;
        const bool isOnItsSide = orientation > 4;
        EXPECT_EQ(job_.width, static_cast<int32_t>(isOnItsSide ? Height : Width));
        EXPECT_EQ(job_.height, static_cast<int32_t>(isOnItsSide ? Width : Height));
        EXPECT_EQ(Pixels(name), Upright(orientation)) << orientation;
        const auto properties = Open(name)->Properties();
        EXPECT_EQ(properties.Find(0x0112), nullptr) << orientation;
    }

    Orientation() { job_.auto_orient = 1; }

    lumbrix_job job_ = LUMBRIX_JOB_INIT;
};

TEST_F(Orientation, EveryOneIsFollowedByEveryOperation) {
    for (std::uint16_t i = 1; i <= 8; ++i) {
        const std::string source = MakeTurned(i);
        const auto width = static_cast<int32_t>(i > 4 ? Height : Width);
        const auto height = static_cast<int32_t>(i > 4 ? Width : Height);
        const std::string target = Path("target.png");
        ExpectUpright(lumbrix_convert(source.c_str(), target.c_str(), &job_), "target.png", i);
        ExpectUpright(lumbrix_resize(source.c_str(), target.c_str(), height, &job_), "target.png", i);
        ExpectUpright(lumbrix_thumb(source.c_str(), target.c_str(), height, &job_), "target.png", i);
        const lumbrix_rectangle whole = {0, 0, width, height};
        ExpectUpright(lumbrix_crop(source.c_str(), target.c_str(), &whole, &job_), "target.png", i);
        const lumbrix_turn none = {sizeof(lumbrix_turn), 180, "hv"};
        ExpectUpright(lumbrix_rotate(source.c_str(), target.c_str(), &none, &job_), "target.png", i);
        const lumbrix_annotation blank = {sizeof(lumbrix_annotation), 0, 0, " ", "Arial", 10, 0, 0, 0, 0, 255, 0, 0, 0};
        ExpectUpright(lumbrix_annotate(source.c_str(), target.c_str(), &blank, &job_), "target.png", i);
        const std::string stamp = MakeWhite("stamp.png", 1, 1);
        const lumbrix_stamp_place outside = {sizeof(lumbrix_stamp_place), stamp.c_str(), 100, 100};
        ExpectUpright(lumbrix_stamp(source.c_str(), target.c_str(), &outside, &job_), "target.png", i);
        job_.only_shrink = 1;
        ExpectUpright(lumbrix_resize(source.c_str(), target.c_str(), 100, &job_), "target.png", i);
        ExpectUpright(lumbrix_thumb(source.c_str(), target.c_str(), 100, &job_), "target.png", i);
        job_.only_shrink = 0;
    }
}

TEST_F(Orientation, SmallCopiesAreTurnedToo) {
    for (std::uint16_t i = 1; i <= 8; ++i) {
        const std::string source = MakeTurned(i, 16);
        const auto height = static_cast<int32_t>(i > 4 ? Width : Height) * 4;
        for (const auto operate : {lumbrix_resize, lumbrix_thumb}) {
            ASSERT_EQ(operate(source.c_str(), Path("small.png").c_str(), height, &job_), 0);
            ASSERT_EQ(operate(Path("small.png").c_str(), Path("smaller.png").c_str(), height / 4, &job_), 0);
            EXPECT_LE(GreatestDifference(Pixels("smaller.png"), Upright(i)), 12) << i;
        }
    }
}

TEST_F(Orientation, PlacesAreThoseOfTheTurnedPicture) {
    const std::string source = MakeTurned(6); // 3 by 4 upright
    const lumbrix_rectangle corner = {2, 3, 1, 1};
    ASSERT_EQ(lumbrix_crop(source.c_str(), Path("corner.png").c_str(), &corner, &job_), 0);
    EXPECT_EQ(Pixels("corner.png"), std::vector{Upright(6).back()});
    const lumbrix_rectangle beyond = {3, 2, 1, 1};
    EXPECT_EQ(lumbrix_crop(source.c_str(), Path("corner.png").c_str(), &beyond, &job_), LUMBRIX_REFUSED);
    EXPECT_NE(std::string(job_.message).find("3 x 4"), std::string::npos);
    const std::string stamp = MakeWhite("stamp.png", 1, 1);
    const lumbrix_stamp_place place = {sizeof(lumbrix_stamp_place), stamp.c_str(), 2, 3};
    ASSERT_EQ(lumbrix_stamp(source.c_str(), Path("stamped.png").c_str(), &place, &job_), 0);
    EXPECT_EQ(Pixels("stamped.png").back(), White);
}

TEST_F(Orientation, StampIsPlacedAsItLies) {
    const std::string stamp = MakeTurned(6);
    const std::string source = MakeWhite("white.png", Width, Height);
    const lumbrix_stamp_place place = {sizeof(lumbrix_stamp_place), stamp.c_str(), 0, 0};
    ASSERT_EQ(lumbrix_stamp(source.c_str(), Path("stamped.png").c_str(), &place, &job_), 0);
    EXPECT_EQ(Pixels("stamped.png"), Upright(1));
}

TEST_F(Orientation, NothingIsTurnedUnlessThatIsAskedFor) {
    const std::string source = MakeTurned(6);
    job_.auto_orient = 0;
    ASSERT_EQ(lumbrix_convert(source.c_str(), Path("b.png").c_str(), &job_), 0);
    EXPECT_EQ(Pixels("b.png"), Upright(1));
    ExpectItems(Open("b.png")->Properties(), {ShortProperty(0x0112, 6)});
    ASSERT_EQ(lumbrix_convert(source.c_str(), Path("b.png").c_str(), nullptr), 0);
    EXPECT_EQ(Pixels("b.png"), Upright(1));
}

TEST_F(Orientation, OthersAreLeftAlone) {
    for (const std::uint16_t number : {0, 9}) {
        const std::string source = MakeTurned(number);
        ASSERT_EQ(lumbrix_convert(source.c_str(), Path("b.png").c_str(), &job_), 0);
        EXPECT_EQ(Pixels("b.png"), Upright(1));
        ExpectItems(Open("b.png")->Properties(), {ShortProperty(0x0112, number)});
    }
    ASSERT_EQ(lumbrix_convert(MakeWhite("none.png", 3, 2).c_str(), Path("b.png").c_str(), &job_), 0);
    ExpectSize("b.png", 3, 2);
}

TEST_F(Orientation, WhatElseIsToldStaysAndIsTrue) {
    Make("source.jpg", *MakePictureOf(60, 40, [](auto, auto) { return White; }), JpegCodec());
    const auto side = [](std::uint64_t number) { return tests::NumberBytes(false, number, 4); };
    const std::string exif = MakeExif({.main = {{0x0112, 3, 1, "\6\0"s}, {0x0132, 2, 4, "now\0"s}},
                                       .exif = {{0xA002, 4, 1, side(60)}, {0xA003, 4, 1, side(40)}},
                                       .thumbnail = {{0x0112, 3, 1, "\6\0"s}},
                                       .thumbnailData = "\xFF\xD8 small copy \xFF\xD9"});
    const std::string xmp = "<a xmlns:tiff='http://ns.adobe.com/tiff/1.0/' tiff:Orientation='6' tiff:Make='m'/>";
    const std::string segment = "http://ns.adobe.com/xap/1.0/\0"s + xmp;
    std::string bytes = ReadBytes(folder_ / "source.jpg");
    bytes.insert(2, ExifMarker(exif) + "\xFF\xE1" + tests::NumberBytes(true, segment.size() + 2, 2) + segment);
    WriteBytes(folder_ / "source.jpg", bytes);
    const auto expectTrue = [&](int32_t status, std::uint32_t width, std::uint32_t height) {
        ASSERT_EQ(status, 0);
        ExpectSize("target.jpg", width, height);
        const auto properties = Open("target.jpg")->Properties();
        ExpectItems(properties,
                    {LongProperty(0xA002, width), LongProperty(0xA003, height), AsciiProperty(0x0132, "now")});
        EXPECT_EQ(properties.Find(0x0112), nullptr);
        EXPECT_EQ(properties.Find(0x501B), nullptr);
        EXPECT_EQ(XmpOf(properties).find("Orientation"), std::string_view::npos);
        EXPECT_NE(XmpOf(properties).find("tiff:Make='m'"), std::string_view::npos);
    };
    const std::string source = Path("source.jpg");
    const std::string target = Path("target.jpg");
    expectTrue(lumbrix_convert(source.c_str(), target.c_str(), &job_), 40, 60);
    expectTrue(lumbrix_resize(source.c_str(), target.c_str(), 30, &job_), 20, 30);
    expectTrue(lumbrix_date_stamp(source.c_str(), target.c_str(), "now", &job_), 40, 60);
    job_.only_shrink = 1;
    expectTrue(lumbrix_resize(source.c_str(), target.c_str(), 60, &job_), 40, 60);
}

TEST_F(Orientation, EstablishedProceduresTurnNothing) {
    const std::string source = MakeTurned(6);
    EXPECT_EQ(ConvertImageToPng(source.c_str(), Path("b.png").c_str()), 0);
    EXPECT_EQ(ResizeImage(source.c_str(), Path("c.png").c_str(), Height), 0);
    for (const char* name : {"b.png", "c.png"}) {
        EXPECT_EQ(Pixels(name), Upright(1));
        ExpectItems(Open(name)->Properties(), {ShortProperty(0x0112, 6)});
    }
}

struct LastReport {
    std::uint32_t done = 0;
    std::uint32_t rows = 0;
};

int32_t LUMBRIX_CALL KeepReport(void* context, std::uint32_t done, std::uint32_t rows) {
    auto& last = *static_cast<LastReport*>(context);
    EXPECT_GE(done, last.done);
    last = {done, rows};
    return 1;
}

TEST_F(Orientation, ProgressOfATurnedPictureRunsUpToAllRows) {
    LastReport last;
    job_.context = &last;
    job_.progress = KeepReport;
    ASSERT_EQ(lumbrix_resize(MakeTurned(6, 16).c_str(), Path("b.png").c_str(), 30, &job_), 0);
    EXPECT_EQ(last.done, last.rows);
    EXPECT_EQ(last.rows, 48u + 30u);
}

} // namespace
