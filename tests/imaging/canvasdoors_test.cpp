// The doors through which the program keeps a picture on its canvas, with the real imaging library behind.
#include "imaging/exports/internal.h"
#include "tests/imaging/editingfixture.h"

namespace {

using namespace tests;

class CanvasDoors : public Editing {
  protected:
    void SetUp() override {
        Editing::SetUp();
        EXPECT_EQ(StartCanvasSession(&token_), 0);
    }
    void TearDown() override {
        EndCanvasSession(token_);
        Editing::TearDown();
    }

    uintptr_t token_ = 0;
    void* image_ = nullptr;
    int32_t width_ = -1;
    int32_t height_ = -1;
};

TEST_F(CanvasDoors, LoadTellsTheSize) {
    LoadCanvasImage(MakeWhite("a.png", 30, 20).c_str(), &image_, &width_, &height_);
    EXPECT_NE(image_, nullptr);
    EXPECT_EQ(width_, 30);
    EXPECT_EQ(height_, 20);
}

TEST_F(CanvasDoors, FileThatIsMissingLeavesTheImageAndItsSize) {
    LoadCanvasImage(Path("none.png").c_str(), &image_, &width_, &height_);
    EXPECT_EQ(image_, nullptr);
    EXPECT_EQ(width_, 0);
    EXPECT_EQ(height_, 0);
    LoadCanvasImage(MakeWhite("a.png", 30, 20).c_str(), &image_, &width_, &height_);
    void* const before = image_;
    LoadCanvasImage(nullptr, &image_, &width_, &height_);
    EXPECT_EQ(image_, before);
    EXPECT_EQ(width_, 30);
}

TEST_F(CanvasDoors, FileStaysOpenUntilTheSessionEnds) {
    const std::string source = MakeWhite("a.png", 30, 20);
    LoadCanvasImage(source.c_str(), &image_, &width_, &height_);
    const std::string other = MakeWhite("b.png", 5, 5);
    lumbrix_job job = LUMBRIX_JOB_INIT; // one whose failure leaves no session open
    EXPECT_NE(lumbrix_convert(other.c_str(), source.c_str(), &job), 0);
    EndCanvasSession(token_);
    token_ = 0;
    EXPECT_EQ(lumbrix_convert(other.c_str(), source.c_str(), &job), 0);
    ExpectSize("a.png", 5, 5);
}

TEST_F(CanvasDoors, NothingIsDrawnWithoutAContext) {
    LoadCanvasImage(MakeWhite("a.png", 30, 20).c_str(), &image_, &width_, &height_);
    const int32_t points[]{0, 0, 30, 0, 0, 20};
    DrawCanvasImage(image_, points, nullptr);
    DrawCanvasImage(nullptr, points, nullptr);
}

TEST_F(CanvasDoors, ExtensionNamesTheFormatOfAConversion) {
    const std::string source = MakeWhite("a.png", 30, 20);
    for (const auto& [name, start] :
         {std::pair{"b.jpg", "\xFF\xD8"}, {"b.gif", "GI"}, {"b.tiff", "II"}, {"b.png", "\x89P"}, {"b.bmp", "BM"}}) {
        EXPECT_EQ(ConvertImageFile(source.c_str(), Path(name).c_str()), 0) << name;
        EXPECT_EQ(ReadBytes(folder_ / name).substr(0, 2), start) << name;
    }
}

TEST_F(CanvasDoors, ConversionToAnUnknownExtensionMakesABmpFile) {
    const std::string source = MakeWhite("a.png", 30, 20);
    for (const char* name : {"b.xyz", "b", "b."}) {
        EXPECT_EQ(ConvertImageFile(source.c_str(), Path(name).c_str()), 0) << name;
        EXPECT_EQ(ReadBytes(folder_ / name).substr(0, 2), "BM") << name;
    }
    EXPECT_EQ(ConvertImageFile(source.c_str(), Path("b.ico").c_str()), -16002);
    EXPECT_FALSE(Exists("b.ico"));
    EXPECT_EQ(ConvertImageFile(source.c_str(), ""), 0);
    EXPECT_EQ(ConvertImageFile(" ", Path("c.png").c_str()), 0);
    EXPECT_FALSE(Exists("c.png"));
}

} // namespace
