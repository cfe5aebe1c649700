// The commands that read what a file says about its picture: size, properties and date.
#include "tests/cli/commandline.h"
#include "tests/support/bmpfiles.h"

#include <sys/stat.h>

namespace {

using namespace tests;

std::string BigEndian(std::size_t number, int bytes) {
    std::string text;
    for (int i = bytes - 1; i >= 0; --i) {
        text.push_back(static_cast<char>(number >> (8 * i)));
    }
    return text;
}

// A JPEG file's EXIF segment with a camera's maker and, where it is given, a date.
std::string ExifSegment(const std::string& maker, const std::string& date) {
    constexpr std::size_t EntryBytes = 12;
    const std::size_t count = date.empty() ? 1 : 2;
    std::size_t valueAt = 8 + 2 + count * EntryBytes + 4;
    std::string entries = BigEndian(count, 2);
    std::string values;
    const auto add = [&](std::size_t tag, const std::string& text) {
        entries += BigEndian(tag, 2) + BigEndian(2, 2) + BigEndian(text.size() + 1, 4) + BigEndian(valueAt, 4);
        values += text + '\0';
        valueAt += text.size() + 1;
    };
    add(271, maker);
    if (!date.empty()) {
        add(306, date);
    }
    const std::string body = std::string("Exif\0\0MM\0*", 10) + BigEndian(8, 4) + entries + BigEndian(0, 4) + values;
    return "\xFF\xE1" + BigEndian(body.size() + 2, 2) + body;
}

class Reading : public CommandLine {
  protected:
    // photo.jpg has a maker and a date, undated.jpg a maker only.
    Reading() {
        ExpectSuccess(Run({"convert", Path("source.bmp"), Path("plain.jpg")}));
        const std::string plain = ReadBytes(folder_ / "plain.jpg");
        WriteBytes(folder_ / "photo.jpg",
                   "\xFF\xD8" + ExifSegment("Maker Works", "2026:11:21 09:30:00") + plain.substr(2));
        WriteBytes(folder_ / "undated.jpg", "\xFF\xD8" + ExifSegment("Maker Works", "") + plain.substr(2));
    }

    ~Reading() override { std::filesystem::current_path(former_); }

    const std::filesystem::path former_ = std::filesystem::current_path();
};

TEST_F(Reading, PropertiesArePrintedOneALine) {
    const Outcome outcome = Run({"properties", Path("photo.jpg")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(("\n" + outcome.output).find("\nCamera Manufacturer\tMaker Works\n"), std::string::npos)
        << outcome.output;
    EXPECT_NE(("\n" + outcome.output).find("\nDateTime\t2026:11:21 09:30:00\n"), std::string::npos) << outcome.output;
    EXPECT_EQ(outcome.output.find('\r'), std::string::npos);
}

TEST_F(Reading, PropertiesWithoutAValueAreLeftOut) {
    const Outcome outcome = Run({"properties", Path("photo.jpg")});
    EXPECT_EQ(outcome.output, "Camera Manufacturer\tMaker Works\nDateTime\t2026:11:21 09:30:00\n");
    ExpectSuccess(Run({"convert", Path("source.bmp"), Path("a.gif")}));
    ExpectSuccess(Run({"properties", Path("a.gif")}));
}

TEST_F(Reading, NoPropertiesPrintNothing) { ExpectSuccess(Run({"properties", Path("source.bmp")})); }

TEST_F(Reading, ControlCharactersInPropertiesDoNotReachTheTerminal) {
    WriteBytes(folder_ / "evil.jpg",
               "\xFF\xD8" + ExifSegment("\x1B[2Jgone", "") + ReadBytes(folder_ / "plain.jpg").substr(2));
    EXPECT_NE(Run({"properties", Path("evil.jpg")}).output.find("\t?[2Jgone\n"), std::string::npos);
}

TEST_F(Reading, DateIsPrinted) { ExpectSuccess(Run({"date", Path("photo.jpg")}), "2026:11:21 09:30:00\n"); }

TEST_F(Reading, MissingDateIsAFailure) {
    ExpectFailure(Run({"date", Path("undated.jpg")}), "undated.jpg", "it has none");
    ExpectFailure(Run({"date", Path("source.bmp")}), "source.bmp", "it has none");
}

TEST_F(Reading, FilesThatCannotBeReadAreNamed) {
    WriteBytes(folder_ / "letter.png", "Dear Sir or Madam");
    for (const char* command : {"size", "properties", "date"}) {
        ExpectFailure(Run({command, Path("none.png")}), "none.png", "no such file");
        ExpectFailure(Run({command, Path("letter.png")}), "letter.png", "not a picture");
        ExpectWrongUsage(Run({command, " "}), "empty file name");
    }
}

TEST_F(Reading, DateIsWrittenToACopyBesideTheFile) {
    ExpectSuccess(Run({"date", Path("photo.jpg"), "1999:12:31 23:59:59"}), Path("photo_stamped.jpg") + "\n");
    ExpectSuccess(Run({"date", Path("photo_stamped.jpg")}), "1999:12:31 23:59:59\n");
    ExpectSuccess(Run({"date", Path("photo.jpg")}), "2026:11:21 09:30:00\n");
}

TEST_F(Reading, StampedCopyIsNamedAsTheFileWas) {
    std::filesystem::current_path(folder_.Path());
    std::filesystem::create_directory("album");
    std::filesystem::copy_file("photo.jpg", "album/one.two.jpg");
    ExpectSuccess(Run({"date", "album/one.two.jpg", "now"}), "album/one_stamped.jpg\n");
    EXPECT_TRUE(std::filesystem::exists("album/one_stamped.jpg"));
    ExpectSuccess(Run({"date", "photo.jpg", "now"}), "photo_stamped.jpg\n");
}

TEST_F(Reading, BackslashesInNamesArePartOfThem) {
    WriteBytes(folder_ / "back\\slash.jpg", ReadBytes(folder_ / "photo.jpg"));
    ExpectSuccess(Run({"date", Path("back\\slash.jpg"), "now"}), Path("back\\slash_stamped.jpg") + "\n");
    EXPECT_TRUE(std::filesystem::exists(folder_ / "back\\slash_stamped.jpg"));
}

TEST_F(Reading, CurrentFolderNeedNotExist) {
    std::filesystem::create_directory(folder_ / "gone");
    std::filesystem::current_path(folder_ / "gone");
    std::filesystem::remove(folder_ / "gone");
    ExpectSuccess(Run({"date", Path("photo.jpg"), "now"}), Path("photo_stamped.jpg") + "\n");
}

TEST_F(Reading, OtherPicturesGetAStampedCopyToo) {
    ExpectSuccess(Run({"date", Path("source.bmp"), "now"}), Path("source_stamped.jpg") + "\n");
    ExpectSuccess(Run({"date", Path("source_stamped.jpg")}), "now\n");
}

TEST_F(Reading, OlderStampedCopyIsNotReplaced) {
    ExpectSuccess(Run({"date", Path("photo.jpg"), "then"}), Path("photo_stamped.jpg") + "\n");
    std::filesystem::copy_file(folder_ / "source.bmp", folder_ / "photo.2021.bmp");
    ExpectFailure(Run({"date", Path("photo.2021.bmp"), "now"}), "photo_stamped.jpg", "there is such a file already");
    ExpectSuccess(Run({"date", Path("photo_stamped.jpg")}), "then\n");
}

TEST_F(Reading, FolderThatTheStampedCopyCannotBeWrittenToIsNamed) {
    std::filesystem::create_directory(folder_ / "closed");
    std::filesystem::copy_file(folder_ / "photo.jpg", folder_ / "closed/photo.jpg");
    chmod(folder_.Path().c_str(), 0755);
    chmod(Path("closed").c_str(), 0555);
    ExpectFailure(Run({"date", Path("closed/photo.jpg"), "now"}, true),
                  "cannot write " + Path("closed/photo_stamped.jpg"),
                  "the folder " + Path("closed") + " is not writable");
}

TEST_F(Reading, EmptyDateIsWrongUsage) { ExpectWrongUsage(Run({"date", Path("photo.jpg"), ""}), "empty date"); }

} // namespace
