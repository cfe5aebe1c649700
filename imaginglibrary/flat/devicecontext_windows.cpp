// Surfaces on device contexts.
#include "imaginglibrary/flat/contextpixels_windows.h"
#include "imaginglibrary/flat/graphics.h"
#include "imaginglibrary/flat/guard.h"

#include <windows.h>

#include <cstring>

namespace imaginglibrary {

namespace {

// A bitmap of 32 bits a pixel, top row first, in a memory context of its own.
class PixelBuffer {
  public:
    PixelBuffer(HDC like, int width, int height) : context_(CreateCompatibleDC(like)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        info.bmiHeader.biCompression = BI_RGB;
        bitmap_ = CreateDIBSection(context_, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&pixels_), nullptr, 0);
        before_ = SelectObject(context_, bitmap_);
    }

    ~PixelBuffer() {
        SelectObject(context_, before_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }
    PixelBuffer(const PixelBuffer&) = delete;
    PixelBuffer& operator=(const PixelBuffer&) = delete;

    HDC Context() const { return context_; }
    std::uint8_t* Pixels() const { return pixels_; } // null where there was no memory

  private:
    HDC context_;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ before_ = nullptr;
    std::uint8_t* pixels_ = nullptr;
};

// The caller keeps the context alive as long as the surface.
class ContextSurface : public Surface {
  public:
    explicit ContextSurface(HDC context) : context_(context) {}

    PixelRect Area() const override {
        RECT clip{};
        GetClipBox(context_, &clip);
        return {clip.left, clip.top, clip.right, clip.bottom};
    }

    double DotsPerInch() const override { return GetDeviceCaps(context_, LOGPIXELSY); }

    Status Paint(const PixelRect& area, const std::function<Status(Canvas&)>& paint) override {
        if (auto canvas = PixelsInPlace(context_, area)) {
            return paint(*canvas);
        }
        return PaintOnACopy(area, paint);
    }

  private:
    // Fetches what is there, draws on it, and puts it back.
    Status PaintOnACopy(const PixelRect& area, const std::function<Status(Canvas&)>& paint) {
        const auto left = static_cast<int>(area.left);
        const auto top = static_cast<int>(area.top);
        const auto width = static_cast<int>(area.Width());
        const auto height = static_cast<int>(area.Height());
        const PixelBuffer buffer(context_, width, height);
        auto bitmap = Bitmap::Create({.width = static_cast<std::uint32_t>(width),
                                      .height = static_cast<std::uint32_t>(height),
                                      .format = PixelFormat::Rgb32});
        if (buffer.Pixels() == nullptr || !bitmap.Ok()) {
            return Status::OutOfMemory;
        }
        if (!BitBlt(buffer.Context(), 0, 0, width, height, context_, left, top, SRCCOPY)) {
            return Status::GenericError;
        }
        GdiFlush();
        const std::size_t bytes = (*bitmap)->RowBytes() * static_cast<std::size_t>(height);
        std::memcpy((*bitmap)->Row(0), buffer.Pixels(), bytes);
        Canvas canvas{**bitmap, area.left, area.top};
        const Status status = paint(canvas);
        std::memcpy(buffer.Pixels(), (*bitmap)->Row(0), bytes);
        return BitBlt(context_, left, top, width, height, buffer.Context(), 0, 0, SRCCOPY) ? status
                                                                                           : Status::GenericError;
    }

    HDC context_;
};

} // namespace

// No context, or something else than one, gives OutOfMemory, as the platform has it.
FLAT_EXPORT Status FLAT_CALL GdipCreateFromHDC(HDC context, GpGraphics** graphics) {
    return Guarded([&] {
        if (graphics == nullptr) {
            return Status::InvalidParameter;
        }
        const DWORD kind = context == nullptr ? 0 : GetObjectType(context);
        if (kind != OBJ_DC && kind != OBJ_MEMDC && kind != OBJ_ENHMETADC) {
            return Status::OutOfMemory;
        }
        *graphics = AddGraphics(std::make_unique<ContextSurface>(context));
        return Status::Ok;
    });
}

} // namespace imaginglibrary
