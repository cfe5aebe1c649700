// The help text as it stands in its file.
#include "desktop/helptext.h"
#include "platform/errors.h"
#include "tests/support/environment.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix;
using namespace tests;

constexpr const char* ExpectedLines[] = {
    "How to annotate images?",
    "-----------------------",
    "",
    "First you must select the image you want to annnotate and the output where you want to save the result.",
    "Annotation has two flavors:",
    "1. Text annotation",
    "   You will need to type the text and select the font you want to use. That includes the fontname, the",
    "   size, if it is bold and/or italic etc., as well as the color. Than you click on the image where the",
    "   text should appear. If you want to move the location just click again to a new location.",
    "2. Overstamp with a smaller image",
    "   You must select the source file for the smaller image. You can do that by clicking on the Stamp",
    "   button or by dragging the file from the windows explorer and drop it to the window. Once the smaller",
    "   image is determined  just click on the main image where you want it to appear. If not satisfied just",
    "   click again in another location.",
    "",
    "You can add multiple annotations, either text or stamp types. In order to add a new annotation after",
    "another click on the Keep checkbbox. You can do that as many times as you want. You can use the same",
    "stamp images or different onces and new text new font and new color as needed.",
    "",
    "How to crop images?",
    "-------------------",
    "First you must select the image you want to annnotate and the output where you want to save the result.",
    "Than click on the Crop checkbox. The image will be displayed. Click on the picture where the left upper",
    "corner of the rectangular you want to crop should reside and keep down the left mouse button while moving",
    "the mosue to draw the rectangular. When the size is as desired release the mosue button.",
};

// With a folder for temporary files of its own.
class HelpText : public testing::Test {
  protected:
    TemporaryFolder folder_;
    EnvironmentVariable variable_{TemporaryFolderVariable, folder_.Path().string().c_str()};
};

TEST_F(HelpText, HasTwentyFiveLinesWordForWord) {
    const std::string text = ReadBytes(WriteHelpText());
    std::size_t start = 0;
    for (const std::string line : ExpectedLines) {
        const std::size_t end = text.find("\r\n", start);
        ASSERT_NE(end, std::string::npos) << "before: " << line;
        EXPECT_EQ(text.substr(start, end - start), line);
        start = end + 2;
    }
    EXPECT_EQ(start, text.size());
}

TEST_F(HelpText, StandsBesideTheEmptyTemporaryFileOfItsName) {
    const std::filesystem::path text = WriteHelpText();
    EXPECT_EQ(text.extension(), ".txt");
    EXPECT_EQ(text.filename().string().substr(0, 3), "IMG");
    std::filesystem::path made = text;
    made.replace_extension(".tmp");
    ASSERT_TRUE(std::filesystem::exists(made));
    EXPECT_EQ(std::filesystem::file_size(made), 0u);
}

TEST_F(HelpText, EachUseLeavesTwoFilesOfItsOwn) {
    EXPECT_NE(WriteHelpText(), WriteHelpText());
    int files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
        ++files;
    }
    EXPECT_EQ(files, 4);
}

TEST_F(HelpText, NameIsChangedInTheFoldersToo) {
    std::filesystem::create_directory(folder_ / "a.tmp");
    std::filesystem::create_directory(folder_ / "a.txt");
    const EnvironmentVariable temporary(TemporaryFolderVariable, (folder_ / "a.tmp").string().c_str());
    EXPECT_EQ(std::filesystem::path(WriteHelpText()).parent_path().filename(), "a.txt");
}

TEST_F(HelpText, FolderThatIsMissingUnderItsChangedNameRaises) {
    std::filesystem::create_directory(folder_ / "a.tmp");
    const EnvironmentVariable temporary(TemporaryFolderVariable, (folder_ / "a.tmp").string().c_str());
    EXPECT_THROW(WriteHelpText(), RuntimeError);
}

} // namespace
