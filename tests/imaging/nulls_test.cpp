// Every exported procedure with null for every pointer: it answers, and does not crash.
#include "imaging/exports/internal.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>

namespace {

using namespace tests;

// The text that a procedure gave out; given back.
std::string Taken(char* text) {
    const std::string copy = text != nullptr ? text : "null";
    lumbrix_free(text);
    return copy;
}

constexpr int32_t NoFolder = 9999; // stands for the current one

struct Row {
    const char* name;
    std::function<int32_t()> call; // 0 where the procedure answers nothing
    int32_t answer;
};

// A procedure whose answer is a text.
std::function<int32_t()> Gives(const std::string& text, std::function<char*()> call) {
    return [=] { return Taken(call()) == text ? 0 : 1; };
}

const Row Rows[] = {
    {"AnnotateImage", [] { return AnnotateImage(nullptr, nullptr, 0, 0, nullptr, nullptr, 0, 0, 0, 0, 0, 0, 0, 0, 0); },
     -16003},
    {"ConvertImageFile", [] { return ConvertImageFile(nullptr, nullptr); }, 0},
    {"ConvertImageToBmp", [] { return ConvertImageToBmp(nullptr, nullptr); }, 0},
    {"ConvertImageToGif", [] { return ConvertImageToGif(nullptr, nullptr); }, 0},
    {"ConvertImageToJpeg", [] { return ConvertImageToJpeg(nullptr, nullptr); }, 0},
    {"ConvertImageToPng", [] { return ConvertImageToPng(nullptr, nullptr); }, 0},
    {"ConvertImageToSgl", [] { return ConvertImageToSgl(nullptr, nullptr); }, 0},
    {"ConvertImageToThumbBmp", [] { return ConvertImageToThumbBmp(nullptr, 9, nullptr); }, 0},
    {"ConvertImageToThumbGif", [] { return ConvertImageToThumbGif(nullptr, 9, nullptr); }, 0},
    {"ConvertImageToThumbJpeg", [] { return ConvertImageToThumbJpeg(nullptr, 9, nullptr); }, 0},
    {"ConvertImageToThumbPng", [] { return ConvertImageToThumbPng(nullptr, 9, nullptr); }, 0},
    {"ConvertImageToThumbTiff", [] { return ConvertImageToThumbTiff(nullptr, 9, nullptr); }, 0},
    {"ConvertImageToTiff", [] { return ConvertImageToTiff(nullptr, nullptr); }, 0},
    {"CopyImageProperties", [] { return CopyImageProperties(nullptr, nullptr); }, 2},
    {"CreateLink",
     [] {
         CreateLink(NoFolder, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, nullptr, nullptr);
         return 0;
     },
     0},
    {"CropImage", [] { return CropImage(nullptr, nullptr, 0, 0, 1, 1); }, -1},
    {"DELREGKEY", [] { return DELREGKEY(nullptr, nullptr); }, 87},
    {"DateStampImage", [] { return DateStampImage(nullptr, nullptr); }, 0},
    {"DisplayImage", [] { return DisplayImage(nullptr, nullptr, 0, 0); }, 0},
    {"DrawCanvasImage",
     [] {
         DrawCanvasImage(nullptr, nullptr, nullptr);
         return 0;
     },
     0},
    {"DrawImageFile", [] { return DrawImageFile(nullptr, nullptr) >= 0 ? 0 : 1; }, 0},
    {"EndCanvasSession",
     [] {
         EndCanvasSession(0);
         return 0;
     },
     0},
    {"EnumerateImageProperties", [] { return EnumerateImageProperties(nullptr, nullptr, nullptr); }, 2},
    {"GetDestinationFolder", Gives("", [] { return GetDestinationFolder(nullptr); }), 0},
    {"GetImageDateTime", Gives("", [] { return GetImageDateTime(nullptr); }), 0},
    {"GetImageDimensions", [] { return GetImageDimensions(nullptr, nullptr, nullptr); }, 2},
    {"GetPropertyIdList", [] { return GetPropertyIdList(nullptr, nullptr); }, 2},
    {"GetShellLinkInfo",
     [] {
         return GetShellLinkInfo(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                 nullptr);
     },
     0},
    {"LoadCanvasImage",
     [] {
         LoadCanvasImage(nullptr, nullptr, nullptr, nullptr);
         return 0;
     },
     0},
    {"RemoveShortcut",
     [] {
         RemoveShortcut(nullptr, NoFolder);
         return 0;
     },
     0},
    {"ResizeImage", [] { return ResizeImage(nullptr, nullptr, 9); }, -1},
    {"RotateImage", [] { return RotateImage(nullptr, nullptr, 90, nullptr); }, -1},
    {"StampImage", [] { return StampImage(nullptr, nullptr, 0, 0, nullptr); }, -16003},
    {"StartCanvasSession", [] { return StartCanvasSession(nullptr); }, 2},
    {"lumbrix_annotate", [] { return lumbrix_annotate(nullptr, nullptr, nullptr, nullptr); }, 2},
    {"lumbrix_convert", [] { return lumbrix_convert(nullptr, nullptr, nullptr); }, -16003},
    {"lumbrix_crop", [] { return lumbrix_crop(nullptr, nullptr, nullptr, nullptr); }, 2},
    {"lumbrix_date_stamp", [] { return lumbrix_date_stamp(nullptr, nullptr, nullptr, nullptr); }, -16003},
    {"lumbrix_free",
     [] {
         lumbrix_free(nullptr);
         return 0;
     },
     0},
    {"lumbrix_icon", [] { return lumbrix_icon(nullptr, nullptr, nullptr, 1, nullptr); }, 2},
    {"lumbrix_read_date", [] { return lumbrix_read_date(nullptr, nullptr, nullptr); }, 2},
    {"lumbrix_read_properties", [] { return lumbrix_read_properties(nullptr, nullptr, nullptr); }, 2},
    {"lumbrix_read_size", [] { return lumbrix_read_size(nullptr, nullptr); }, -16003},
    {"lumbrix_resize", [] { return lumbrix_resize(nullptr, nullptr, 9, nullptr); }, -16003},
    {"lumbrix_fit", [] { return lumbrix_fit(nullptr, nullptr, nullptr, nullptr); }, 2},
    {"lumbrix_rotate", [] { return lumbrix_rotate(nullptr, nullptr, nullptr, nullptr); }, 2},
    {"lumbrix_stamp", [] { return lumbrix_stamp(nullptr, nullptr, nullptr, nullptr); }, 2},
    {"lumbrix_stamped_name", Gives("_stamped.jpg", [] { return lumbrix_stamped_name(nullptr); }), 0},
    {"lumbrix_thumb", [] { return lumbrix_thumb(nullptr, nullptr, 9, nullptr); }, -16003},
};

// Those that take nothing, or a number only.
const std::set<std::string> WithoutPointers{"DeployImagingLibrary", "LoadImagingLibrary",     "UnloadImagingLibrary",
                                            "lumbrix_version",      "lumbrix_version_number", "lumbrix_status_name"};

class Nulls : public testing::Test {
  protected:
    void SetUp() override {
        before_ = std::filesystem::current_path();
        std::filesystem::current_path(folder_.Path());
    }
    void TearDown() override {
        std::filesystem::current_path(before_);
        if (!hadList_) {
            std::filesystem::remove(list_); // of what could not be deleted: the link of no name
        }
    }

    TemporaryFolder folder_;
    std::filesystem::path before_;
    std::filesystem::path list_ =
        std::filesystem::absolute(testing::internal::GetArgvs()[0]).parent_path() / "CleanUp.txt";
    bool hadList_ = std::filesystem::exists(list_);
};

TEST_F(Nulls, AreAnsweredByEveryProcedure) {
    LoadImagingLibrary();
    for (const Row& row : Rows) {
        EXPECT_EQ(row.call(), row.answer) << row.name;
    }
    UnloadImagingLibrary();
}

TEST_F(Nulls, AreAnsweredWithoutALibraryToo) {
    for (const Row& row : Rows) {
        EXPECT_EQ(row.call(), row.answer) << row.name;
    }
}

TEST_F(Nulls, EachIsWrongAlone) {
    int32_t number = 7;
    char* text = nullptr;
    void* image = nullptr;
    EXPECT_EQ(GetImageDimensions("x", &number, nullptr), 2);
    EXPECT_EQ(GetImageDimensions("x", nullptr, &number), 2);
    EXPECT_EQ(EnumerateImageProperties("x", &text, nullptr), 2);
    EXPECT_EQ(EnumerateImageProperties("x", nullptr, &text), 2);
    LoadCanvasImage("x", &image, nullptr, &number);
    EXPECT_EQ(number, 0);
    number = 7;
    LoadCanvasImage("x", &image, &number, nullptr);
    EXPECT_EQ(number, 0);
    EXPECT_EQ(text, nullptr);
}

TEST(NullsList, HasEveryProcedureThatIsExported) {
    std::ifstream list(LUMBRIX_EXPORTS);
    std::set<std::string> exported;
    for (std::string line; std::getline(list, line);) {
        const std::string name = line.substr(0, line.find(' '));
        if (name != "#" && !WithoutPointers.contains(name)) {
            exported.insert(name);
        }
    }
    std::set<std::string> called;
    for (const Row& row : Rows) {
        called.insert(row.name);
    }
    EXPECT_EQ(called, exported);
}

} // namespace
