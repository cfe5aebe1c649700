// Makes an icon file of a bitmap file.
#include "draw/iconmaker.h"

#include "draw/iconbitmap.h"
#include "draw/iconfile.h"
#include "draw/iconpixels.h"
#include "draw/iconrules.h"
#include "draw/iconwriter.h"
#include "toolkit/layout.h"
#include "toolkit/offscreen.h"

namespace lumbrix {

namespace {

constexpr PixelSize IconSize{IconSide, IconSide};

// That of an icon, but for what rounding to dialog units takes off. A window that is no dialog has none.
PixelSize GraphicSize(HWND window) {
    constexpr int ManyUnits = 1024;
    RECT many{0, 0, ManyUnits, ManyUnits};
    if (!MapDialogRect(window, &many)) {
        return IconSize;
    }
    RECT graphic{0, 0, UnitsOfPixels(IconSide, many.right), UnitsOfPixels(IconSide, many.bottom)};
    MapDialogRect(window, &graphic);
    return {graphic.right, graphic.bottom};
}

void AddGraphic(HWND window) {
    const PixelSize size = GraphicSize(window);
    CreateWindowExA(0, "static", "", WS_CHILD | WS_VISIBLE | SS_OWNERDRAW, 0, 0, size.width, size.height, window,
                    reinterpret_cast<HMENU>(IconGraphicId), GetModuleHandleA(nullptr), nullptr);
}

void RemoveGraphic(HWND window) { DestroyWindow(GetDlgItem(window, IconGraphicId)); }

void WriteIconOf(const OffscreenPicture& picture, HWND window, const std::string& path, Messages& messages) {
    const OffscreenPicture masked(IconSize, IconBits);
    // The icon is written all the same, of a black picture, where this fails.
    ChangePixels({picture.Context(), {0, 0}, IconSize}, {IconKeyColor, 0}, masked.Context(), messages);
    WriteIconFile(window, path, picture.Context(), masked.Context());
}

} // namespace

void MakeIcon(HWND window, const std::string& bitmapPath, Messages& messages) {
    const PixelSize size = SizeInBitmapFile(StartOfFile(bitmapPath));
    if (size.height != size.width) {
        messages.Show(NotSquareText(size), IconTitle);
        RemoveGraphic(window);
        return;
    }
    const LoadedPicture loaded = LoadIconPicture(bitmapPath);
    AddGraphic(window);
    const OffscreenPicture picture(IconSize, IconBits);
    if (!BitBlt(picture.Context(), 0, 0, IconSide, IconSide, loaded.context.Get(), 0, 0, SRCCOPY)) {
        messages.ShowTechnical(PictureNotCopied);
        return; // the graphic stays on purpose, as it always has
    }
    WriteIconOf(picture, window, IconPath(bitmapPath), messages);
    RemoveGraphic(window);
}

} // namespace lumbrix
