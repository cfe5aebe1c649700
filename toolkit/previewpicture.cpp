// A picture as the platform's own service loads and draws it, for the preview of the file picker.
#include "toolkit/previewpicture.h"

#include "toolkit/handles.h"
#include "toolkit/pickerrules.h"

#include <olectl.h>

namespace lumbrix {

namespace {

// {7BF80980-BF32-101A-8BBB-00AA00300CAB}
constexpr GUID PictureInterface{0x7BF80980, 0xBF32, 0x101A, {0x8B, 0xBB, 0x00, 0xAA, 0x00, 0x30, 0x0C, 0xAB}};

// The whole file in a block of movable memory; null where it cannot be read. A file that breaks off leaves its block
// behind on purpose, as it always has.
HGLOBAL ReadIntoBlock(const std::string& path, DWORD* size) {
    const HANDLE opened = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) {
        return nullptr;
    }
    const OwnedFile file(opened);
    *size = GetFileSize(file.Get(), nullptr);
    if (*size == INVALID_FILE_SIZE) {
        return nullptr;
    }
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, *size);
    void* bytes = block != nullptr ? GlobalLock(block) : nullptr;
    if (bytes == nullptr) {
        return nullptr;
    }
    DWORD read = 0;
    const bool isRead = ReadFile(file.Get(), bytes, *size, &read, nullptr) != 0 && read == *size;
    GlobalUnlock(block);
    return isRead ? block : nullptr;
}

} // namespace

OwnedInterface<IPicture> LoadPreviewPicture(const std::string& path) {
    DWORD size = 0;
    const HGLOBAL block = path.empty() ? nullptr : ReadIntoBlock(path, &size);
    if (block == nullptr) {
        return nullptr;
    }
    IStream* made = nullptr; // owns the block from now on
    if (CreateStreamOnHGlobal(block, TRUE, &made) != S_OK) {
        return nullptr;
    }
    const OwnedInterface<IStream> stream(made);
    void* loaded = nullptr;
    if (OleLoadPicture(stream.get(), static_cast<LONG>(size), FALSE, PictureInterface, &loaded) != S_OK) {
        return nullptr;
    }
    return OwnedInterface<IPicture>(static_cast<IPicture*>(loaded));
}

void ClearPreviewPane(HWND pane) {
    RECT client{};
    GetClientRect(pane, &client);
    const WindowContext context(pane);
    FillRect(context.Get(), &client, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
}

void DrawPreview(HWND pane, IPicture& picture) {
    RECT client{};
    GetClientRect(pane, &client);
    OLE_XSIZE_HIMETRIC width = 0;
    OLE_YSIZE_HIMETRIC height = 0;
    picture.get_Width(&width);
    picture.get_Height(&height);
    if (width <= 0 || height <= 0) {
        return;
    }
    const PreviewPlace place = PlacePreview(client.right, client.bottom, width, height);
    const WindowContext context(pane);
    // What is left out in shrinking is mixed in; otherwise colours that nobody chose come out.
    SetStretchBltMode(context.Get(), HALFTONE);
    SetBrushOrgEx(context.Get(), 0, 0, nullptr);
    // The picture's own units run upwards.
    picture.Render(context.Get(), place.x, place.y, place.width, place.height, 0, height, width, -height, &client);
}

} // namespace lumbrix
