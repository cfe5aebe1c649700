// A shell in memory that writes down what is asked of it.
#pragma once

#include "platform/shellsystem.h"
#include "platform/text.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tests {

// What the one link object holds. Getters put these into the caller's place whatever its length, as far as 1024 bytes
// go.
struct FakeLinkTexts {
    std::string path;
    std::string workingDirectory;
    std::string arguments;
    std::string description;
    std::string iconLocation;
};

class FakeShell : public lumbrix::ShellSystem {
  public:
    // One row for each call, but for those that read something about the system: the name, then the interface or the
    // list that it is about, then the other arguments. The link's interface is 7, its file's 8, and the list of a
    // folder 100 and its number.
    std::vector<std::string> calls;

    std::optional<lumbrix::SystemVersion> version = lumbrix::SystemVersion{2, 5};
    std::int32_t createCode = 0;
    LinkFile file = 8;
    FakeLinkTexts texts;
    std::int32_t showCommand = 0;
    std::int32_t iconIndex = 0;
    std::uint16_t hotkey = 0;
    std::string currentFolder = "/current";
    std::int32_t folderCode = 0;                 // of a folder that is known
    std::map<std::int32_t, std::string> folders; // an empty one has a list, and no path
    std::vector<std::string> messages;

    // Called with each row before anything is done; may throw.
    std::function<void(const std::string&)> atCall = [](const std::string& /*call*/) {};

    std::optional<lumbrix::SystemVersion> GetVersion() override { return version; }
    std::int32_t CreateLinkObject(Link& link) override {
        Note("CreateLinkObject");
        link = 7;
        return createCode;
    }
    LinkFile QueryLinkFile(Link link) override {
        Note("QueryLinkFile", link);
        return file;
    }
    void ReleaseLink(Link link) override { Note("ReleaseLink", link); }
    void ReleaseLinkFile(LinkFile released) override { Note("ReleaseLinkFile", released); }

    void GetPath(Link link, char* text, std::int32_t length, lumbrix::FoundFileRecord& /*found*/,
                 std::uint32_t flags) override {
        Note("GetPath", link, std::to_string(length) + " " + std::to_string(flags));
        Put(texts.path, text);
    }
    void GetDescription(Link link, char* text, std::int32_t length) override {
        Note("GetDescription", link, std::to_string(length));
        Put(texts.description, text);
    }
    void SetDescription(Link link, const char* text) override { Note("SetDescription", link, Quoted(text)); }
    void GetWorkingDirectory(Link link, char* text, std::int32_t length) override {
        Note("GetWorkingDirectory", link, std::to_string(length));
        Put(texts.workingDirectory, text);
    }
    void SetWorkingDirectory(Link link, const char* text) override { Note("SetWorkingDirectory", link, Quoted(text)); }
    void GetArguments(Link link, char* text, std::int32_t length) override {
        Note("GetArguments", link, std::to_string(length));
        Put(texts.arguments, text);
    }
    void SetArguments(Link link, const char* text) override { Note("SetArguments", link, Quoted(text)); }
    void GetHotkey(Link link, std::uint16_t& key) override {
        Note("GetHotkey", link);
        key = hotkey;
    }
    void SetHotkey(Link link, std::uint16_t key) override { Note("SetHotkey", link, std::to_string(key)); }
    void GetShowCmd(Link link, std::int32_t& command) override {
        Note("GetShowCmd", link);
        command = showCommand;
    }
    void SetShowCmd(Link link, std::int32_t command) override { Note("SetShowCmd", link, std::to_string(command)); }
    void GetIconLocation(Link link, char* text, std::int32_t length, std::int32_t& index) override {
        Note("GetIconLocation", link, std::to_string(length));
        Put(texts.iconLocation, text);
        index = iconIndex;
    }
    void SetIconLocation(Link link, const char* text, std::int32_t index) override {
        Note("SetIconLocation", link, Quoted(text) + " " + std::to_string(index));
    }
    void Resolve(Link link, std::uint32_t flags) override { Note("Resolve", link, std::to_string(flags)); }
    void SetPath(Link link, const char* text) override { Note("SetPath", link, Quoted(text)); }

    void Load(LinkFile loaded, const char16_t* path, std::uint32_t mode) override {
        Note("Load", loaded, Quoted(lumbrix::ToNarrow(path)) + " " + std::to_string(mode));
    }
    void Save(LinkFile saved, const char16_t* path, bool isRemembered) override {
        Note("Save", saved, Quoted(lumbrix::ToNarrow(path)) + (isRemembered ? " remembered" : ""));
    }

    void MakeWide(const char* text, char16_t* wide, std::int32_t room) override {
        Note("MakeWide", static_cast<std::uintptr_t>(room));
        const std::u16string whole = lumbrix::ToWide(text);
        std::copy_n(whole.c_str(), std::min<std::size_t>(whole.size() + 1, static_cast<std::size_t>(room)), wide);
    }
    std::string CurrentFolder() override { return currentFolder; }
    std::int32_t SpecialFolder(std::int32_t number, ItemList& list) override {
        Note("SpecialFolder", static_cast<std::uintptr_t>(number));
        list = 100 + static_cast<ItemList>(number);
        return folders.contains(number) ? folderCode : -1;
    }
    void PathOfItemList(ItemList list, char* path) override {
        Note("PathOfItemList", list);
        const std::string& folder = folders.at(static_cast<std::int32_t>(list) - 100);
        if (!folder.empty()) {
            std::copy_n(folder.c_str(), folder.size() + 1, path);
        }
    }
    void FreeItemList(ItemList list) override { Note("FreeItemList", list); }
    void ShowError(const std::string& text) override { messages.push_back(text); }

    bool Had(const std::string& call) const { return std::find(calls.begin(), calls.end(), call) != calls.end(); }

  private:
    static std::string Quoted(const std::string& text) { return "'" + text + "'"; }

    static void Put(const std::string& text, char* place) {
        std::copy_n(text.begin(), std::min<std::size_t>(text.size(), 1024), place);
    }

    void Note(const std::string& call) {
        atCall(call);
        calls.push_back(call);
    }
    void Note(const std::string& name, std::uintptr_t about) { Note(name + " " + std::to_string(about)); }
    void Note(const std::string& name, std::uintptr_t about, const std::string& arguments) {
        Note(name + " " + std::to_string(about) + " " + arguments);
    }
};

} // namespace tests
