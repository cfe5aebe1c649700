// Replaces a colour of a picture by masks and raster operations, without a loop over its pixels.
#include "draw/iconpixels.h"

#include "draw/iconfile.h"
#include "draw/iconmonochrome.h"
#include "toolkit/offscreen.h"

namespace lumbrix {

namespace {

bool Copy(HDC target, PixelPoint targetPlace, const PictureRegion& source, DWORD operation) {
    return BitBlt(target, targetPlace.x, targetPlace.y, source.size.width, source.size.height, source.context,
                  source.place.x, source.place.y, operation) != 0;
}

} // namespace

bool ChangePixels(const PictureRegion& source, ColorChange change, HDC target, Messages& messages) {
    const RECT region{0, 0, source.size.width, source.size.height};
    const OwnedBrush brush(CreateSolidBrush(change.to));
    const OffscreenPicture copy(source.size, IconBits);
    if (!copy) {
        messages.ShowTechnical("In ChangePixels - SelectObject(CopyDC, CopyBitmap) = 0");
        return false;
    }
    return FillRect(copy.Context(), &region, brush.Get()) != 0 &&
           BlendOverColor(source, change.from, copy.Context(), target);
}

bool BlendOverColor(const PictureRegion& source, COLORREF keyColor, HDC background, HDC target) {
    const MonochromePicture mask(source.size);
    if (!mask || !MakeColorMask(source, mask.Context(), keyColor)) {
        return false;
    }
    const OffscreenPicture result(source.size, IconBits);
    const OffscreenPicture sourceCopy(source.size, IconBits);
    if (!result || !sourceCopy) {
        return false;
    }
    const auto all = [&](HDC context) { return PictureRegion{context, {0, 0}, source.size}; };
    Copy(sourceCopy.Context(), {0, 0}, source, SRCCOPY);
    Copy(result.Context(), {0, 0}, all(background), SRCCOPY);
    Copy(result.Context(), {0, 0}, all(mask.Context()), SRCAND);
    const RECT region{0, 0, source.size.width, source.size.height};
    InvertRect(mask.Context(), &region);
    Copy(sourceCopy.Context(), {0, 0}, all(mask.Context()), SRCAND);
    Copy(result.Context(), {0, 0}, all(sourceCopy.Context()), SRCPAINT);
    return Copy(target, source.place, all(result.Context()), SRCCOPY);
}

bool MakeColorMask(const PictureRegion& source, HDC mask, COLORREF keyColor) {
    const MonochromePicture key(source.size);
    if (!key) {
        return false;
    }
    // On the way to one bit a pixel, the background colour becomes 1 and everything else 0.
    const COLORREF before = SetBkColor(source.context, keyColor);
    Copy(key.Context(), {0, 0}, source, SRCCOPY);
    const bool isCopied = Copy(mask, {0, 0}, {key.Context(), {0, 0}, source.size}, SRCCOPY);
    SetBkColor(source.context, before);
    return isCopied;
}

} // namespace lumbrix
