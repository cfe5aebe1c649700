// The options of the command line on orientation, background and metadata: which command knows them, what is usual, and
// what they come to. Whether pictures are turned rightly is judged elsewhere.
#include "tests/cli/folderfixture.h"
#include "tests/support/exifmaker.h"

namespace {

using namespace tests;

using namespace std::string_literals;

class WishOptions : public Folder {
  protected:
    // turned.jpg, 40 by 20 pixels as it is stored, is 20 by 40 as it is to be shown.
    WishOptions() {
        MakePicture("flat.bmp", 40, 20);
        ExpectSuccess(Run({"convert", Path("flat.bmp"), Path("turned.jpg")}));
        std::string bytes = ReadBytes(folder_ / "turned.jpg");
        bytes.insert(2, ExifMarker(MakeExif({.main = {{0x010F, 2, 6, "maker\0"s}, {0x0112, 3, 1, "\6\0"s}}})));
        WriteBytes(folder_ / "turned.jpg", bytes);
    }

    // Runs a command from turned.jpg to out.bmp, the words of which come behind these names.
    Outcome Make(const std::string& command, std::vector<std::string> words) {
        words.insert(words.begin(), {command, Path("turned.jpg"), Path("out.bmp")});
        return Run(words);
    }

    // The one pixel of a picture, over white.
    Rgb ColorIn(const std::string& name) {
        ExpectSuccess(Run({"thumb", Path(name), "1", Path("seen.bmp")}));
        return View("seen.bmp").At(0, 0);
    }

    bool IsTurned() const { return View("out.bmp").Height() > View("out.bmp").Width(); }
};

TEST_F(WishOptions, ResizeThumbAndFoldersOfASizeTurnPicturesUnlessTheyMustNot) {
    ExpectSuccess(Make("resize", {"10"}));
    EXPECT_TRUE(IsTurned());
    EXPECT_EQ(View("out.bmp").Height(), 10);
    ExpectSuccess(Make("resize", {"10", "--no-auto-orient"}));
    EXPECT_FALSE(IsTurned());
    ExpectSuccess(Make("resize", {"--fit", "99x99", "--only-shrink"}));
    EXPECT_TRUE(IsTurned());
    ExpectSuccess(Run({"thumb", Path("turned.jpg"), "10", Path("out.bmp")}));
    EXPECT_TRUE(IsTurned());
    ExpectSuccess(Run({"thumb", Path("turned.jpg"), "10", Path("out.bmp"), "--no-auto-orient"}));
    EXPECT_FALSE(IsTurned());
}

TEST_F(WishOptions, OthersTurnPicturesWhereTheyAreAskedTo) {
    const std::pair<const char*, std::vector<std::string>> commands[] = {{"convert", {}},
                                                                         {"crop", {"0", "0", "10", "11"}},
                                                                         {"rotate", {"180"}},
                                                                         {"annotate", {"0", "0", "."}},
                                                                         {"stamp", {"0", "0", Path("flat.bmp")}}};
    for (auto [command, words] : commands) {
        ExpectSuccess(Make(command, words));
        const bool isCut = command == "crop"s; // a part looks the same either way
        EXPECT_EQ(IsTurned(), isCut) << command;
        words.push_back("--auto-orient");
        ExpectSuccess(Make(command, words));
        EXPECT_TRUE(IsTurned()) << command;
    }
    ExpectSuccess(Make("crop", {"0", "0", "20", "40", "--auto-orient"}));
    ExpectFailure(Make("crop", {"0", "0", "40", "20", "--auto-orient"}), "turned.jpg", "20 x 40");
}

TEST_F(WishOptions, FolderTurnsPicturesOfASizeOnly) {
    WriteBytes(folder_ / "in/a.jpg", ReadBytes(folder_ / "turned.jpg"));
    const auto isTurned = [&](const std::vector<std::string>& words) {
        ExpectSuccess(RunFolder(words), "1 written, 0 skipped, 0 failed\n");
        return View("out/a.bmp").Height() > View("out/a.bmp").Width();
    };
    EXPECT_FALSE(isTurned({"bmp"}));
    EXPECT_TRUE(isTurned({"bmp", "--auto-orient"}));
    EXPECT_TRUE(isTurned({"bmp", "10"}));
    EXPECT_TRUE(isTurned({"bmp", "--percent", "50"}));
    EXPECT_FALSE(isTurned({"bmp", "10", "--no-auto-orient"}));
}

TEST_F(WishOptions, StrippingTurnsPicturesUnlessItMustNot) {
    ExpectSuccess(Make("convert", {"--strip"}));
    EXPECT_TRUE(IsTurned());
    ExpectSuccess(Make("convert", {"--strip", "--no-auto-orient"}));
    EXPECT_FALSE(IsTurned());
}

TEST_F(WishOptions, StrippedFilesTellNothing) {
    ExpectSuccess(Run({"convert", Path("turned.jpg"), Path("kept.jpg")}));
    EXPECT_NE(ReadBytes(folder_ / "kept.jpg").find("maker"), std::string::npos);
    ExpectSuccess(Run({"convert", Path("turned.jpg"), Path("kept.jpg"), "--keep-profile"}));
    EXPECT_NE(ReadBytes(folder_ / "kept.jpg").find("maker"), std::string::npos);
    for (const char* profile : {"--strip", "--keep-profile"}) {
        ExpectSuccess(Run({"convert", Path("turned.jpg"), Path("bare.jpg"), "--strip", profile}));
        EXPECT_EQ(ReadBytes(folder_ / "bare.jpg").find("Exif"), std::string::npos);
    }
}

TEST_F(WishOptions, TurningAndNotTurningContradict) {
    ExpectWrongUsage(Make("convert", {"--auto-orient", "--no-auto-orient"}),
                     "use either --auto-orient or --no-auto-orient");
}

TEST_F(WishOptions, BackgroundShowsWhereNothingIs) {
    // One pixel, of the entry that is transparent.
    WriteBytes(folder_ / "hole.gif",
               "GIF89a\1\0\1\0\x80\0\0\0\0\0\xFF\xFF\xFF!\xF9\4\1\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;"s);
    EXPECT_EQ(ColorIn("hole.gif"), White);
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"convert", Path("hole.gif"), Path("out.png")},
          {"thumb", Path("hole.gif"), "1", Path("out.png")},
          {"resize", Path("hole.gif"), Path("out.png"), "1"}}) {
        auto command = words;
        command.insert(command.end(), {"--background", "00ff00"});
        ExpectSuccess(Run(command));
        EXPECT_EQ(ColorIn("out.png"), Green) << words[0];
    }
    WriteBytes(folder_ / "in/hole.gif", ReadBytes(folder_ / "hole.gif"));
    ExpectSuccess(RunFolder({"bmp", "--background", "0000ff", "--jobs", "2"}), "1 written, 0 skipped, 0 failed\n");
    EXPECT_EQ(ColorIn("out/hole.bmp"), Blue);
}

TEST_F(WishOptions, ColorsThatAreNoneAreWrong) {
    for (const char* color : {"", "fff", "00000g", "0000000", "#00ff00"}) {
        ExpectWrongUsage(Make("convert", {"--background", color}), "invalid colour ");
    }
}

TEST_F(WishOptions, EveryCommandThatWritesKnowsThem) {
    for (const char* command : {"convert", "thumb", "resize", "crop", "rotate", "annotate", "stamp", "folder"}) {
        const std::string help = Run({command, "--help"}).output;
        for (const char* word :
             {"--auto-orient ", "--no-auto-orient", "--background RRGGBB", "--strip", "--keep-profile"}) {
            EXPECT_NE(help.find(word), std::string::npos) << word << " of " << command;
        }
    }
    for (const char* command : {"date", "icon", "size", "properties"}) {
        ExpectWrongUsage(Run({command, Path("turned.jpg"), "--auto-orient"}), "unknown option");
        ExpectWrongUsage(Run({command, Path("turned.jpg"), "--strip"}), "unknown option");
    }
}

} // namespace
