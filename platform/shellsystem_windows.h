// The shell of Windows: each method of its link objects, called by its place in the table of the interface.
//
// A Link is a pointer to IShellLinkA, a LinkFile one to IPersistFile. What the methods return is not looked at.
#pragma once

#include "platform/shellsystem.h"

#include <windows.h>

#include <objidl.h>
#include <shobjidl.h>

namespace lumbrix {

class WindowsShell : public ShellSystem {
  public:
    std::optional<SystemVersion> GetVersion() override;
    std::int32_t CreateLinkObject(Link& link) override;

    LinkFile QueryLinkFile(Link link) override;
    void ReleaseLink(Link link) override;
    void ReleaseLinkFile(LinkFile file) override;

    void GetPath(Link link, char* text, std::int32_t length, FoundFileRecord& found, std::uint32_t flags) override;
    void GetDescription(Link link, char* text, std::int32_t length) override;
    void SetDescription(Link link, const char* text) override;
    void GetWorkingDirectory(Link link, char* text, std::int32_t length) override;
    void SetWorkingDirectory(Link link, const char* text) override;
    void GetArguments(Link link, char* text, std::int32_t length) override;
    void SetArguments(Link link, const char* text) override;
    void GetHotkey(Link link, std::uint16_t& key) override;
    void SetHotkey(Link link, std::uint16_t key) override;
    void GetShowCmd(Link link, std::int32_t& command) override;
    void SetShowCmd(Link link, std::int32_t command) override;
    void GetIconLocation(Link link, char* text, std::int32_t length, std::int32_t& index) override;
    void SetIconLocation(Link link, const char* text, std::int32_t index) override;
    void Resolve(Link link, std::uint32_t flags) override;
    void SetPath(Link link, const char* text) override;

    void Load(LinkFile file, const char16_t* path, std::uint32_t mode) override;
    void Save(LinkFile file, const char16_t* path, bool isRemembered) override;

    void MakeWide(const char* text, char16_t* wide, std::int32_t room) override;
    std::string CurrentFolder() override;
    std::int32_t SpecialFolder(std::int32_t number, ItemList& list) override;
    void PathOfItemList(ItemList list, char* path) override;
    void FreeItemList(ItemList list) override;
    void ShowError(const std::string& text) override;

    // The rest of the methods of link objects, which nobody needs so far.
    Link QueryLink(Link link);
    void AddLinkReference(Link link);
    void AddLinkFileReference(LinkFile file);
    ItemList GetIDList(Link link);
    void SetIDList(Link link, ItemList list);
    void SetRelativePath(Link link, const char* text);
};

} // namespace lumbrix
