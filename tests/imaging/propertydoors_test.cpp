// Properties and dates as programs ask for them.
#include "imaging/exports/internal.h"
#include "tests/imaging/editingfixture.h"

#include <algorithm>

namespace {

using namespace tests;

using PropertyDoors = Editing;

TEST_F(PropertyDoors, ListIsHandedOutAsText) {
    char* error = nullptr;
    char* list = nullptr;
    EXPECT_EQ(EnumerateImageProperties(LUMBRIX_SAMPLES "/photo.jpg", &error, &list), 0);
    EXPECT_EQ(error, nullptr);
    ASSERT_NE(list, nullptr);
    const std::string text = list;
    EXPECT_NE(text.find("Camera Manufacturer\tLumbrix\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("DateTime\t2026:11:21 09:30:00"), std::string::npos);
    EXPECT_EQ(EnumerateImageProperties(LUMBRIX_SAMPLES "/photo.jpg", &error, &list), 0);
    EXPECT_EQ(std::string(list), text + "\r\n" + text);
    lumbrix_free(list);
}

TEST_F(PropertyDoors, FileWithoutPropertiesGivesNoText) {
    char* error = nullptr;
    char* list = nullptr;
    const std::string source = Make("a.bmp", *MakePicture(PixelFormat::Rgb24, 4, 4), BmpCodec());
    EXPECT_EQ(EnumerateImageProperties(source.c_str(), &error, &list), 0);
    EXPECT_EQ(list, nullptr);
    EXPECT_EQ(EnumerateImageProperties(Path("none.jpg").c_str(), &error, &list), 0);
    EXPECT_EQ(list, nullptr);
    EXPECT_EQ(error, nullptr);
}

// Of the properties of a PNG file the second one, its intent, is a byte, and a text in C would end in its midst.
TEST_F(PropertyDoors, LineOfBytesDoesNotHideTheLinesBehindIt) {
    char* error = nullptr;
    char* list = nullptr;
    EXPECT_EQ(EnumerateImageProperties(MakeWhite("a.png", 3, 3).c_str(), &error, &list), 0);
    ASSERT_NE(list, nullptr);
    const std::string text = list;
    EXPECT_NE(text.find("\r\n771\t"), std::string::npos) << text;
    EXPECT_NE(text.find("\r\n20753\t3780"), std::string::npos) << text;
    lumbrix_free(list);
}

TEST_F(PropertyDoors, TagListStaysWithoutAnImage) {
    lumbrix_tag_list list{nullptr, 3};
    EXPECT_EQ(GetPropertyIdList(nullptr, &list), 0);
    EXPECT_EQ(list.count, 3);
}

// Two images in a session of their own.
class PropertiesOfImages : public Editing {
  protected:
    void SetUp() override {
        Editing::SetUp();
        ASSERT_EQ(StartCanvasSession(&token_), 0);
        photo_ = Load(LUMBRIX_SAMPLES "/photo.jpg");
        plain_ = Load(Make("a.bmp", *MakePicture(PixelFormat::Rgb24, 4, 4), BmpCodec()));
    }
    void TearDown() override {
        EndCanvasSession(token_);
        Editing::TearDown();
    }

    static void* Load(const std::string& file) {
        void* image = nullptr;
        int32_t width = 0;
        int32_t height = 0;
        LoadCanvasImage(file.c_str(), &image, &width, &height);
        EXPECT_NE(image, nullptr);
        return image;
    }

    static std::vector<std::uint32_t> TagsOf(void* image) {
        lumbrix_tag_list list{nullptr, 0};
        EXPECT_EQ(GetPropertyIdList(image, &list), 0);
        std::vector<std::uint32_t> tags(list.tags, list.tags + list.count);
        lumbrix_free(list.tags);
        return tags;
    }

    std::uintptr_t token_ = 0;
    void* photo_ = nullptr;
    void* plain_ = nullptr;
};

TEST_F(PropertiesOfImages, AreCopiedFromTheFirstToTheSecond) {
    EXPECT_EQ(TagsOf(plain_), std::vector<std::uint32_t>{});
    const auto tags = TagsOf(photo_);
    EXPECT_EQ(CopyImageProperties(photo_, &plain_), 0);
    EXPECT_EQ(TagsOf(plain_), tags);
    EXPECT_EQ(TagsOf(photo_), tags);
}

TEST_F(PropertiesOfImages, AreListedByTheirTags) {
    EXPECT_EQ(TagsOf(Load(MakeWhite("a.png", 3, 3))),
              (std::vector<std::uint32_t>{0x0301, 0x0303, 0x5110, 0x5111, 0x5112}));
    EXPECT_EQ(TagsOf(photo_), (std::vector<std::uint32_t>{270, 271, 272, 274, 306, 0x5091, 0x5090}));
}

TEST_F(PropertyDoors, PictureWithoutADateHasAnEmptyOne) {
    for (const std::string& name : {MakeWhite("a.png", 3, 3), Path("none.png"), std::string(" ")}) {
        char* date = GetImageDateTime(name.c_str());
        EXPECT_STREQ(date, "");
        lumbrix_free(date);
    }
}

// Works in the folder of the test, for names without a folder and, on Linux, all names write to the current one.
class Stamped : public Editing {
  protected:
    void SetUp() override {
        Editing::SetUp();
        before_ = std::filesystem::current_path();
        std::filesystem::current_path(folder_.Path());
    }
    void TearDown() override {
        std::filesystem::current_path(before_);
        Editing::TearDown();
    }

    std::filesystem::path before_;
};

TEST_F(Stamped, CopyIsAJpegWithTheDateNamedUpToTheFirstDot) {
    MakeWhite("two.dots.png", 20, 10);
    const std::string before = ReadBytes(folder_ / "two.dots.png");
#ifdef _WIN32
    std::filesystem::current_path(before_);
    EXPECT_EQ(DateStampImage(Path("two.dots.png").c_str(), "the day before"), 0);
#else
    EXPECT_EQ(DateStampImage("two.dots.png", "the day before"), 0);
#endif
    EXPECT_EQ(ReadBytes(folder_ / "two_stamped.jpg").substr(0, 2), "\xFF\xD8");
    char* date = GetImageDateTime(Path("two_stamped.jpg").c_str());
    EXPECT_STREQ(date, "the day before");
    lumbrix_free(date);
    EXPECT_EQ(ReadBytes(folder_ / "two.dots.png"), before);
}

TEST_F(Stamped, NameWithoutAFolderGoesToTheCurrentOne) {
    MakeWhite("a.png", 20, 10);
    EXPECT_EQ(DateStampImage("a.png", "x"), 0);
    EXPECT_TRUE(Exists("a_stamped.jpg"));
}

TEST_F(Stamped, LaterOneOfTheSameNameReplacesTheEarlier) {
    MakeWhite("a.one.png", 20, 10);
    MakeWhite("a.two.png", 30, 10);
    EXPECT_EQ(DateStampImage("a.one.png", "x"), 0);
    EXPECT_EQ(DateStampImage("a.two.png", "x"), 0);
    ExpectSize("a_stamped.jpg", 30, 10);
}

TEST_F(Stamped, EmptyDateIsTaken) {
    MakeWhite("a.png", 20, 10);
    EXPECT_EQ(DateStampImage("a.png", ""), 0);
    EXPECT_TRUE(Exists("a_stamped.jpg"));
}

TEST_F(Stamped, FileThatDoesNotLoadIsRefused) {
    EXPECT_EQ(DateStampImage("none.png", "x"), -1);
    EXPECT_EQ(DateStampImage("", "x"), 0);
}

TEST_F(Stamped, OtherPropertiesGoAlong) {
    std::filesystem::copy_file(LUMBRIX_SAMPLES "/photo.jpg", folder_ / "photo.jpg");
    EXPECT_EQ(DateStampImage("photo.jpg", "2000:01:01 00:00:00"), 0);
    const auto stamped = Open("photo_stamped.jpg");
    const Property* make = stamped->Properties().Find(271);
    ASSERT_NE(make, nullptr);
    EXPECT_EQ(*make, AsciiProperty(271, "Lumbrix"));
    EXPECT_EQ(*stamped->Properties().Find(306), AsciiProperty(306, "2000:01:01 00:00:00"));
}

} // namespace
