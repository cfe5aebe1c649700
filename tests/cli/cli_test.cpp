// lumbrix-cli as a shell meets it: what it prints, what it writes, how it ends.
#include "tests/cli/commandline.h"

#include <sys/stat.h>

namespace {

using namespace tests;

TEST_F(CommandLine, FormatFollowsTheExtensionOfTheTarget) {
    const std::pair<const char*, const char*> formats[] = {
        {"a.bmp", "BM"}, {"a.jpg", "\xFF\xD8"}, {"a.JPEG", "\xFF\xD8"}, {"a.gif", "GI"},
        {"a.tif", "II"}, {"a.tiff", "II"},      {"a.PNG", "\x89P"}};
    for (const auto& [name, start] : formats) {
        const Outcome outcome = Run({"convert", Path("source.bmp"), Path(name)});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_EQ(outcome.output + outcome.errors, "");
        EXPECT_EQ(ReadBytes(folder_ / name).substr(0, 2), start);
    }
}

TEST_F(CommandLine, ThumbHasItsHeight) {
    EXPECT_EQ(Run({"thumb", Path("source.bmp"), "40", Path("thumb.png")}).status, 0);
    EXPECT_EQ(Run({"size", Path("thumb.png")}).output, "20 x 40\n");
}

TEST_F(CommandLine, QualityAndCompressionAreChosen) {
    const auto sizeOf = [&](const std::string& name) { return std::filesystem::file_size(Path(name)); };
    EXPECT_EQ(Run({"convert", Path("source.bmp"), Path("a.jpg"), "--quality", "5"}).status, 0);
    EXPECT_EQ(Run({"convert", Path("source.bmp"), Path("b.jpg"), "--quality", "100"}).status, 0);
    EXPECT_LT(sizeOf("a.jpg"), sizeOf("b.jpg"));
    EXPECT_EQ(Run({"convert", Path("source.bmp"), Path("a.tif"), "--compression", "NONE"}).status, 0);
    EXPECT_EQ(Run({"convert", Path("source.bmp"), Path("b.tif"), "--compression", "lzw"}).status, 0);
    EXPECT_NE(sizeOf("a.tif"), sizeOf("b.tif"));
}

TEST_F(CommandLine, QualityAndCompressionWithoutAMeaningAreWrongCalls) {
    for (const char* quality : {"0", "101", "x"}) {
        EXPECT_EQ(Run({"convert", Path("source.bmp"), Path("a.jpg"), "--quality", quality}).status, 2);
    }
    const Outcome outcome = Run({"convert", Path("source.bmp"), Path("a.tif"), "--compression", "zip"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.errors.find("zip"), std::string::npos);
    EXPECT_NE(outcome.errors.find("deflate"), std::string::npos);
}

TEST_F(CommandLine, HelpNamesEveryCommandAndOption) {
    const Outcome outcome = Run({"--help"});
    EXPECT_EQ(outcome.status, 0);
    for (const char* word :
         {"convert",         "thumb",    "resize",      "crop",        "rotate",        "annotate",  "stamp",
          "folder",          "size",     "properties",  "date",        "SOURCE TARGET", "--font",    "--size",
          "--bold",          "--italic", "--underline", "--strikeout", "--color",       "--alpha",   "--recursive",
          "--skip-existing", "--jobs",   "--strict",    "--version",   "icon",          "--quality", "--compression"}) {
        EXPECT_NE(outcome.output.find(word), std::string::npos) << word;
    }
}

TEST_F(CommandLine, HelpOnACommandIsAboutThatOne) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"folder", "--help"}, {"folder", "-h"}, {"folder", "in", "out", "png", "--help"}}) {
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.errors, "");
        EXPECT_NE(outcome.output.find("lumbrix-cli folder SOURCE_FOLDER"), std::string::npos) << outcome.output;
        EXPECT_NE(outcome.output.find("--skip-existing"), std::string::npos) << outcome.output;
        EXPECT_EQ(outcome.output.find("--bold"), std::string::npos) << outcome.output;
    }
}

TEST_F(CommandLine, HelpTellsWhatACommandDoesBesides) {
    EXPECT_NE(Run({"annotate", "--help"}).output.find("becomes denser"), std::string::npos);
    EXPECT_NE(Run({"stamp", "--help"}).output.find("becomes denser"), std::string::npos);
    EXPECT_NE(Run({"date", "--help"}).output.find("is not replaced"), std::string::npos);
    EXPECT_NE(Run({"properties", "--help"}).output.find("left out"), std::string::npos);
    EXPECT_NE(Run({"icon", "--help"}).output.find("on Windows only"), std::string::npos);
    EXPECT_NE(Run({"icon", "--help"}).output.find("written.ico beside lumbrix-cli is deleted"), std::string::npos);
}

TEST_F(CommandLine, ClassicIconsAreMadeOnWindowsOnly) {
    const Outcome outcome = Run({"icon", "--classic", Path("source.bmp")});
    ExpectWrongUsage(outcome, "lumbrix-cli: --classic is there on Windows only; see lumbrix-cli --help\n");
    ExpectWrongUsage(
        Run({"icon", "--classic", Path("source.bmp"), Path("a.ico")}),
        "lumbrix-cli: --classic takes one name: the icon lies beside its bitmap; see lumbrix-cli --help\n");
    EXPECT_EQ(NamesIn(""), std::set<std::string>{"source.bmp"});
}

TEST_F(CommandLine, IconsHaveTheSizesThatAreAskedFor) {
    const auto countIn = [&](const std::string& name) { return ReadBytes(folder_ / name).at(4); };
    EXPECT_EQ(Run({"icon", Path("source.bmp"), Path("a.ico")}).status, 0);
    EXPECT_EQ(countIn("a.ico"), 7);
    EXPECT_EQ(Run({"icon", Path("source.bmp"), Path("b.ICO"), "--sizes", "1,256"}).status, 0);
    EXPECT_EQ(countIn("b.ICO"), 2);
    ExpectFailure(Run({"icon", Path("none.bmp"), Path("c.ico")}), "none.bmp", "no such file");
}

TEST_F(CommandLine, IconsThatCannotBeAreWrongUsage) {
    const std::string end = "; see lumbrix-cli --help\n";
    const auto run = [&](const std::string& target, const std::string& sizes) {
        return Run({"icon", Path("source.bmp"), target, "--sizes", sizes});
    };
    ExpectWrongUsage(run("a.png", "16"), "lumbrix-cli: 'a.png' must end in .ico" + end);
    ExpectWrongUsage(run("a.ico", "16,32,16"), "lumbrix-cli: the size 16 was given twice" + end);
    for (const char* sizes : {"", "0", "257", "16,", ",16", "x", "16 32"}) {
        EXPECT_EQ(run(Path("a.ico"), sizes).status, 2) << sizes;
    }
    ExpectWrongUsage(Run({"icon", Path("source.bmp")}),
                     "lumbrix-cli: the command icon takes a picture and the name of the icon" + end);
    EXPECT_EQ(NamesIn(""), std::set<std::string>{"source.bmp"});
}

TEST_F(CommandLine, HelpMayBeAPlainWord) { ExpectFailure(Run({"size", "--", "--help"}), "--help", "no such file"); }

TEST_F(CommandLine, VersionIsPrinted) {
    ExpectSuccess(Run({"--version"}), "lumbrix-cli " PROJECT_VERSION "\n");
    ExpectSuccess(Run({"-V"}), "lumbrix-cli " PROJECT_VERSION "\n");
}

TEST_F(CommandLine, HelpIsACommandToo) {
    EXPECT_EQ(Run({"help"}).output, Run({"--help"}).output);
    EXPECT_EQ(Run({"-h"}).output, Run({"--help"}).output);
    EXPECT_EQ(Run({"help", "crop"}).output, Run({"crop", "--help"}).output);
    ExpectWrongUsage(Run({"help", "crip"}), "did you mean 'crop'?");
}

TEST_F(CommandLine, HelpOnACommandShowsBothFormsAndExamples) {
    const std::string help = Run({"resize", "--help"}).output;
    EXPECT_NE(help.find("  lumbrix-cli resize SOURCE TARGET [HEIGHT] [OPTIONS]\n"), std::string::npos) << help;
    EXPECT_NE(help.find("  lumbrix-cli resize SOURCE... [HEIGHT] --into FOLDER [OPTIONS]\n"), std::string::npos)
        << help;
    EXPECT_NE(help.find("\nExamples:\n  lumbrix-cli resize "), std::string::npos) << help;
    EXPECT_NE(help.find("-j, --jobs N "), std::string::npos) << help;
}

TEST_F(CommandLine, MistypedWordsAreSuggested) {
    const Outcome command = Run({"convrt", "a", "b"});
    EXPECT_EQ(command.status, 2);
    EXPECT_EQ(command.errors,
              "lumbrix-cli: unknown command 'convrt', did you mean 'convert'? See lumbrix-cli --help\n");
    ExpectWrongUsage(Run({"convert", "a", "b", "--qualty", "5"}), "did you mean '--quality'?");
}

TEST_F(CommandLine, OptionsOfPicturesHoldForTextsToo) {
    ExpectSuccess(Run({"annotate", Path("source.bmp"), Path("a.jpg"), "0", "0", "x", "--quality=5"}));
    ExpectSuccess(Run({"annotate", Path("source.bmp"), Path("b.jpg"), "0", "0", "x", "--quality=100"}));
    EXPECT_LT(std::filesystem::file_size(Path("a.jpg")), std::filesystem::file_size(Path("b.jpg")));
}

TEST_F(CommandLine, WrongUsageEndsWithTwo) {
    ExpectWrongUsage(Run({}), "no command was given");
    ExpectWrongUsage(Run({"paint", "x"}), "unknown command 'paint'");
    ExpectWrongUsage(Run({"convert", "x"}), "convert SOURCE TARGET");
    ExpectWrongUsage(Run({"convert", "x", "y.png", "z"}), "convert SOURCE TARGET");
    ExpectWrongUsage(Run({"convert", Path("source.bmp"), "y.sgl"}), "must end in .bmp");
    ExpectWrongUsage(Run({"convert", Path("source.bmp"), "png"}), "must end in .bmp");
    ExpectWrongUsage(Run({"convert", " ", "y.png"}), "empty file name");
    for (const char* height : {"0", "-5", "ten", "5x", "", "99999999999"}) {
        ExpectWrongUsage(Run({"thumb", Path("source.bmp"), height, "y.png"}), "invalid height ");
    }
}

TEST_F(CommandLine, MissingSourceIsNamed) {
    ExpectFailure(Run({"convert", Path("none.png"), Path("a.jpg")}), "none.png", "no such file");
    ExpectFailure(Run({"size", Path("none.png")}), "none.png", "no such file");
}

TEST_F(CommandLine, FolderAsSourceIsNamed) {
    ExpectFailure(Run({"convert", folder_.Path().string(), Path("a.jpg")}), folder_.Path().string(), "it is a folder");
}

TEST_F(CommandLine, SourceThatIsNoPictureIsNamed) {
    WriteBytes(folder_ / "letter.png", "Dear Sir or Madam");
    ExpectFailure(Run({"convert", Path("letter.png"), Path("a.jpg")}), "letter.png", "not a picture");
    WriteBytes(folder_ / "cut.bmp", ReadBytes(folder_ / "source.bmp").substr(0, 55));
    ExpectFailure(Run({"convert", Path("cut.bmp"), Path("a.jpg")}), "cut.bmp", "damaged");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "a.jpg"));
}

TEST_F(CommandLine, ControlCharactersInNamesDoNotReachTheTerminal) {
    ExpectFailure(Run({"size", Path("a\x1B[2J\nb\xC2\x9B.png")}), "a?[2J?b?.png", "no such file");
    ExpectWrongUsage(Run({"paint\x1B[2J"}), "'paint?[2J'");
    std::filesystem::create_directory(folder_ / "in");
    WriteBytes(folder_ / "in/\x1B[2J.png", "not a picture");
    EXPECT_NE(Run({"folder", Path("in"), Path("out"), "gif"}).errors.find("in/?[2J.png"), std::string::npos);
}

TEST_F(CommandLine, MissingTargetFolderIsNamed) {
    ExpectFailure(Run({"convert", Path("source.bmp"), Path("none/a.jpg")}), "none/a.jpg", "does not exist");
}

TEST_F(CommandLine, FolderAsTargetIsNamed) {
    std::filesystem::create_directory(folder_ / "folder.png");
    ExpectFailure(Run({"convert", Path("source.bmp"), Path("folder.png")}), "folder.png", "it is a folder");
}

TEST_F(CommandLine, SourceAsTargetIsRefused) {
    const std::string before = ReadBytes(folder_ / "source.bmp");
    ExpectFailure(Run({"convert", Path("source.bmp"), Path("source.bmp")}), "source.bmp", "the source itself");
    EXPECT_EQ(ReadBytes(folder_ / "source.bmp"), before);
}

TEST_F(CommandLine, ThumbBeyondTheLimitIsRefused) {
    ExpectFailure(Run({"thumb", Path("source.bmp"), "70000", Path("a.png")}), "a.png", "size");
}

TEST_F(CommandLine, ClosedFilesAndFoldersAreNamed) {
    chmod(folder_.Path().c_str(), 0777);
    WriteBytes(folder_ / "secret.bmp", ReadBytes(folder_ / "source.bmp"));
    chmod(Path("secret.bmp").c_str(), 0);
    ExpectFailure(Run({"convert", Path("secret.bmp"), Path("a.png")}, true), "secret.bmp", "permission");
    WriteBytes(folder_ / "kept.png", "old");
    chmod(Path("kept.png").c_str(), 0444);
    ExpectFailure(Run({"convert", Path("source.bmp"), Path("kept.png")}, true), "kept.png", "not writable");
    EXPECT_EQ(ReadBytes(folder_ / "kept.png"), "old");
    std::filesystem::create_directory(folder_ / "closed");
    chmod(Path("closed").c_str(), 0555);
    ExpectFailure(Run({"convert", Path("source.bmp"), Path("closed/a.png")}, true), "closed/a.png",
                  "the folder " + Path("closed") + " is not writable");
}

TEST_F(CommandLine, OptionsStandAnywhereBehindTheCommand) {
    std::filesystem::create_directory(folder_ / "in");
    ExpectSuccess(Run({"folder", "--jobs", "2", Path("in"), "--recursive", Path("out"), "png"}),
                  "0 written, 0 skipped, 0 failed\n");
}

TEST_F(CommandLine, OptionsOfOtherCommandsAreWrongUsage) {
    ExpectWrongUsage(Run({"convert", "a.png", "b.png", "--bold"}), "unknown option '--bold'");
    ExpectWrongUsage(Run({"folder", "in", "out", "png", "--jobs"}), "--jobs N");
}

TEST_F(CommandLine, WordsBehindTwoDashesAreNoOptions) {
    ExpectWrongUsage(Run({"convert", "--", "--bold", "b.txt"}), "must end in .bmp");
}

TEST_F(CommandLine, MissingImagingLibraryIsNamed) {
    const std::filesystem::path folder = std::filesystem::path(LUMBRIX_CLI).parent_path();
    std::filesystem::create_directory(folder_ / "bin");
    for (const char* name : {"lumbrix-cli", "liblumbrix.so.0"}) {
        std::filesystem::copy_file(folder / name, folder_ / (std::string("bin/") + name));
    }
    const std::string command =
        Path("bin/lumbrix-cli") + " resize " + Path("source.bmp") + " " + Path("a.png") + " 4 2>" + Path("errors");
    EXPECT_NE(std::system(command.c_str()), 0);
    EXPECT_NE(ReadBytes(folder_ / "errors").find("the imaging library could not be loaded"), std::string::npos);
}

} // namespace
