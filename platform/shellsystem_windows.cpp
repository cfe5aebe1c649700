// The shell of Windows.
#include "platform/shellsystem_windows.h"

#include <shlobj.h>

#include <cstddef>
#include <cstring>

namespace lumbrix {

namespace {

constexpr const wchar_t* LinkClass = L"{00021401-0000-0000-C000-000000000046}";
constexpr const wchar_t* LinkInterface = L"{000214EE-0000-0000-C000-000000000046}";
constexpr const wchar_t* FileInterface = L"{0000010B-0000-0000-C000-000000000046}";

static_assert(sizeof(FoundFileRecord) ==
              offsetof(WIN32_FIND_DATAA, cAlternateFileName) + sizeof(WIN32_FIND_DATAA::cAlternateFileName));

IShellLinkA* Of(ShellSystem::Link link) { return reinterpret_cast<IShellLinkA*>(link); }
IPersistFile* FileOf(ShellSystem::LinkFile file) { return reinterpret_cast<IPersistFile*>(file); }
LPITEMIDLIST ListOf(ShellSystem::ItemList list) { return reinterpret_cast<LPITEMIDLIST>(list); }

GUID GuidOf(const wchar_t* text) {
    GUID guid{};
    CLSIDFromString(text, &guid);
    return guid;
}

const wchar_t* WideText(const char16_t* text) { return reinterpret_cast<const wchar_t*>(text); }

std::uintptr_t Query(IShellLinkA* link, const wchar_t* identifier) {
    void* found = nullptr;
    link->QueryInterface(GuidOf(identifier), &found);
    return reinterpret_cast<std::uintptr_t>(found);
}

} // namespace

std::optional<SystemVersion> WindowsShell::GetVersion() {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    if (!GetVersionExA(&version)) {
        return std::nullopt;
    }
    return SystemVersion{version.dwPlatformId, version.dwMajorVersion};
}

std::int32_t WindowsShell::CreateLinkObject(Link& link) {
    void* made = nullptr;
    const HRESULT code =
        CoCreateInstance(GuidOf(LinkClass), nullptr, CLSCTX_INPROC_SERVER, GuidOf(LinkInterface), &made);
    link = reinterpret_cast<Link>(made);
    return code;
}

ShellSystem::LinkFile WindowsShell::QueryLinkFile(Link link) { return Query(Of(link), FileInterface); }
ShellSystem::Link WindowsShell::QueryLink(Link link) { return Query(Of(link), LinkInterface); }
void WindowsShell::AddLinkReference(Link link) { Of(link)->AddRef(); }
void WindowsShell::ReleaseLink(Link link) { Of(link)->Release(); }
void WindowsShell::AddLinkFileReference(LinkFile file) { FileOf(file)->AddRef(); }
void WindowsShell::ReleaseLinkFile(LinkFile file) { FileOf(file)->Release(); }

void WindowsShell::GetPath(Link link, char* text, std::int32_t length, FoundFileRecord& found, std::uint32_t flags) {
    WIN32_FIND_DATAA data{};
    Of(link)->GetPath(text, length, &data, flags);
    std::memcpy(found.data(), &data, found.size());
}

ShellSystem::ItemList WindowsShell::GetIDList(Link link) {
    PIDLIST_ABSOLUTE list = nullptr;
    Of(link)->GetIDList(&list);
    return reinterpret_cast<ItemList>(list);
}

void WindowsShell::SetIDList(Link link, ItemList list) { Of(link)->SetIDList(ListOf(list)); }

void WindowsShell::GetDescription(Link link, char* text, std::int32_t length) {
    Of(link)->GetDescription(text, length);
}

void WindowsShell::SetDescription(Link link, const char* text) { Of(link)->SetDescription(text); }

void WindowsShell::GetWorkingDirectory(Link link, char* text, std::int32_t length) {
    Of(link)->GetWorkingDirectory(text, length);
}

void WindowsShell::SetWorkingDirectory(Link link, const char* text) { Of(link)->SetWorkingDirectory(text); }

void WindowsShell::GetArguments(Link link, char* text, std::int32_t length) { Of(link)->GetArguments(text, length); }

void WindowsShell::SetArguments(Link link, const char* text) { Of(link)->SetArguments(text); }

void WindowsShell::GetHotkey(Link link, std::uint16_t& key) { Of(link)->GetHotkey(&key); }

void WindowsShell::SetHotkey(Link link, std::uint16_t key) { Of(link)->SetHotkey(key); }

void WindowsShell::GetShowCmd(Link link, std::int32_t& command) { Of(link)->GetShowCmd(&command); }

void WindowsShell::SetShowCmd(Link link, std::int32_t command) { Of(link)->SetShowCmd(command); }

void WindowsShell::GetIconLocation(Link link, char* text, std::int32_t length, std::int32_t& index) {
    Of(link)->GetIconLocation(text, length, &index);
}

void WindowsShell::SetIconLocation(Link link, const char* text, std::int32_t index) {
    Of(link)->SetIconLocation(text, index);
}

void WindowsShell::SetRelativePath(Link link, const char* text) { Of(link)->SetRelativePath(text, 0); }

void WindowsShell::Resolve(Link link, std::uint32_t flags) { Of(link)->Resolve(nullptr, flags); }

void WindowsShell::SetPath(Link link, const char* text) { Of(link)->SetPath(text); }

void WindowsShell::Load(LinkFile file, const char16_t* path, std::uint32_t mode) {
    FileOf(file)->Load(WideText(path), mode);
}

void WindowsShell::Save(LinkFile file, const char16_t* path, bool isRemembered) {
    FileOf(file)->Save(WideText(path), isRemembered ? 1 : 0);
}

void WindowsShell::MakeWide(const char* text, char16_t* wide, std::int32_t room) {
    MultiByteToWideChar(CP_ACP, 0, text, -1, reinterpret_cast<wchar_t*>(wide), room);
}

std::string WindowsShell::CurrentFolder() {
    std::string folder(GetCurrentDirectoryA(0, nullptr), '\0'); // with its zero
    folder.resize(GetCurrentDirectoryA(static_cast<DWORD>(folder.size()), folder.data()));
    return folder;
}

std::int32_t WindowsShell::SpecialFolder(std::int32_t number, ItemList& list) {
    LPITEMIDLIST found = nullptr;
    const HRESULT code = SHGetSpecialFolderLocation(nullptr, number, &found);
    list = reinterpret_cast<ItemList>(found);
    return code;
}

void WindowsShell::PathOfItemList(ItemList list, char* path) { SHGetPathFromIDListA(ListOf(list), path); }

void WindowsShell::FreeItemList(ItemList list) { CoTaskMemFree(ListOf(list)); }

void WindowsShell::ShowError(const std::string& text) {
    MessageBoxA(nullptr, text.c_str(), "", MB_TASKMODAL | MB_SETFOREGROUND);
}

ShellSystem& SystemShell() {
    static WindowsShell shell;
    return shell;
}

} // namespace lumbrix
