// The platform's dialogs around windows: choosing a folder, and the window's icon.
#include "toolkit/browsefolder.h"

#include "toolkit/handles.h"

#include <objbase.h>
#include <shlobj.h>

namespace lumbrix {

namespace {

constexpr std::size_t LongestText = 259;

using OwnedItemList = Owned<LPITEMIDLIST, CoTaskMemFree>;

std::string browseCaption;
std::string lastBrowsedFolder;

// Opens the dialog on the last choice and gives it its caption.
int CALLBACK OnBrowsing(HWND dialog, UINT message, LPARAM /*argument*/, LPARAM lastFolder) {
    if (message == BFFM_INITIALIZED) {
        SendMessageA(dialog, BFFM_SETSELECTIONA, TRUE, lastFolder);
        SetWindowTextA(dialog, browseCaption.c_str());
    }
    return 0;
}

} // namespace

std::string BrowseForFolder(HWND owner, const std::string& prompt, const std::string& caption) {
    browseCaption = caption.substr(0, LongestText);
    BROWSEINFOA info{};
    info.hwndOwner = owner;
    info.lpszTitle = prompt.c_str();
    info.ulFlags = BIF_EDITBOX | BIF_NEWDIALOGSTYLE;
    info.lpfn = OnBrowsing;
    info.lParam = lastBrowsedFolder.empty() ? 0 : reinterpret_cast<LPARAM>(lastBrowsedFolder.c_str());
    char path[MAX_PATH] = "";
    if (const OwnedItemList chosen(SHBrowseForFolderA(&info)); chosen) {
        SHGetPathFromIDListA(chosen.Get(), path);
    }
    std::string folder = path;
    if (!folder.empty()) {
        lastBrowsedFolder = folder.substr(0, LongestText);
    }
    return folder;
}

void SetWindowIconFromModule(HWND window) {
    const HICON icon = LoadIconA(GetModuleHandleA(nullptr), "PROGRAM");
    SendMessageA(window, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon));
}

} // namespace lumbrix
