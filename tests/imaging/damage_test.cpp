// Damaged pictures: a JPEG is shown as far as it goes, and said to be damaged; any other leaves the old target alone.
#include "tests/imaging/editingfixture.h"

#include <functional>

namespace {

using namespace tests;

// An operation in both of its forms, from a source to a target.
struct DamageOperation {
    const char* name;
    std::function<int32_t(const char* source, const char* target, lumbrix_job* job)> truthful;
    std::function<int32_t(const char* source, const char* target)> established;
    int32_t undecodable; // what the established form answers
};

// For googletest's messages.
void PrintTo(const DamageOperation& operation, std::ostream* stream) { *stream << operation.name; }

int32_t AnnotateDamaged(const char* source, const char* target, lumbrix_job* job) {
    lumbrix_annotation annotation = LUMBRIX_ANNOTATION_INIT;
    annotation.text = "H";
    annotation.font = "Arial";
    annotation.font_size = 40;
    return lumbrix_annotate(source, target, &annotation, job);
}

int32_t StampDamaged(const char* source, const char* target, lumbrix_job* job) {
    const lumbrix_stamp_place place{sizeof(lumbrix_stamp_place), LUMBRIX_SAMPLES "/stamp.png", 3, 4};
    return lumbrix_stamp(source, target, &place, job);
}

int32_t CropDamaged(const char* source, const char* target, lumbrix_job* job) {
    const lumbrix_rectangle all{0, 0, 300, 200};
    return lumbrix_crop(source, target, &all, job);
}

int32_t TurnDamaged(const char* source, const char* target, lumbrix_job* job) {
    const lumbrix_turn right{sizeof(lumbrix_turn), 90, ""};
    return lumbrix_rotate(source, target, &right, job);
}

const DamageOperation DamageOperations[] = {
    {"convert", lumbrix_convert, ConvertImageToPng, 3},
    {"thumb", [](auto source, auto target, auto job) { return lumbrix_thumb(source, target, 100, job); },
     [](auto source, auto target) { return ConvertImageToThumbPng(source, 100, target); }, 3},
    {"resize", [](auto source, auto target, auto job) { return lumbrix_resize(source, target, 100, job); },
     [](auto source, auto target) { return ResizeImage(source, target, 100); }, -1},
    {"enlarge", [](auto source, auto target, auto job) { return lumbrix_resize(source, target, 250, job); },
     [](auto source, auto target) { return ResizeImage(source, target, 250); }, -1},
    {"crop", CropDamaged, [](auto source, auto target) { return CropImage(source, target, 0, 0, 300, 200); }, -1},
    {"rotate", TurnDamaged, [](auto source, auto target) { return RotateImage(source, target, 90, ""); }, 0},
    {"annotate", AnnotateDamaged,
     [](auto source, auto target) {
         return AnnotateImage(source, target, 3, 4, "H", "Arial", 40, 0, 0, 0, 0, 255, 0, 0, 0);
     },
     -16004},
    {"stamp", StampDamaged,
     [](auto source, auto target) { return StampImage(source, target, 3, 4, LUMBRIX_SAMPLES "/stamp.png"); }, -16004},
};

class Damage : public Editing, public testing::WithParamInterface<DamageOperation> {
  protected:
    void SetUp() override {
        Editing::SetUp();
        ASSERT_EQ(lumbrix_resize(LUMBRIX_SAMPLES "/photo.jpg", Path("photo.jpg").c_str(), 200, nullptr), 0);
        WriteBytes(folder_ / "old.png", "old");
    }

    // A photograph of 300 by 200 pixels, cut behind so many hundredths of its bytes.
    std::string CutPhoto(std::size_t percent) const {
        const std::string whole = ReadBytes(folder_ / "photo.jpg");
        WriteBytes(folder_ / "cut.jpg", whole.substr(0, whole.size() * percent / 100));
        return Path("cut.jpg");
    }

    // The same picture as a PNG or a TIFF that breaks off in its middle.
    std::string CutCopy(const char* name) const {
        EXPECT_EQ(lumbrix_convert(Path("photo.jpg").c_str(), Path(name).c_str(), nullptr), 0);
        const std::string whole = ReadBytes(folder_ / name);
        WriteBytes(folder_ / name, whole.substr(0, whole.size() / 2));
        return Path(name);
    }

    int32_t Truthful(const std::string& source, const std::string& name) {
        return GetParam().truthful(source.c_str(), Path(name).c_str(), &job_);
    }

    int32_t Established(const std::string& source, const std::string& name) const {
        return GetParam().established(source.c_str(), Path(name).c_str());
    }

    lumbrix_job job_ = LUMBRIX_JOB_INIT;
};

TEST_P(Damage, CutPhotographIsShownAsFarAsItGoesAndSaidToBeDamaged) {
    for (const std::size_t percent : {90u, 50u, 30u}) {
        EXPECT_EQ(Truthful(CutPhoto(percent), "a.png"), 0) << percent << job_.message;
        EXPECT_EQ(job_.written, 1);
        EXPECT_EQ(job_.damaged, 1);
        EXPECT_EQ(job_.message, Path("cut.jpg") + " is damaged: not all of it could be decoded");
        const auto colors = Pixels("a.png");
        EXPECT_LE(std::count(colors.begin(), colors.end(), MakeColor(0, 0, 0)), std::ssize(colors) / 4);
        EXPECT_EQ(Established(CutPhoto(percent), "b.png"), 0) << percent;
        EXPECT_EQ(Pixels("b.png").size(), colors.size());
    }
}

TEST_P(Damage, WholePhotographIsNotSaidToBeDamaged) {
    EXPECT_EQ(Truthful(Path("photo.jpg"), "a.png"), 0);
    EXPECT_EQ(job_.damaged, 0);
    EXPECT_STREQ(job_.message, "");
}

TEST_P(Damage, CutPhotographIsRefusedWhereThatIsWanted) {
    job_.strict = 1;
    EXPECT_EQ(Truthful(CutPhoto(50), "old.png"), 3);
    EXPECT_EQ(job_.written, 0);
    EXPECT_EQ(job_.damaged, 1);
    EXPECT_EQ(job_.message, "cannot read " + Path("cut.jpg") + ": it is damaged");
    EXPECT_EQ(ReadBytes(folder_ / "old.png"), "old");
    EXPECT_EQ(Truthful(Path("photo.jpg"), "a.png"), 0) << job_.message;
}

TEST_P(Damage, OtherCutPicturesLeaveTheOldTarget) {
    for (const char* name : {"cut.png", "cut.bmp"}) {
        const std::string source = CutCopy(name);
        EXPECT_EQ(Truthful(source, "old.png"), 3) << name;
        EXPECT_EQ(job_.written, 0);
        EXPECT_NE(std::string(job_.message).find(name), std::string::npos) << job_.message;
        EXPECT_NE(std::string(job_.message).find("damaged"), std::string::npos) << job_.message;
        EXPECT_EQ(Established(source, "old.png"), GetParam().undecodable) << name;
        EXPECT_EQ(ReadBytes(folder_ / "old.png"), "old") << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Operations, Damage, testing::ValuesIn(DamageOperations),
                         [](const auto& parameter) { return std::string(parameter.param.name); });

class DamagedStamp : public Editing {};

TEST_F(DamagedStamp, IsShownAsFarAsItGoesOrNamed) {
    const std::string source = MakeWhite("a.png", 400, 300);
    ASSERT_EQ(lumbrix_resize(LUMBRIX_SAMPLES "/photo.jpg", Path("photo.jpg").c_str(), 200, nullptr), 0);
    const std::string photo = ReadBytes(folder_ / "photo.jpg");
    WriteBytes(folder_ / "cut.jpg", photo.substr(0, photo.size() / 2));
    const std::string cutPhoto = Path("cut.jpg");
    lumbrix_job job = LUMBRIX_JOB_INIT;
    const lumbrix_stamp_place shown{sizeof(lumbrix_stamp_place), cutPhoto.c_str(), 0, 0};
    EXPECT_EQ(lumbrix_stamp(source.c_str(), Path("b.png").c_str(), &shown, &job), 0);
    EXPECT_EQ(job.damaged, 1);
    EXPECT_EQ(job.message, cutPhoto + " is damaged: not all of it could be decoded");

    const std::string stamp = ReadBytes(LUMBRIX_SAMPLES "/stamp.png");
    WriteBytes(folder_ / "cut.png", stamp.substr(0, stamp.size() / 2));
    const std::string cutStamp = Path("cut.png");
    const lumbrix_stamp_place lost{sizeof(lumbrix_stamp_place), cutStamp.c_str(), 0, 0};
    EXPECT_EQ(lumbrix_stamp(source.c_str(), Path("c.png").c_str(), &lost, &job), 3);
    EXPECT_NE(std::string(job.message).find("cannot read " + cutStamp), std::string::npos) << job.message;
    EXPECT_EQ(StampImage(source.c_str(), Path("c.png").c_str(), 0, 0, cutStamp.c_str()), -16004);
    EXPECT_FALSE(Exists("c.png"));
}

} // namespace
