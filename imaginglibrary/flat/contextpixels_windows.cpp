// The pixels of a device context, where they lie in memory.
#include "imaginglibrary/flat/contextpixels_windows.h"

#include <cstdlib>

namespace imaginglibrary {

namespace {

// A section of 32 bits a pixel without masks of its own.
bool IsPlainSection(const DIBSECTION& section) {
    return section.dsBm.bmBits != nullptr && section.dsBm.bmBitsPixel == 32 && section.dsBmih.biCompression == BI_RGB;
}

// Whether the context's units are its bitmap's pixels, counted from the top left one.
bool CountsPixels(HDC context) {
    constexpr int Distant = 1 << 20;
    POINT corners[] = {{0, 0}, {Distant, Distant}};
    return LPtoDP(context, corners, 2) && corners[0].x == 0 && corners[0].y == 0 && corners[1].x == Distant &&
           corners[1].y == Distant && GetLayout(context) == 0;
}

bool IsClippedToARectangle(HDC context) {
    RECT box{};
    return GetClipBox(context, &box) == SIMPLEREGION;
}

// Whether the context shows, at a place within its clip box, what stands in this pixel. Not every system tells the
// order of a section's rows when it is asked, so the pixel is changed for a moment.
bool ShowsPixel(HDC context, const PixelRect& at, std::uint8_t* pixel) {
    const auto shown = [&] { return GetPixel(context, static_cast<int>(at.left), static_cast<int>(at.top)); };
    const COLORREF before = shown();
    *pixel ^= 0xFF;
    const bool follows = shown() != before;
    *pixel ^= 0xFF;
    return follows;
}

} // namespace

std::optional<Canvas> PixelsInPlace(HDC context, const PixelRect& area) {
    DIBSECTION section{};
    const HGDIOBJ bitmap = GetObjectType(context) == OBJ_MEMDC ? GetCurrentObject(context, OBJ_BITMAP) : nullptr;
    if (bitmap == nullptr || GetObjectW(bitmap, sizeof section, &section) != sizeof section ||
        !IsPlainSection(section) || !CountsPixels(context) || !IsClippedToARectangle(context)) {
        return std::nullopt;
    }
    const std::int64_t height = std::abs(section.dsBm.bmHeight);
    if (Intersection(area, {0, 0, section.dsBm.bmWidth, height}) != area) {
        return std::nullopt;
    }
    GdiFlush(); // what was drawn before must be there
    const std::ptrdiff_t rowBytes = section.dsBm.bmWidthBytes;
    const auto pixelOfRow = [&](std::int64_t row) {
        return static_cast<std::uint8_t*>(section.dsBm.bmBits) + static_cast<std::ptrdiff_t>(row) * rowBytes +
               static_cast<std::ptrdiff_t>(area.left) * 4;
    };
    std::uint8_t* const fromTop = pixelOfRow(area.top);
    if (ShowsPixel(context, area, fromTop)) {
        return Canvas(PixelFormat::Rgb32, fromTop, rowBytes, area);
    }
    std::uint8_t* const fromBottom = pixelOfRow(height - 1 - area.top);
    if (ShowsPixel(context, area, fromBottom)) {
        return Canvas(PixelFormat::Rgb32, fromBottom, -rowBytes, area);
    }
    return std::nullopt;
}

} // namespace imaginglibrary
