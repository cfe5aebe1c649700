// Takes an icon's image and mask out of pictures in memory, and writes the file.
#include "draw/iconwriter.h"

#include "platform/files.h"

#include <algorithm>
#include <cstring>

namespace lumbrix {

namespace {

// The header that describes bits, with room for every colour table behind it.
struct BitsInfo {
    BITMAPINFOHEADER header;
    IconColors colors;
};

BITMAPINFOHEADER HeaderFor(int bitCount) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = IconSide;
    header.biHeight = IconSide;
    header.biPlanes = 1;
    header.biBitCount = static_cast<WORD>(bitCount);
    return header;
}

// Reads all rows of a bitmap, bottom up.
void ReadBits(HDC context, HBITMAP bitmap, std::uint8_t* bits, BitsInfo& info) {
    GetDIBits(context, bitmap, 0, IconSide, bits, reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS);
}

void DeleteOlderIcon(const std::string& path) {
    if (FileExists(path)) {
        RemoveFile(path);
    }
}

} // namespace

std::string FolderOfModule(HWND window) {
    char path[255] = "";
    const LONG_PTR module = GetWindowLongPtrA(window, GWLP_HINSTANCE);
    const DWORD length = GetModuleFileNameA(reinterpret_cast<HMODULE>(module), path, sizeof path);
    const std::string file(path, length);
    return file.substr(0, file.find_last_of('\\') + 1);
}

MonochromePicture InitIconHeaders(int bitCount, HDC picture, BITMAPINFOHEADER& maskHeader, IconHead& head) {
    head = IconHeadFor(bitCount);
    maskHeader = HeaderFor(1);
    maskHeader.biClrUsed = 2;
    MonochromePicture mask({IconSide, IconSide});
    // On the way to one bit a pixel, the background colour becomes 1 and everything else 0.
    SetBkColor(picture, IconKeyColor);
    SetBkColor(mask.Context(), 0);
    BitBlt(mask.Context(), 0, 0, IconSide, IconSide, picture, 0, 0, SRCCOPY);
    return mask;
}

void GetIconBits(IconImage& image, int bitCount, HDC picture, IconColors& colors) {
    BitsInfo info{HeaderFor(bitCount), {}};
    const auto bitmap = static_cast<HBITMAP>(GetCurrentObject(picture, OBJ_BITMAP));
    ReadBits(picture, bitmap, image.data(), info);
    std::copy_n(info.colors.begin(), ColorTableBytes(bitCount), colors.begin());
}

void WriteIconFile(HWND window, const std::string& path, HDC picture, HDC maskedPicture) {
    DeleteOlderIcon(FolderOfModule(window) + "written.ico");
    BitsInfo maskInfo{};
    IconHead head;
    const MonochromePicture mask = InitIconHeaders(IconBits, picture, maskInfo.header, head);
    IconImage image{};
    IconColors colors{};
    GetIconBits(image, IconBits, maskedPicture, colors);
    IconMask maskBits{};
    ReadBits(mask.Context(), mask.Bitmap(), maskBits.data(), maskInfo);
    ReplaceWholeFile(path, IconFile(head, image, maskBits));
}

} // namespace lumbrix
