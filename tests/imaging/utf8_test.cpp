// Names and texts in UTF-8, whatever the system's code page.
#include "tests/imaging/editingfixture.h"

#include <array>

namespace {

using namespace tests;

// "picture" in Cyrillic and in Japanese, and a face.
constexpr const char* Cyrillic = "\u043A\u0430\u0440\u0442\u0438\u043D\u0430.png";
constexpr const char* Japanese = "\u5199\u771F.png";
constexpr const char* Face = "\U0001F600.png";
constexpr std::array Names{Cyrillic, Japanese, Face};

class Utf8Names : public Editing {
  protected:
    Utf8Names() { job_.utf8 = 1; }

    std::filesystem::path PathOf(const std::string& name) const {
        return folder_.Path() / std::u8string(name.begin(), name.end());
    }

    std::string Utf8PathOf(const std::string& name) const {
        const std::u8string path = PathOf(name).u8string();
        return {path.begin(), path.end()};
    }

    void ExpectDone(int32_t status) const { EXPECT_EQ(status, 0) << job_.message; }

    void ExpectMessage(const std::string& words) const {
        EXPECT_NE(std::string(job_.message).find(words), std::string::npos) << words << " in: " << job_.message;
    }

    lumbrix_job job_ = LUMBRIX_JOB_INIT;
};

TEST_F(Utf8Names, AreReadAndWritten) {
    const std::string source = MakeWhite("a.png", 10, 8);
    for (const char* name : Names) {
        ExpectDone(lumbrix_convert(source.c_str(), Utf8PathOf(name).c_str(), &job_));
        EXPECT_TRUE(std::filesystem::exists(PathOf(name))) << name;
        ExpectDone(lumbrix_read_size(Utf8PathOf(name).c_str(), &job_));
        EXPECT_EQ(job_.height, 8);
        ExpectDone(lumbrix_thumb(Utf8PathOf(name).c_str(), Path("b.png").c_str(), 4, &job_));
    }
}

TEST_F(Utf8Names, OfDestinationsThatAreThereAreKept) {
    const std::string source = MakeWhite("a.png", 10, 8);
    job_.keep_existing = 1;
    for (const char* name : Names) {
        ExpectDone(lumbrix_convert(source.c_str(), Utf8PathOf(name).c_str(), &job_));
        EXPECT_EQ(lumbrix_convert(source.c_str(), Utf8PathOf(name).c_str(), &job_), LUMBRIX_ALREADY_THERE);
        ExpectMessage(name);
    }
}

TEST_F(Utf8Names, StandInMessagesThatKnowTheFiles) {
    const std::string source = MakeWhite("a.png", 10, 8);
    for (const char* name : Names) {
        const std::string path = Utf8PathOf(name);
        EXPECT_EQ(lumbrix_read_size(path.c_str(), &job_), LUMBRIX_FILE_NOT_FOUND);
        ExpectMessage("cannot read " + path + ": there is no such file");
        ExpectDone(lumbrix_convert(source.c_str(), path.c_str(), &job_));
        EXPECT_EQ(lumbrix_convert(path.c_str(), path.c_str(), &job_), LUMBRIX_GENERIC_ERROR);
        ExpectMessage(path + ": it is the source itself");
        const std::string inside = path + "/b.png";
        EXPECT_EQ(lumbrix_convert(source.c_str(), inside.c_str(), &job_), LUMBRIX_GENERIC_ERROR);
        ExpectMessage(std::string(name) + " does not exist");
        std::filesystem::remove(PathOf(name));
        std::filesystem::create_directory(PathOf(name));
        EXPECT_EQ(lumbrix_convert(source.c_str(), path.c_str(), &job_), LUMBRIX_GENERIC_ERROR);
        ExpectMessage("it is a folder");
        EXPECT_EQ(lumbrix_read_size(path.c_str(), &job_), LUMBRIX_GENERIC_ERROR);
        ExpectMessage("it is a folder");
    }
}

TEST_F(Utf8Names, OfIconsAreWritten) {
    const std::string source = MakeWhite("a.png", 10, 8);
    const int32_t size = 16;
    for (const char* name : Names) {
        ExpectDone(lumbrix_icon(source.c_str(), Utf8PathOf(name).c_str(), &size, 1, &job_));
        EXPECT_EQ(ReadBytes(PathOf(name)).substr(0, 4), std::string("\0\0\1\0", 4)) << name;
        ExpectDone(lumbrix_icon(source.c_str(), Utf8PathOf(name).c_str(), &size, 1, &job_)); // in its own place
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 4);
}

TEST_F(Utf8Names, OfStampsAreFound) {
    const std::string source = MakeWhite("a.png", 10, 8);
    const std::string red = Make("r.png", *MakePictureOf(2, 2, [](auto, auto) { return Red; }));
    std::filesystem::rename(red, PathOf(Japanese));
    const std::string stamp = Utf8PathOf(Japanese);
    lumbrix_stamp_place place = LUMBRIX_STAMP_PLACE_INIT;
    place.stamp = stamp.c_str();
    ExpectDone(lumbrix_stamp(source.c_str(), Path("b.png").c_str(), &place, &job_));
    EXPECT_EQ(Pixels("b.png")[0], Red);
}

TEST_F(Utf8Names, TextsAreDrawnLetterByLetter) {
    const std::string source = MakeWhite("a.png", 200, 60);
    lumbrix_annotation annotation = LUMBRIX_ANNOTATION_INIT;
    annotation.font = "Arial";
    annotation.font_size = 40;
    const auto inkOf = [&](const char* text) {
        annotation.text = text;
        ExpectDone(lumbrix_annotate(source.c_str(), Path("b.png").c_str(), &annotation, &job_));
        const auto colors = Pixels("b.png");
        return std::count_if(colors.begin(), colors.end(), [](Color color) { return color != White; });
    };
    // A letter of the same shape in both alphabets.
    EXPECT_EQ(inkOf("\u0410"), inkOf("A"));
    EXPECT_GT(inkOf("\u0416"), 0);
    annotation.font = "\u5199\u771F";
    EXPECT_EQ(lumbrix_annotate(source.c_str(), Path("c.png").c_str(), &annotation, &job_),
              LUMBRIX_FONT_FAMILY_NOT_FOUND);
    ExpectMessage("the font '\u5199\u771F' is not installed");
}

#ifdef _WIN32
TEST_F(Utf8Names, AreTextInTheCodePageUnlessTheJobSaysSo) {
    const std::string source = MakeWhite("a.png", 10, 8);
    ExpectDone(lumbrix_convert(source.c_str(), Utf8PathOf(Cyrillic).c_str(), &job_));
    job_.utf8 = 0;
    EXPECT_EQ(lumbrix_read_size(Utf8PathOf(Cyrillic).c_str(), &job_), LUMBRIX_FILE_NOT_FOUND);
    const std::string western = folder_.Path().string() + "\\gr\xFC\xDF.png"; // the Western code page
    ExpectDone(lumbrix_convert(source.c_str(), western.c_str(), &job_));
    EXPECT_TRUE(std::filesystem::exists(folder_.Path() / u"gr\u00FC\u00DF.png"));
    EXPECT_EQ(lumbrix_convert(source.c_str(), (western + "/b.png").c_str(), &job_), LUMBRIX_GENERIC_ERROR);
    ExpectMessage(western + " does not exist");
}
#endif

} // namespace
