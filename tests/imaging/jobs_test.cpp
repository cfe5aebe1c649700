// The truthful procedures as programs call them: what they write, what they report, and the sentence that they say.
#include "tests/imaging/editingfixture.h"

#include <cstring>

namespace {

using namespace tests;

class Jobs : public Editing {
  protected:
    // Expects this status in both places, and a message that has these words.
    void ExpectFailure(int32_t returned, int32_t status, const std::vector<std::string>& words) const {
        EXPECT_EQ(returned, status);
        EXPECT_EQ(job_.status, status);
        EXPECT_EQ(job_.written, 0);
        for (const std::string& word : words) {
            EXPECT_NE(std::string(job_.message).find(word), std::string::npos) << word << " in: " << job_.message;
        }
    }

    void ExpectWritten(int32_t returned, int32_t width, int32_t height) const {
        EXPECT_EQ(returned, 0) << job_.message;
        EXPECT_EQ(job_.status, 0);
        EXPECT_EQ(job_.written, 1);
        EXPECT_EQ(job_.damaged, 0);
        EXPECT_EQ(job_.width, width);
        EXPECT_EQ(job_.height, height);
        EXPECT_STREQ(job_.message, "");
    }

    int32_t Convert(const std::string& source, const std::string& name) {
        return lumbrix_convert(source.c_str(), Path(name).c_str(), &job_);
    }

    int32_t Resize(const std::string& source, const std::string& name, int32_t height) {
        return lumbrix_resize(source.c_str(), Path(name).c_str(), height, &job_);
    }

    lumbrix_job job_ = LUMBRIX_JOB_INIT;
};

TEST_F(Jobs, ConvertFollowsTheExtensionOrTheFormatThatIsNamed) {
    const std::string source = MakeWhite("a.png", 30, 20);
    ExpectWritten(Convert(source, "b.jpg"), 30, 20);
    EXPECT_EQ(ReadBytes(folder_ / "b.jpg").substr(0, 2), "\xFF\xD8");
    job_.format = "gif";
    ExpectWritten(Convert(source, "c.jpg"), 30, 20);
    EXPECT_EQ(ReadBytes(folder_ / "c.jpg").substr(0, 3), "GIF");
    job_.format = "webp";
    ExpectFailure(Convert(source, "d.jpg"), LUMBRIX_BAD_NAME, {"d.jpg", "format"});
    EXPECT_FALSE(Exists("d.jpg"));
}

TEST_F(Jobs, ThumbHasItsHeight) {
    const std::string source = MakeWhite("a.png", 30, 20);
    ExpectWritten(lumbrix_thumb(source.c_str(), Path("b.png").c_str(), 10, &job_), 15, 10);
    ExpectSize("b.png", 15, 10);
}

TEST_F(Jobs, ThumbWithoutAWidthIsRefusedWhereTheTruthIsAskedFor) {
    const std::string source = MakeWhite("pole.png", 1, 1000);
    ExpectFailure(lumbrix_thumb(source.c_str(), Path("b.png").c_str(), 100, &job_), LUMBRIX_INVALID_PARAMETER,
                  {"b.png", "0 x 100 pixels"});
    EXPECT_FALSE(Exists("b.png"));
    EXPECT_EQ(ConvertImageToThumbPng(source.c_str(), 100, Path("b.png").c_str()), 0);
    ExpectSize("b.png", 120, 100);
}

TEST_F(Jobs, ResizeDrawsPicturesWithAPalette) {
    const std::string source = Make("a.png", *MakePicture(PixelFormat::Indexed8, 40, 20));
    ExpectWritten(Resize(source, "b.png", 20), 40, 20);
    EXPECT_EQ(Pixels("b.png"), Pixels("a.png"));
    ExpectWritten(Resize(source, "c.gif", 10), 20, 10);
}

TEST_F(Jobs, ResizeThatOnlyShrinksKeepsThePicture) {
    job_.only_shrink = 1;
    ExpectWritten(Resize(MakeWhite("a.png", 30, 20), "b.png", 100), 30, 20);
    ExpectWritten(Resize(Path("a.png"), "b.png", 10), 15, 10);
}

TEST_F(Jobs, SizesThatCannotBeAreNamed) {
    const std::string source = MakeWhite("a.png", 40, 20);
    ExpectFailure(Resize(source, "b.png", 40000), LUMBRIX_INVALID_PARAMETER, {"b.png", "80000 x 40000 pixels"});
    ExpectFailure(Resize(source, "b.png", 32000), LUMBRIX_OUT_OF_MEMORY, {"b.png", "memory", "64000 x 32000 pixels"});
    EXPECT_FALSE(Exists("b.png"));
}

TEST_F(Jobs, CropMustLieWithinThePicture) {
    const std::string source = MakeWhite("a.png", 40, 20);
    const lumbrix_rectangle inside{30, 10, 10, 10};
    ExpectWritten(lumbrix_crop(source.c_str(), Path("b.png").c_str(), &inside, &job_), 10, 10);
    const lumbrix_rectangle beyond{31, 10, 10, 10};
    ExpectFailure(lumbrix_crop(source.c_str(), Path("c.png").c_str(), &beyond, &job_), LUMBRIX_REFUSED,
                  {"a.png", "40 x 20"});
    EXPECT_FALSE(Exists("c.png"));
}

TEST_F(Jobs, RotateTurnsAndRefusesOtherAngles) {
    const std::string source = MakeWhite("a.png", 40, 20);
    const lumbrix_turn right{sizeof(lumbrix_turn), 90, nullptr};
    ExpectWritten(lumbrix_rotate(source.c_str(), Path("b.png").c_str(), &right, &job_), 20, 40);
    const lumbrix_turn slanted{sizeof(lumbrix_turn), 45, ""};
    ExpectFailure(lumbrix_rotate(source.c_str(), Path("c.png").c_str(), &slanted, &job_), LUMBRIX_INVALID_PARAMETER,
                  {"a.png"});
    EXPECT_FALSE(Exists("c.png"));
}

TEST_F(Jobs, AnnotateDrawsOnPicturesWithAPaletteToo) {
    const std::string source = Make("a.png", *MakePicture(PixelFormat::Indexed8, 100, 60));
    lumbrix_annotation annotation = LUMBRIX_ANNOTATION_INIT;
    annotation.text = "H";
    annotation.font = "Arial";
    annotation.font_size = 40;
    annotation.red = 255;
    ExpectWritten(lumbrix_annotate(source.c_str(), Path("b.png").c_str(), &annotation, &job_), 100, 60);
    const auto colors = Pixels("b.png");
    EXPECT_NE(std::find(colors.begin(), colors.end(), MakeColor(255, 0, 0)), colors.end());
}

TEST_F(Jobs, AnnotateWritesAtItsPlaceInItsColor) {
    const std::string source = MakeWhite("a.png", 100, 100);
    lumbrix_annotation annotation = LUMBRIX_ANNOTATION_INIT;
    annotation.text = "H";
    annotation.font = "Arial";
    annotation.font_size = 30;
    annotation.red = 10;
    annotation.green = 120;
    annotation.blue = 200;
    for (const auto& [x, y] : {std::pair{50, 0}, {0, 50}}) {
        annotation.x = static_cast<float>(x);
        annotation.y = static_cast<float>(y);
        ExpectWritten(lumbrix_annotate(source.c_str(), Path("b.png").c_str(), &annotation, &job_), 100, 100);
        const auto colors = Pixels("b.png");
        EXPECT_NE(std::find(colors.begin(), colors.end(), MakeColor(10, 120, 200)), colors.end());
        for (std::size_t i = 0; i < colors.size(); ++i) {
            const bool isBeside = static_cast<int>(i % 100) < x || static_cast<int>(i / 100) < y;
            EXPECT_TRUE(!isBeside || colors[i] == White) << i % 100 << "," << i / 100;
        }
    }
}

TEST_F(Jobs, AnnotateNamesAFontThatIsNotInstalled) {
    lumbrix_annotation annotation = LUMBRIX_ANNOTATION_INIT;
    annotation.text = "H";
    annotation.font = "Nonesuch";
    annotation.font_size = 40;
    ExpectFailure(lumbrix_annotate(MakeWhite("a.png", 9, 9).c_str(), Path("b.png").c_str(), &annotation, &job_),
                  LUMBRIX_FONT_FAMILY_NOT_FOUND, {"b.png", "the font 'Nonesuch' is not installed"});
    EXPECT_FALSE(Exists("b.png"));
}

TEST_F(Jobs, StampIsPlacedAndNamedWhereItIsMissing) {
    const std::string source = MakeWhite("a.png", 10, 8);
    const std::string stamp = Make("s.png", *MakePictureOf(2, 2, [](auto, auto) { return MakeColor(1, 2, 3); }));
    const lumbrix_stamp_place place{sizeof(lumbrix_stamp_place), stamp.c_str(), 4, 3};
    ExpectWritten(lumbrix_stamp(source.c_str(), Path("b.png").c_str(), &place, &job_), 10, 8);
    EXPECT_EQ(Pixels("b.png")[3 * 10 + 4], MakeColor(1, 2, 3));
    const std::string none = Path("none.png");
    const lumbrix_stamp_place missing{sizeof(lumbrix_stamp_place), none.c_str(), 0, 0};
    ExpectFailure(lumbrix_stamp(source.c_str(), Path("c.png").c_str(), &missing, &job_), LUMBRIX_FILE_NOT_FOUND,
                  {"none.png", "no such file"});
    ExpectFailure(lumbrix_stamp(source.c_str(), stamp.c_str(), &place, &job_), LUMBRIX_GENERIC_ERROR,
                  {"s.png", "it is the stamp itself"});
}

TEST_F(Jobs, DatesAreWrittenAndRead) {
    const std::string source = MakeWhite("a.b.png", 10, 8);
    char* name = lumbrix_stamped_name(source.c_str());
    EXPECT_STREQ(name, Path("a_stamped.jpg").c_str());
    ExpectWritten(lumbrix_date_stamp(source.c_str(), name, "today", &job_), 10, 8);
    char* date = nullptr;
    EXPECT_EQ(lumbrix_read_date(name, &date, &job_), 0);
    EXPECT_STREQ(date, "today");
    ExpectFailure(lumbrix_read_date(source.c_str(), &date, &job_), LUMBRIX_PROPERTY_NOT_FOUND,
                  {"a.b.png", "it has none"});
    EXPECT_STREQ(date, "");
    lumbrix_free(date);
    lumbrix_free(name);
}

TEST_F(Jobs, SizesAndPropertiesAreRead) {
    EXPECT_EQ(lumbrix_read_size(LUMBRIX_SAMPLES "/photo.jpg", &job_), 0);
    EXPECT_EQ(job_.width, 1600);
    EXPECT_EQ(job_.height, 1067);
    EXPECT_EQ(job_.written, 0);
    char* list = nullptr;
    EXPECT_EQ(lumbrix_read_properties(LUMBRIX_SAMPLES "/photo.jpg", &list, &job_), 0);
    EXPECT_NE(std::string(list).find("Camera Manufacturer\tLumbrix\r\n"), std::string::npos);
    EXPECT_EQ(lumbrix_read_properties(Path("none").c_str(), &list, &job_), LUMBRIX_FILE_NOT_FOUND);
    EXPECT_STREQ(list, "");
    lumbrix_free(list);
}

TEST_F(Jobs, ExistingDestinationIsKeptWhereThatIsWanted) {
    const std::string source = MakeWhite("a.png", 10, 8);
    WriteBytes(folder_ / "b.png", "old");
    job_.keep_existing = 1;
    ExpectFailure(Convert(source, "b.png"), LUMBRIX_ALREADY_THERE, {"b.png", "there is such a file already"});
    EXPECT_EQ(ReadBytes(folder_ / "b.png"), "old");
    ExpectWritten(Convert(source, "c.png"), 10, 8);
    job_.keep_existing = 0;
    ExpectWritten(Convert(source, "b.png"), 10, 8);
}

TEST_F(Jobs, SentencesNameFileAndCause) {
    const std::string source = MakeWhite("a.png", 10, 8);
    ExpectFailure(Convert(Path("none.png"), "b.png"), LUMBRIX_FILE_NOT_FOUND,
                  {"cannot read " + Path("none.png") + ": there is no such file"});
    ExpectFailure(Convert(source, "none/b.png"), LUMBRIX_GENERIC_ERROR,
                  {"cannot write " + Path("none/b.png") + ": the folder", "does not exist"});
    ExpectFailure(Convert(source, "a.png"), LUMBRIX_GENERIC_ERROR, {"a.png: it is the source itself"});
    ExpectFailure(Convert(" ", "b.png"), LUMBRIX_BAD_NAME, {"no source was named"});
    ExpectFailure(Convert(source, "b.ico"), LUMBRIX_NO_ENCODER, {"b.ico: nothing can be written in this format"});
    WriteBytes(folder_ / "letter.png", "Dear Sir or Madam");
    ExpectFailure(Convert(Path("letter.png"), "b.png"), LUMBRIX_OUT_OF_MEMORY, {"letter.png: it is not a picture"});
}

TEST_F(Jobs, SentenceNamesTheSourceThatIsTooLarge) {
    const std::string wide = MakeWhite("wide.png", 65510, 1);
    const std::string cause = " pixels are too many for a file of this format";
    ExpectFailure(Convert(wide, "b.jpg"), LUMBRIX_INVALID_PARAMETER,
                  {wide + " is too large to become " + Path("b.jpg") + ": 65510 x 1" + cause});
    const lumbrix_turn right{sizeof(lumbrix_turn), 90, nullptr};
    ExpectFailure(lumbrix_rotate(wide.c_str(), Path("b.jpg").c_str(), &right, &job_), LUMBRIX_INVALID_PARAMETER,
                  {wide + " is too large to become " + Path("b.jpg") + ": 1 x 65510" + cause});
    ExpectFailure(Resize(MakeWhite("a.png", 6551, 1), "b.jpg", 10), LUMBRIX_INVALID_PARAMETER,
                  {"cannot write " + Path("b.jpg") + ": 65510 x 10" + cause});
    // A bitmap's header that claims 65,536 pixels in a row.
    const std::string header("BM\0\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\0\0\1\0\1\0\0\0\1\0\1\0", 30);
    WriteBytes(folder_ / "huge.bmp", header + std::string(24 + 8192, '\0'));
    ExpectFailure(Convert(Path("huge.bmp"), "b.png"), LUMBRIX_INVALID_PARAMETER,
                  {"cannot read " + Path("huge.bmp") + ": its size is not acceptable"});
}

TEST_F(Jobs, LongNamesAreShortenedInTheirMiddle) {
    const std::string name = "first" + std::string(3000, 'x') + "last.png";
    lumbrix_convert(name.c_str(), name.c_str(), &job_);
    const std::string message = job_.message;
    EXPECT_LT(message.size(), 500u);
    EXPECT_NE(message.find("cannot read firstxxx"), std::string::npos) << message;
    EXPECT_NE(message.find("xxx...xxx"), std::string::npos) << message;
    EXPECT_NE(message.find("xxlast.png: "), std::string::npos) << message;
}

struct Seen {
    std::vector<std::uint32_t> done;
    std::uint32_t rows = 0;
    std::size_t stopAt = SIZE_MAX;
};

std::int32_t LUMBRIX_CALL Watch(void* context, std::uint32_t done, std::uint32_t rows) {
    auto& seen = *static_cast<Seen*>(context);
    seen.done.push_back(done);
    seen.rows = rows;
    return seen.done.size() < seen.stopAt ? 1 : 0;
}

TEST_F(Jobs, ProgressReachesAllRowsAndCancels) {
    const std::string source = MakeWhite("a.png", 300, 1000);
    Seen seen;
    job_.progress = Watch;
    job_.context = &seen;
    ExpectWritten(Resize(source, "b.png", 500), 150, 500);
    ASSERT_GE(seen.done.size(), 100u);
    EXPECT_TRUE(std::is_sorted(seen.done.begin(), seen.done.end()));
    EXPECT_EQ(seen.rows, 1500u);
    EXPECT_EQ(seen.done.back(), 1500u);

    seen = {.done = {}, .rows = 0, .stopAt = 20};
    WriteBytes(folder_ / "c.png", "old");
    ExpectFailure(Resize(source, "c.png", 500), LUMBRIX_ABORTED, {"c.png", "cancelled"});
    EXPECT_EQ(seen.done.size(), 20u);
    EXPECT_EQ(ReadBytes(folder_ / "c.png"), "old");
}

TEST_F(Jobs, QualityIsTheCallersInEveryOperation) {
    const auto noise =
        MakePictureOf(64, 48, [](auto x, auto y) { return 0xFF000000 | ((x * 2654435761u) ^ (y * 40503u * 97u)); });
    const std::string source = Make("a.png", *noise);
    const lumbrix_rectangle part{0, 0, 40, 40};
    const lumbrix_turn quarter{sizeof(lumbrix_turn), 90, nullptr};
    const auto sizeAt = [&](int32_t quality, const auto& operate) {
        job_.quality = quality;
        EXPECT_EQ(operate(source.c_str(), Path("b.jpg").c_str()), 0) << job_.message;
        return ReadBytes(folder_ / "b.jpg").size();
    };
    const auto expectFollows = [&](const auto& operate) {
        EXPECT_LT(sizeAt(10, operate) * 5, sizeAt(0, operate) * 4);
        EXPECT_EQ(sizeAt(75, operate), sizeAt(0, operate));
        EXPECT_LT(sizeAt(0, operate), sizeAt(100, operate));
    };
    expectFollows([&](auto from, auto to) { return lumbrix_convert(from, to, &job_); });
    expectFollows([&](auto from, auto to) { return lumbrix_thumb(from, to, 40, &job_); });
    expectFollows([&](auto from, auto to) { return lumbrix_resize(from, to, 40, &job_); });
    expectFollows([&](auto from, auto to) { return lumbrix_crop(from, to, &part, &job_); });
    expectFollows([&](auto from, auto to) { return lumbrix_rotate(from, to, &quarter, &job_); });
    expectFollows([&](auto from, auto to) { return lumbrix_date_stamp(from, to, "2026", &job_); });
    const std::string stamp = MakeWhite("stamp.png", 2, 2);
    const lumbrix_stamp_place place{sizeof(lumbrix_stamp_place), stamp.c_str(), 0, 0};
    expectFollows([&](auto from, auto to) { return lumbrix_stamp(from, to, &place, &job_); });
}

TEST_F(Jobs, QualityWithoutAMeaningIsRefused) {
    const std::string source = MakeWhite("a.png", 10, 8);
    for (const int32_t quality : {-1, 101}) {
        job_.quality = quality;
        ExpectFailure(Convert(source, "b.jpg"), LUMBRIX_INVALID_PARAMETER, {"quality"});
        EXPECT_FALSE(Exists("b.jpg"));
    }
    job_.quality = 1;
    ExpectWritten(Convert(source, "b.png"), 10, 8);
}

TEST_F(Jobs, CompressionIsTheCallers) {
    const std::string source = MakeWhite("a.png", 100, 100);
    const auto tiffSizeWith = [&](const char* word) {
        job_.compression = word;
        ExpectWritten(Convert(source, "b.tif"), 100, 100);
        return ReadBytes(folder_ / "b.tif").size();
    };
    EXPECT_GT(tiffSizeWith("none"), 40000u); // four channels
    EXPECT_EQ(tiffSizeWith("default"), tiffSizeWith(nullptr));
    EXPECT_EQ(tiffSizeWith("lzw"), tiffSizeWith(nullptr));
    EXPECT_LT(tiffSizeWith("deflate"), tiffSizeWith("lzw"));
    job_.compression = "small";
    ExpectWritten(Convert(source, "b.png"), 100, 100);
    job_.compression = "fast";
    ExpectWritten(Convert(source, "b.png"), 100, 100);
}

TEST_F(Jobs, CompressionThatFormatOrPictureLacksIsRefused) {
    const std::string source = MakeWhite("a.png", 10, 8); // with alpha
    for (const auto& [word, name] : {std::pair("zip", "b.tif"), std::pair("small", "b.tif"), std::pair("lzw", "b.png"),
                                     std::pair("none", "b.bmp"), std::pair("jpeg", "b.jpg")}) {
        job_.compression = word;
        ExpectFailure(Convert(source, name), LUMBRIX_INVALID_PARAMETER, {"compression", "format"});
        EXPECT_FALSE(Exists(name));
    }
    for (const char* word : {"group4", "jpeg"}) {
        job_.compression = word;
        ExpectFailure(Convert(source, "b.tif"), LUMBRIX_INVALID_PARAMETER, {"b.tif", "compression", "kind"});
        EXPECT_FALSE(Exists("b.tif"));
    }
}

TEST_F(Jobs, JobMayBeLeftOut) {
    const std::string source = MakeWhite("a.png", 10, 8);
    EXPECT_EQ(lumbrix_convert(source.c_str(), Path("b.jpg").c_str(), nullptr), 0);
    EXPECT_TRUE(Exists("b.jpg"));
    EXPECT_EQ(lumbrix_convert(Path("none").c_str(), Path("c.jpg").c_str(), nullptr), LUMBRIX_FILE_NOT_FOUND);
}

TEST_F(Jobs, JobOfAnotherSizeAndMissingStructsAreRefused) {
    const std::string source = MakeWhite("a.png", 10, 8);
    job_.size = 4;
    EXPECT_EQ(Convert(source, "b.png"), LUMBRIX_INVALID_PARAMETER);
    EXPECT_FALSE(Exists("b.png"));
    job_.status = 77;
    EXPECT_EQ(lumbrix_crop(source.c_str(), source.c_str(), nullptr, &job_), LUMBRIX_INVALID_PARAMETER);
    EXPECT_EQ(lumbrix_read_properties(source.c_str(), nullptr, &job_), LUMBRIX_INVALID_PARAMETER);
    EXPECT_EQ(job_.status, 77) << "nothing is known of what lies behind the size";
    job_.size = offsetof(lumbrix_job, message) + sizeof job_.message - 1;
    EXPECT_EQ(Convert(source, "b.png"), LUMBRIX_INVALID_PARAMETER);
    job_.size = sizeof job_ + 100; // that of a later version
    EXPECT_EQ(Convert(source, "b.png"), 0);
    job_.size = sizeof job_;
    ExpectFailure(lumbrix_crop(source.c_str(), source.c_str(), nullptr, &job_), LUMBRIX_INVALID_PARAMETER, {"struct"});
    ExpectFailure(lumbrix_rotate(source.c_str(), source.c_str(), nullptr, &job_), LUMBRIX_INVALID_PARAMETER, {});
    ExpectFailure(lumbrix_annotate(source.c_str(), source.c_str(), nullptr, &job_), LUMBRIX_INVALID_PARAMETER, {});
    ExpectFailure(lumbrix_stamp(source.c_str(), source.c_str(), nullptr, &job_), LUMBRIX_INVALID_PARAMETER, {});
    ExpectFailure(lumbrix_read_date(source.c_str(), nullptr, &job_), LUMBRIX_INVALID_PARAMETER, {});
    lumbrix_turn turn = LUMBRIX_TURN_INIT;
    lumbrix_annotation annotation = LUMBRIX_ANNOTATION_INIT;
    lumbrix_stamp_place place = LUMBRIX_STAMP_PLACE_INIT;
    --turn.size;
    --annotation.size;
    --place.size;
    const std::string path = Path("c.png");
    const char* const target = path.c_str();
    ExpectFailure(lumbrix_rotate(source.c_str(), target, &turn, &job_), LUMBRIX_INVALID_PARAMETER, {"struct"});
    ExpectFailure(lumbrix_annotate(source.c_str(), target, &annotation, &job_), LUMBRIX_INVALID_PARAMETER, {"struct"});
    ExpectFailure(lumbrix_stamp(source.c_str(), target, &place, &job_), LUMBRIX_INVALID_PARAMETER, {"struct"});
    turn.size += 2; // that of a later version
    EXPECT_EQ(lumbrix_rotate(source.c_str(), target, &turn, &job_), 0);
    ExpectFailure(lumbrix_read_properties(source.c_str(), nullptr, &job_), LUMBRIX_INVALID_PARAMETER, {});
}

TEST_F(Jobs, StatusesHaveTheNamesOfTheirConstants) {
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_OK), "Ok");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_GENERIC_ERROR), "GenericError");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_INVALID_PARAMETER), "InvalidParameter");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_OUT_OF_MEMORY), "OutOfMemory");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_OBJECT_BUSY), "ObjectBusy");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_INSUFFICIENT_BUFFER), "InsufficientBuffer");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_NOT_IMPLEMENTED), "NotImplemented");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_WIN32_ERROR), "Win32Error");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_WRONG_STATE), "WrongState");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_ABORTED), "Aborted");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_FILE_NOT_FOUND), "FileNotFound");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_VALUE_OVERFLOW), "ValueOverflow");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_ACCESS_DENIED), "AccessDenied");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_UNKNOWN_IMAGE_FORMAT), "UnknownImageFormat");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_FONT_FAMILY_NOT_FOUND), "FontFamilyNotFound");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_FONT_STYLE_NOT_FOUND), "FontStyleNotFound");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_NOT_TRUE_TYPE_FONT), "NotTrueTypeFont");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_UNSUPPORTED_GDIPLUS_VERSION), "UnsupportedGdiplusVersion");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_GDIPLUS_NOT_INITIALIZED), "GdiplusNotInitialized");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_PROPERTY_NOT_FOUND), "PropertyNotFound");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_PROPERTY_NOT_SUPPORTED), "PropertyNotSupported");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_PROFILE_NOT_FOUND), "ProfileNotFound");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_REFUSED), "Refused");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_NO_SESSION), "NoSession");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_NO_ENCODER), "NoEncoder");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_BAD_NAME), "BadName");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_NOT_LOADED), "NotLoaded");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_NO_LIBRARY), "NoLibrary");
    EXPECT_STREQ(lumbrix_status_name(LUMBRIX_ALREADY_THERE), "AlreadyThere");
    EXPECT_STREQ(lumbrix_status_name(4711), "Unknown");
}

} // namespace
