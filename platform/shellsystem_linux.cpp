// What stands in for the shell on Linux: link objects are records, their files small texts, folders the user's own.
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/linkfile.h"
#include "platform/shellsystem.h"
#include "platform/text.h"
#include "platform/userfolders.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <map>
#include <mutex>

namespace lumbrix {

namespace {

constexpr std::size_t PathBytes = 260;

constexpr std::int32_t Done = 0;
constexpr std::int32_t UnknownFolder = -1;

// As much of a text as there is room for, with a zero behind.
void Put(const std::string& text, char* place, std::int32_t room) {
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(room) - 1);
    std::memcpy(place, text.data(), length);
    place[length] = '\0';
}

// A link's fields as a file has them; empty ones where it is no link.
LinkFields ReadLinkFile(const std::string& path) {
    return LinkFromFileText(ReadSmallFile(path)).value_or(LinkFields());
}

// The interface to a link and the one to its file are the same number.
class RecordShell : public ShellSystem {
  public:
    // Long texts are at home here.
    std::optional<SystemVersion> GetVersion() override { return SystemVersion{NtPlatform, 10}; }

    std::int32_t CreateLinkObject(Link& link) override {
        const std::lock_guard guard(mutex_);
        link = ++last_;
        objects_[link].references = 1;
        return Done;
    }

    LinkFile QueryLinkFile(Link link) override {
        const std::lock_guard guard(mutex_);
        ++objects_[link].references;
        return link;
    }

    void ReleaseLink(Link link) override {
        const std::lock_guard guard(mutex_);
        if (--objects_[link].references <= 0) {
            objects_.erase(link);
        }
    }
    void ReleaseLinkFile(LinkFile file) override { ReleaseLink(file); }

    void GetPath(Link link, char* text, std::int32_t length, FoundFileRecord& /*found*/,
                 std::uint32_t /*flags*/) override {
        Put(Fields(link).target, text, length);
    }
    void GetDescription(Link link, char* text, std::int32_t length) override {
        Put(Fields(link).description, text, length);
    }
    void SetDescription(Link link, const char* text) override { Fields(link).description = text; }
    void GetWorkingDirectory(Link link, char* text, std::int32_t length) override {
        Put(Fields(link).workingFolder, text, length);
    }
    void SetWorkingDirectory(Link link, const char* text) override { Fields(link).workingFolder = text; }
    void GetArguments(Link link, char* text, std::int32_t length) override {
        Put(Fields(link).arguments, text, length);
    }
    void SetArguments(Link link, const char* text) override { Fields(link).arguments = text; }
    void GetHotkey(Link link, std::uint16_t& key) override { key = Fields(link).hotKey; }
    void SetHotkey(Link link, std::uint16_t key) override { Fields(link).hotKey = key; }
    void GetShowCmd(Link link, std::int32_t& command) override { command = Fields(link).showCommand; }
    void SetShowCmd(Link link, std::int32_t command) override { Fields(link).showCommand = command; }
    void GetIconLocation(Link link, char* text, std::int32_t length, std::int32_t& index) override {
        Put(Fields(link).iconFile, text, length);
        index = Fields(link).iconIndex;
    }
    void SetIconLocation(Link link, const char* text, std::int32_t index) override {
        Fields(link).iconFile = text;
        Fields(link).iconIndex = index;
    }
    void Resolve(Link /*link*/, std::uint32_t /*flags*/) override {} // the target is known by its path alone
    void SetPath(Link link, const char* text) override { Fields(link).target = text; }

    void Load(LinkFile file, const char16_t* path, std::uint32_t /*mode*/) override {
        Fields(file) = ReadLinkFile(ToNarrow(path));
    }
    void Save(LinkFile file, const char16_t* path, bool /*isRemembered*/) override {
        trap([&] { ReplaceWholeFile(ToNarrow(path), LinkFileText(Fields(file))); });
    }

    void MakeWide(const char* text, char16_t* wide, std::int32_t room) override {
        const std::u16string whole = ToWide(text).substr(0, static_cast<std::size_t>(room) - 1);
        std::copy_n(whole.c_str(), whole.size() + 1, wide);
    }

    std::string CurrentFolder() override {
        std::error_code ignored;
        return std::filesystem::current_path(ignored).string();
    }

    // A list is the folder's number and one, so nothing needs to be freed.
    std::int32_t SpecialFolder(std::int32_t number, ItemList& list) override {
        if (!UserFolder(number)) {
            return UnknownFolder;
        }
        list = static_cast<ItemList>(number) + 1;
        return Done;
    }
    void PathOfItemList(ItemList list, char* path) override {
        const std::optional<std::string> folder = UserFolder(static_cast<std::int32_t>(list - 1));
        if (folder && folder->size() < PathBytes) {
            Put(*folder, path, PathBytes);
        }
    }
    void FreeItemList(ItemList /*list*/) override {}

    void ShowError(const std::string& /*text*/) override {}

  private:
    struct Object {
        LinkFields fields;
        int references = 0;
    };

    // An object belongs to one thread, but others may make some meanwhile.
    LinkFields& Fields(Link link) {
        const std::lock_guard guard(mutex_);
        return objects_[link].fields;
    }

    std::mutex mutex_;
    std::map<Link, Object> objects_;
    Link last_ = 0;
};

} // namespace

ShellSystem& SystemShell() {
    static RecordShell shell;
    return shell;
}

} // namespace lumbrix
