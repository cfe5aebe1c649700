// Copies in other sizes, as programs ask for them.
#include "tests/imaging/editingfixture.h"

#include <cmath>
#include <cstddef>

namespace {

using namespace tests;

class Sizes : public Editing {
  protected:
    int32_t Fit(const std::string& source, int32_t width, int32_t height, double percent = 0) {
        lumbrix_fitting fitting = LUMBRIX_FITTING_INIT;
        fitting.width = width;
        fitting.height = height;
        fitting.percent = percent;
        return lumbrix_fit(source.c_str(), Path("out.png").c_str(), &fitting, &job_);
    }

    void ExpectFitted(int32_t status, int32_t width, int32_t height) const {
        EXPECT_EQ(status, 0) << job_.message;
        EXPECT_EQ(job_.width, width);
        EXPECT_EQ(job_.height, height);
        ExpectSize("out.png", static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height));
    }

    lumbrix_job job_ = LUMBRIX_JOB_INIT;
};

TEST_F(Sizes, AreAskedForByASideABoxOrAPercentage) {
    const std::string source = MakeWhite("a.png", 40, 20);
    ExpectFitted(Fit(source, 30, 0), 30, 15);
    ExpectFitted(Fit(source, 0, 30), 60, 30);
    ExpectFitted(Fit(source, 30, 30), 30, 15);
    ExpectFitted(Fit(source, 100, 30), 60, 30);
    ExpectFitted(Fit(source, 0, 0, 12.5), 5, 2); // a tie
    ExpectFitted(Fit(source, 0, 0, 250), 100, 50);
    ExpectFitted(Fit(source, 0, 0, 0.001), 1, 1);
}

TEST_F(Sizes, NarrowPicturesKeepAPixel) {
    const std::string pole = MakeWhite("pole.png", 1, 3000);
    ExpectFitted(Fit(pole, 0, 100), 1, 100);
    ExpectFitted(Fit(pole, 50, 50), 1, 50);
    const std::string panorama = MakeWhite("panorama.png", 3000, 1);
    ExpectFitted(Fit(panorama, 100, 0), 100, 1);
    ExpectFitted(Fit(panorama, 0, 0, 10), 300, 1);
}

TEST_F(Sizes, HeightAloneIsWhatResizeMakes) {
    for (const auto& [width, height] : {std::pair{5, 2}, {1, 90}, {37, 70}, {2, 5}}) {
        const std::string source =
            MakeWhite("a.png", static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height));
        for (const int32_t wanted : {1, 3, 30, 95}) {
            ASSERT_EQ(lumbrix_resize(source.c_str(), Path("resized.png").c_str(), wanted, &job_), 0);
            ExpectFitted(Fit(source, 0, wanted), job_.width, wanted);
            EXPECT_EQ(ReadBytes(folder_ / "out.png"), ReadBytes(folder_ / "resized.png"));
        }
    }
}

TEST_F(Sizes, WithoutOneWishNothingIsWritten) {
    const std::string source = MakeWhite("a.png", 40, 20);
    for (const int32_t status :
         {Fit(source, 0, 0), Fit(source, 10, 0, 50), Fit(source, 0, 10, 50), Fit(source, -1, 0), Fit(source, 10, -1),
          Fit(source, 0, 0, -50), Fit(source, 0, 0, std::nan("")), Fit(source, 0, 0, INFINITY)}) {
        EXPECT_EQ(status, LUMBRIX_INVALID_PARAMETER);
        EXPECT_NE(std::string(job_.message).find("a.png"), std::string::npos);
    }
    EXPECT_EQ(lumbrix_resize(source.c_str(), Path("out.png").c_str(), 0, &job_), LUMBRIX_INVALID_PARAMETER);
    EXPECT_EQ(lumbrix_resize(source.c_str(), Path("out.png").c_str(), -5, &job_), LUMBRIX_INVALID_PARAMETER);
    EXPECT_FALSE(Exists("out.png"));
}

TEST_F(Sizes, StructThatIsLeftOutOrTooSmallIsRefused) {
    const std::string source = MakeWhite("a.png", 40, 20);
    const std::string target = Path("out.png");
    EXPECT_EQ(lumbrix_fit(source.c_str(), target.c_str(), nullptr, &job_), LUMBRIX_INVALID_PARAMETER);
    EXPECT_STRNE(job_.message, "");
    lumbrix_fitting fitting = {sizeof(lumbrix_fitting), 10, 0, 0};
    fitting.size = offsetof(lumbrix_fitting, percent) + sizeof fitting.percent - 1;
    EXPECT_EQ(lumbrix_fit(source.c_str(), target.c_str(), &fitting, &job_), LUMBRIX_INVALID_PARAMETER);
    EXPECT_FALSE(Exists("out.png"));
    fitting.size = sizeof fitting + 100; // that of a later version
    EXPECT_EQ(lumbrix_fit(source.c_str(), target.c_str(), &fitting, nullptr), 0);
    ExpectSize("out.png", 10, 5);
}

TEST_F(Sizes, SizeThatCannotBeIsNamed) {
    EXPECT_EQ(Fit(MakeWhite("a.png", 40, 20), 0, 0, 1e9), LUMBRIX_INVALID_PARAMETER);
    EXPECT_NE(std::string(job_.message).find("400000000 x 200000000 pixels"), std::string::npos) << job_.message;
    EXPECT_FALSE(Exists("out.png"));
}

TEST_F(Sizes, OnlyShrinkingKeepsWhatFits) {
    const std::string source = MakeWhite("a.png", 40, 20);
    job_.only_shrink = 1;
    ExpectFitted(Fit(source, 40, 0), 40, 20);
    ExpectFitted(Fit(source, 41, 0), 40, 20);
    ExpectFitted(Fit(source, 20, 0), 20, 10);
    ExpectFitted(Fit(source, 0, 21), 40, 20);
    ExpectFitted(Fit(source, 80, 80), 40, 20);
    ExpectFitted(Fit(source, 80, 10), 20, 10);
    ExpectFitted(Fit(source, 0, 0, 250), 40, 20);
    ExpectFitted(Fit(source, 0, 0, 50), 20, 10);
}

TEST_F(Sizes, ThumbThatOnlyShrinksIsNoLargerThanThePicture) {
    const std::string source = MakeWhite("a.png", 40, 20);
    const auto thumb = [&](int32_t height) {
        return lumbrix_thumb(source.c_str(), Path("out.png").c_str(), height, &job_);
    };
    ExpectFitted(thumb(30), 60, 30);
    job_.only_shrink = 1;
    ExpectFitted(thumb(30), 40, 20);
    ExpectFitted(thumb(10), 20, 10);
}

} // namespace
