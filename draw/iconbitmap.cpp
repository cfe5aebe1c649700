// A bitmap file as an icon is made of it: how it starts, and its picture at the size of an icon.
#include "draw/iconbitmap.h"

#include "draw/iconfile.h"
#include "draw/iconrules.h"
#include "platform/errors.h"

namespace lumbrix {

namespace {

[[noreturn]] void RaiseUnread(const std::string& path) {
    const auto number = static_cast<int>(GetLastError());
    throw RuntimeError(number, "cannot read " + path + ": " + SystemReason(number));
}

LoadedPicture PictureOf(OwnedBitmap bitmap) {
    OwnedContext context(CreateCompatibleDC(nullptr));
    SelectObject(context.Get(), bitmap.Get());
    return {std::move(bitmap), std::move(context)};
}

} // namespace

std::string StartOfFile(const std::string& path) {
    const HANDLE opened = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) {
        RaiseUnread(path);
    }
    const OwnedFile file(opened);
    std::string start(BitmapStartBytes, '\0');
    DWORD bytes = 0;
    if (!ReadFile(file.Get(), start.data(), static_cast<DWORD>(start.size()), &bytes, nullptr)) {
        RaiseUnread(path);
    }
    start.resize(bytes);
    return start;
}

LoadedPicture LoadIconPicture(const std::string& path) {
    OwnedBitmap bitmap(static_cast<HBITMAP>(LoadImageA(nullptr, path.c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE)));
    BITMAP facts{};
    if (!bitmap || GetObjectA(bitmap.Get(), sizeof facts, &facts) == 0) {
        return {};
    }
    LoadedPicture whole = PictureOf(std::move(bitmap));
    if (facts.bmWidth == IconSide && facts.bmHeight == IconSide) {
        return whole;
    }
    const WindowContext screen(nullptr);
    LoadedPicture stretched = PictureOf(OwnedBitmap(CreateCompatibleBitmap(screen.Get(), IconSide, IconSide)));
    SetStretchBltMode(stretched.context.Get(), HALFTONE);
    StretchBlt(stretched.context.Get(), 0, 0, IconSide, IconSide, whole.context.Get(), 0, 0, facts.bmWidth,
               facts.bmHeight, SRCCOPY);
    return stretched;
}

} // namespace lumbrix
