// The exported procedures on shell links, found by their names in the finished library.
#include "imaging/exports/lumbrix.h"
#include "tests/support/ownshellfolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#ifdef _WIN32
#include <objbase.h>
#else
#include <dlfcn.h>
#endif

namespace {

using namespace tests;

constexpr std::int32_t NoFolder = 9999;

template <class Procedure> Procedure Exported(const char* name) {
#ifdef _WIN32
    return reinterpret_cast<Procedure>(reinterpret_cast<void*>(GetProcAddress(LoadLibraryA("lumbrix.dll"), name)));
#else
    return reinterpret_cast<Procedure>(dlsym(dlopen(LUMBRIX_LIBRARY, RTLD_NOW), name));
#endif
}

// A text that the library handed out, or null.
class OwnedText {
  public:
    explicit OwnedText(char* text = nullptr) : text_(text) {}
    ~OwnedText() { Exported<void(LUMBRIX_CALL*)(void*)>("lumbrix_free")(text_); }
    OwnedText(const OwnedText&) = delete;
    OwnedText& operator=(const OwnedText&) = delete;

    char** Place() { return &text_; }
    std::string Text() const { return text_ == nullptr ? "" : text_; }

  private:
    char* text_;
};

// What a caller holds to have a link read into it.
struct ReadLink {
    OwnedText target;
    OwnedText workingFolder;
    OwnedText arguments;
    OwnedText description;
    OwnedText iconFile;
    std::int32_t showCommand = -1;
    std::int32_t iconIndex = -2;
    std::int32_t spare = -3;
    std::uint16_t hotKey = 9;

    std::vector<OwnedText*> Texts() { return {&target, &workingFolder, &arguments, &description, &iconFile}; }
};

class ExportedLinks : public testing::Test {
  protected:
    ExportedLinks() {
#ifdef _WIN32
        CoInitialize(nullptr);
#endif
        WriteBytes(folder_ / "target", "");
    }
    ~ExportedLinks() override {
#ifdef _WIN32
        CoUninitialize();
#endif
    }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    std::filesystem::path InShell(const std::string& name) const {
        return std::filesystem::path(shells_.Path()) / name;
    }

    void CreateIn(std::int32_t folder) const {
        const std::int32_t icon = 3;
        create_(folder, "Name", Path("target").c_str(), "-x y", Path("work").c_str(), 3, "What it is", "ignored",
                Path("icon").c_str(), &icon);
    }
    std::int32_t ReadInto(ReadLink& link, const std::string& path) const {
        return read_(path.c_str(), link.target.Place(), link.workingFolder.Place(), link.arguments.Place(),
                     link.description.Place(), link.iconFile.Place(), &link.showCommand, &link.iconIndex, &link.spare,
                     &link.hotKey);
    }

    void(LUMBRIX_CALL* create_)(std::int32_t, const char*, const char*, const char*, const char*, std::int32_t,
                                const char*, const char*, const char*,
                                const std::int32_t*) = Exported<decltype(create_)>("CreateLink");
    std::int32_t(LUMBRIX_CALL* read_)(const char*, char**, char**, char**, char**, char**, std::int32_t*, std::int32_t*,
                                      void*, std::uint16_t*) = Exported<decltype(read_)>("GetShellLinkInfo");
    char*(LUMBRIX_CALL* folderOf_)(const std::int32_t*) = Exported<decltype(folderOf_)>("GetDestinationFolder");
    void(LUMBRIX_CALL* remove_)(const char*, std::int32_t) = Exported<decltype(remove_)>("RemoveShortcut");

    TemporaryFolder folder_;
    CurrentFolder current_{folder_.Path()};
    OwnShellFolder shells_{TemplatesPlace};
};

TEST_F(ExportedLinks, AreReadAsTheyWereCreated) {
    CreateIn(shells_.Number());
    ReadLink link;
    EXPECT_EQ(ReadInto(link, InShell("Name.lnk").string()), 1);
    EXPECT_EQ(link.target.Text(), Path("target"));
    EXPECT_EQ(link.workingFolder.Text(), Path("work"));
    EXPECT_EQ(link.arguments.Text(), "-x y");
    EXPECT_EQ(link.description.Text(), "What it is");
    EXPECT_EQ(link.iconFile.Text(), Path("icon"));
#ifdef _WIN32
    constexpr std::size_t ShowCommandPlace = 60; // Wine's shell writes it, and does not read it
    EXPECT_EQ(ReadBytes(InShell("Name.lnk"))[ShowCommandPlace], 3);
#else
    EXPECT_EQ(link.showCommand, 3);
#endif
    EXPECT_EQ(link.iconIndex, 3);
    EXPECT_EQ(link.spare, -3);
    EXPECT_EQ(link.hotKey, 0);
}

TEST_F(ExportedLinks, OfAnUnknownFolderLieInTheCurrentOne) {
    CreateIn(NoFolder);
    EXPECT_TRUE(std::filesystem::exists(folder_ / "Name.lnk"));
}

TEST_F(ExportedLinks, TakeNullTextsForEmptyOnes) {
    create_(NoFolder, nullptr, Path("target").c_str(), nullptr, nullptr, 1, nullptr, nullptr, nullptr, nullptr);
    ReadLink link;
    EXPECT_EQ(ReadInto(link, Path(".lnk")), 1);
    EXPECT_EQ(link.target.Text(), Path("target"));
    EXPECT_EQ(link.arguments.Text(), "");
    EXPECT_EQ(link.iconIndex, 0);
    create_(NoFolder, "Other", nullptr, nullptr, nullptr, 1, nullptr, nullptr, "icon", nullptr);
    EXPECT_EQ(ReadInto(link, Path("Other.lnk")), 1);
    EXPECT_EQ(link.iconIndex, 0);
}

TEST_F(ExportedLinks, WriteNothingToNullPointers) {
    CreateIn(NoFolder);
    const std::string path = Path("Name.lnk");
    EXPECT_EQ(read_(path.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(read_(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
}

TEST_F(ExportedLinks, ReplaceTheTextsOfTheCaller) {
    const std::int32_t number = shells_.Number();
    ReadLink link;
    *link.target.Place() = folderOf_(&number);
    *link.arguments.Place() = folderOf_(&number);
    CreateIn(NoFolder);
    EXPECT_EQ(ReadInto(link, Path("Name.lnk")), 1);
    EXPECT_EQ(link.target.Text(), Path("target"));
    EXPECT_EQ(link.arguments.Text(), "-x y");
}

TEST_F(ExportedLinks, OfABlankPathChangeNothing) {
    const std::int32_t number = shells_.Number();
    ReadLink link;
    for (OwnedText* text : link.Texts()) {
        *text->Place() = folderOf_(&number);
    }
    EXPECT_EQ(ReadInto(link, "  "), 0);
    for (const OwnedText* text : link.Texts()) {
        EXPECT_EQ(text->Text(), shells_.Path());
    }
    EXPECT_EQ(link.showCommand, -1);
    EXPECT_EQ(link.iconIndex, -2);
    EXPECT_EQ(link.hotKey, 9);
}

TEST_F(ExportedLinks, ReadAsEmptyWhereThereIsNone) {
    ReadLink link;
    EXPECT_EQ(ReadInto(link, Path("missing.lnk")), 1);
    EXPECT_EQ(link.target.Text(), "");
    EXPECT_EQ(link.showCommand, 1);
    EXPECT_EQ(link.iconIndex, 0);
    EXPECT_EQ(link.hotKey, 0);
}

TEST_F(ExportedLinks, LieInAFolderThatHasAPath) {
    const std::int32_t number = shells_.Number();
    EXPECT_EQ(OwnedText(folderOf_(&number)).Text(), shells_.Path());
}

TEST_F(ExportedLinks, UnknownFolderHasAnEmptyPath) {
    char* const unknown = folderOf_(&NoFolder);
    const OwnedText owned(unknown);
    EXPECT_STREQ(unknown, "");
    char* const none = folderOf_(nullptr);
    const OwnedText ownedNone(none);
    EXPECT_STREQ(none, "");
}

TEST_F(ExportedLinks, AreRemoved) {
    CreateIn(shells_.Number());
    CreateIn(NoFolder);
    remove_("Name", shells_.Number());
    EXPECT_FALSE(std::filesystem::exists(InShell("Name.lnk")));
    EXPECT_TRUE(std::filesystem::exists(folder_ / "Name.lnk"));
    remove_("Name", NoFolder);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "Name.lnk"));
}

// A program in a folder of its own.
TEST_F(ExportedLinks, ThatCannotBeRemovedAreListedBesideTheProgram) {
    const std::filesystem::path program = std::filesystem::path(LUMBRIX_REMOVING);
    std::filesystem::copy(program, folder_ / program.filename().string());
#ifdef _WIN32
    std::filesystem::copy(program.parent_path() / "lumbrix.dll", folder_ / "lumbrix.dll");
#endif
    const std::filesystem::path elsewhere = folder_ / "elsewhere";
    std::filesystem::create_directory(elsewhere);
    const CurrentFolder current(elsewhere);
    EXPECT_EQ(std::system((Path(program.filename().string()) + " Name").c_str()), 0);
    EXPECT_EQ(ReadBytes(folder_ / "CleanUp.txt"), "Name.lnk\r\n");
}

#ifdef _WIN32
TEST_F(ExportedLinks, NeedComOnWindows) {
    CoUninitialize();
    CreateIn(NoFolder);
    ReadLink link;
    EXPECT_EQ(ReadInto(link, Path("Name.lnk")), 0);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "Name.lnk"));
    CoInitialize(nullptr);
}
#endif

} // namespace
