// What links ask of the system: link objects and their files, the folders of the shell, and a message.
//
// One method for each call, under the name that it has on Windows, where a link object is the shell's own. On Linux it
// is a record whose file is a small text. Texts are 8-bit unless said otherwise. A result code is 0 for success. The
// others have none that anybody reads.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace lumbrix {

// A system by its family and the first number of its version.
struct SystemVersion {
    std::uint32_t platform = 0;
    std::uint32_t major = 0;
};
inline constexpr std::uint32_t NtPlatform = 2;

// What the shell tells about the file that a link points to, byte by byte.
using FoundFileRecord = std::array<unsigned char, 318>;

class ShellSystem {
  public:
    // Interfaces of link objects, to the link and to its file, and lists that name a folder; 0 is none.
    using Link = std::uintptr_t;
    using LinkFile = std::uintptr_t;
    using ItemList = std::uintptr_t;

    virtual ~ShellSystem() = default;

    // Nothing where the system does not tell.
    virtual std::optional<SystemVersion> GetVersion() = 0;

    // Makes an empty link object. A result code.
    virtual std::int32_t CreateLinkObject(Link& link) = 0;

    // The interface to the link's file; 0 where there is none. To be released beside the link.
    virtual LinkFile QueryLinkFile(Link link) = 0;
    virtual void ReleaseLink(Link link) = 0;
    virtual void ReleaseLinkFile(LinkFile file) = 0;

    // Of each getter of a text `length` is the room at `text`, the zero behind it included.
    virtual void GetPath(Link link, char* text, std::int32_t length, FoundFileRecord& found, std::uint32_t flags) = 0;
    virtual void GetDescription(Link link, char* text, std::int32_t length) = 0;
    virtual void SetDescription(Link link, const char* text) = 0;
    virtual void GetWorkingDirectory(Link link, char* text, std::int32_t length) = 0;
    virtual void SetWorkingDirectory(Link link, const char* text) = 0;
    virtual void GetArguments(Link link, char* text, std::int32_t length) = 0;
    virtual void SetArguments(Link link, const char* text) = 0;
    virtual void GetHotkey(Link link, std::uint16_t& key) = 0;
    virtual void SetHotkey(Link link, std::uint16_t key) = 0;
    virtual void GetShowCmd(Link link, std::int32_t& command) = 0;
    virtual void SetShowCmd(Link link, std::int32_t command) = 0;
    virtual void GetIconLocation(Link link, char* text, std::int32_t length, std::int32_t& index) = 0;
    virtual void SetIconLocation(Link link, const char* text, std::int32_t index) = 0;

    // Looks whether the target is where it was, and asks nobody.
    virtual void Resolve(Link link, std::uint32_t flags) = 0;
    virtual void SetPath(Link link, const char* text) = 0;

    // The name is wide, with a zero behind. A file that cannot be read, or is none, leaves the link empty.
    virtual void Load(LinkFile file, const char16_t* path, std::uint32_t mode) = 0;
    virtual void Save(LinkFile file, const char16_t* path, bool isRemembered) = 0;

    // Makes a text wide, with a zero behind, in a place of `room` characters.
    virtual void MakeWide(const char* text, char16_t* wide, std::int32_t room) = 0;

    virtual std::string CurrentFolder() = 0;

    // The list that names one of the shell's folders. A result code.
    virtual std::int32_t SpecialFolder(std::int32_t number, ItemList& list) = 0;

    // Puts the path that a list names into a place of 260 bytes, which is left to the system where there is none.
    virtual void PathOfItemList(ItemList list, char* path) = 0;
    virtual void FreeItemList(ItemList list) = 0;

    // Shows a message without a title, in front of everything. On Linux nothing is shown.
    virtual void ShowError(const std::string& text) = 0;
};

// The shell of the user who runs the program. On Windows COM must have been initialised on the calling thread.
ShellSystem& SystemShell();

} // namespace lumbrix
