// A picture in memory that can be drawn on as on a screen, and whose pixels can be read.
#include "toolkit/offscreen.h"

namespace lumbrix {

OffscreenPicture::OffscreenPicture(PixelSize size, int bitsPerPixel, FirstRow firstRow)
    : size_(size), context_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.width;
    info.bmiHeader.biHeight = firstRow == FirstRow::Top ? -size.height : size.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = static_cast<WORD>(bitsPerPixel);
    info.bmiHeader.biCompression = BI_RGB;
    void* pixels = nullptr;
    bitmap_ = OwnedBitmap(CreateDIBSection(context_.Get(), &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
    DIBSECTION section{};
    if (!bitmap_ || GetObjectA(bitmap_.Get(), sizeof section, &section) == 0) {
        return;
    }
    pixels_ = static_cast<std::uint8_t*>(pixels);
    bytes_ = static_cast<std::size_t>(section.dsBm.bmWidthBytes) * static_cast<std::size_t>(section.dsBm.bmHeight);
    SelectObject(context_.Get(), bitmap_.Get());
}

std::span<std::uint8_t> OffscreenPicture::Pixels() const {
    GdiFlush(); // drawing may be late
    return {pixels_, bytes_};
}

} // namespace lumbrix
