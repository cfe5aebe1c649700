// The file picker with its preview, and the folder dialog, as the main window opens them.
#include "tests/windows/pickerfixture.h"

#include <shlobj.h>

namespace {

using namespace lumbrix;
using namespace tests;

TEST_F(FilePicker, ChosenFileBecomesTheSourceAndTheTargetFollows) {
    program_.SetText(TargetBox, "C:\\out\\old.gif");
    const HWND dialog = Open();
    EXPECT_EQ(WindowText(dialog), "Select the image");
    Choose(dialog, Path("source.bmp"));
    EXPECT_TRUE(WaitFor([&] { return program_.Text(SizeLabel) == "(W1 x H2)"; }));
    EXPECT_EQ(program_.Text(SourceFileBox), Path("source.bmp"));
    EXPECT_EQ(program_.Text(TargetBox), "C:\\out\\source.gif");
}

TEST_F(FilePicker, CancellingEmptiesTheSource) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    program_.SetText(TargetBox, "C:\\x\\a.jpg");
    Cancel(Open());
    EXPECT_TRUE(WaitFor([&] { return program_.Text(SourceFileBox).empty(); }));
    EXPECT_TRUE(WaitFor([&] { return program_.Text(TargetBox) == "C:\\x\\.jpg"; }));
}

TEST_F(FilePicker, HasAPreviewPaneBesideItsList) {
    const HWND dialog = Open();
    RECT frame{};
    ASSERT_TRUE(WaitFor([&] {
        GetWindowRect(dialog, &frame);
        return frame.left == 50 && frame.top == 50;
    }));
    const auto placeOf = [&](int id) {
        RECT place{};
        GetWindowRect(GetDlgItem(dialog, id), &place);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        return place;
    };
    const RECT caption = placeOf(PreviewCaptionId);
    EXPECT_EQ(caption.left, 424);
    EXPECT_EQ(caption.top, 16);
    EXPECT_EQ(caption.right - caption.left, 170);
    EXPECT_EQ(caption.bottom - caption.top, 14);
    const RECT pane = placeOf(PreviewPaneId);
    EXPECT_EQ(pane.left, 424);
    EXPECT_EQ(pane.top, 33);
    EXPECT_EQ(pane.right - pane.left, 170);
    EXPECT_EQ(pane.bottom - pane.top, 170);
    EXPECT_GE(frame.right - frame.left, 424 + 170);
    EXPECT_EQ(WindowText(GetDlgItem(dialog, PreviewCaptionId)), "");
    Cancel(dialog);
}

TEST_F(FilePicker, OpensInTheFolderOfTheLastFile) {
    MakeFolder("pictures");
    WriteBytes(program_.Folder() / "pictures" / "only.bmp", SmallBmp);
    Choose(Open(), Path("pictures\\only.bmp"));
    const HWND again = Open();
    Choose(again, "only.bmp");
    EXPECT_TRUE(WaitFor([&] { return program_.Text(SourceFileBox) == Path("pictures\\only.bmp"); }));
}

TEST_F(FilePicker, FileThatIsMissingIsNotTaken) {
    const HWND dialog = Open();
    ExpectMissingFileRefused(OpenWindow(dialog, {program_.Window()}));
    Cancel(dialog);
    EXPECT_TRUE(WaitFor([&] { return program_.IsQuiet(); }));
}

TEST_F(FilePicker, SelectedPictureIsShown) {
    // A blue pixel beside a red one.
    const std::string wide(
        "BM\x3E\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\2\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\x08\0\0\0\0\0\0\0"
        "\0\0\0\0\0\0\0\0\0\0\0\0\xFF\0\0\0\0\xFF\0\0",
        62);
    MakeFolder("pictures");
    WriteBytes(program_.Folder() / "pictures" / "wide.bmp", wide);
    Choose(Open(), Path("pictures\\wide.bmp"));
    const HWND dialog = Open();
    Select(dialog, 0);
    const HWND caption = GetDlgItem(dialog, PreviewCaptionId);
    EXPECT_TRUE(WaitFor([&] { return WindowText(caption) == "PREVIEW:"; })) << WindowText(caption);
    // Enlarged to the width of the pane, and half as high, in its middle. The pane's right part is looked at, for the
    // list may cover the left one.
    RECT pane{};
    GetWindowRect(GetDlgItem(dialog, PreviewPaneId), &pane);
    const auto pixel = [&](int x, int y) { return PixelAt({pane.left + x, pane.top + y}); };
    EXPECT_TRUE(WaitFor([&] { return GetRValue(pixel(148, 85)) > 200 && GetBValue(pixel(148, 85)) < 60; }));
    EXPECT_EQ(pixel(148, 20), RGB(255, 255, 255));
    EXPECT_EQ(pixel(148, 150), RGB(255, 255, 255));
    Cancel(dialog);
}

TEST_F(FilePicker, FileThatIsNoPictureShowsAWhitePane) {
    MakeFolder("pictures");
    WriteBytes(program_.Folder() / "pictures" / "broken.bmp", "no picture");
    Choose(Open(), Path("pictures\\broken.bmp"));
    const HWND dialog = Open();
    Select(dialog, 0);
    const HWND hook = FindWindowExA(dialog, nullptr, "#32770", nullptr);
    ASSERT_NE(hook, nullptr);
    EXPECT_TRUE(WaitFor([&] { return WindowText(hook) == "Error"; })) << WindowText(hook);
    EXPECT_EQ(WindowText(GetDlgItem(dialog, PreviewCaptionId)), "");
    Cancel(dialog);
}

class FolderDialog : public ProgramTest {
  protected:
    HWND Open(int button) const {
        program_.BeginClick(button);
        return program_.WaitForDialog();
    }

    static bool HasPrompt(HWND dialog, const char* prompt) {
        // The search itself takes no notice of the case.
        return WaitFor([&] {
            const HWND found = FindWindowExA(dialog, nullptr, "Static", prompt);
            return found != nullptr && WindowText(found) == prompt;
        });
    }

    // Selects a folder in the dialog's tree and presses the dialog's own button.
    void Choose(HWND dialog, const std::string& folder) const {
        HWND box = nullptr;
        ASSERT_TRUE(WaitFor([&] { return (box = FindBelow(dialog, "Edit")) != nullptr; }));
        const std::uint32_t inside = program_.PutInside(folder.c_str(), folder.size() + 1);
        const std::string name = std::filesystem::path(folder).filename().string();
        EXPECT_TRUE(WaitFor([&] { // the tree is filled bit by bit
            Send(dialog, BFFM_SETSELECTIONA, TRUE, static_cast<LPARAM>(inside));
            return WindowText(box) == name || WindowText(box) == folder;
        }));
        PostMessageA(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
        EXPECT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    }
};

TEST_F(FolderDialog, TargetIsMadeOfTheFolderTheStemAndTheType) {
    program_.SetText(SourceFileBox, "C:\\in\\a.b.png");
    program_.Click(GifRadio);
    const std::string folder = MakeFolder("out");
    const HWND dialog = Open(TargetButton);
    EXPECT_TRUE(WaitFor([&] { return WindowText(dialog) == "Image file to create"; })) << WindowText(dialog);
    EXPECT_TRUE(HasPrompt(dialog, "Select output folder"));
    Choose(dialog, folder.substr(0, folder.size() - 1));
    EXPECT_TRUE(WaitFor([&] { return program_.Text(TargetBox) == folder + "a.gif"; })) << program_.Text(TargetBox);
}

TEST_F(FolderDialog, TargetOfABatchIsTheFolderAlone) {
    program_.SetText(SourceFolderBox, "C:\\in\\");
    const std::string folder = MakeFolder("out");
    Choose(Open(TargetButton), folder.substr(0, folder.size() - 1));
    EXPECT_TRUE(WaitFor([&] { return program_.Text(TargetBox) == folder; })) << program_.Text(TargetBox);
}

TEST_F(FolderDialog, SourceFolderEndsInABackslashAndTheSourceFileStays) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    const std::string folder = MakeFolder("in");
    const HWND dialog = Open(SourceFolderButton);
    EXPECT_TRUE(WaitFor([&] { return WindowText(dialog) == "ALL image files in this folder"; }));
    EXPECT_TRUE(HasPrompt(dialog, "Select the folder where the source images are"));
    Choose(dialog, folder.substr(0, folder.size() - 1));
    EXPECT_TRUE(WaitFor([&] { return program_.Text(SourceFolderBox) == folder; })) << program_.Text(SourceFolderBox);
    EXPECT_EQ(program_.Text(SourceFileBox), Path("source.bmp"));
    EXPECT_EQ(program_.Text(SizeLabel), "(W1 x H2)");
}

TEST_F(FolderDialog, CancellingChangesNothing) {
    program_.SetText(SourceFileBox, Path("source.bmp"));
    program_.SetText(TargetBox, "C:\\x\\a.jpg");
    const HWND dialog = Open(TargetButton);
    ASSERT_TRUE(WaitFor([&] { return GetDlgItem(dialog, IDCANCEL) != nullptr; }));
    PostMessageA(GetDlgItem(dialog, IDCANCEL), BM_CLICK, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    EXPECT_TRUE(WaitFor([&] { return program_.Text(SizeLabel) == "(W1 x H2)"; })) << "which comes last";
    EXPECT_EQ(program_.Text(TargetBox), "C:\\x\\a.jpg");
}

TEST_F(FolderDialog, OpensOnTheFolderOfTheLastChoiceWhicheverItWasFor) {
    const std::string folder = MakeFolder("in");
    Choose(Open(SourceFolderButton), folder.substr(0, folder.size() - 1));
    const HWND dialog = Open(TargetButton);
    HWND box = nullptr;
    ASSERT_TRUE(WaitFor([&] { return (box = FindBelow(dialog, "Edit")) != nullptr; }));
    EXPECT_TRUE(WaitFor([&] { return WindowText(box) == "in" || WindowText(box) == Path("in"); })) << WindowText(box);
    PostMessageA(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return program_.Text(TargetBox) == folder; })) << program_.Text(TargetBox);
}

} // namespace
