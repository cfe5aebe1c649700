// What the system's dialogs for files and folders are asked for, and what is made of their answers.
#include "toolkit/browsefolder.h"
#include "toolkit/picker.h"

#include "tests/support/temporaryfolder.h"
#include "tests/toolkit/replacedimport.h"

#include <gtest/gtest.h>

#include <commdlg.h>
#include <shlobj.h>

#include <cstring>
#include <optional>

namespace {

using namespace lumbrix;
using namespace tests;

const HWND AnOwner = reinterpret_cast<HWND>(0x1234);

// What the dialog for files was asked for the last time.
struct AskedForFile {
    HWND owner;
    std::optional<std::string> title;
    std::string filter; // with its zeros, up to the pair that ends it
    DWORD filterIndex;
    std::string name;
    DWORD longestName;
    std::string folder;
    DWORD flags;
    bool hasHook;
};

AskedForFile askedForFile;
std::string chosenFile; // empty for one that cancels

std::string TextWithZeros(const char* text) {
    std::size_t length = 0;
    while (text[length] != '\0' || text[length + 1] != '\0') {
        ++length;
    }
    return {text, length};
}

BOOL WINAPI AskForFile(OPENFILENAMEA* dialog) {
    askedForFile = {dialog->hwndOwner,
                    dialog->lpstrTitle == nullptr ? std::nullopt : std::optional<std::string>(dialog->lpstrTitle),
                    TextWithZeros(dialog->lpstrFilter),
                    dialog->nFilterIndex,
                    dialog->lpstrFile,
                    dialog->nMaxFile,
                    dialog->lpstrInitialDir,
                    dialog->Flags,
                    dialog->lpfnHook != nullptr};
    if (chosenFile.empty()) {
        return FALSE;
    }
    lstrcpynA(dialog->lpstrFile, chosenFile.c_str(), static_cast<int>(dialog->nMaxFile));
    dialog->nFileOffset = static_cast<WORD>(chosenFile.rfind('\\') + 1);
    return TRUE;
}

// Asked once more, and cancelled.
std::string FolderOfTheNextPicker() {
    chosenFile.clear();
    PickImageFile(AnOwner, "again", PickMode::ExistingFile);
    return askedForFile.folder;
}

class AskedPicker : public testing::Test {
  protected:
    ReplacedImport dialog_{"GetOpenFileNameA", AskForFile};
};

TEST_F(AskedPicker, IsAskedForAFileThatExists) {
    chosenFile = "C:\\pictures\\a.png";
    EXPECT_EQ(PickImageFile(AnOwner, "Select the image", PickMode::ExistingFile), "C:\\pictures\\a.png");
    EXPECT_EQ(askedForFile.owner, AnOwner);
    EXPECT_EQ(askedForFile.title, "Select the image");
    EXPECT_EQ(askedForFile.name, "*.bmp;*.gif;*.tiff;*.jpg;*.png;*.ico;*.emf;*.wmf");
    EXPECT_EQ(askedForFile.longestName, 256u);
    EXPECT_EQ(askedForFile.filterIndex, 1u);
    EXPECT_EQ(askedForFile.flags, 0x81024u); // explorer, with a hook, nothing read only, which must exist
    EXPECT_TRUE(askedForFile.hasHook);
}

TEST_F(AskedPicker, FilterIsOneDescriptionWithoutAPattern) {
    chosenFile.clear();
    PickImageFile(AnOwner, "Select the image", PickMode::ExistingFile);
    EXPECT_EQ(askedForFile.filter, "All Images (*.bmp;*.gif;*tiff;*.jpg;*.png;*.ico;*.emf;*.wmf)");
}

TEST_F(AskedPicker, AnyNameNeedNotExist) {
    chosenFile.clear();
    EXPECT_EQ(PickImageFile(nullptr, "Select the image", PickMode::AnyName), "");
    EXPECT_EQ(askedForFile.owner, nullptr);
    EXPECT_EQ(askedForFile.flags, 0x80024u);
}

TEST_F(AskedPicker, EmptyCaptionIsLeftOut) {
    chosenFile.clear();
    PickImageFile(AnOwner, "", PickMode::ExistingFile);
    EXPECT_EQ(askedForFile.title, std::nullopt);
}

TEST_F(AskedPicker, BeginsInTheFolderOfTheFileThatWasAcceptedLast) {
    chosenFile = "C:\\pictures\\many\\a.png";
    PickImageFile(AnOwner, "first", PickMode::ExistingFile);
    EXPECT_EQ(FolderOfTheNextPicker(), "C:\\pictures\\many\\");
    EXPECT_EQ(FolderOfTheNextPicker(), "C:\\pictures\\many\\") << "cancelling keeps it";
}

// What the dialog for folders was asked for the last time.
struct AskedForFolder {
    HWND owner;
    bool hasRoot;
    std::string prompt;
    UINT flags;
    std::optional<std::string> beginsAt;
};

AskedForFolder askedForFolder;
std::wstring chosenFolder; // empty for one that cancels

LPITEMIDLIST WINAPI AskForFolder(BROWSEINFOA* info) {
    askedForFolder = {info->hwndOwner, info->pidlRoot != nullptr, info->lpszTitle, info->ulFlags,
                      info->lParam == 0 ? std::nullopt
                                        : std::optional<std::string>(reinterpret_cast<const char*>(info->lParam))};
    LPITEMIDLIST list = nullptr;
    if (!chosenFolder.empty()) {
        EXPECT_EQ(SHParseDisplayName(chosenFolder.c_str(), nullptr, &list, 0, nullptr), S_OK);
    }
    return list;
}

class AskedBrowser : public testing::Test {
  protected:
    AskedBrowser() { CoInitialize(nullptr); }
    ~AskedBrowser() override { CoUninitialize(); }

    // The folder that the dialog begins with.
    static std::optional<std::string> NextBeginning() {
        chosenFolder.clear();
        EXPECT_EQ(BrowseForFolder(AnOwner, "again", ""), "");
        return askedForFolder.beginsAt;
    }

    ReplacedImport dialog_{"SHBrowseForFolderA", AskForFolder};
};

TEST_F(AskedBrowser, IsAskedWithABoxAndInTheNewStyle) {
    chosenFolder.clear();
    EXPECT_EQ(BrowseForFolder(AnOwner, "Select output folder", "Image file to create"), "");
    EXPECT_EQ(askedForFolder.owner, AnOwner);
    EXPECT_FALSE(askedForFolder.hasRoot);
    EXPECT_EQ(askedForFolder.prompt, "Select output folder");
    EXPECT_EQ(askedForFolder.flags, 80u);
}

TEST_F(AskedBrowser, BeginsWithTheFolderThatWasChosenLast) {
    chosenFolder = L"C:\\windows";
    const std::string chosen = BrowseForFolder(AnOwner, "prompt", "caption");
    EXPECT_EQ(lstrcmpiA(chosen.c_str(), "C:\\windows"), 0) << chosen;
    EXPECT_EQ(NextBeginning(), chosen);
    EXPECT_EQ(NextBeginning(), chosen) << "cancelling keeps it";
}

} // namespace
